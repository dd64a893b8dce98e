#include "hosts/office/spreadsheet_host.h"
#include "positioning/matrix_sheets.h"
#include "positioning/wip_bench.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr PositionMatrix kTurned{0.1, 1.0 / 3, 0.3, -0.7, 0.4, 1e-9, 0.5, -0.25, 3.3, 0.3, 1e6, -1.5};

// On workbooks that a real spreadsheet application has written.
class RealWorkbook : public WipTest {
 protected:
  RealWorkbook() {
    platform.Native().RegisterMaker(excel::kProgramName, [this] { return Ref<AnyObject>(Start()); });
  }

  Ref<excel::Application> Start() { return StartSpreadsheet({gate, files}); }

  // Written once for all tests: each application takes its time to start.
  void GivenRealWorkbook() {
    static const auto bytes = BytesOfWorkbook();
    Remember("DocExcel", AddMatrix(".xls", bytes));
  }

  static Node Tree() {
    const Node group{"GROUP",
                     "GROUP.1",
                     kTurned,
                     {{"BOLT", "Bolt é.1", kTurned, {}}, {"BOLT", "007", At(3), {}}, {"PLATE", "PLATE.1", At(4), {}}}};
    return {"PLANT", "PLANT", kTurned, {{"BOLT", "BOLT.1", At(1), {}}, group}};
  }
  static PositionMatrix InGroup(const PositionMatrix& position) {
    return WrittenOut(WrittenOut(position, kTurned), kTurned);
  }

 private:
  std::string BytesOfWorkbook() {
    const auto application = Start();
    const auto book = application->Workbooks()->Add();
    PutMatrix(Tree(), [&](int sheet, int row, int column, const Variant& value) {
      const auto cell = book->Worksheets()->Item(sheet)->Cells(row, column);
      if (value.IsText()) cell->SetNumberFormat("@");
      cell->SetValue(value);
    });
    book->SaveAs(folder.Path("source/real.xls"));
    book->Close(false);
    application->Quit();
    return folder.Read("source/real.xls");
  }
};

TEST_F(RealWorkbook, PutsTheComponentsBackToTheirPlaces) {
  GivenWip({"PLATE", "BOLT", "BOLT"});
  Child(2)->SetName("007");
  Child(3)->SetName("Bolt é.1");
  GivenRealWorkbook();

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root),
              ElementsAre(HasBitsOf(InGroup(At(4))), HasBitsOf(InGroup(At(3))), HasBitsOf(InGroup(kTurned))));
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RealWorkbook, MakesAComponentForEachInstance) {
  GivenWip({"BOLT", "PLATE"});
  GivenRealWorkbook();
  Process().gAllInstancesRequested = true;

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("BOLT.1", "PLATE.1", "Bolt é.1", "007"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(HasBitsOf(WrittenOut(At(1), kTurned)), HasBitsOf(InGroup(At(4))),
                                             HasBitsOf(InGroup(kTurned)), HasBitsOf(InGroup(At(3)))));
}

TEST_F(RealWorkbook, FailsAtRowZeroForAnUnknownPart) {
  GivenWip({"PLATE", "STRANGER"});
  GivenRealWorkbook();

  const auto boxes = BoxesOfRetrieve();

  ASSERT_THAT(boxes, SizeIs(2));
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_RetrieveMatrix.ProcessExcelFile] ["));
  EXPECT_THAT(PositionsOf(root), ElementsAre(HasBitsOf(InGroup(At(4))), kIdentityPosition));
}

TEST_F(RealWorkbook, ThatIsDamagedIsReported) {
  GivenWip({"PLATE"});
  Remember("DocExcel", AddMatrix(".xls", "no workbook at all"));

  const auto boxes = BoxesOfPlaceAll();

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_EQ(boxes[0].style, kCritical);
  EXPECT_THAT(PositionsOf(root), ElementsAre(kIdentityPosition));
}

}  // namespace
}  // namespace quintara::test
