#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

// A workbook as the generator of matrices writes it, cell by cell.
class AMatrix : public Spreadsheet {
 protected:
  void Write(int rows) const {
    app->Workbooks()->Add();
    const auto tree = Sheet(1);
    const auto list = Sheet(2);
    for (int row = 1; row <= rows; ++row) {
      const int level = row == 1 ? 1 : 2 + row % 5;
      tree->Cells(row, level)->SetValue("PART" + std::to_string(row % 97));
      for (int column = 15; column <= 26; ++column) tree->Cells(row, column)->SetValue(row + column / 100.0);
      list->Cells(row, 1)->SetValue("PART" + std::to_string(row % 97));
      list->Cells(row, 2)->SetValue(row);
      list->Cells(row, 3)->SetValue(level);
      list->Cells(row, 4)->SetValue("PART." + std::to_string(row));
    }
    for (int row = 3; row <= rows; row += 3) {
      const auto cell = list->Cells(row, 4);
      cell->SetNumberFormat("@");
      cell->SetValue("renamed" + std::to_string(row));
    }
  }
  double Sum(int rows) const {
    const auto tree = Sheet(1);
    const auto list = Sheet(2);
    double sum = 0;
    for (int row = 1; row <= rows; ++row) {
      sum += list->Cells(row, 2)->Value().ToDouble();
      for (int column = 15; column <= 26; ++column) sum += tree->Cells(row, column)->Value().ToDouble();
    }
    return sum;
  }
  int Calls() const { return BridgeOf(app).Calls(); }

  // The calls that writing, saving, opening and reading take.
  struct Cost {
    int write;
    int save;
    int open;
    int read;

    bool operator==(const Cost&) const = default;
  };
  Cost CostOf(int rows) const {
    Cost cost{};
    int before = Calls();
    const auto taken = [&] { return Calls() - std::exchange(before, Calls()); };
    Write(rows);
    cost.write = taken();
    app->ActiveWorkbook()->SaveAs(folder.Path("m.xls"));
    cost.save = taken();
    app->ActiveWorkbook()->Close(false);
    app->Workbooks()->Open(folder.Path("m.xls"));
    cost.open = taken();
    Sum(rows);
    cost.read = taken();
    app->ActiveWorkbook()->Close(false);
    return cost;
  }
  // The calls that it takes to open a workbook of so many rows and to put them into a new one.
  int CostOfMerge(int rows) const {
    Write(rows);
    app->ActiveWorkbook()->SaveAs(folder.Path("m.xls"));
    app->ActiveWorkbook()->Close(false);
    const int before = Calls();
    const auto target = app->Workbooks()->Add()->Worksheets();
    const auto source = app->Workbooks()->Open(folder.Path("m.xls"));
    const auto tree = source->Worksheets()->Item(1);
    const auto list = source->Worksheets()->Item(2);
    const auto last = std::to_string(tree->Cells()->SpecialCells(excel::cell_type::kLastCell)->Row());
    tree->Range("A1:N" + last)->Copy(target->Item(1)->Range("B2"));
    tree->Range("O2:AB" + last)->Copy(target->Item(1)->Range("O2"));
    list->Range("A1:A" + last)->Copy(target->Item(2)->Range("A2"));
    for (int row = 1; row <= rows; ++row) {
      target->Item(2)->Cells(row + 1, 2)->SetValue(list->Cells(row, 2)->Value().ToDouble() + 1);
    }
    source->Close(false);
    const int cost = Calls() - before;
    app->ActiveWorkbook()->Close(false);
    return cost;
  }
};

TEST_F(AMatrix, TakesAsManyCallsForManyRowsAsForFew) {
  const auto few = CostOf(50);
  const auto many = CostOf(5000);

  EXPECT_EQ(few, many);
  EXPECT_LT(many.write + many.save + many.open + many.read, 200);
  RecordProperty("calls to write", many.write);
  RecordProperty("calls to save", many.save);
  RecordProperty("calls to open", many.open);
  RecordProperty("calls to read", many.read);
}

TEST_F(AMatrix, TakesAsManyCallsToBeMergedForManyRowsAsForFew) {
  const int few = CostOfMerge(50);
  const int many = CostOfMerge(5000);

  EXPECT_EQ(few, many);
  EXPECT_LT(many, 100);
  RecordProperty("calls to merge", many);
}

TEST_F(AMatrix, ComesBackAsItWasWritten) {
  Write(300);
  const double sum = Sum(300);

  Reopen();

  EXPECT_EQ(Sum(300), sum);
  EXPECT_EQ(Value("D6", 2), Variant("renamed6"));
  EXPECT_EQ(Sheet(2)->Range("D6")->NumberFormat(), "@");
  EXPECT_EQ(Sheet(2)->Range("D5")->NumberFormat(), "General");
}

}  // namespace
}  // namespace quintara::test
