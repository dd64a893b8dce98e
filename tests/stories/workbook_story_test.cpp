#include <algorithm>
#include <random>
#include <set>

#include "geometry/occ_geometry.h"
#include "matrix/excel_merge_suite.h"
#include "matrix/workbook_bench.h"
#include "stories/live_spreadsheet.h"

namespace quintara::test {
namespace {

using ::testing::IsEmpty;
using ::testing::StartsWith;

struct OnLibreOffice {
  static Ref<excel::Application> Start() { return SharedLive(); }
};
INSTANTIATE_TYPED_TEST_SUITE_P(OnLibreOffice, ExcelMerge, OnLibreOffice);

// A workbook file that another application than its maker opens.
class OpenedAfresh {
 public:
  explicit OpenedAfresh(const std::string& path) : workbook_(SharedLive()->Workbooks()->Open(path)) {}
  ~OpenedAfresh() {
    ErrorState ignored;
    Attempt(ignored, [this] { workbook_->Close(false); });
  }
  OpenedAfresh(const OpenedAfresh&) = delete;
  OpenedAfresh& operator=(const OpenedAfresh&) = delete;

  Page Sheet(int index, int rows) const { return PageOf(workbook_->Worksheets()->Item(index), rows); }
  Ref<excel::Range> Cell(int sheet, int row, int column) const {
    return workbook_->Worksheets()->Item(sheet)->Cells(row, column);
  }

 private:
  Ref<excel::Workbook> workbook_;
};

// The rows of those pairs that stood in a row before.
std::vector<int> RepetitionsIn(GetMatrixInternals& command) {
  std::set<std::pair<std::string, std::string>> met;
  std::vector<int> rows;
  for (int i = 0; i < command.CoupleCount(); ++i) {
    const auto& couple = command.Couples()[static_cast<std::size_t>(i)];
    if (!met.emplace(couple.PartNumber, couple.InstanceName).second) rows.push_back(couple.Row);
  }
  return rows;
}

// A workbook made by a LibreOffice and opened by another one.
class AWorkbookFile : public testing::Test, protected WorkbookBench {
 protected:
  // Against the same product written to a workbook in memory, which has every cell that it should have.
  void ExpectAllReadBack() {
    GetMatrixInternals onPaper;
    ASSERT_TRUE(onPaper.StartExcelApplication());
    Counter16 level = 1;
    const auto unresolved = onPaper.WriteProductRows(root, level);
    const int rows = onPaper.Row() + 1;
    ASSERT_EQ(unresolved, 0);

    ASSERT_TRUE(GenerateLive());

    const OpenedAfresh written(Target());
    EXPECT_EQ(written.Sheet(1, rows), Tree());
    auto list = List();
    for (const int row : RepetitionsIn(onPaper)) {
      auto& name = list.at("D" + std::to_string(row));
      const auto renamed = written.Cell(2, row, 4)->Value();
      EXPECT_TRUE(renamed.IsText() && renamed != name && renamed.ToText().starts_with(name.ToText())) << row;
      name = renamed;
    }
    EXPECT_EQ(written.Sheet(2, rows), list);
    EXPECT_THAT(written.Sheet(3, rows), IsEmpty());
  }
  bool GenerateLive() {
    platform.Native().RegisterMaker(excel::kProgramName, [] { return Ref<AnyObject>(SharedWriter()); });
    return Generate();
  }
};

TEST_F(AWorkbookFile, HoldsNamesOfEveryKindAsTheyAre) {
  std::vector<Node> children;
  for (const auto* name : {"007", "1e5", "=1+1", " leading", "Größe", "\"quoted\"", "'apostrophe", "TRUE", "1/2", "-3",
                           "日本", "a\tb", "12:30"}) {
    children.push_back({name, std::string(name) + ".1", At(1), {}});
  }
  GivenProduct(Instance("CAR", 0, children));

  ExpectAllReadBack();
}

TEST_F(AWorkbookFile, HoldsPositionsToTheLastBit) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> numbers(-1e6, 1e6);
  std::vector<Node> children;
  for (int i = 1; i <= 50; ++i) {
    PositionMatrix position{};
    std::ranges::generate(position, [&] { return numbers(random); });
    children.push_back({"P" + std::to_string(i), "P." + std::to_string(i), position, {}});
  }
  children.push_back({"SMALL", "SMALL.1", At(5e-324, 1e-300, 1.7976931348623157e308), {}});
  GivenProduct(Instance("CAR", 0, children));

  ExpectAllReadBack();
}

TEST_F(AWorkbookFile, HoldsThirtyLevels) {
  Node tree = Instance("P30", 30);
  for (int level = 29; level >= 1; --level) tree = Instance("P" + std::to_string(level), level, {tree});
  GivenProduct(tree);

  ExpectAllReadBack();
}

TEST_F(AWorkbookFile, HoldsARealAssembly) {
  const auto assembly = MakeOccGeometry()->ReadAssembly(QUINTARA_TEST_DATA "/as1-oc-214.stp", {});
  document = host.Build(assembly->Structure());
  root = document->Product();

  ExpectAllReadBack();
}

TEST_F(AWorkbookFile, HasRenamedNamesAsTexts) {
  const Node twelve{"BOLT", "12", At(1), {}};
  GivenProduct(Instance("CAR", 0, {{"AXLE", "AXLE.1", At(0), {twelve}}, twelve}));

  ASSERT_TRUE(GenerateLive());

  const OpenedAfresh written(Target());
  const auto renamed = written.Cell(2, 4, 4);
  EXPECT_TRUE(renamed->Value().IsText());
  EXPECT_THAT(renamed->Value().ToText(), StartsWith("12"));
  EXPECT_NE(renamed->Value(), Variant("12"));
  EXPECT_EQ(renamed->NumberFormat(), "@");
  EXPECT_EQ(written.Cell(2, 3, 4)->Value(), Variant("12"));
}

TEST_F(AWorkbookFile, IsNotWrittenByAnApplicationThatHasEnded) {
  GivenProduct(Instance("CAR", 0));
  folder.Write("CAR Matrix.xls", "old");
  command.Excel() = StartLive();
  command.Workbook() = command.Excel()->Workbooks()->Add();
  command.Excel()->Quit();
  ErrorState gone;

  Attempt(gone, [&] { Generate(); });

  EXPECT_EQ(gone.number, failure::kServerGone);
  EXPECT_EQ(folder.Read("CAR Matrix.xls"), "old");
}

class AMergedWorkbookFile : public ExcelMergeBench {};

TEST_F(AMergedWorkbookFile, HoldsTheRowsOfAllSubAssemblies) {
  Use(StartLive());
  GivenFrame();
  GivenAxle();
  OpenCarInPart();

  ASSERT_TRUE(command.GenerateWorkbook(root, Target()));

  const OpenedAfresh written(Target());
  EXPECT_EQ(written.Sheet(1, 12), MergedTree());
  EXPECT_EQ(written.Sheet(2, 12), MergedList(root->Name()));
}

}  // namespace
}  // namespace quintara::test
