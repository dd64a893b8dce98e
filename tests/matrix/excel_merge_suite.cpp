#include "matrix/excel_merge_suite.h"

#include "matrix/column_names.h"

namespace quintara::test {
namespace {

constexpr int kColumns = 30;

}  // namespace

Page PageOf(const Ref<excel::Worksheet>& sheet, int rows) {
  const auto names = ColumnNames();
  Page page;
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= kColumns; ++column) {
      const auto value = sheet->Cells(row, column)->Value();
      if (!value.IsEmpty()) page[names[static_cast<std::size_t>(column - 1)] + std::to_string(row)] = value;
    }
  }
  return page;
}

void Put(const Ref<excel::Worksheet>& sheet, const Page& cells) {
  for (const auto& [address, value] : cells) {
    const auto cell = sheet->Range(address);
    if (value.IsText()) cell->SetNumberFormat("@");
    cell->SetValue(value);
  }
}

Page FrameTree() {
  return TreeRow(1, "A", "FRAME", At(7)) + TreeRow(2, "B", "BOLT", At(1)) + TreeRow(3, "B", "BOLT", At(2));
}

Page FrameList() {
  return ListRow(1, "FRAME", 1, "F own") + ListRow(2, "BOLT", 2, "BOLT.1") + ListRow(3, "BOLT", 2, "BOLT.2");
}

Page MergedTree() {
  const Page withoutPosition{{"C4", "BOLT"}, {"C7", "NUT"}};
  return TreeRow(1, "A", "CAR", kIdentityPosition) + TreeRow(2, "B", "FRAME", At(100)) +
         TreeRow(3, "C", "BOLT", At(2)) + withoutPosition + TreeRow(5, "B", "NUT", At(200)) +
         TreeRow(6, "B", "AXLE", At(300));
}

Page MergedList(const std::string& rootName) {
  return ListRow(1, "CAR", 1, rootName) + ListRow(2, "FRAME", 2, "F own") + ListRow(3, "BOLT", 3, "BOLT.1") +
         ListRow(4, "BOLT", 3, "BOLT.2") + ListRow(5, "NUT", 2, "NUT.7") + ListRow(6, "AXLE", 2, "A own") +
         ListRow(7, "NUT", 3, "NUT.1");
}

void ExcelMergeBench::Use(const Ref<excel::Application>& application) {
  app = application;
  command.Excel() = app;
  command.Workbook() = app->Workbooks()->Add();
}

ExcelMergeBench::~ExcelMergeBench() {
  ErrorState ignored;
  Attempt(ignored, [&] {
    app->SetSheetsInNewWorkbook(3);
    for (int count = app->Workbooks()->Count(); count > 0; --count) app->Workbooks()->Item(count)->Close(false);
  });
}

ErrorState ExcelMergeBench::FailureOfMerge() {
  ErrorState failure;
  Attempt(failure, [&] { Merge(); });
  EXPECT_THAT(platform.Boxes(), testing::IsEmpty());
  return failure;
}

void ExcelMergeBench::GivenWorkbook(const std::string& partNumber, const Page& tree, const Page& list,
                                    const std::string& fileType) {
  const auto workbook = app->Workbooks()->Add();
  Put(workbook->Worksheets()->Item(1), tree);
  Put(workbook->Worksheets()->Item(2), list);
  workbook->SaveAs(folder.Path("made.xls"));
  workbook->Close(false);
  GivenMatrix(partNumber, folder.Read("made.xls"), fileType);
}

void ExcelMergeBench::GivenAxle() {
  GivenWorkbook("AXLE", TreeRow(1, "A", "AXLE", At(8)) + TreeRow(2, "B", "NUT", At(5)),
                ListRow(1, "AXLE", 1, "A own") + ListRow(2, "NUT", 2, "NUT.1"));
}

}  // namespace quintara::test
