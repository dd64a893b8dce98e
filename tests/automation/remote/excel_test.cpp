#include "automation/remote/remote_hosts.h"
#include "hosts/workbook/contract/fixture.h"

namespace quintara::test {
namespace {

/// An application with workbooks in memory of another process.
class RemoteSpreadsheet {
 public:
  Ref<excel::Application> Application() { return NewApplication(); }
  Ref<excel::Application> NewApplication() {
    RemoteHosts::Process();
    return HostsProcess::Create<excel::Application>("Excel.Application");
  }
};

}  // namespace

using SpreadsheetContractHosts = testing::Types<RemoteSpreadsheet>;

}  // namespace quintara::test

#include "hosts/workbook/contract/application_contract.h"
#include "hosts/workbook/contract/cell_contract.h"
#include "hosts/workbook/contract/copy_contract.h"
