#include <memory>
#include <string>

#include "access/host_mocks.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "hosts/native/native_platform.h"
#include "matrix/get_matrix_bench.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StrictMock;

// Products that get no matrix.

TEST_F(GetMatrix, NeedsOneOfTwoOperationsSpeltExactly) {
  for (const auto* operation : {"", "CHECKIN", "checkin", "CheckIn ", "release", "CheckOut"}) {
    Run(operation);

    EXPECT_EQ(platform.Boxes().back(), ToldText("QD.GETMATRIX.INCORRECT_OPERATION", kCriticalModal)) << operation;
    EXPECT_THAT(StepsOfTheRun(), IsEmpty()) << operation;
  }
  EXPECT_THAT(platform.Boxes(), SizeIs(6));
}

TEST_F(GetMatrix, IsNotWrittenWhereTheSessionCannotBeStarted) {
  Process().gZorva = nullptr;
  platform.Native().Register("ZORVA.Application", nullptr);

  Run();

  EXPECT_THAT(platform.Boxes(), ElementsAre(Box{"ZORVA Application is not accessible!", kCritical, "Quintara"}));
  EXPECT_THAT(StepsOfTheRun(), IsEmpty());
}

TEST_F(GetMatrix, StartsTheSessionOfAFreshProcess) {
  ResetProcess();

  RunUnasked();

  EXPECT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_TRUE(Process().gClsInit->Initialised);
}

TEST_F(GetMatrix, IsForRootProductsOnly) {
  OpenAlone("FRAME");

  Run("CheckIn", Of("FRAME"), true);

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_EQ(StepsOfTheRun().back(), "VdObject.Parents(2:16)");
  EXPECT_THAT(MatricesOf("FRAME"), IsEmpty());
}

TEST_F(GetMatrix, NeedsAnActiveDocument) {
  document->Close();

  Run();

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(ToldText("QD.GETMATRIX.CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT", kCriticalModal)));
  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(UpTo("VdObject.Parents(2:18)", Looking())));
  ExpectNothingDone();
}

TEST_F(GetMatrix, NeedsAnActiveProduct) {
  host.Application()->Documents()->Open(WorkPath("NUT.stp"));

  Run();

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(ToldText("QD.GETMATRIX.CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT", kCriticalModal)));
  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(UpTo("Application.ActiveDocument", Looking())));
  ExpectNothingDone();
}

TEST_F(GetMatrix, IsNotWrittenForAWorkInProgress) {
  for (const auto* partNumber : {"WIP~~CAR", "OLD WIP~~CAR", "CARWIP~~"}) {
    Run("CheckIn", AddProduct(partNumber), true);

    EXPECT_EQ(StepsOfTheRun().back(), "VdRecord.ValueAsString(NM_CN_PART_NUMBER)") << partNumber;
  }
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(GetMatrix, IsWrittenForWhatOnlyLooksLikeAWorkInProgress) {
  objects["OTHER"] = AddProduct("wip~~WIP~");

  Run("CheckIn", Of("OTHER"), true);

  EXPECT_THAT(MatricesOf("OTHER"), SizeIs(1));
  EXPECT_TRUE(WorkHas("wip~~WIP~ Matrix.xml")) << "named after the vault's product";
}

TEST_F(GetMatrix, IsNotWrittenWhereNobodyCanTellWhetherTheProductIsARoot) {
  gate->FailOperation("VdObject.Parents");

  Run();

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(ToldText("COMMON.UNEXPECTED_ERROR", kCritical, {"Cls_Init.IsTheRoot", "Injected failure"})));
  EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(UpTo("VdObject.Parents(2:18)", Looking())));
  ExpectNothingDone();
}

// The vault's own product, of which it has no last revision.
TEST_F(GetMatrix, NeedsALastRevision) {
  const auto product = MakeRef<StrictMock<MockObject>>();
  const ::testing::InSequence inThisOrder;
  EXPECT_CALL(*product, Refresh);
  EXPECT_CALL(*product, Retrieve);
  EXPECT_CALL(*product, Parents).WillOnce([&](const auto& definition, const auto& behavior) {
    return Of("CAR")->Parents(definition, behavior);
  });
  EXPECT_CALL(*product, Record).WillOnce([&] { return Of("CAR")->Record(); });
  EXPECT_CALL(*product, GetVersion(veldora::version::kLast));

  Run("CheckIn", product, true);

  EXPECT_THAT(platform.Boxes(), ElementsAre(ToldText("QD.GETMATRIX.RETRIEVE_LAST_REVISION", kCriticalModal)));
  ExpectNothingDone();
}

TEST_F(GetMatrix, ReportsALastRevisionThatCannotBeFound) {
  gate->FailOperation("VdObject.GetVersion");

  Run();

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("Injected failure")));
  gate->Reset();
  ExpectNothingDone();
}

TEST_F(GetMatrix, IsNotCheckedInWithAProductThatCannotBeChanged) {
  for (const int state : {veldora::state::kCheckedIn, veldora::state::kReleased}) {
    Bring(Of("CAR"), state);

    Run();

    EXPECT_EQ(platform.Boxes().back(), ToldText("QD.GETMATRIX.OBJECT_NOT_CHECKOUT", kCriticalModal));
    EXPECT_THAT(StepsOfTheRun(), ElementsAreArray(UpTo("VdRecord.ValueAsInteger(STATE)", Looking())));
    ExpectNothingDone();
  }
  EXPECT_THAT(platform.Boxes(), SizeIs(2));
}

class ProductState : public GetMatrix, public ::testing::WithParamInterface<int> {};

TEST_P(ProductState, DoesNotMatterInARelease) {
  Bring(Of("CAR"), GetParam());

  RunUnasked("Release");

  ASSERT_THAT(MatricesOf("CAR"), SizeIs(1));
  EXPECT_EQ(StateOf(MatricesOf("CAR")[0]), veldora::state::kReleased);
  EXPECT_EQ(StateOf(Of("CAR")), GetParam()) << "the product itself is its caller's affair";
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, ProductState, ::testing::Range(0, 5));

TEST_F(GetMatrix, IsCheckedInWithAProductThatIsCheckedOutOrObsolete) {
  CheckIn(Of("CAR"));
  CheckOut(Of("CAR"));
  RunUnasked();
  EXPECT_THAT(MatricesOf("CAR"), SizeIs(1));
  Release(Of("CAR"));
  Util()->Obsolete(Of("CAR"), nullptr, false);

  RunUnasked();

  EXPECT_EQ(CallsOfTheRun("VdObject.Update"), Steps{"VdObject.Update(4:19)"});
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(GetMatrix, ReportsAProductThatIsNothing) {
  Run("CheckIn", nullptr);

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport(Failure(failure::kObjectNotSet).Description())));
  ExpectNothingDone();
}

TEST_F(GetMatrix, ReportsAPartNumberThatIsNoFileName) {
  objects["ODD"] = AddPart("A/B");

  Run("CheckIn", Of("ODD"), true);

  EXPECT_THAT(platform.Boxes(), ElementsAre(RunReport("\"A/B Matrix.xml\" can't be the name of a file")));
  EXPECT_THAT(MatricesOf("ODD"), IsEmpty());
}

// A report that can't be shown either.
TEST_F(GetMatrix, ThrowsNothingWhereNoBoxCanBeShown) {
  const auto mute = std::make_shared<NativePlatform>(
      gate, [](const std::string&, int, const std::string&) -> int { throw Failure(failure::kServerGone); });
  mute->Register("Veldora.VdApplication", vault->Application());
  mute->Register("ZORVA.Application", host.Application());
  const auto before = InstallPlatform(mute);

  Run();

  InstallPlatform(before);
  ExpectNothingDone();
}

// Every call of a host may fail.

class FailedCalls : public GetMatrix {
 protected:
  struct Undo {};

  // Runs the command with its n-th call failing, for each n, and puts the vault back after each.
  template <class Examine>
  int Sweep(Examine&& examine) {
    int call = 1;
    for (bool more = true; more; ++call) {
      try {
        vault->InTransaction([&] {
          WriteWork("CAR Matrix.xml", "local");
          const auto product = Again(Of("CAR"));
          gate->StartRecording();
          gate->FailCall(call);
          EXPECT_NO_THROW(Cls_GetMatrix().Run("CheckIn", product, true)) << call;
          more = gate->HasFailed();
          const auto failed = more ? gate->Record()[static_cast<std::size_t>(call) - 1] : "none";
          gate->Reset();
          SCOPED_TRACE("call " + std::to_string(call) + ", " + failed);
          if (failed.starts_with("VdBehavior.Option")) {
            Store()->DefaultBehavior()->SetOptionC(kOptionCAtFirst);
            Store()->DefaultBehavior()->SetOptionA(kOptionAAtFirst);
          }
          ExpectOptionsAsBefore();
          examine(failed);
          throw Undo{};
        });
      } catch (const Undo&) {
      }
      host.SetForm(root, ComponentForm::kDesign);
    }
    return call - 2;
  }
};

TEST_F(FailedCalls, OfAFirstMatrixLeaveNoneOrAWholeOne) {
  const int calls = Sweep([&](const std::string&) {
    for (const auto& matrix : MatricesOf("CAR")) {
      EXPECT_EQ(vault->FileOf(matrix), ReadWork("CAR Matrix.xml"));
      EXPECT_FALSE(ElementsOf(vault->FileOf(matrix)).empty());
    }
  });

  EXPECT_GT(calls, 200);
}

TEST_F(FailedCalls, OfAnExistingMatrixLeaveItWithTheOldContentOrTheNew) {
  const auto matrix = GivenMatrixIn(veldora::state::kCheckedIn);
  const int calls = Sweep([&](const std::string&) {
    const auto content = vault->FileOf(Again(matrix));
    EXPECT_TRUE(content == "<old/>" || ElementsOf(content).size() == 7) << content;
  });

  EXPECT_GT(calls, 200);
}

TEST_F(FailedCalls, OfAMergedMatrixLeaveNoneOrAWholeOne) {
  GivenMatrices();
  OpenCarInPart();
  const int calls = Sweep([&](const std::string&) {
    for (const auto& matrix : MatricesOf("CAR")) {
      EXPECT_EQ(vault->FileOf(matrix), ReadWork("CAR Matrix.xml"));
      EXPECT_EQ(ElementsOf(vault->FileOf(matrix)).size(), 7U);
    }
    host.SetForm(root->Products()->Item(2), ComponentForm::kDesign);
  });

  EXPECT_GT(calls, 300);
}

}  // namespace
}  // namespace quintara::test
