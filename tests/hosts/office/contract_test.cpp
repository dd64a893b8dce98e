#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

class OfficeHost {
 public:
  Ref<excel::Application> Application() { return SharedApplication(); }
  Ref<excel::Application> NewApplication() { return StartSpreadsheet(Surroundings()); }
};

}  // namespace

using SpreadsheetContractHosts = testing::Types<OfficeHost>;

}  // namespace quintara::test

#include "hosts/workbook/contract/application_contract.h"
#include "hosts/workbook/contract/cell_contract.h"
#include "hosts/workbook/contract/copy_contract.h"
