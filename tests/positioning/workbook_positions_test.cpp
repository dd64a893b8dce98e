#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/attempt.h"
#include "positioning/Cls_AllInstances.h"
#include "positioning/Cls_RetrieveMatrix.h"
#include "positioning/matrix_sheets.h"
#include "support/fake_spreadsheet.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::Property;

constexpr std::int16_t kMost = 32'767;

PositionCells CellsOf(const PositionMatrix& position) {
  PositionCells cells;
  std::ranges::copy(position, cells.begin());
  return cells;
}

PositionMatrix NumbersOf(const PositionCells& cells) {
  PositionMatrix numbers{};
  std::ranges::transform(cells, numbers.begin(), &Variant::ToDouble);
  return numbers;
}

PositionMatrix Turned(double x, double y) {
  return {0.1, 0.2, 0.3, -0.7, 0.4, 1e-9, 0.5, -0.25, 3.3, x, y, -1.5};
}

Node Tree() {
  Node part{"PART", "PART.1", Turned(3, 0.1), {}};
  Node inner{"INNER", "INNER.1", Turned(-2, 7), {part}};
  Node first{"FIRST", "FIRST.1", Turned(11, 12), {{"PART", "PART.0", Turned(99, 99), {}}}};
  return {"ROOT", "ROOT", Turned(0.3, 5), {first, {"OUTER", "OUTER.1", Turned(1, 2), {inner}}}};
}

template <class Command>
class PositionsInWorkbook : public testing::Test {
 protected:
  PositionsInWorkbook() {
    PutMatrix(Tree(), [this](int sheet, int row, int column, const Variant& value) {
      spreadsheet->sheets[static_cast<std::size_t>(sheet - 1)][{row, column}] = value;
    });
  }

  int NumberOfPositionner(std::int16_t row, std::int16_t column) {
    ErrorState state;
    Attempt(state, [&] { command.Positionner(tree, row, column); });
    return state.number;
  }

  FakeSpreadsheet spreadsheet{std::make_shared<Gate>()};
  Ref<excel::Worksheet> tree = spreadsheet.Sheet(1);
  Command command;
};

using Commands = testing::Types<Cls_RetrieveMatrix, Cls_AllInstances>;
TYPED_TEST_SUITE(PositionsInWorkbook, Commands);

TYPED_TEST(PositionsInWorkbook, AreEmptyAtFirst) {
  EXPECT_THAT(this->command.MatriceResultat, Each(Property(&Variant::IsEmpty, true)));
}

TYPED_TEST(PositionsInWorkbook, AreComposedWithThoseOfAllThatHoldsTheInstance) {
  this->command.Positionner(this->tree, 6, 4);

  const auto inInner = WrittenOut(Turned(3, 0.1), Turned(-2, 7));
  const auto inOuter = WrittenOut(inInner, Turned(1, 2));
  EXPECT_THAT(NumbersOf(this->command.MatriceResultat), HasBitsOf(WrittenOut(inOuter, Turned(0.3, 5))));
}

TYPED_TEST(PositionsInWorkbook, OfAComponentOfTheRootAreComposedWithTheRoots) {
  this->command.Positionner(this->tree, 4, 2);

  EXPECT_THAT(NumbersOf(this->command.MatriceResultat), HasBitsOf(WrittenOut(Turned(1, 2), Turned(0.3, 5))));
}

TYPED_TEST(PositionsInWorkbook, TakeAnEmptyCellAsZero) {
  this->spreadsheet->sheets[0].erase({4, 24});
  auto child = Turned(1, 2);
  child[9] = 0;

  this->command.Positionner(this->tree, 4, 2);

  EXPECT_THAT(NumbersOf(this->command.MatriceResultat), HasBitsOf(WrittenOut(child, Turned(0.3, 5))));
}

TYPED_TEST(PositionsInWorkbook, ReadANumberFromAText) {
  this->spreadsheet->sheets[0][{1, 26}] = "2.5";
  auto parent = Turned(0.3, 5);
  parent[11] = 2.5;

  this->command.Positionner(this->tree, 4, 2);

  EXPECT_THAT(NumbersOf(this->command.MatriceResultat), HasBitsOf(WrittenOut(Turned(1, 2), parent)));
}

TYPED_TEST(PositionsInWorkbook, FailOnATextThatIsNoNumber) {
  this->spreadsheet->sheets[0][{1, 26}] = "far away";

  EXPECT_EQ(this->NumberOfPositionner(4, 2), failure::kTypeMismatch);
}

TYPED_TEST(PositionsInWorkbook, FailOutsideOfTheWorksheet) {
  EXPECT_EQ(this->NumberOfPositionner(0, 0), failure::kRefused);
  EXPECT_EQ(this->NumberOfPositionner(2, 1), failure::kRefused);
  EXPECT_EQ(this->NumberOfPositionner(1, 3), failure::kRefused);
  EXPECT_EQ(this->NumberOfPositionner(-1, 2), failure::kRefused);
  EXPECT_EQ(this->NumberOfPositionner(4, kMost), failure::kRefused);
}

TYPED_TEST(PositionsInWorkbook, FailWithoutAWorksheet) {
  EXPECT_THROW(this->command.Positionner(nullptr, 1, 1), Failure);
}

TYPED_TEST(PositionsInWorkbook, EndTheirWalkAtTheRootFromWhateverColumnOfRowOne) {
  this->command.Positionner(this->tree, 1, 2);

  EXPECT_THAT(NumbersOf(this->command.MatriceResultat), HasBitsOf(WrittenOut(Turned(0.3, 5), Turned(0.3, 5))));
}

TYPED_TEST(PositionsInWorkbook, LeaveTheNumbersGivenAlone) {
  std::int16_t row = 6;
  std::int16_t column = 4;

  this->command.Positionner(this->tree, row, column);

  EXPECT_EQ(row, 6);
  EXPECT_EQ(column, 4);
}

TYPED_TEST(PositionsInWorkbook, AreReadInTheOrderOfTheWalk) {
  this->spreadsheet->gate->StartRecording();

  this->command.Positionner(this->tree, 4, 2);

  std::vector<std::string> expected;
  const auto read = [&](int row, int column) {
    expected.push_back("Worksheet.Cells(1: " + std::to_string(row) + ", " + std::to_string(column) + ")");
    expected.emplace_back("Range.Value");
  };
  for (int column = 15; column <= 26; ++column) read(4, column);
  for (int row = 4; row >= 1; --row) read(row, 1);
  for (int column = 15; column <= 26; ++column) read(1, column);
  EXPECT_EQ(this->spreadsheet->gate->Record(), expected);
}

TYPED_TEST(PositionsInWorkbook, HaveTheirParentInTheNearestRowAbove) {
  std::int16_t row = 6;

  EXPECT_EQ(this->command.recherche_Ligne_produit_Pere(this->tree, row, 4), 5);
  EXPECT_EQ(row, 5);
  EXPECT_EQ(this->command.recherche_Ligne_produit_Pere(this->tree, row, 3), 4);
  EXPECT_EQ(row, 4);
  EXPECT_EQ(this->command.recherche_Ligne_produit_Pere(this->tree, row, 2), 1);
  EXPECT_EQ(row, 1);
}

TYPED_TEST(PositionsInWorkbook, HaveTheirParentInTheirOwnRowWhereThatIsFilled) {
  this->spreadsheet->sheets[0][{6, 3}] = "ODD";
  std::int16_t row = 6;

  EXPECT_EQ(this->command.recherche_Ligne_produit_Pere(this->tree, row, 4), 6);
}

TYPED_TEST(PositionsInWorkbook, PassOverACellThatHoldsTheEmptyText) {
  this->spreadsheet->sheets[0][{6, 3}] = "";
  std::int16_t row = 6;

  EXPECT_EQ(this->command.recherche_Ligne_produit_Pere(this->tree, row, 4), 5);
}

TYPED_TEST(PositionsInWorkbook, HaveNoParentAboveTheWorksheet) {
  std::int16_t row = 6;

  EXPECT_THROW(this->command.recherche_Ligne_produit_Pere(this->tree, row, 6), Failure);
  EXPECT_THROW(this->command.recherche_Ligne_produit_Pere(this->tree, row, 1), Failure);
  EXPECT_THROW(this->command.recherche_Ligne_produit_Pere(this->tree, row, -32'768), Failure);
  EXPECT_EQ(row, 6);
}

TYPED_TEST(PositionsInWorkbook, AreComposedLikeAllOthers) {
  this->command.Operation_Matrice(CellsOf(Turned(3, 4)), CellsOf(Turned(5, 6)));

  EXPECT_THAT(NumbersOf(this->command.MatriceResultat), HasBitsOf(WrittenOut(Turned(3, 4), Turned(5, 6))));
}

TYPED_TEST(PositionsInWorkbook, OfTheIdentityChangeNothing) {
  this->command.Operation_Matrice(CellsOf(Turned(3, 4)), CellsOf(kIdentityPosition));
  EXPECT_EQ(NumbersOf(this->command.MatriceResultat), Turned(3, 4));

  this->command.Operation_Matrice(CellsOf(kIdentityPosition), CellsOf(Turned(3, 4)));
  EXPECT_EQ(NumbersOf(this->command.MatriceResultat), Turned(3, 4));
}

TYPED_TEST(PositionsInWorkbook, HaveTwelveElements) {
  const auto whole = CellsOf(kIdentityPosition);
  const std::span<const Variant> eleven(whole.data(), 11);

  EXPECT_THROW(this->command.Operation_Matrice(eleven, whole), Failure);
  EXPECT_THROW(this->command.Operation_Matrice(whole, eleven), Failure);
  EXPECT_THROW(this->command.Operation_Matrice({}, whole), Failure);
}

TYPED_TEST(PositionsInWorkbook, KeepTheLastOneWhenTheArithmeticFails) {
  this->command.Operation_Matrice(CellsOf(Turned(3, 4)), CellsOf(kIdentityPosition));
  auto broken = CellsOf(Turned(5, 6));
  broken[7] = "x";

  EXPECT_THROW(this->command.Operation_Matrice(CellsOf(Turned(1, 2)), broken), Failure);
  EXPECT_EQ(NumbersOf(this->command.MatriceResultat), Turned(3, 4));
}

using PositionOfTheRoot = PositionsInWorkbook<Cls_RetrieveMatrix>;

TEST_F(PositionOfTheRoot, IsItsOwn) {
  command.Positionner(tree, 1, 1);

  EXPECT_EQ(NumbersOf(command.MatriceResultat), Turned(0.3, 5));
}

TEST_F(PositionOfTheRoot, IsTakenAsItStandsInTheCells) {
  spreadsheet->sheets[0][{1, 15}] = "no number";
  spreadsheet->sheets[0].erase({1, 16});

  command.Positionner(tree, 1, 1);

  EXPECT_EQ(command.MatriceResultat[0], Variant("no number"));
  EXPECT_TRUE(command.MatriceResultat[1].IsEmpty());
}

class PositionOfTheRootAmongAllInstances : public PositionsInWorkbook<Cls_AllInstances> {};

TEST_F(PositionOfTheRootAmongAllInstances, IsTheOneFoundBefore) {
  command.Positionner(tree, 1, 1);
  EXPECT_THAT(command.MatriceResultat, Each(Property(&Variant::IsEmpty, true)));

  command.Positionner(tree, 4, 2);
  command.Positionner(tree, 1, 1);
  EXPECT_THAT(NumbersOf(command.MatriceResultat), HasBitsOf(WrittenOut(Turned(1, 2), Turned(0.3, 5))));
}

class LineAndColumn : public PositionsInWorkbook<Cls_AllInstances> {
 protected:
  // Rows 1 to 6: ROOT, FIRST, PART.0, OUTER, INNER, PART.1.
  bool Find(const std::string& partNumber, const std::string& instanceName) {
    return command.getLineColumn(spreadsheet.Sheet(2), partNumber, instanceName, line);
  }

  std::int16_t line = 1;
};

TEST_F(LineAndColumn, AreThoseOfTheInstance) {
  EXPECT_TRUE(Find("PART", "PART.1"));

  EXPECT_EQ(line, 6);
  EXPECT_EQ(command.lineFound, 6);
  EXPECT_EQ(command.columnFound, 4);
}

TEST_F(LineAndColumn, AreWhatTheListSays) {
  spreadsheet->sheets[1][{3, 2}] = 17.0;
  spreadsheet->sheets[1][{3, 3}] = 5.0;

  EXPECT_TRUE(Find("PART", "PART.0"));

  EXPECT_EQ(line, 3);
  EXPECT_EQ(command.lineFound, 17);
  EXPECT_EQ(command.columnFound, 5);
}

TEST_F(LineAndColumn, AreLookedForFromTheStartOn) {
  line = 4;
  EXPECT_FALSE(Find("PART", "PART.0"));

  line = 6;
  EXPECT_TRUE(Find("PART", "PART.1"));
}

TEST_F(LineAndColumn, NeedPartNumberAndName) {
  EXPECT_FALSE(Find("PART", "PART.2"));
  EXPECT_FALSE(Find("part", "PART.1"));
  EXPECT_FALSE(Find("PART", ""));
  EXPECT_FALSE(Find("", "PART.1"));
}

TEST_F(LineAndColumn, StayWhereTheListEndsBefore) {
  ASSERT_TRUE(Find("FIRST", "FIRST.1"));
  spreadsheet->sheets[1].erase({4, 1});

  EXPECT_FALSE(Find("PART", "PART.1"));

  EXPECT_EQ(line, 2);
  EXPECT_EQ(command.lineFound, 2);
  EXPECT_EQ(command.columnFound, 2);
}

TEST_F(LineAndColumn, AreNotLookedForBelowAnEmptyFirstRow) {
  spreadsheet->sheets[1].erase({1, 1});

  EXPECT_FALSE(Find("FIRST", "FIRST.1"));
}

TEST_F(LineAndColumn, FailAtTheCallerForWhatIsNoNumber) {
  spreadsheet->sheets[1][{6, 2}] = "six";

  EXPECT_THROW(Find("PART", "PART.1"), Failure);
  EXPECT_EQ(line, 1);
}

TEST_F(LineAndColumn, FailAtTheCallerForWhatIsTooLarge) {
  spreadsheet->sheets[1][{6, 2}] = 32'768.0;

  EXPECT_THROW(Find("PART", "PART.1"), Failure);
}

TEST_F(LineAndColumn, FailAtTheCallerOutsideOfTheWorksheet) {
  line = 0;

  EXPECT_THROW(Find("PART", "PART.1"), Failure);
}

TEST_F(LineAndColumn, FailAtTheCallerPastTheLastRowThatHasANumber) {
  for (int row = 1; row <= 32'768; ++row) spreadsheet->sheets[1][{row, 1}] = "X";
  line = 32'700;

  EXPECT_THROW(Find("PART", "PART.1"), Failure);
}

}  // namespace
}  // namespace quintara::test
