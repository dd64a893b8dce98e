#include <filesystem>
#include <random>
#include <set>

#include "base/attempt.h"
#include "matrix/Cls_HashTable.h"
#include "matrix/column_names.h"
#include "matrix/workbook_bench.h"

namespace quintara::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class AWorkbook : public testing::Test, protected WorkbookBench {
 protected:
  void GivenWorkbook(const Node& tree) {
    GivenProduct(tree);
    ASSERT_TRUE(command.StartExcelApplication());
  }
  PositionMatrix RootPosition() {
    PositionMatrix position{};
    root->Position()->GetComponents(position);
    return position;
  }
};

TEST_F(AWorkbook, OfARootWithoutChildrenHasOneRow) {
  GivenWorkbook(Instance("CAR", 0));

  EXPECT_EQ(Write(), 0);

  EXPECT_EQ(Tree(), TreeRow(1, "A", "CAR", RootPosition()));
  EXPECT_EQ(List(), ListRow(1, "CAR", 1, root->Name()));
}

TEST_F(AWorkbook, HasARowForEachInstanceDepthFirst) {
  GivenWorkbook(
      Instance("CAR", 0, {Instance("AXLE", 1, {Instance("WHEEL", 2), Instance("BOLT", 3)}), Instance("SEAT", 4)}));

  EXPECT_EQ(Write(), 0);

  EXPECT_EQ(Tree(), TreeRow(1, "A", "CAR", RootPosition()) + TreeRow(2, "B", "AXLE", At(1, 0.5, -1)) +
                        TreeRow(3, "C", "WHEEL", At(2, 1, -2)) + TreeRow(4, "C", "BOLT", At(3, 1.5, -3)) +
                        TreeRow(5, "B", "SEAT", At(4, 2, -4)));
  EXPECT_EQ(List(), ListRow(1, "CAR", 1, root->Name()) + ListRow(2, "AXLE", 2, "AXLE.1") +
                        ListRow(3, "WHEEL", 3, "WHEEL.1") + ListRow(4, "BOLT", 3, "BOLT.1") +
                        ListRow(5, "SEAT", 2, "SEAT.1"));
}

TEST_F(AWorkbook, HasThePositionInTheOrderOfItsNumbersFromOToZ) {
  const PositionMatrix numbered{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  GivenWorkbook({"CAR", "CAR", kIdentityPosition, {{"BOLT", "BOLT.1", numbered, {}}}});

  Write();

  EXPECT_EQ(Tree().at("O2"), Variant(1.0));
  EXPECT_EQ(Tree().at("R2"), Variant(4.0));
  EXPECT_EQ(Tree().at("W2"), Variant(9.0));
  EXPECT_EQ(Tree().at("X2"), Variant(10.0));
  EXPECT_EQ(Tree().at("Z2"), Variant(12.0));
}

TEST_F(AWorkbook, HasTheRootWhereItReallyIs) {
  const PositionMatrix turned{0, 1, 0, -1, 0, 0, 0, 0, 1, 10, 20, 30};
  GivenWorkbook(Instance("CAR", 0));
  root->Position()->SetComponents(turned);

  Write();

  EXPECT_EQ(Tree(), TreeRow(1, "A", "CAR", turned));
}

TEST_F(AWorkbook, HasItsCellsWrittenOneByOneInTheirOrder) {
  GivenWorkbook(Instance("CAR", 0));
  paper->done.clear();

  Write();

  ASSERT_EQ(paper->done.size(), 17U);
  const std::vector<std::string> first(paper->done.begin(), paper->done.begin() + 6);
  EXPECT_THAT(first, ElementsAre("1!A1=CAR", "2!A1=CAR", "2!B1=1", "2!C1=1", "2!D1=" + root->Name(), "1!O1=1"));
}

TEST_F(AWorkbook, OfFifteenLevelsHasThePositionOverTheLastPartNumber) {
  Node tree = Instance("P15", 15);
  for (int level = 14; level >= 1; --level) tree = Instance("P" + std::to_string(level), level, {tree});
  GivenWorkbook(tree);

  EXPECT_EQ(Write(), 0);

  EXPECT_THAT(paper->done, Contains("1!O15=P15"));
  EXPECT_EQ(Tree().at("N14"), Variant("P14"));
  EXPECT_EQ(Tree().at("O15"), Variant(1.0));
  EXPECT_EQ(List().at("C15"), Variant(15.0));
}

TEST_F(AWorkbook, WithoutARootThatCanBeResolvedStaysEmpty) {
  GivenWorkbook(Instance("CAR", 0));
  host.SetForm(root, ComponentForm::kUnloaded);
  Counter16 level = 1;

  EXPECT_EQ(command.WriteProductRows(root, level), 1);

  EXPECT_EQ(int{level}, 1);
  EXPECT_EQ(int{command.Row()}, 0);
  EXPECT_THAT(Tree(), IsEmpty());
}

TEST_F(AWorkbook, HasWhatFollowsAnUnresolvedSiblingAColumnFurtherRight) {
  GivenWorkbook(Instance("CAR", 0, {Instance("GONE", 1), Instance("BOLT", 2), Instance("NUT", 3)}));
  host.SetForm(Child(1), ComponentForm::kUnloaded);
  Counter16 level = 1;

  EXPECT_EQ(command.WriteProductRows(root, level), 1);

  EXPECT_EQ(Tree(), TreeRow(1, "A", "CAR", RootPosition()) + TreeRow(2, "C", "BOLT", At(2, 1, -2)) +
                        TreeRow(3, "C", "NUT", At(3, 1.5, -3)));
  EXPECT_EQ(List(),
            ListRow(1, "CAR", 1, root->Name()) + ListRow(2, "BOLT", 3, "BOLT.1") + ListRow(3, "NUT", 3, "NUT.1"));
  EXPECT_EQ(int{level}, 1);
}

TEST_F(AWorkbook, KeepsTheRaisedLevelPastTheEndOfTheSubAssembly) {
  GivenWorkbook(
      Instance("CAR", 0, {Instance("AXLE", 1, {Instance("GONE", 2), Instance("GONE2", 2)}), Instance("SEAT", 3)}));
  host.SetForm(Child(1)->Products()->Item(1), ComponentForm::kUnloaded);
  host.SetForm(Child(1)->Products()->Item(2), ComponentForm::kUnloaded);

  EXPECT_EQ(Write(), 1);

  EXPECT_EQ(Tree().at("B2"), Variant("AXLE"));
  EXPECT_EQ(Tree().at("D3"), Variant("SEAT"));
  EXPECT_EQ(List().at("C3"), Variant(4.0));
}

TEST_F(AWorkbook, GrowsItsCouplesByThrees) {
  std::vector<Node> children;
  for (int i = 1; i <= 6; ++i) children.push_back({"BOLT", "BOLT." + std::to_string(i), At(i), {}});
  GivenWorkbook(Instance("CAR", 0, children));
  EXPECT_EQ(command.Couples().size(), 3U);

  Write();

  EXPECT_EQ(command.CoupleCount(), 7);
  EXPECT_EQ(command.Couples().size(), 11U);
  EXPECT_EQ(command.Couples()[6].InstanceName, "BOLT.6");
  EXPECT_EQ(int{command.Couples()[6].Row}, 7);
  EXPECT_EQ(command.Couples()[0].PartNumber, "CAR");
}

TEST_F(AWorkbook, EndsAtTheLargestRowThatACounterHolds) {
  GivenWorkbook(Instance("CAR", 0, {Instance("BOLT", 1)}));
  command.Row() = 32'766;
  ErrorState overflow;

  Attempt(overflow, [&] { Write(); });

  EXPECT_EQ(overflow.number, failure::kOverflow);
  EXPECT_THAT(paper->done, Contains("2!B32767=32767"));
}

TEST_F(AWorkbook, EndsAtTheLastColumnOfAWorksheet) {
  GivenWorkbook(Instance("CAR", 0, {Instance("BOLT", 1)}));
  Counter16 level = 256;
  ErrorState tooDeep;

  Attempt(tooDeep, [&] { command.WriteProductRows(root, level); });

  EXPECT_EQ(tooDeep.number, failure::kRefused);
  EXPECT_EQ(Tree().at("IV1"), Variant("CAR"));
}

TEST_F(AWorkbook, ThatCannotBeWrittenFailsAtTheCaller) {
  GivenWorkbook(Instance("CAR", 0, {Instance("BOLT", 1)}));
  paper->before = [](const std::string& what) {
    if (what == "2!C2=2") throw Failure(failure::kRefused, "protected");
  };
  ErrorState refused;

  Attempt(refused, [&] { Write(); });

  EXPECT_EQ(refused.description, "protected");
  EXPECT_EQ(List().count("D2"), 0U);
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

class StartingTheSpreadsheet : public AWorkbook {};

TEST_F(StartingTheSpreadsheet, MakesThreeWorksheetsWhereFewerAreUsual) {
  paper->sheetsInNewWorkbook = 1;

  EXPECT_TRUE(command.StartExcelApplication());

  EXPECT_THAT(paper->done, ElementsAre("SheetsInNewWorkbook=3", "Visible=False", "Add", "SheetsInNewWorkbook=1"));
  EXPECT_EQ(paper->open.at(0)->sheets.size(), 3U);
  EXPECT_FALSE(paper->Visible());
}

TEST_F(StartingTheSpreadsheet, LeavesALargerNumberOfWorksheets) {
  paper->sheetsInNewWorkbook = 5;

  EXPECT_TRUE(command.StartExcelApplication());

  EXPECT_THAT(paper->done, ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=5"));
  EXPECT_EQ(paper->open.at(0)->sheets.size(), 5U);
}

TEST_F(StartingTheSpreadsheet, LeavesThreeAsTheyAre) {
  EXPECT_TRUE(command.StartExcelApplication());

  EXPECT_THAT(paper->done, ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=3"));
  EXPECT_TRUE(command.Workbook());
}

TEST_F(StartingTheSpreadsheet, IsReportedWhereThereIsNone) {
  platform.Native().RegisterMaker("Excel.Application", []() -> Ref<AnyObject> {
    throw Failure(failure::kCannotCreateObject, "no spreadsheet here");
  });

  EXPECT_FALSE(command.StartExcelApplication());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(Box{"Failure in Cls_GetMatrix.StartExcelApplication: no spreadsheet here", 16, "Quintara"}));
}

TEST_F(StartingTheSpreadsheet, IsReportedAndLetGoWhereNoWorkbookCanBeMade) {
  paper->before = [](const std::string& what) {
    if (what == "Add") throw Failure(failure::kRefused, "no room");
  };

  EXPECT_FALSE(command.StartExcelApplication());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(Box{"Failure in Cls_GetMatrix.StartExcelApplication: no room", 16, "Quintara"}));
  EXPECT_FALSE(command.Excel());
  EXPECT_FALSE(command.Workbook());
}

TEST_F(StartingTheSpreadsheet, IsReportedWhereSomethingElseBearsTheName) {
  platform.Native().RegisterMaker("Excel.Application", [this] { return Ref<AnyObject>(host.Application()); });

  EXPECT_FALSE(command.StartExcelApplication());

  EXPECT_EQ(platform.Boxes().size(), 1U);
}

class GeneratingAWorkbook : public AWorkbook {
 protected:
  GeneratingAWorkbook() { GivenProduct(Instance("CAR", 0, {Instance("BOLT", 1), Instance("NUT", 2)})); }
  // The saved workbook, opened again.
  void Reopen() { Ref<excel::Application>(paper)->Workbooks()->Open(Target()); }
};

TEST_F(GeneratingAWorkbook, StartsTheApplicationAndEndsIt) {
  EXPECT_TRUE(Generate());

  EXPECT_EQ(started, 1);
  EXPECT_THAT(Steps(),
              ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=3", "SaveAs " + Target(), "Close", "Quit"));
  EXPECT_FALSE(command.Excel());
  EXPECT_FALSE(command.Workbook());
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(GeneratingAWorkbook, TakesTheApplicationThatRunsAndClosesAllItsWorkbooks) {
  command.StartExcelApplication();
  const Ref<excel::Application> application(paper);
  application->Workbooks()->Add();
  application->ActiveWorkbook()->Close(false);
  paper->open.insert(paper->open.begin(), std::make_shared<PaperBook>());

  EXPECT_TRUE(Generate());

  EXPECT_EQ(started, 1);
  EXPECT_THAT(paper->open, IsEmpty());
  EXPECT_EQ(std::count(paper->done.begin(), paper->done.end(), "Close"), 3);
}

TEST_F(GeneratingAWorkbook, SavesWhatItWrote) {
  Generate();
  Reopen();

  EXPECT_EQ(List(),
            ListRow(1, "CAR", 1, root->Name()) + ListRow(2, "BOLT", 2, "BOLT.1") + ListRow(3, "NUT", 2, "NUT.1"));
}

TEST_F(GeneratingAWorkbook, DeletesTheOldFileBeforeItSaves) {
  folder.Write("CAR Matrix.xls", "old");
  std::filesystem::permissions(Target(), std::filesystem::perms::owner_read);
  bool wasThere = true;
  paper->before = [&](const std::string& what) {
    if (what.starts_with("SaveAs")) wasThere = std::filesystem::exists(Target());
  };

  EXPECT_TRUE(Generate());

  EXPECT_FALSE(wasThere);
  EXPECT_THAT(folder.Read("CAR Matrix.xls"), StartsWith("paper"));
}

TEST_F(GeneratingAWorkbook, FailsAtTheCallerWhereItCannotBeSaved) {
  paper->before = [](const std::string& what) {
    if (what.starts_with("SaveAs")) throw Failure(failure::kDiskFull, "disk full");
  };
  ErrorState refused;

  Attempt(refused, [&] { Generate(); });

  EXPECT_EQ(refused.description, "disk full");
  EXPECT_THAT(Steps(), ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=3"));
}

TEST_F(GeneratingAWorkbook, FailsAtTheCallerWhereTheRowsRunOut) {
  folder.Write("CAR Matrix.xls", "old");
  command.Row() = 32'766;
  ErrorState overflow;

  Attempt(overflow, [&] { Generate(); });

  EXPECT_EQ(overflow.number, failure::kOverflow);
  EXPECT_THAT(Steps(), ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=3"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_EQ(folder.Read("CAR Matrix.xls"), "old");
}

TEST_F(GeneratingAWorkbook, EndsWithoutAWordMoreWhereNoApplicationStarts) {
  folder.Write("CAR Matrix.xls", "old");
  TheGate().FailCall(1);

  EXPECT_FALSE(Generate());

  EXPECT_EQ(platform.Boxes().size(), 1U);
  EXPECT_EQ(folder.Read("CAR Matrix.xls"), "old");
}

TEST_F(GeneratingAWorkbook, GivesEachRepeatedPairAnotherNameAsText) {
  GivenProduct(Instance("CAR", 0, {Instance("AXLE", 1, {Instance("BOLT", 2)}), Instance("BOLT", 3)}));

  EXPECT_TRUE(Generate());

  Reopen();
  EXPECT_EQ(List().at("D3"), Variant("BOLT.1"));
  EXPECT_THAT(List().at("D4").ToText(), StartsWith("BOLT.1"));
  EXPECT_NE(List().at("D4"), Variant("BOLT.1"));
  EXPECT_EQ((paper->open[0]->sheets[1].formats), (std::map<std::pair<int, int>, std::string>{{{4, 4}, "@"}}));
}

TEST_F(GeneratingAWorkbook, EndsWithNothingClosedWhereTheRenamingFails) {
  GivenProduct(Instance("CAR", 0, {Instance("AXLE", 1, {Instance("BOLT", 2)}), Instance("BOLT", 3)}));
  folder.Write("CAR Matrix.xls", "old");
  paper->before = [](const std::string& what) {
    if (what == "2!D4 format @") throw Failure(failure::kRefused, "protected");
  };

  EXPECT_FALSE(Generate());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(Box{"Unexpected error in function Cls_HashTable.RenameDoublesWithHashTable : protected", 16,
                              "QNTR"}));
  EXPECT_THAT(Steps(), ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=3"));
  EXPECT_EQ(folder.Read("CAR Matrix.xls"), "old");
}

TEST_F(GeneratingAWorkbook, GivesUpInSilenceWhereTheVaultDoesNotKnowTheProduct) {
  folder.Write("CAR Matrix.xls", "old");
  host.SetForm(Child(1), ComponentForm::kUnloaded);

  EXPECT_FALSE(Generate());

  EXPECT_THAT(Steps(), ElementsAre("Visible=False", "Add", "SheetsInNewWorkbook=3", "Close", "Quit"));
  EXPECT_FALSE(command.Excel());
  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_EQ(folder.Read("CAR Matrix.xls"), "old");
}

class TheOlderRenaming : public AWorkbook {
 protected:
  TheOlderRenaming() { command.StartExcelApplication(); }

  void GivenCouples(std::vector<PN_IN_Couple> couples) {
    command.CoupleCount() = static_cast<std::int32_t>(couples.size());
    command.Couples() = std::move(couples);
    command.Couples().resize(command.Couples().size() + 2);
  }
  // The rows whose names were written since the last call.
  std::set<int> RenamedRows() {
    std::set<int> rows;
    for (const auto& [cell, value] : paper->open.at(0)->sheets.at(1).cells) rows.insert(cell.first);
    paper->open[0]->sheets[1] = {};
    return rows;
  }
};

TEST_F(TheOlderRenaming, RenamesEachRepetitionOfAPairAndCountsThem) {
  GivenCouples({{"BOLT", "B.1", 1}, {"BOLT", "B.1", 2}, {"NUT", "B.1", 3}, {"BOLT", "B.1", 4}});

  EXPECT_EQ(command.RenameDoublesInSheet(), 2);

  EXPECT_THAT(paper->done, Contains("2!D2 format @"));
  EXPECT_THAT(List().at("D2").ToText(), StartsWith("B.1"));
  EXPECT_GT(List().at("D4").ToText().size(), 3U);
  EXPECT_EQ(command.Couples()[1].InstanceName, "B.1");
  EXPECT_THAT(RenamedRows(), ElementsAre(2, 4));
}

TEST_F(TheOlderRenaming, LeavesAListWithoutRepetitions) {
  GivenCouples({});
  EXPECT_EQ(command.RenameDoublesInSheet(), 0);
  GivenCouples({{"BOLT", "B.1", 1}});
  EXPECT_EQ(command.RenameDoublesInSheet(), 0);

  EXPECT_THAT(RenamedRows(), IsEmpty());
}

TEST_F(TheOlderRenaming, ChoosesTheRowsThatTheHashTableChooses) {
  std::mt19937 random(5);
  for (int round = 0; round < 50; ++round) {
    std::vector<PN_IN_Couple> couples;
    const int count = static_cast<int>(random() % 40);
    for (int row = 1; row <= count; ++row) {
      couples.push_back({"P" + std::to_string(random() % 3), "NAME." + std::to_string(random() % 6), row});
    }
    GivenCouples(couples);

    const auto renamed = command.RenameDoublesInSheet();
    const auto rows = RenamedRows();
    ASSERT_TRUE(Cls_HashTable().RenameDoublesWithHashTable(couples, count, command.Excel()));

    EXPECT_EQ(rows, RenamedRows()) << round;
    EXPECT_EQ(renamed, static_cast<std::int32_t>(rows.size())) << round;
  }
}

TEST(ColumnNames, AreLettersAndThenPairsOfThem) {
  const auto names = ColumnNames();

  ASSERT_EQ(names.size(), 257U);
  EXPECT_EQ(names[0], "A");
  EXPECT_EQ(names[14], "O");
  EXPECT_EQ(names[25], "Z");
  EXPECT_EQ(names[26], "AA");
  EXPECT_EQ(names[27], "AB");
  EXPECT_EQ(names[51], "AZ");
  EXPECT_EQ(names[52], "BA");
  EXPECT_EQ(names[255], "IV");
  EXPECT_EQ(names[256], "IW");
}

TEST(ColumnNames, FollowEachOtherWithoutAGap) {
  const auto names = ColumnNames();

  std::string next = "A";
  for (const auto& name : names) {
    EXPECT_EQ(name, next);
    if (++next.back() <= 'Z') continue;
    next.back() = 'A';
    if (next.size() == 1) {
      next.insert(next.begin(), 'A');
    } else {
      ++next.front();
    }
  }
}

}  // namespace
}  // namespace quintara::test
