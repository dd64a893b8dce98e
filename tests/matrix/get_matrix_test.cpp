#include <string>
#include <vector>

#include "access/host_mocks.h"
#include "access/session/process.h"
#include "base/attempt.h"
#include "matrix/excel_mocks.h"
#include "matrix/get_matrix_bench.h"
#include "matrix/get_matrix_internals.h"

namespace quintara::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::SizeIs;

TEST_F(GetMatrix, OfAProductThatHasNoneIsAddedLinkedAndCheckedIn) {
  AnswerYes();

  Run();

  EXPECT_THAT(platform.Boxes(), ElementsAre(ToldText("QD.UTILS.QUESTION_RECORD_POSITIONS", kModalQuestion, {"CAR"})));
  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  const auto matrix = MatricesOf("CAR")[0];
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
  EXPECT_EQ(TextOf(matrix, "CN_DESCRIPTION"), "CAR Matrix");
  EXPECT_EQ(TextOf(matrix, "NM_CN_PART_NUMBER"), "CAR Matrix");
  EXPECT_EQ(TextOf(matrix, "FILE_NAME"), "CAR Matrix.xml");
  EXPECT_EQ(TextOf(matrix, "FILE_TYPE"), std::to_string(vault->FileTypeId("xml")));
  ExpectStored(matrix);
  ExpectOptionsAsBefore();
}

TEST_F(GetMatrix, OfAProductThatHasNoneGoesThroughTheseSteps) {
  AnswerYes();

  Run();

  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Writing() + Adding() + RunningOn("CHECKIN")));
}

TEST_F(GetMatrix, IsReleasedWithItsProduct) {
  AnswerYes();

  Run("Release");

  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Writing() + Adding() + RunningOn("APPROVE")));
  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_EQ(StateOf(MatricesOf("CAR")[0]), veldora::state::kReleased);
}

TEST_F(GetMatrix, IsWrittenUnaskedInAGlobalRefresh) {
  RunUnasked();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Writing() + Adding() + RunningOn("CHECKIN")));
  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_EQ(StateOf(MatricesOf("CAR")[0]), veldora::state::kCheckedIn);
}

TEST_F(GetMatrix, IsNotWrittenAgainstTheUsersWill) {
  for (const int given : {answer::kNo, answer::kOk, answer::kCancel}) {
    platform.answers = {given};

    Run();

    EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking()));
    ExpectNothingDone();
  }
}

TEST_F(GetMatrix, IsAnXMLFileWhateverTypeWasSetBefore) {
  Process().gMatrixType = MatrixType::Excel;

  RunUnasked();

  EXPECT_EQ(Process().gMatrixType, MatrixType::XML);
  EXPECT_TRUE(WorkHas("CAR Matrix.xml"));
  EXPECT_FALSE(WorkHas("CAR Matrix.xls"));
}

TEST_F(GetMatrix, IsAddedWhereTheProductHasOneOfTheOtherForm) {
  GivenMatrix("CAR", "workbook", "Microsoft Excel");

  RunUnasked();

  EXPECT_THAT(MatricesOf("CAR"), SizeIs(2));
}

TEST_F(GetMatrix, BelongsToTheNewestRevisionOfTheProduct) {
  Bring(Of("CAR"), veldora::state::kReleased);
  const auto next = Util()->NewRelease(Of("CAR"), nullptr, false);

  RunUnasked();

  EXPECT_THAT(MatricesOf("CAR"), IsEmpty());
  objects["CAR"] = next;
  EXPECT_THAT(MatricesOf("CAR"), SizeIs(1));
}

TEST_F(GetMatrix, IsLookedForAtTheNewestRevisionOfTheProduct) {
  const auto released = Of("CAR");
  Bring(released, veldora::state::kReleased);
  objects["CAR"] = Util()->NewRelease(released, nullptr, false);
  const auto matrix = GivenMatrix("CAR", "<old/>");

  Run("CheckIn", released, true);

  EXPECT_THAT(MatricesOf("CAR"), SizeIs(1));
  ExpectStored(matrix);
}

TEST_F(GetMatrix, IsFoundAgainByTheNextRun) {
  RunUnasked();
  const auto first = MatricesOf("CAR")[0];
  const auto moved = At(77);
  root->Products()->Item(2)->Position()->SetComponents(moved);

  RunUnasked();

  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_EQ(MatricesOf("CAR")[0]->ObjectId(), first->ObjectId());
  EXPECT_EQ(StateOf(first), veldora::state::kCheckedIn);
  EXPECT_THAT(ElementsOf(vault->FileOf(Again(first))), Contains("PART CAR\\NUT.7 NUT NUT.7 77"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(GetMatrix, IsMergedWhereTheTreeIsNotLoadedInFull) {
  GivenMatrices();
  OpenCarInPart();

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  ExpectStored(MatricesOf("CAR")[0]);
  EXPECT_THAT(ElementsOf(ReadWork("CAR Matrix.xml")), Contains("PART CAR\\F own\\BOLT.1 BOLT BOLT.1 1"));
}

TEST_F(GetMatrix, IsMergedAfterEachChildWasLookedUp) {
  GivenMatrices();
  OpenCarInPart();

  RunUnasked();

  const std::vector<std::string> frame = {"HIXEngine.DocumentInfo(work/FRAME.ZVAProduct)"};
  const std::vector<std::string> nut = {"HIXEngine.DocumentInfo(work/NUT.stp)"};
  const std::vector<std::string> axle = {"HIXEngine.DocumentInfo(work/AXLE.ZVAProduct)"};
  const auto steps = StepsOfTheRun();
  EXPECT_THAT(CallsOf(steps, "HIXEngine"), ElementsAreArray(Steps{"HIXEngine.DocumentInfo(work/CAR.ZVAProduct)"} +
                                                            frame + nut + axle + frame + nut + axle));
  EXPECT_THAT(CallsOf(steps, "VdQuery.RunLinkQuery"), SizeIs(1 + 2)) << "of CAR, FRAME and AXLE";
  EXPECT_THAT(CallsOf(steps, "VdQuery.RunWithBehavior"), SizeIs(2));
}

// A root that has no part number, but no child either that could stand in the way of a merge.
TEST_F(GetMatrix, IsMergedOfARootAloneThatCannotBeWritten) {
  while (root->Products()->Count() > 0) root->Products()->Remove(1);
  gate->FailOperation("Product.PartNumber");

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_THAT(CallsOfTheRun("HIXEngine.DocumentInfo"), SizeIs(1));
  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_THAT(ElementsOf(vault->FileOf(MatricesOf("CAR")[0])), ElementsAre("PART CAR  CAR 0"));
}

// Whatever was the reason that the first way gave no file, the second one is tried.
TEST_F(GetMatrix, IsSoughtInTheSubAssembliesAlsoWhereOnlyTheDiskFailed) {
  gate->FailOperation("Files.Write", 1, Failure(failure::kDiskFull));

  RunUnasked();

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("CreateXMLFile", "Disk full"),
                          ToldText("QD.GETMATRIX.ONE_CHILD_MATRIX_CANT_BE_RETRIEVE", kCriticalModal)));
  ExpectNothingDone();
}

class UnmergeableMatrix : public GetMatrix {
 protected:
  void ExpectToldAndNothingDone(const std::string& key) {
    EXPECT_THAT(platform.Boxes(), ElementsAre(ToldText(key, kCriticalModal)));
    ExpectNothingDone();
  }
};

TEST_F(UnmergeableMatrix, IsToldForADirectChildThatIsNotLoaded) {
  GivenMatrices();
  OpenCarWithout("NUT.7");

  RunUnasked();

  ExpectToldAndNothingDone("QD.GETMATRIX.CANT_BE_MERGED_ONE_PRODUCT_UNLOADED");
  EXPECT_THAT(StepsOfTheRun(),
              ElementsAreArray(Looking() + Steps(4, "Position.GetComponents") + Resolving("CAR.ZVAProduct", "2:18") +
                               Resolving("FRAME.ZVAProduct", "2:16") + AskingForAMatrix()));
}

TEST_F(UnmergeableMatrix, IsToldForASubAssemblyWithoutMatrix) {
  GivenMatrix("FRAME", FrameMatrix());
  OpenCarInPart();

  RunUnasked();

  ExpectToldAndNothingDone("QD.GETMATRIX.ONE_CHILD_MATRIX_CANT_BE_RETRIEVE");
  EXPECT_THAT(
      StepsOfTheRun(),
      ElementsAreArray(Looking() + Steps(2, "Position.GetComponents") + Resolving("CAR.ZVAProduct", "2:18") +
                       Resolving("FRAME.ZVAProduct", "2:16") + AskingForAMatrix() + Resolving("NUT.stp", "3:15") +
                       Resolving("AXLE.ZVAProduct", "2:17") + AskingForAMatrix()));
}

TEST_F(UnmergeableMatrix, IsToldForASubAssemblyWithAWorkbookOnly) {
  GivenMatrix("FRAME", FrameMatrix());
  GivenMatrix("AXLE", AxleMatrix(), "Microsoft Excel");
  OpenCarInPart();

  RunUnasked();

  ExpectToldAndNothingDone("QD.GETMATRIX.ONE_CHILD_MATRIX_CANT_BE_RETRIEVE");
}

TEST_F(UnmergeableMatrix, IsToldForTheFirstChildThatStandsInTheWay) {
  OpenCar([](const std::string& path) {
    return path.empty() || path.starts_with("FRAME.1") ? ComponentForm::kDesign : ComponentForm::kUnloaded;
  });

  RunUnasked();

  ExpectToldAndNothingDone("QD.GETMATRIX.ONE_CHILD_MATRIX_CANT_BE_RETRIEVE");
  EXPECT_THAT(CallsOf(StepsOfTheRun(), "HIXEngine"), ElementsAre("HIXEngine.DocumentInfo(work/CAR.ZVAProduct)",
                                                                 "HIXEngine.DocumentInfo(work/FRAME.ZVAProduct)"));
}

TEST_F(UnmergeableMatrix, EndsInSilenceForAProductThatTheVaultDoesNotKnow) {
  Node nameless{"CAR", "CAR", At(0), {{"", "P.1", At(0), {}}}};
  host.Build(StructureOf(nameless));

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  ExpectNothingDone();
}

// The vault's own product, with children that it doesn't know.
class CrowdedProduct : public UnmergeableMatrix {
 protected:
  bool Check(std::size_t children) {
    const auto crowd = Crowd(children);
    const auto product = MakeRef<NiceMock<MockProduct>>();
    ON_CALL(*product, Reference).WillByDefault([&] { return root->Reference(); });
    ON_CALL(*product, Products).WillByDefault([&] { return crowd->Products(); });
    return GetMatrixInternals().CheckChildrenForMerge(product);
  }
};

TEST_F(CrowdedProduct, MayHaveAsManyChildrenAsTheCounterHolds) {
  EXPECT_FALSE(Check(32'767));

  ExpectToldAndNothingDone("QD.GETMATRIX.CANT_BE_MERGED_ONE_PRODUCT_UNLOADED");
}

TEST_F(CrowdedProduct, OverflowsWithOneChildMore) {
  ErrorState state;

  Attempt(state, [&] { Check(32'768); });

  EXPECT_EQ(state.number, failure::kOverflow);
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(UnmergeableMatrix, LeavesTheMatrixDocumentCheckedOut) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  OpenCarInPart();

  RunUnasked();

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(ToldText("QD.GETMATRIX.ONE_CHILD_MATRIX_CANT_BE_RETRIEVE", kCriticalModal)));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedOut);
  EXPECT_EQ(vault->FileOf(Again(matrix)), "<old/>");
  ExpectOptionsAsBefore();
}

TEST_F(UnmergeableMatrix, LeavesTheNewReleaseOfTheMatrixDocument) {
  const auto matrix = GivenMatrixIn(veldora::state::kReleased);
  OpenCarInPart();

  RunUnasked();

  const auto next = Again(matrix)->GetVersion(veldora::version::kLast);
  EXPECT_NE(next->ObjectId(), matrix->ObjectId());
  EXPECT_EQ(StateOf(next), veldora::state::kNew);
}

TEST_F(UnmergeableMatrix, TellsABrokenMatrixAndLeavesTheVaultAlone) {
  GivenMatrix("FRAME", "broken");
  GivenMatrix("AXLE", AxleMatrix());
  OpenCarInPart();

  RunUnasked();

  ASSERT_THAT(platform.Boxes(), SizeIs(1));
  EXPECT_EQ(platform.Boxes()[0].title, "QNTR");
  EXPECT_THAT(MatricesOf("CAR"), IsEmpty());
}

TEST_F(GetMatrix, LeavesNothingInTheCommand) {
  GetMatrixInternals internals;
  internals.Excel() = MakeRef<NiceMock<MockExcel>>();
  internals.Workbook() = MakeRef<NiceMock<MockWorkbook>>();
  internals.Row() = 7;
  internals.CoupleCount() = 5;
  internals.Couples().resize(9);

  internals.command.Run("CheckIn", Of("CAR"), true);

  EXPECT_FALSE(internals.Excel());
  EXPECT_FALSE(internals.Workbook());
  EXPECT_EQ(internals.Row(), 0);
  EXPECT_EQ(internals.CoupleCount(), 0);
  EXPECT_THAT(internals.Couples(), SizeIs(3));
}

TEST_F(GetMatrix, HoldsRoomForThreeCouplesAtFirst) {
  EXPECT_THAT(GetMatrixInternals().Couples(), SizeIs(3));
}

}  // namespace
}  // namespace quintara::test
