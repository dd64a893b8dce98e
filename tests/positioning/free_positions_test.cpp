#include "positioning/free_positions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "base/attempt.h"
#include "positioning/matrix_sheets.h"
#include "support/fake_spreadsheet.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Entry = std::tuple<std::string, int, int>;

// Rows 1 to 7: R, OUTER, INNER, PIN.1, PIN.2, PIN.3, PLATE.
Node Tree() {
  const Node inner{"INNER", "INNER.1", At(0), {{"PIN", "PIN.1", At(0), {}}, {"PIN", "PIN.2", At(0), {}}}};
  return {"R",
          "R",
          At(0),
          {{"OUTER", "OUTER.1", At(0), {inner}}, {"PIN", "PIN.3", At(0), {}}, {"PLATE", "PLATE.1", At(0), {}}}};
}

class FreePositions : public testing::Test {
 protected:
  FreePositions() {
    PutMatrix(Tree(), [this](int sheet, int row, int column, const Variant& value) {
      spreadsheet->sheets[static_cast<std::size_t>(sheet - 1)][{row, column}] = value;
    });
  }

  SheetCells& TreeCells() { return spreadsheet->sheets[0]; }
  SheetCells& ListCells() { return spreadsheet->sheets[1]; }
  std::vector<Entry> Of(const std::string& partNumber, const std::vector<std::string>& components) {
    ChildPartNumbers partNumbers;
    for (const auto& component : components) partNumbers.Add(component);
    std::vector<Entry> found;
    for (const auto& entry : GetFreePositions(sheets, partNumber, partNumbers)) {
      found.emplace_back(entry.InstanceName, entry.Row, entry.Column);
    }
    return found;
  }
  std::vector<std::string> CallsOf(const std::string& partNumber, const std::vector<std::string>& components) {
    gate->StartRecording();
    Of(partNumber, components);
    auto calls = gate->Record();
    gate->Reset();
    std::erase(calls, "Range.Value");
    return calls;
  }

  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  FakeSpreadsheet spreadsheet{gate};
  matrix_workbook::Sheets sheets{spreadsheet.Sheet(1), spreadsheet.Sheet(2)};
};

const Entry kBlank{"", 0, 0};
const Entry kPin3{"PIN.3", 6, 2};

TEST_F(FreePositions, StandInTheOrderOfTheList) {
  EXPECT_THAT(Of("PIN", {"PIN"}), ElementsAre(Entry{"PIN.1", 4, 4}, Entry{"PIN.2", 5, 4}, kPin3));
}

TEST_F(FreePositions, AreWhatTheListSays) {
  ListCells()[{7, 2}] = 3.0;
  ListCells()[{7, 3}] = "2";
  ListCells()[{7, 4}] = 7.0;

  EXPECT_THAT(Of("PLATE", {"PLATE"}), ElementsAre(Entry{"7", 3, 2}));
}

TEST_F(FreePositions, AreOutsideOfEachComponentWhateverItsLevel) {
  EXPECT_THAT(Of("PIN", {"PIN", "INNER"}), ElementsAre(kPin3));
  EXPECT_THAT(Of("PIN", {"OUTER", "PIN"}), ElementsAre(kPin3));
}

TEST_F(FreePositions, DoNotCountTheInstanceItself) {
  EXPECT_THAT(Of("OUTER", {"OUTER"}), ElementsAre(Entry{"OUTER.1", 2, 2}));
}

TEST_F(FreePositions, AreThoseOfExactlyThisPartNumber) {
  EXPECT_THAT(Of("PIN", {"Inner", "pin"}), ElementsAre(Entry{"PIN.1", 4, 4}, Entry{"PIN.2", 5, 4}, kPin3));
  EXPECT_THAT(Of("pin", {"pin"}), ElementsAre(kBlank));
  EXPECT_THAT(Of("PI", {"PI"}), ElementsAre(kBlank));
}

TEST_F(FreePositions, AreOneBlankEntryWhereThereAreNone) {
  EXPECT_THAT(Of("STRANGER", {"STRANGER"}), ElementsAre(kBlank));
  EXPECT_THAT(Of("PIN", {"PIN", "R"}), ElementsAre(kBlank));
}

TEST_F(FreePositions, IncludeTheRootAndWhateverStandsInTheFirstColumn) {
  ListCells()[{7, 3}] = 1.0;

  EXPECT_THAT(Of("R", {"R"}), ElementsAre(Entry{"R", 1, 1}));
  EXPECT_THAT(Of("PLATE", {"PLATE"}), ElementsAre(Entry{"PLATE.1", 7, 1}));
}

TEST_F(FreePositions, EndWithTheListsFirstEmptyRow) {
  ListCells()[{5, 1}] = "";

  EXPECT_THAT(Of("PIN", {"PIN"}), ElementsAre(Entry{"PIN.1", 4, 4}));
}

TEST_F(FreePositions, TakeTheParentFromTheirOwnRowWhereThatIsFilled) {
  TreeCells()[{5, 3}] = "ODD";

  EXPECT_THAT(Of("PIN", {"ODD"}), ElementsAre(Entry{"PIN.1", 4, 4}, kPin3));
}

TEST_F(FreePositions, CompareANumberInTheTreeAsItsText) {
  TreeCells()[{3, 3}] = 1207.0;

  EXPECT_THAT(Of("PIN", {"1207"}), ElementsAre(kPin3));
}

TEST_F(FreePositions, AreLookedForNoFurtherUpThanTheComponent) {
  EXPECT_THAT(CallsOf("PIN", {"INNER", "PIN"}),
              ElementsAre("Worksheet.Cells(2: 1, 1)", "Worksheet.Cells(2: 2, 1)", "Worksheet.Cells(2: 3, 1)",
                          // PIN.1: its row in the list, then up to its parent in the tree
                          "Worksheet.Cells(2: 4, 1)", "Worksheet.Cells(2: 4, 4)", "Worksheet.Cells(2: 4, 3)",
                          "Worksheet.Cells(2: 4, 2)", "Worksheet.Cells(1: 4, 3)", "Worksheet.Cells(1: 3, 3)",
                          // PIN.2
                          "Worksheet.Cells(2: 5, 1)", "Worksheet.Cells(2: 5, 4)", "Worksheet.Cells(2: 5, 3)",
                          "Worksheet.Cells(2: 5, 2)", "Worksheet.Cells(1: 5, 3)", "Worksheet.Cells(1: 4, 3)",
                          "Worksheet.Cells(1: 3, 3)",
                          // PIN.3, as far as the root
                          "Worksheet.Cells(2: 6, 1)", "Worksheet.Cells(2: 6, 4)", "Worksheet.Cells(2: 6, 3)",
                          "Worksheet.Cells(2: 6, 2)", "Worksheet.Cells(1: 6, 1)", "Worksheet.Cells(1: 5, 1)",
                          "Worksheet.Cells(1: 4, 1)", "Worksheet.Cells(1: 3, 1)", "Worksheet.Cells(1: 2, 1)",
                          "Worksheet.Cells(1: 1, 1)", "Worksheet.Cells(2: 7, 1)", "Worksheet.Cells(2: 8, 1)"));
}

TEST_F(FreePositions, AreNothingWhereOneHasNoParent) {
  TreeCells().erase({1, 1});

  EXPECT_THAT(Of("PLATE", {"PLATE"}), IsEmpty());
}

TEST_F(FreePositions, AreNothingWhereOneIsInNoRow) {
  for (const double row : {0.0, -1.0, -32'768.0}) {
    ListCells()[{6, 2}] = row;
    EXPECT_THAT(Of("PIN", {"PIN"}), IsEmpty()) << row;
  }
}

TEST_F(FreePositions, AreNothingWhereOneIsInNoColumn) {
  for (const double column : {0.0, -32'768.0, 300.0}) {
    ListCells()[{6, 3}] = column;
    EXPECT_THAT(Of("PIN", {"PIN"}), IsEmpty()) << column;
  }
}

TEST_F(FreePositions, AreNothingWhereOneHasNoSixteenBitNumber) {
  for (const auto& number : {Variant("two"), Variant(32'768.0), Variant("")}) {
    ListCells()[{6, 2}] = number;
    EXPECT_THAT(Of("PIN", {"PIN"}), IsEmpty()) << number.ToText();
  }
}

TEST_F(FreePositions, AreNothingWhereACellCantBeRead) {
  gate->FailOperation("Range.Value", 5);

  EXPECT_THAT(Of("PIN", {"PIN"}), IsEmpty());
}

TEST_F(FreePositions, AreNothingWhereTheListGoesOnPastTheLastNumber) {
  for (int row = 8; row <= 32'768; ++row) ListCells()[{row, 1}] = "X";

  EXPECT_THAT(Of("PLATE", {"PLATE"}), IsEmpty());
}

TEST_F(FreePositions, KeepNothingOfARowWhoseNumberCantBeRead) {
  ListCells()[{7, 2}] = "seven";
  Counter16 row = 1;
  ASSERT_TRUE(FindInList(sheets.list, "PLATE", row));
  EXPECT_EQ(int{row}, 7);

  ErrorState state;
  EXPECT_FALSE(Attempt(state, [&] { EntryAt(sheets.list, row); }));
  EXPECT_EQ(state.number, failure::kTypeMismatch);
}

}  // namespace
}  // namespace quintara::test
