#include <algorithm>
#include <string>
#include <vector>

#include "matrix/excel_merge_suite.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::StartsWith;

struct OnPaper {
  static Ref<excel::Application> Start() { return Ref<excel::Application>(std::make_shared<PaperSpreadsheet>()); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(OnPaper, ExcelMerge, OnPaper);

// Beside the workbook that the first pass wrote.
class MergingIntoANewWorkbook : public ExcelMergeBench {
 protected:
  MergingIntoANewWorkbook() {
    Use(Ref<excel::Application>(paper));
    first = paper->open.at(0);
  }

  void MergeBoth() {
    GivenFrame();
    GivenAxle();
    paper->done.clear();
    EXPECT_TRUE(Merge());
  }

  // What was done from the first step of this name on, as far as one of the other name, which is left out.
  std::vector<std::string> Done(const std::string& from, const std::string& until) const {
    const auto begin = std::ranges::find(paper->done, from);
    return {begin, std::find(begin, paper->done.end(), until)};
  }

  std::shared_ptr<PaperSpreadsheet> paper = std::make_shared<PaperSpreadsheet>();
  std::shared_ptr<PaperBook> first;
};

// The twelve cells of a position in their order.
void AddPosition(std::vector<std::string>& steps, int row, const PositionMatrix& position) {
  for (std::size_t i = 0; i < position.size(); ++i) {
    const char column = static_cast<char>('O' + i);
    steps.push_back("1!" + std::string(1, column) + std::to_string(row) + "=" + Variant(position[i]).ToText());
  }
}

TEST_F(MergingIntoANewWorkbook, LeavesTheOneOfTheFirstPassOpenAndUntouched) {
  MergeBoth();

  ASSERT_EQ(paper->open.size(), 2U);
  EXPECT_EQ(paper->open[0], first);
  EXPECT_THAT(first->sheets[0].cells, IsEmpty());
  EXPECT_THAT(first->sheets[1].cells, IsEmpty());
  EXPECT_EQ(Tree(), MergedTree());
}

TEST_F(MergingIntoANewWorkbook, WritesTheRootCellByCell) {
  MergeBoth();

  std::vector<std::string> expected{"Add", "1!A1=CAR", "2!A1=CAR", "2!B1=1", "2!C1=1", "2!D1=" + root->Name()};
  AddPosition(expected, 1, PositionMatrix{});
  for (const auto* diagonal : {"1!O1=1", "1!S1=1", "1!W1=1"}) expected.emplace_back(diagonal);
  EXPECT_EQ(Done("Add", "Open " + WorkPath("FRAME Matrix.xml")), expected);
}

TEST_F(MergingIntoANewWorkbook, TakesASubAssemblyInThisOrder) {
  MergeBoth();

  std::vector<std::string> expected{"Open " + WorkPath("FRAME Matrix.xml"), "1!A1:N3 to 1!B2", "1!O2:AB3 to 1!O2"};
  AddPosition(expected, 2, At(100));
  for (const auto* cell : {"2!A1:A3 to 2!A2", "2!B2=2", "2!B3=3", "2!B4=4", "2!C2=2", "2!C3=3", "2!C4=3", "2!D2=F own",
                           "2!D3=BOLT.1", "2!D4=BOLT.2", "Close"}) {
    expected.emplace_back(cell);
  }
  EXPECT_EQ(Done(expected.front(), "1!B5=NUT"), expected);
}

TEST_F(MergingIntoANewWorkbook, WritesAPartCellByCell) {
  MergeBoth();

  std::vector<std::string> expected{"1!B5=NUT"};
  AddPosition(expected, 5, At(200));
  for (const auto* cell : {"2!A5=NUT", "2!B5=5", "2!C5=2", "2!D5=NUT.7"}) expected.emplace_back(cell);
  EXPECT_EQ(Done("1!B5=NUT", "Open " + WorkPath("AXLE Matrix.xml")), expected);
}

TEST_F(MergingIntoANewWorkbook, MakesItOfThreeWorksheetsWhereFewerAreUsual) {
  paper->sheetsInNewWorkbook = 2;

  MergeBoth();

  EXPECT_EQ(Done("SheetsInNewWorkbook=3", "1!A1=CAR"),
            (std::vector<std::string>{"SheetsInNewWorkbook=3", "Add", "SheetsInNewWorkbook=2"}));
  EXPECT_EQ(paper->open.at(1)->sheets.size(), 3U);
}

// The last row can be written, and not be counted on from.
TEST_F(MergingIntoANewWorkbook, FailsWhereAllRowsTogetherAreMoreThanACounterHolds) {
  GivenWorkbook("FRAME", FrameTree() + Page{{"B32765", "BOLT"}}, FrameList());

  EXPECT_EQ(FailureOfMerge().number, failure::kOverflow);

  EXPECT_THAT(paper->done, IsSupersetOf({"1!B32767=NUT", "2!B32767=32767"}));
}

class GeneratingAMergedWorkbook : public ExcelMergeBench {
 protected:
  GeneratingAMergedWorkbook() {
    Use(Ref<excel::Application>(paper));
    GivenFrame();
    GivenAxle();
    OpenCarInPart();
    paper->done.clear();
  }

  bool Generate() { return command.GenerateWorkbook(root, Target()); }
  void Reopen() const { app->Workbooks()->Open(Target()); }
  // What was done beside writing and copying cells, from the end of the first pass on.
  std::vector<std::string> Steps() const {
    std::vector<std::string> steps;
    std::ranges::copy_if(paper->done, std::back_inserter(steps), [](const auto& what) { return what[1] != '!'; });
    return steps;
  }

  bool Did(const std::string& what) const { return std::ranges::find(paper->done, what) != paper->done.end(); }

  std::shared_ptr<PaperSpreadsheet> paper = std::make_shared<PaperSpreadsheet>();
};

TEST_F(GeneratingAMergedWorkbook, SavesTheMergedOneAndClosesBoth) {
  EXPECT_TRUE(Generate());

  EXPECT_THAT(Steps(),
              ElementsAre("Add", "Open " + WorkPath("FRAME Matrix.xml"), "Close", "Open " + WorkPath("AXLE Matrix.xml"),
                          "Close", "SaveAs " + Target(), "Close", "Close", "Quit"));
  Reopen();
  EXPECT_EQ(List().at("D3"), Variant("BOLT.1"));
  EXPECT_EQ(Tree().at("C7"), Variant("NUT"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

// The pairs are those of the first pass, where AXLE's NUT.7 stood in row 5; in the merged workbook that row is
// the NUT.7 of CAR itself.
TEST_F(GeneratingAMergedWorkbook, RenamesTheRowsOfTheFirstPass) {
  OpenCar([](const std::string& path) {
    return path.starts_with("FRAME.1\\") ? ComponentForm::kUnloaded : ComponentForm::kDesign;
  });
  root->Products()->Item(3)->Products()->Item(1)->SetName("NUT.7");

  EXPECT_TRUE(Generate());

  EXPECT_EQ(command.CoupleCount(), 5);
  Reopen();
  EXPECT_THAT(List().at("D5").ToText(), StartsWith("NUT.7"));
  EXPECT_NE(List().at("D5"), Variant("NUT.7"));
  EXPECT_EQ(List().at("A5"), Variant("NUT"));
  EXPECT_EQ(List().at("D7"), Variant("NUT.1"));
}

TEST_F(GeneratingAMergedWorkbook, IsGivenUpWithAMessageWhereAChildIsUnloaded) {
  OpenCarWithout("NUT.7");

  EXPECT_FALSE(Generate());

  EXPECT_THAT(Steps(), ElementsAre("Close", "Quit"));
  EXPECT_FALSE(command.Excel());
  EXPECT_THAT(platform.Boxes(),
              ElementsAre(ToldText("QD.GETMATRIX.CANT_BE_MERGED_ONE_PRODUCT_UNLOADED", kCriticalModal)));
}

// One that is there when the children are checked, and not any more when it is to be merged.
TEST_F(GeneratingAMergedWorkbook, ShowsAMergeThatFailedAndLeavesTheOldFile) {
  WriteWork("CAR Matrix.xls", "old");
  const auto frame = MatricesOf("FRAME").front();
  paper->before = [&](const std::string& what) {
    if (what != "Add") return;
    frame->Record()->ValuateFromString("CN_DESCRIPTION", "FRAME notes");
    frame->Update(Behavior());
  };

  EXPECT_FALSE(Generate());

  EXPECT_THAT(Steps(), ElementsAre("Add", "Close", "Quit"));
  EXPECT_THAT(platform.Boxes(), ElementsAre(ToldText("QD.GETMATRIX.ERROR_MERGING_MATRIX", kCriticalModal)));
  EXPECT_EQ(ReadWork("CAR Matrix.xls"), "old");
}

// What goes wrong in the vault, the CAD host or among the files at any one of their calls.
TEST_F(GeneratingAMergedWorkbook, EitherIsSavedWholeOrFailsWhicheverCallFails) {
  int failed = 0;
  for (bool hasFailed = true; hasFailed;) {
    GetMatrixInternals again;
    again.Excel() = app;
    again.Workbook() = app->Workbooks()->Add();
    paper->done.clear();
    gate->FailCall(failed + 1);
    ErrorState failure;
    bool result = false;
    const auto boxes = platform.Boxes().size();

    Attempt(failure, [&] { result = again.GenerateWorkbook(root, Target()); });

    hasFailed = gate->HasFailed();
    gate->Reset();
    const bool hasQuit = Did("Quit");
    EXPECT_EQ(result, Did("SaveAs " + Target())) << failed;
    EXPECT_TRUE(hasQuit || failure || platform.Boxes().size() > boxes) << failed << " is passed over";
    failed += hasFailed ? 1 : 0;
    paper->open.clear();
  }
  EXPECT_GT(failed, 100);
}

}  // namespace
}  // namespace quintara::test
