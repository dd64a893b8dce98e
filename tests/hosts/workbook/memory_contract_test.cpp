#include "hosts/native/native_files.h"
#include "hosts/workbook/contract/fixture.h"
#include "hosts/workbook/workbook_host.h"

namespace quintara::test {
namespace {

class MemoryHost {
 public:
  Ref<excel::Application> Application() { return NewApplication(); }
  Ref<excel::Application> NewApplication() {
    const auto gate = std::make_shared<Gate>();
    return StartWorkbooksInMemory(gate, std::make_shared<NativeContents>(gate));
  }
};

}  // namespace

using SpreadsheetContractHosts = testing::Types<MemoryHost>;

}  // namespace quintara::test

#include "hosts/workbook/contract/application_contract.h"
#include "hosts/workbook/contract/cell_contract.h"
#include "hosts/workbook/contract/copy_contract.h"
