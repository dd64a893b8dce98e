#include <gmock/gmock.h>

#include "automation/dispatch/late_bound.h"
#include "automation/server/client.h"
#include "support/fake_spreadsheet.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

/// The methods of the positioning commands that read the worksheets of a matrix workbook.
class AWorksheetCall : public testing::Test {
 protected:
  // A root with an assembly in row 2, which holds a part in row 4; and the part in the flat list.
  AWorksheetCall() {
    spreadsheet->sheets[0] = {{{1, 1}, "ROOT"}, {{2, 2}, "ASSEMBLY"}, {{3, 3}, "NUT"}, {{4, 3}, "BOLT"}};
    spreadsheet->sheets[1] = {{{1, 1}, "NUT"},  {{1, 2}, 3.0}, {{1, 3}, 3.0}, {{1, 4}, "NUT.1"},
                              {{2, 1}, "BOLT"}, {{2, 2}, 4.0}, {{2, 3}, 3.0}, {{2, 4}, "BOLT.1"}};
  }

  Value Tree() { return Value(automation::Outgoing(spreadsheet.Sheet(1))); }
  Value List() { return Value(automation::Outgoing(spreadsheet.Sheet(2))); }
  static Variant Held(const Value& variable) { return automation::ToVariant(variable.Raw(), nullptr); }

  TestPlatform platform;
  FakeSpreadsheet spreadsheet{std::make_shared<Gate>()};
  Client command{"Cls_RetrieveMatrix"};
  Client allInstances{"Cls_AllInstances"};
};

TEST_F(AWorksheetCall, BringsTheParentsRowBack) {
  Value row(std::int16_t{4});

  const auto outcome = command.Call("recherche_Ligne_produit_Pere", Tree(), row, 3);

  EXPECT_EQ(outcome.Given(), Variant(std::int16_t{2}));
  EXPECT_EQ(Held(row), Variant(std::int16_t{2}));
}

TEST_F(AWorksheetCall, BringsTheParentsRowBackIntoATypedVariable) {
  LONG row = 4;

  allInstances.Call("recherche_Ligne_produit_Pere", Tree(), &row, "3");

  EXPECT_EQ(row, 2);
}

TEST_F(AWorksheetCall, KeepsTheRowThatHasNoParent) {
  Value row(std::int16_t{4});

  const auto outcome = command.Call("recherche_Ligne_produit_Pere", Tree(), row, 9);

  EXPECT_EQ(outcome.code, RunTimeError(1004));
  EXPECT_EQ(outcome.source, "Quintara.Cls_RetrieveMatrix");
  EXPECT_EQ(Held(row), Variant(std::int16_t{4}));
}

TEST_F(AWorksheetCall, LeavesTheLineAtTheRowFound) {
  Value line(1.0);

  const auto outcome = allInstances.Call("getLineColumn", List(), "BOLT", "BOLT.1", line);

  EXPECT_EQ(outcome.Given(), Variant(true));
  EXPECT_EQ(Held(line), Variant(std::int16_t{2}));
}

TEST_F(AWorksheetCall, LeavesTheLineWhereNoneIsFound) {
  double line = 1;

  const auto outcome = allInstances.Call("getLineColumn", List(), "BOLT", "BOLT.7", &line);

  EXPECT_EQ(outcome.Given(), Variant(false));
  EXPECT_EQ(line, 1.0);
}

TEST_F(AWorksheetCall, FailsOutsideOfTheWorksheet) {
  Value line(std::int16_t{-1});

  const auto outcome = allInstances.Call("getLineColumn", List(), "BOLT", "BOLT.1", line);

  EXPECT_EQ(outcome.code, RunTimeError(1004));
  EXPECT_EQ(outcome.source, "Quintara.Cls_AllInstances");
}

TEST_F(AWorksheetCall, ComputesAPositionFromRowAndColumn) {
  EXPECT_EQ(command.Call("Positionner", Tree(), 4, 3).result, S_OK);
}

TEST_F(AWorksheetCall, FailsToPositionWhatIsNoNumber) {
  spreadsheet->sheets[0][{4, 15}] = "far";

  const auto outcome = command.Call("Positionner", Tree(), 4, 3);

  EXPECT_EQ(outcome.code, RunTimeError(13));
  EXPECT_EQ(outcome.source, "Quintara.Cls_RetrieveMatrix");
}

TEST_F(AWorksheetCall, FailsToPositionWithoutAWorksheet) {
  EXPECT_EQ(allInstances.Call("Positionner", nullptr, 4, 3).code, RunTimeError(91));
}

}  // namespace
}  // namespace quintara::test
