#include "hosts/gate/gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quintara {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class GateTest : public ::testing::Test {
 protected:
  // The number of the failure of a call, 0 when it passes.
  int Call(std::string_view operation) {
    try {
      gate.Pass(operation);
      return 0;
    } catch (const Failure& failure) {
      return failure.Number();
    }
  }

  Gate gate;
};

TEST_F(GateTest, LetsEverythingPassAndRecordsNothingAtFirst) {
  EXPECT_EQ(Call("A.B"), 0);

  EXPECT_THAT(gate.Record(), IsEmpty());
  EXPECT_EQ(gate.Calls(), 0);
  EXPECT_FALSE(gate.HasFailed());
}

TEST_F(GateTest, RecordsOperationsInOrderWithTheirDetail) {
  gate.StartRecording();

  gate.Pass("A.B");
  gate.Pass("C.D", [] { return "x, 1"; });
  gate.StopRecording();
  gate.Pass("E.F");

  EXPECT_THAT(gate.Record(), ElementsAre("A.B", "C.D(x, 1)"));
}

TEST_F(GateTest, AsksForADetailOnlyWhileItRecords) {
  int asked = 0;
  const auto detail = [&] {
    ++asked;
    return "x";
  };

  gate.Pass("A.B", detail);
  gate.FailCall(9);
  gate.Pass("A.B", detail);
  EXPECT_EQ(asked, 0);
  gate.StartRecording();
  gate.Pass("A.B", detail);

  EXPECT_EQ(asked, 1);
}

TEST_F(GateTest, StartsEachRecordEmpty) {
  gate.StartRecording();
  gate.Pass("A.B");

  gate.StartRecording();

  EXPECT_THAT(gate.Record(), IsEmpty());
}

TEST_F(GateTest, FailsTheNthCallAndNoOther) {
  gate.FailCall(2, Failure(70));

  EXPECT_EQ(Call("A.B"), 0);
  EXPECT_FALSE(gate.HasFailed());
  EXPECT_EQ(Call("C.D"), 70);
  EXPECT_TRUE(gate.HasFailed());
  EXPECT_EQ(Call("E.F"), 0);
  EXPECT_EQ(gate.Calls(), 3);
}

TEST_F(GateTest, FailsAnOperationFromItsNthCallOn) {
  gate.FailOperation("A.B", 2, Failure(61));

  EXPECT_EQ(Call("A.B"), 0);
  EXPECT_EQ(Call("C.D"), 0);
  EXPECT_EQ(Call("A.B"), 61);
  EXPECT_EQ(Call("C.D"), 0);
  EXPECT_EQ(Call("A.B"), 61);
}

TEST_F(GateTest, TwoFaultsStandSideBySide) {
  gate.FailOperation("A.B", 2, Failure(61));
  gate.FailOperation("C.D", 1, Failure(70));

  EXPECT_EQ(Call("A.B"), 0);
  EXPECT_EQ(Call("C.D"), 70);
  EXPECT_EQ(Call("A.B"), 61);
}

TEST_F(GateTest, GoesOnCountingAndFailingWhenItStopsRecording) {
  gate.StartRecording();
  gate.FailCall(3);
  Call("A.B");

  gate.StopRecording();

  EXPECT_EQ(Call("A.B"), 0);
  EXPECT_NE(Call("A.B"), 0);
  EXPECT_EQ(gate.Calls(), 3);
}

TEST_F(GateTest, FailsWithADeviceErrorUnlessAnotherFailureIsGiven) {
  gate.FailCall(1);
  EXPECT_EQ(Call("A.B"), failure::kDeviceError);
  gate.FailOperation("C.D");
  EXPECT_EQ(Call("C.D"), failure::kDeviceError);
}

TEST_F(GateTest, AnEmptyDetailStandsWithoutBrackets) {
  gate.StartRecording();

  gate.Pass("A.B", [] { return ""; });

  EXPECT_THAT(gate.Record(), ElementsAre("A.B"));
}

TEST_F(GateTest, CountsCallsFromOne) {
  EXPECT_THROW(gate.FailCall(0), Failure);
  EXPECT_THROW(gate.FailCall(-1), Failure);
  EXPECT_THROW(gate.FailOperation("A.B", 0), Failure);

  EXPECT_EQ(Call("A.B"), 0);
}

TEST_F(GateTest, RecordsTheCallThatFails) {
  gate.StartRecording();
  gate.FailCall(1);

  EXPECT_NE(Call("A.B"), 0);

  EXPECT_THAT(gate.Record(), ElementsAre("A.B"));
}

TEST_F(GateTest, ForgetsItsFaultsAndKeepsTheRecordWhenReset) {
  gate.StartRecording();
  gate.FailOperation("A.B");
  EXPECT_NE(Call("A.B"), 0);

  gate.Reset();

  EXPECT_EQ(Call("A.B"), 0);
  EXPECT_FALSE(gate.HasFailed());
  EXPECT_EQ(gate.Calls(), 0);
  EXPECT_THAT(gate.Record(), ElementsAre("A.B"));
}

TEST_F(GateTest, LetsEverythingPassUnseenWhileItRests) {
  gate.StartRecording();
  gate.FailCall(1);
  {
    const Gate::Rest rest(gate);
    EXPECT_EQ(Call("A.B"), 0);
  }

  EXPECT_NE(Call("C.D"), 0);
  EXPECT_THAT(gate.Record(), ElementsAre("C.D"));
}

TEST_F(GateTest, RestsWithinARest) {
  gate.FailCall(1);
  const Gate::Rest outer(gate);
  { const Gate::Rest inner(gate); }

  EXPECT_EQ(Call("A.B"), 0);
}

}  // namespace
}  // namespace quintara
