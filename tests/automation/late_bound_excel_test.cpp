#include "automation/host_thread.h"
#include "hosts/native/native_files.h"
#include "hosts/workbook/contract/fixture.h"
#include "hosts/workbook/workbook_host.h"

namespace quintara::test {
namespace {

/// An application with workbooks in memory on another thread, driven by late binding.
class LateBoundSpreadsheet {
 public:
  Ref<excel::Application> Application() { return NewApplication(); }
  Ref<excel::Application> NewApplication() {
    return HostThread::Shared().Served<excel::Application>([] {
      const auto gate = std::make_shared<Gate>();
      return StartWorkbooksInMemory(gate, std::make_shared<NativeContents>(gate));
    });
  }
};

}  // namespace

using SpreadsheetContractHosts = testing::Types<LateBoundSpreadsheet>;

}  // namespace quintara::test

#include "hosts/workbook/contract/application_contract.h"
#include "hosts/workbook/contract/cell_contract.h"
#include "hosts/workbook/contract/copy_contract.h"
