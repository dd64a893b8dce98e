#include "hosts/office/spreadsheet_module.h"

#include <type_traits>

extern "C" __attribute__((visibility("default"))) void QuintaraStartSpreadsheet(
    const quintara::SpreadsheetSurroundings& surroundings, quintara::Ref<quintara::excel::Application>& application) {
  static_assert(std::is_same_v<decltype(QuintaraStartSpreadsheet), quintara::SpreadsheetEntry>);
  application = quintara::StartSpreadsheet(surroundings);
}
