#pragma once

#include <string>
#include <vector>

#include "matrix/Cls_GetMatrix.h"
#include "matrix/vault_stage.h"
#include "matrix/watched_util.h"

namespace quintara::test {

/// The options of the session's own policy before each run.
inline constexpr int kOptionCAtFirst = 5;
inline constexpr int kOptionAAtFirst = 6;

using Steps = std::vector<std::string>;

Steps operator+(Steps left, const Steps& right);
/// Those up to the first `last`, which is the last one.
Steps UpTo(const std::string& last, Steps steps);

/// What a run does, piece by piece, as `StepsOf` gives it. CAR is the object 2:18 of the vault, and its
/// matrix, where the test has made one, 4:19.
inline constexpr auto kMatrix = "4:19";
Steps Looking();
Steps Deleting();
Steps ReadingStateOf(const std::string& matrix);
Steps TakingUp(const std::string& operation, const std::string& call);
Steps PuttingBack();
Steps Writing();
Steps Updating();
Steps Adding();
Steps RunningOn(const std::string& operation);
Steps Resolving(const std::string& file, const std::string& object);
Steps AskingForAMatrix();

/// Runs of the matrix command on CAR.
class GetMatrix : public CarInVault {
 protected:
  GetMatrix() {
    const auto behavior = Store()->DefaultBehavior();
    behavior->SetOptionC(kOptionCAtFirst);
    behavior->SetOptionA(kOptionAAtFirst);
  }

  void Run(const std::string& operation, const Ref<VdObject>& product, bool fromGlobalRefresh = false) {
    gate->StartRecording();
    EXPECT_NO_THROW(Cls_GetMatrix().Run(operation, product, fromGlobalRefresh));
    gate->StopRecording();
  }
  void Run(const std::string& operation = "CheckIn") { Run(operation, Of("CAR")); }
  /// As the global refresh does, which asks nothing.
  void RunUnasked(const std::string& operation = "CheckIn") { Run(operation, Of("CAR"), true); }
  void AnswerYes() { platform.answers = {answer::kYes}; }

  /// Without the writing of the vault's own files, which goes through the same gate.
  Steps StepsOfTheRun() const {
    auto steps = StepsOf(gate->Record(), folder);
    std::erase_if(steps, [](const auto& step) { return step.find("quintara.vault/") != step.npos; });
    return steps;
  }
  Steps CallsOfTheRun(const std::string& name) const { return CallsOf(gate->Record(), name); }

  // A matrix document of CAR in one of the five states.
  Ref<VdObject> GivenMatrixIn(int state) {
    const auto matrix = GivenMatrix("CAR", "<old/>");
    Bring(matrix, state);
    return matrix;
  }
  void Bring(const Ref<VdObject>& object, int state) {
    if (state == veldora::state::kNew) return;
    if (state == veldora::state::kCheckedIn || state == veldora::state::kCheckedOut) CheckIn(object);
    if (state == veldora::state::kCheckedOut) CheckOut(object);
    if (state == veldora::state::kReleased || state == veldora::state::kObsolete) Release(object);
    if (state == veldora::state::kObsolete) Util()->Obsolete(object, nullptr, false);
    EXPECT_EQ(StateOf(object), state);
  }
  void StartWatching() {
    RunVault(MakeRef<ClientWithSession>(vault->Application(), MakeRef<WatchedSession>(Session(), watch)));
  }

  void ExpectOptionsAsBefore(const std::string& where = {}) const {
    EXPECT_EQ(Store()->DefaultBehavior()->OptionC(), kOptionCAtFirst) << where;
    EXPECT_EQ(Store()->DefaultBehavior()->OptionA(), kOptionAAtFirst) << where;
  }
  // The vault holds what the work directory holds, and that is the matrix of the whole car.
  void ExpectStored(const Ref<VdObject>& matrix) {
    EXPECT_THAT(ElementsOf(ReadWork("CAR Matrix.xml")), ::testing::SizeIs(7));
    EXPECT_EQ(vault->FileOf(Again(matrix)), ReadWork("CAR Matrix.xml"));
  }
  void ExpectNothingDone() {
    EXPECT_THAT(MatricesOf("CAR"), ::testing::IsEmpty());
    EXPECT_FALSE(WorkHas("CAR Matrix.xml"));
    ExpectOptionsAsBefore();
  }

  Watch watch;
};

}  // namespace quintara::test
