#include "hosts/office/spreadsheet_host.h"

#include "hosts/workbook/application.h"

namespace quintara {

Ref<excel::Application> StartSpreadsheet(const SpreadsheetSurroundings& surroundings) {
  const auto program = surroundings.program.empty() ? QUINTARA_OFFICE_PROGRAM "/soffice.bin" : surroundings.program;
  auto bridge = std::make_unique<office::Bridge>(program, surroundings.limits);
  return MakeRef<workbook::ApplicationObject>(
      std::make_shared<workbook::Session>(surroundings.gate, surroundings.files, std::move(bridge)));
}

}  // namespace quintara
