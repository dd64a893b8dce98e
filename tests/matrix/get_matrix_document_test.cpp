#include <algorithm>
#include <ostream>
#include <string>

#include "access/host_mocks.h"
#include "matrix/get_matrix_bench.h"
#include "matrix/matrix_storing.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::SizeIs;

TEST_F(GetMatrix, ThatIsNewIsUpdatedAsItStands) {
  const auto matrix = GivenMatrixIn(veldora::state::kNew);
  AnswerYes();

  Run();

  EXPECT_THAT(platform.Boxes(), ElementsAre(ToldText("QD.UTILS.QUESTION_UPDATE_MATRIX", kModalQuestion, {"CAR"})));
  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"} + Deleting() +
                                                ReadingStateOf(kMatrix) + PuttingBack() + Writing() + Updating() +
                                                Steps{"VdObject.Update(4:19)"} + RunningOn("CHECKIN")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
  ExpectStored(matrix);
}

TEST_F(GetMatrix, ThatIsCheckedInIsCheckedOutAndUpdated) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);

  RunUnasked();

  EXPECT_THAT(StepsOfTheRun(),
              ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"} + Deleting() + ReadingStateOf(kMatrix) +
                               TakingUp("CHECKOUT", "CheckOut") + PuttingBack() + Writing() + Updating() +
                               Steps{"VdObject.Update(4:19)"} + RunningOn("CHECKIN")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
  ExpectStored(matrix);
  ExpectOptionsAsBefore();
}

TEST_F(GetMatrix, ThatIsCheckedOutIsUpdatedAsItStands) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedOut);

  RunUnasked();

  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"} + Deleting() +
                                                ReadingStateOf(kMatrix) + PuttingBack() + Writing() + Updating() +
                                                Steps{"VdObject.Update(4:19)"} + RunningOn("CHECKIN")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
  ExpectStored(matrix);
}

TEST_F(GetMatrix, ThatIsReleasedGetsANewRelease) {
  const auto matrix = GivenMatrixIn(veldora::state::kReleased);

  RunUnasked();

  EXPECT_THAT(StepsOfTheRun(),
              ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"} + Deleting() + ReadingStateOf(kMatrix) +
                               TakingUp("NEWRELEASE", "NewRelease") + PuttingBack() + Writing() + Updating() +
                               Steps{"VdObject.Update(4:20)"} + RunningOn("CHECKIN")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kReleased);
  EXPECT_EQ(vault->FileOf(Again(matrix)), "<old/>");
  const auto next = Again(matrix)->GetVersion(veldora::version::kLast);
  EXPECT_EQ(StateOf(next), veldora::state::kCheckedIn);
  ExpectStored(next);
  ExpectOptionsAsBefore();
}

TEST_F(GetMatrix, ThatIsObsoleteIsUpdatedAsItStands) {
  const auto matrix = GivenMatrixIn(veldora::state::kObsolete);

  RunUnasked();

  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"} + Deleting() +
                                                ReadingStateOf(kMatrix) + PuttingBack() + Writing() + Updating() +
                                                Steps{"VdObject.Update(4:19)"} + RunningOn("CHECKIN")));
  EXPECT_EQ(StateOf(matrix), veldora::state::kObsolete);
  ExpectStored(matrix);
}

TEST_F(GetMatrix, ThatIsReleasedIsReleasedAgainInItsNewRelease) {
  const auto matrix = GivenMatrixIn(veldora::state::kReleased);

  RunUnasked("Release");

  EXPECT_EQ(StateOf(Again(matrix)->GetVersion(veldora::version::kLast)), veldora::state::kReleased);
}

TEST_F(GetMatrix, IsTakenInItsNewestRevision) {
  const auto matrix = GivenMatrixIn(veldora::state::kReleased);
  const auto next = Util()->NewRelease(matrix, nullptr, false);

  RunUnasked();

  EXPECT_EQ(StateOf(next), veldora::state::kCheckedIn);
  ExpectStored(next);
}

TEST_F(GetMatrix, ThatExistsIsLeftAloneAgainstTheUsersWill) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  WriteWork("CAR Matrix.xml", "local");
  platform.answers = {answer::kNo};

  Run();

  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"}));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
  EXPECT_EQ(ReadWork("CAR Matrix.xml"), "local");
}

TEST_F(GetMatrix, ThatExistsLosesItsLocalFileFirst) {
  GivenMatrixIn(veldora::state::kCheckedIn);
  WriteWork("CAR Matrix.xml", "local");

  RunUnasked();

  const auto steps = StepsOfTheRun();
  const auto deleted = std::ranges::find(steps, "FileSystem.DeleteFile(work/CAR Matrix.xml, True)");
  ASSERT_NE(deleted, steps.end());
  EXPECT_EQ(*(deleted - 1), "FileSystem.FileExists(work/CAR Matrix.xml)");
  EXPECT_EQ(*(deleted + 1), "VdObject.Retrieve(4:19)");
}

// Documents that can't be made writable.

struct Refusal {
  int state;
  const char* key;
  const char* operation;
  const char* call;
};
void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << refusal.key;
}
const Refusal kRefusals[] = {
    {veldora::state::kCheckedIn, "QD.GETMATRIX.NO_LINKED_MATRIX", "CHECKOUT", "CheckOut without record or scripts"},
    {veldora::state::kReleased, "QD.GETMATRIX.MATRIX_CANT_BE_RELEASED", "NEWRELEASE",
     "NewRelease without record or scripts"}};

class RefusedMatrix : public GetMatrix, public ::testing::WithParamInterface<Refusal> {
 protected:
  RefusedMatrix() : matrix(GivenMatrixIn(GetParam().state)) {}

  Box Told() const { return ToldText(GetParam().key, kCriticalModal); }
  void ExpectAskedTwice() const { EXPECT_THAT(watch.asked, ElementsAre("CanPerform 0", GetParam().call)); }
  void ExpectNothingWritten() {
    EXPECT_THAT(CallsOfTheRun("Position.GetComponents"), IsEmpty());
    EXPECT_FALSE(WorkHas("CAR Matrix.xml"));
    EXPECT_EQ(vault->FileOf(Again(matrix)), "<old/>");
    ExpectOptionsAsBefore();
  }

  Ref<VdObject> matrix;
};

TEST_P(RefusedMatrix, IsToldTwiceWhereTheVaultRefusesBothTimes) {
  watch.canPerform = false;
  watch.refuses = true;
  StartWatching();

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told(), Told()));
  const auto lookedUp = std::string("VdMetaInfo.OperationByName(") + GetParam().operation + ")";
  EXPECT_THAT(StepsOfTheRun(),
              ElementsAreArray(Looking() + Steps{"VdObject.Retrieve(4:19)"} + Deleting() + ReadingStateOf(kMatrix) +
                               UpTo(lookedUp, TakingUp(GetParam().operation, {})) + PuttingBack()));
  ExpectAskedTwice();
  ExpectNothingWritten();
  EXPECT_EQ(StateOf(matrix), GetParam().state);
}

TEST_P(RefusedMatrix, IsToldOnceWhereOnlyTheOperationFails) {
  watch.canPerform = true;
  watch.refuses = true;
  StartWatching();

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told()));
  ExpectAskedTwice();
  ExpectNothingWritten();
}

TEST_P(RefusedMatrix, IsWrittenAllTheSameWhereOnlyTheQuestionIsRefused) {
  watch.canPerform = false;
  StartWatching();

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told()));
  ExpectAskedTwice();
  ExpectStored(Again(matrix)->GetVersion(veldora::version::kLast));
}

TEST_P(RefusedMatrix, EndsInSilenceWhereTheOperationGivesNothing) {
  watch.givesNothing = true;
  StartWatching();

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  ExpectAskedTwice();
  ExpectNothingWritten();
}

TEST_P(RefusedMatrix, IsNotTakenUpWithAnUnknownOperation) {
  gate->FailOperation("VdMetaInfo.OperationByName", 1, Failure(failure::kInvalidCall, "No such operation"));

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("No such operation")));
  gate->Reset();
  ExpectNothingWritten();
}

TEST_P(RefusedMatrix, IsNotTakenUpWhereTheQuestionFails) {
  gate->FailOperation("VdSessionUtil.CanPerform");

  RunUnasked();

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("Injected failure")));
  gate->Reset();
  ExpectNothingWritten();
}

INSTANTIATE_TEST_SUITE_P(, RefusedMatrix, ::testing::ValuesIn(kRefusals),
                         [](const auto& refusal) { return refusal.param.state == 1 ? "CheckedIn" : "Released"; });

TEST_F(GetMatrix, IsNotTakenUpByAUserWithoutTheRight) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  vault->AddUser("eve", "secret", true);
  vault->Revoke("eve", "", "");
  for (const auto* operation : {"CHECKIN", "CopyFile"}) vault->Grant("eve", operation, "");
  auto options = Options();
  options.login = "eve";
  Open(options);
  RunVault();
  RunZorva();
  ASSERT_TRUE(Init());

  Run("CheckIn", Again(Of("CAR")), true);

  const auto told = ToldText("QD.GETMATRIX.NO_LINKED_MATRIX", kCriticalModal);
  EXPECT_THAT(platform.Boxes(), ElementsAre(told, told));
  EXPECT_EQ(StateOf(matrix), veldora::state::kCheckedIn);
}

TEST_F(GetMatrix, ThatAnotherUserHasCheckedOutIsReported) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  vault->AddUser("eve", "secret", true);
  auto options = Options();
  options.login = "eve";
  const auto evesVault = OpenAnother(options);
  const auto evesSession = evesVault->Application()->Engine()->Sessions(0);
  const auto evesMatrix = evesSession->ObjectStore()->ObjectById(matrix->ClassId(), matrix->ObjectId());
  evesSession->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckOut(evesMatrix, nullptr, false);

  RunUnasked();

  ASSERT_THAT(platform.Boxes(), SizeIs(1));
  EXPECT_EQ(platform.Boxes()[0].style, kCritical);
  EXPECT_THAT(platform.Boxes()[0].text, ::testing::HasSubstr("[Cls_GetMatrix.Run]"));
  EXPECT_THAT(platform.Boxes()[0].text, ::testing::HasSubstr("checked out by another user"));
  EXPECT_EQ(vault->FileOf(Again(matrix)), "<old/>");
}

class RecordOfAnUnknownState : public veldora::VdRecord {
 public:
  Variant Value(const std::string&) override { return 5; }
  std::int32_t ValueAsInteger(const std::string&) override { return 5; }
  std::string ValueAsString(const std::string&) override { return "5"; }
  void ValuateFromString(const std::string&, const std::string&) override {}
  Ref<veldora::VdColumns> Header() override { return nullptr; }
};

TEST_F(GetMatrix, InAStateThatNobodyKnowsIsLeftAlone) {
  const auto matrix = MakeRef<NiceMock<MockObject>>();
  const auto newest = MakeRef<NiceMock<MockObject>>();
  ON_CALL(*matrix, GetVersion).WillByDefault(Return(Ref<VdObject>(newest)));
  ON_CALL(*newest, Record).WillByDefault(Return(Ref<veldora::VdRecord>(MakeRef<RecordOfAnUnknownState>())));
  const KeptOptions options(Session());
  gate->StartRecording();

  EXPECT_FALSE(PrepareMatrix(matrix, MatrixPath(), options));

  EXPECT_THAT(StepsOfTheRun(),
              ElementsAreArray(Deleting() + Steps{"VdBehavior.OptionC=(2)", "VdBehavior.OptionA=(0)"} + PuttingBack()));
}

}  // namespace
}  // namespace quintara::test
