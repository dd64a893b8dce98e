#include <algorithm>

#include "apps/quintara/vault_with_as1.h"

namespace quintara::test {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Linked : public VaultWithAs1 {
 protected:
  // The class and id of the matrix of as1, as the verbs print it.
  std::string Matrix() {
    const auto out = Run({"links", "as1"}).out;
    const auto line = out.substr(out.rfind(' ') + 1);
    return line.substr(0, line.size() - 1);
  }
};

TEST_F(Linked, DocumentsAreListedByDefault) {
  const auto outcome = Run({"links", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, ContainsRegex("as1 Matrix +A +checked in +Document +as1 Matrix.xml +4:"));
  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 2 + 1);
}

TEST_F(Linked, AnUnknownClassIsNamed) {
  const auto outcome = Run({"links", "as1", "ZORVA Part", "ZORVA Structure"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("the vault has no class 'ZORVA Structure'"));
}

TEST_F(Linked, NothingIsToldAsNothing) {
  const auto outcome = Run({"links", "nut"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_EQ(outcome.out, "nothing of the class 'Document' is linked to 'nut' (revision A) through 'Document Link'\n");
}

TEST_F(Linked, AClassThatIsNoLinkEndsInABox) {
  const auto outcome = Run({"links", "as1", "Document", "ZORVA Part"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("Cls_Utils.RetrieveAllObjectsLinked"));
}

TEST_F(Linked, DocumentsAreListedByTheirClass) {
  RunWell({"release", "as1", "--yes"});
  RunWell({"new-release", "as1"});
  RunWell({"checkin", "as1", "--yes"});

  const auto newest = Run({"ls", "--class", "Document"}).out;
  const auto all = Run({"ls", "--class", "Document", "--all", "as1*"}).out;

  EXPECT_EQ(std::ranges::count(newest, '\n'), 2 + 4);
  EXPECT_THAT(newest, ContainsRegex("as1 Matrix +B +checked in +Document"));
  EXPECT_EQ(std::ranges::count(all, '\n'), 2 + 2);
}

TEST_F(Linked, AnUnknownObjectIsWrongUse) {
  EXPECT_EQ(Run({"links", "gone"}).exitCode, kWrongUse);
}

TEST_F(Linked, ObjectsArePartedByUnlink) {
  const auto matrix = Matrix();

  const auto outcome = Run({"unlink", "as1", matrix});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(outcome.out, "removed the link 'Document Link' from 'as1' (revision A) to 'as1 Matrix' (revision A)\n");
  EXPECT_THAT(Run({"links", "as1"}).out, HasSubstr("nothing of the class 'Document'"));
  EXPECT_THAT(Run({"show", matrix}).out, HasSubstr("as1 Matrix"));
}

TEST_F(Linked, ObjectsStaySoInADryRun) {
  const auto outcome = Run({"unlink", "as1", Matrix(), "--dry-run"});

  EXPECT_THAT(outcome.out, HasSubstr("nothing removed, as asked: the link 'Document Link'"));
  EXPECT_THAT(Run({"links", "as1"}).out, HasSubstr("as1 Matrix"));
}

TEST_F(Linked, ObjectsThatAreNotLinkedNeedNoUnlink) {
  const auto outcome = Run({"unlink", "nut", Matrix()});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("there is nothing to remove"));
}

TEST_F(Linked, ALinkThatCannotBeRemovedIsTold) {
  const auto matrix = Matrix();
  gate->FailOperation("VdObject.RemoveLink", 1);

  const auto outcome = Run({"unlink", "as1", matrix});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("Cls_Utils.RemoveLogicalLink"));
}

class ChildrenVerb : public VaultWithAs1 {};

TEST_F(ChildrenVerb, ListsTheWholeStructureBreadthFirst) {
  const auto outcome = Run({"children", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 2 + 9);
  EXPECT_LT(outcome.out.find("\nplate "), outcome.out.find("\nnut-bolt-assembly "));
  EXPECT_LT(outcome.out.find("\nnut-bolt-assembly "), outcome.out.find("\nbolt "));
}

TEST_F(ChildrenVerb, TellsThatAPartHasNone) {
  EXPECT_EQ(Run({"children", "nut"}).out, "'nut' (revision A) has no components\n");
}

TEST_F(ChildrenVerb, EndsInABoxWhenTheyCannotBeRead) {
  gate->FailOperation("VdObject.Children", 2);

  const auto outcome = Run({"children", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("Cls_Utils.GetAllChildren"));
}

TEST_F(ChildrenVerb, TakesOneObject) {
  EXPECT_EQ(Run({"children"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"children", "nut", "bolt"}).exitCode, kWrongUse);
}

}  // namespace
}  // namespace quintara::test
