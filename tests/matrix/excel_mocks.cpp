#include "matrix/excel_mocks.h"

#include "base/failure.h"

namespace quintara::test {

using ::testing::_;
using ::testing::NiceMock;
using ::testing::Return;

WorkbookOnTheBench::WorkbookOnTheBench() {
  const auto workbook = MakeRef<NiceMock<MockWorkbook>>();
  const auto sheet = MakeRef<NiceMock<MockWorksheet>>();
  ON_CALL(*excel, ActiveWorkbook).WillByDefault(Return(workbook));
  ON_CALL(*workbook, Worksheets).WillByDefault(Return(worksheets));
  ON_CALL(*worksheets, Item(_)).WillByDefault([](int) -> Ref<excel::Worksheet> {
    throw Failure(failure::kSubscriptOutOfRange);
  });
  ON_CALL(*worksheets, Item(2)).WillByDefault(Return(sheet));
  ON_CALL(*sheet, Cells(_, _)).WillByDefault([this](int row, int column) { return Cell(row, column); });
}

Ref<excel::Range> WorkbookOnTheBench::Cell(int row, int column) {
  const auto cell = MakeRef<NiceMock<MockRange>>();
  const auto note = [this, place = std::to_string(row) + "," + std::to_string(column)](const std::string& what) {
    beforeWriting(place + what);
    written.push_back(place + what);
  };
  ON_CALL(*cell, SetNumberFormat).WillByDefault([note](const std::string& format) { note(" format " + format); });
  ON_CALL(*cell, SetValue).WillByDefault([note](const Variant& value) { note(" value " + value.ToText()); });
  return cell;
}

}  // namespace quintara::test
