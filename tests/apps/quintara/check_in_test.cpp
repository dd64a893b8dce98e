#include <algorithm>

#include "apps/quintara/vault_with_as1.h"
#include "hosts/vault/database.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto kQuestion = "The product \"as1\" has a matrix already.";

using CheckInVerb = VaultWithAs1;

TEST_F(CheckInVerb, StoresAMovedInstanceAndItsNewPosition) {
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);

  const auto outcome = Run({"checkin", "as1", "--yes"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(outcome.out,
            "matrix 'as1 Matrix' (revision A, checked in): updated\n"
            "checked in 'as1' (revision A)\n");
  EXPECT_EQ(RevisionAndState("as1"), "A1");
  const auto elements = ElementsOf(StoredMatrix("as1"));
  const auto plate = std::ranges::find(elements, "as1\\plate_1", &MatrixElement::fullName);
  ASSERT_NE(plate, elements.end());
  EXPECT_EQ(plate->numbers[9], "250");
  EXPECT_EQ(StoredFile("as1"), ReadWork("as1.ZVAProduct"));
}

TEST_F(CheckInVerb, ChangesNothingElseInTheMatrix) {
  auto expected = ElementsOf(StoredMatrix("as1"));
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);

  RunWell({"checkin", "as1", "--yes"});

  std::ranges::find(expected, "as1\\plate_1", &MatrixElement::fullName)->numbers[9] = "250";
  EXPECT_THAT(ElementsOf(StoredMatrix("as1")), ElementsAreArray(expected));
}

TEST_F(CheckInVerb, LeavesTheMatrixWhenTheAnswerIsNo) {
  const auto before = StoredMatrix("as1");
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);

  const auto outcome = Run({"checkin", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.errors, HasSubstr(kQuestion));
  EXPECT_THAT(outcome.out, HasSubstr("matrix 'as1 Matrix' (revision A, checked in): unchanged\n"));
  EXPECT_EQ(RevisionAndState("as1"), "A1");
  EXPECT_EQ(StoredMatrix("as1"), before);
}

TEST_F(CheckInVerb, AsksOnATerminal) {
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);
  terminal = {true, false, true};
  typed = "y\n";

  EXPECT_THAT(Run({"checkin", "as1"}).out, HasSubstr("updated"));
}

TEST_F(CheckInVerb, LeavesWhatElseIsCheckedOutAsItIs) {
  RunWell({"checkout", "as1", "nut"});
  WriteWork("nut.stp", ReadWork("nut.stp") + " ");
  const auto mine = ReadWork("nut.stp");

  RunWell({"checkin", "as1", "--yes"});

  EXPECT_EQ(ReadWork("nut.stp"), mine);
  EXPECT_EQ(RevisionAndState("nut"), "A2");
}

TEST_F(CheckInVerb, MakesTheLightRepresentationOfAProductAnew) {
  const auto before = StoredLight("as1");
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);

  RunWell({"checkin", "as1", "--yes"});

  EXPECT_NE(StoredLight("as1"), before);
  EXPECT_EQ(StoredLight("as1"), ReadWork("as1.ZVAProduct.lwt"));
}

TEST_F(CheckInVerb, OfAPartNamedByItsFileStoresItWithoutAMatrix) {
  RunWell({"checkout", "nut"});
  auto changed = ReadWork("nut.stp");
  changed.insert(changed.find("DATA;"), "/* drawn again */");
  WriteWork("nut.stp", changed);

  const auto outcome = Run({"checkin", AdminPath("nut.stp")});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(outcome.out, "checked in 'nut' (revision A)\n");
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_EQ(StoredFile("nut"), changed);
  EXPECT_EQ(StoredLight("nut"), ReadWork("nut.stp.lwt"));
}

TEST_F(CheckInVerb, WritesNoMatrixOfWhatAnotherProductHolds) {
  const auto before = StoredMatrix("rod-assembly");
  RunWell({"checkout", "rod-assembly"});
  Move("rod-assembly.ZVAProduct", "nut_1", 10);

  const auto outcome = Run({"checkin", "rod-assembly", "--yes"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(outcome.out,
            "no matrix to write: another product holds 'rod-assembly' (revision A)\n"
            "checked in 'rod-assembly' (revision A)\n");
  EXPECT_EQ(StoredMatrix("rod-assembly"), before);
}

TEST_F(CheckInVerb, RefusesWhatIsNotCheckedOut) {
  const auto outcome = Run({"checkin", "as1", "--yes"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("The product isn't checked out."), HasSubstr("as1, A")));
  EXPECT_THAT(outcome.out, Not(HasSubstr("checked in 'as1'")));
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndStateOfMatrix("as1"), "A1A1");
}

TEST_F(CheckInVerb, TellsInADryRunWhatItWouldDo) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"checkin", "as1", "--dry-run", "--yes"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_EQ(outcome.out,
            "nothing changed, as asked: 'as1' (revision A) would be checked in, and on Yes its matrix updated: "
            "'as1 Matrix' (revision A, checked in)\n");
  EXPECT_EQ(RevisionAndState("as1"), "A2");
}

TEST_F(CheckInVerb, ComplainsInADryRunAboutWhatCannotBeDone) {
  const auto outcome = Run({"checkin", "as1", "--dry-run"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("'as1' (revision A) is checked in, and 'admin' can't let it be checked in"));
}

TEST_F(CheckInVerb, ChangesNothingWhenOneOfSeveralIsUnknown) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"checkin", "as1", "gone", "--yes"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("the vault has no object 'gone'"));
  EXPECT_EQ(RevisionAndState("as1"), "A2");
}

TEST_F(CheckInVerb, DoesNotTakeAFileThatTheVaultDoesNotKnow) {
  work.Write("mine.stp", "mine");

  const auto outcome = Run({"checkin", work.Path("mine.stp")});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("the vault doesn't know the file '" + work.Path("mine.stp")));
}

TEST_F(CheckInVerb, KnowsThreeWaysToLoadAProduct) {
  EXPECT_EQ(Run({"checkin", "as1", "--load", "half"}).exitCode, kWrongUse);
}

TEST_F(CheckInVerb, NeedsAVault) {
  EXPECT_EQ(RunBare({"checkin", "as1", "--vault", elsewhere.Path("nowhere")}).exitCode, kWrongUse);
}

TEST_F(CheckInVerb, NeedsTheTextsOfASession) {
  std::filesystem::remove_all(ToPath(Folder() + "/base/NLS"));

  const auto outcome = Run({"checkin", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("no session starts"));
}

TEST_F(CheckInVerb, FailsAndChangesNothingWhenTheProductCannotBeBrought) {
  RunWell({"checkout", "as1"});
  gate->FailOperation("VdSessionUtil.RunOperation", 1);

  const auto outcome = Run({"checkin", "as1", "--yes"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndStateOfMatrix("as1"), "A2A1");
}

// A box may be passed over, a vault in disorder may not.
TEST_F(CheckInVerb, LeavesTheVaultInOrderWhicheverCallFails) {
  constexpr int kStep = 61;
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);
  const TemporaryFolder kept;
  std::filesystem::copy(ToPath(Folder()), ToPath(kept.Path("quintara.vault")),
                        std::filesystem::copy_options::recursive);

  for (int n = 1;; n += kStep) {
    UseCopyOf(kept);
    gate = std::make_shared<Gate>();
    gate->FailCall(n);
    const auto outcome = Run({"checkin", "as1", "--yes"});
    if (!gate->HasFailed()) break;
    SCOPED_TRACE("call " + std::to_string(n) + ": " + outcome.out + outcome.errors);
    EXPECT_THAT(Open()->Check(), IsEmpty());
    EXPECT_EQ(RevisionAndState("as1"), outcome.out.find("checked in 'as1'") == std::string::npos ? "A2" : "A1");
    if (HasFailure()) break;
  }
}

class TheLifeOfAMatrix : public Cli {
 protected:
  Outcome Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--vault", elsewhere.Path("quintara.vault"), "--yes"});
    return RunBare(arguments);
  }
};

TEST_F(TheLifeOfAMatrix, OnPostgresIsTheSame) {
  vault::Database("postgresql://").ExecuteOnce("CREATE SCHEMA matrices");
  RunBare({"vault", "init", elsewhere.Path("quintara.vault"), "--database",
           "postgresql://options='-c search_path=matrices'"});
  Run({"import", Data("as1-oc-214.stp")});
  Run({"checkout", "as1"});

  EXPECT_THAT(Run({"checkin", "as1", "--load", "children"}).out, HasSubstr("(revision A, checked in): updated"));
  EXPECT_THAT(Run({"release", "as1"}).out, HasSubstr("(revision A, released): updated"));
  EXPECT_THAT(Run({"new-release", "as1"}).out, HasSubstr("made 'as1' (revision B)"));
  EXPECT_THAT(Run({"checkin", "as1"}).out, HasSubstr("(revision B, checked in): updated"));
  EXPECT_THAT(Run({"links", "as1"}).out, HasSubstr("as1 Matrix.xml"));
  EXPECT_THAT(Run({"vault", "check"}).out, HasSubstr("nothing is wrong"));
}

// What a merge must give: the root and its parts as they stand in the product, and for each assembly the whole of
// its own matrix, whose full names go on from the root's.
class AMerge : public VaultWithAs1 {
 protected:
  std::vector<MatrixElement> Merged(const std::vector<MatrixElement>& whole) const {
    std::vector<MatrixElement> merged{whole.front()};
    const auto& root = whole.front().fullName;
    for (const auto& element : whole) {
      if (element.fullName != root + "\\" + element.name) continue;
      if (element.tag == "PART") merged.push_back(element);
      if (element.tag == "PRODUCT") AppendGrafted(element.partNumber, root, merged);
    }
    return merged;
  }

 private:
  void AppendGrafted(const std::string& partNumber, const std::string& root, std::vector<MatrixElement>& merged) const {
    for (auto element : ElementsOf(StoredMatrix(partNumber))) {
      element.fullName = root + "\\" + element.fullName;
      merged.push_back(element);
    }
  }
};

TEST_F(AMerge, GraftsTheMatricesOfTheChildrenWhole) {
  const auto whole = ElementsOf(StoredMatrix("as1"));
  const auto expected = Merged(whole);
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"checkin", "as1", "--yes", "--load", "children"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, HasSubstr("matrix 'as1 Matrix' (revision A, checked in): updated\n"));
  const auto merged = ElementsOf(StoredMatrix("as1"));
  EXPECT_THAT(merged, ElementsAreArray(expected));
  EXPECT_EQ(merged.size(), whole.size());
}

TEST_F(AMerge, LeavesAGraftedRootItsOwnNameAndPosition) {
  RunWell({"checkout", "as1"});

  RunWell({"checkin", "as1", "--yes", "--load", "children"});

  const auto merged = ElementsOf(StoredMatrix("as1"));
  const std::vector<std::string> identity{"1", "0", "0", "0", "1", "0", "0", "0", "1", "0", "0", "0"};
  EXPECT_EQ(merged.at(1), (MatrixElement{"PRODUCT", "rod-assembly", "rod-assembly", "as1\\rod-assembly", identity}));
  EXPECT_EQ(merged.at(2).fullName, "as1\\rod-assembly\\nut_1");
}

TEST_F(AMerge, TakesAMovedPartFromTheProduct) {
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);

  RunWell({"checkin", "as1", "--yes", "--load", "children"});

  const auto merged = ElementsOf(StoredMatrix("as1"));
  const auto plate = std::ranges::find(merged, "as1\\plate_1", &MatrixElement::fullName);
  ASSERT_NE(plate, merged.end());
  EXPECT_EQ(plate->numbers[9], "250");
}

TEST_F(AMerge, IsDoneAtTheReleaseToo) {
  const auto expected = Merged(ElementsOf(StoredMatrix("as1")));

  RunWell({"release", "as1", "--yes", "--load", "children"});

  EXPECT_THAT(ElementsOf(StoredMatrix("as1")), ElementsAreArray(expected));
}

TEST_F(AMerge, EndsInABoxWhereAChildIsUnloaded) {
  RunWell({"checkout", "as1"});
  const auto before = StoredMatrix("as1");

  const auto outcome = Run({"checkin", "as1", "--yes", "--load", "root"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("The matrices can't be merged: a component isn't loaded"));
  EXPECT_EQ(outcome.out,
            "matrix 'as1 Matrix' (revision A, checked out): not written\n"
            "checked in 'as1' (revision A)\n");
  EXPECT_EQ(StoredMatrix("as1"), before);
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "A2") << "nothing takes the matrix back";
}

class ReleaseVerb : public VaultWithAs1 {};

TEST_F(ReleaseVerb, ReleasesTheMatrixWithTheProduct) {
  const auto outcome = Run({"release", "as1", "--yes"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(outcome.out,
            "matrix 'as1 Matrix' (revision A, released): updated\n"
            "released 'as1' (revision A)\n");
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndStateOfMatrix("as1"), "A3A3");
}

TEST_F(ReleaseVerb, StoresWhatIsCheckedOutAndMoved) {
  RunWell({"checkout", "as1"});
  Move("as1.ZVAProduct", "plate_1", 250);

  RunWell({"release", "as1", "--yes"});

  EXPECT_EQ(StoredFile("as1"), ReadWork("as1.ZVAProduct"));
  EXPECT_EQ(RevisionAndState("as1"), "A3");
}

TEST_F(ReleaseVerb, IsFollowedByANewRevisionOfTheMatrixAtTheNextCheckIn) {
  RunWell({"release", "as1", "--yes"});
  RunWell({"new-release", "as1"});
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndStateOfMatrix("as1"), "B0A3");

  const auto outcome = Run({"checkin", "as1", "--yes"});

  EXPECT_EQ(outcome.out,
            "matrix 'as1 Matrix' (revision B, checked in): updated\n"
            "checked in 'as1' (revision B)\n");
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndStateOfMatrix("as1"), "B1B1");
}

TEST_F(ReleaseVerb, OfAReleasedProductLeavesItReleased) {
  RunWell({"release", "as1"});

  const auto outcome = Run({"release", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("The life-cycle operation wasn't done."));
}

// An import that wrote the matrix of the root alone.
class WithoutMatricesBelow : public VaultWithAs1 {
 protected:
  WithoutMatricesBelow() : VaultWithAs1("root") {}
};

TEST_F(WithoutMatricesBelow, AMergeEndsInABox) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"checkin", "as1", "--yes", "--load", "children"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("a sub-assembly has no matrix in Veldora"));
}

TEST_F(WithoutMatricesBelow, AWholeProductNeedsNoMerge) {
  RunWell({"checkout", "as1"});

  EXPECT_EQ(Run({"checkin", "as1", "--yes"}).exitCode, kDone);
}

class WithoutMatrices : public VaultWithAs1 {
 protected:
  WithoutMatrices() : VaultWithAs1("none") {}
};

TEST_F(WithoutMatrices, TheFirstCheckInMakesOne) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"checkin", "as1", "--yes"});

  EXPECT_EQ(outcome.out,
            "matrix 'as1 Matrix' (revision A, checked in): created\n"
            "checked in 'as1' (revision A)\n");
  EXPECT_THAT(outcome.errors, HasSubstr("has no matrix yet"));
  EXPECT_EQ(StoredMatrix("as1"), ReadWork("as1 Matrix.xml"));
}

TEST_F(WithoutMatrices, NoAnswerMakesNone) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"checkin", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("no matrix was written\n"));
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "");
}

TEST_F(WithoutMatrices, ADryRunTellsThatOneWouldBeMade) {
  EXPECT_THAT(Run({"release", "as1", "--dry-run"}).out, HasSubstr("on Yes a matrix made for it"));
}

// A user without all of the rights.
class ARestrictedUser : public VaultWithAs1 {
 protected:
  static constexpr auto kProducts = "ZORVA Product";

  ARestrictedUser() {
    const auto vault = Open();
    vault->AddUser("anna", {}, false);
    for (const auto* operation : {"CopyFile", "CHECKOUT"}) vault->Grant("anna", operation, kProducts);
    vault->Grant("anna", "CopyFile", "ZORVA Part");
  }
  void Grant(const std::string& operation, const std::string& className) const {
    Open()->Grant("anna", operation, className);
  }
  Outcome RunAsAnna(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--user", "anna"});
    return Run(arguments);
  }
};

TEST_F(ARestrictedUser, CannotCheckInWithoutTheRight) {
  RunAsAnna({"checkout", "as1"});

  const auto outcome = RunAsAnna({"checkin", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("The life-cycle operation wasn't done."));
  EXPECT_EQ(RevisionAndState("as1"), "A2");
}

TEST_F(ARestrictedUser, IsToldWhenTheMatrixCannotBeTaken) {
  Grant("CHECKIN", kProducts);
  RunAsAnna({"checkout", "as1"});

  const auto outcome = RunAsAnna({"checkin", "as1", "--yes"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("The matrix document can't be checked out."));
  EXPECT_THAT(outcome.out, HasSubstr("checked in 'as1'"));
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "A1");
}

TEST_F(ARestrictedUser, CannotBringWithoutTheRight) {
  Open()->Revoke("anna", "CopyFile", "ZORVA Part");

  const auto outcome = RunAsAnna({"release", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("has no right to CopyFile"));
  EXPECT_EQ(RevisionAndState("as1"), "A1");
}

TEST_F(ARestrictedUser, CannotCheckInWhatAnotherHasCheckedOut) {
  Grant("CHECKIN", kProducts);
  RunWell({"checkout", "as1"});

  const auto outcome = RunAsAnna({"checkin", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_EQ(RevisionAndState("as1"), "A2");
}

}  // namespace
}  // namespace quintara::test
