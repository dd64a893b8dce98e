#include "quintara/vault_import.h"

#include <algorithm>
#include <filesystem>

#include "apps/quintara/vault_cli_fixture.h"
#include "base/text.h"
#include "hosts/cad/product_file.h"
#include "hosts/desk/product_comparison.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::vector<std::string> FilesBelow(const std::string& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : fs::recursive_directory_iterator(ToPath(folder))) {
    if (entry.is_regular_file()) paths.push_back(FromPath(entry.path()));
  }
  std::ranges::sort(paths);
  return paths;
}

class ImportVerb : public VaultCli {
 protected:
  Outcome Import(const std::string& file, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"import", file});
    return Run(options);
  }
  Outcome ImportAs1(const std::vector<std::string>& options = {}) { return Import(Data("as1-oc-214.stp"), options); }

  // A part of its own, with the part number `number`: equal texts are equal parts.
  std::string PartFile(const std::string& number, const std::string& name) {
    work.Write(name, PartOf(number));
    return work.Path(name);
  }
  std::string RevisionAndState(const std::string& partNumber) const {
    const auto vault = Open();
    const auto found = vault->FindNewest(partNumber);
    return found.size() == 1 ? found[0].revision + std::to_string(found[0].state) : std::to_string(found.size());
  }
  std::vector<std::string> StoredFiles() const { return FilesBelow(Folder() + "/store"); }
  // What the program puts into the folder for temporary files, and must take away again.
  static std::vector<std::string> Leftovers() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::temp_directory_path())) {
      if (FromPath(entry.path().filename()).starts_with(".quintara-import")) names.push_back(FromPath(entry.path()));
    }
    return names;
  }

 private:
  // The nut of the example, under another number.
  std::string PartOf(const std::string& number) {
    if (nut_.empty()) {
      RunBare({"import", Data("as1-oc-214.stp"), "--vault", Folder()});
      const auto vault = Open();
      const auto identity = vault->FindNewest("nut").at(0).identity;
      nut_ = vault->FileOf(
          vault->Application()->Engine()->Sessions(0)->ObjectStore()->ObjectById(identity.classId, identity.objectId));
    }
    auto text = nut_;
    for (auto at = text.find("'nut'"); at != text.npos; at = text.find("'nut'", at + 1))
      text.replace(at, 5, "'" + number + "'");
    return text;
  }

  std::string nut_;
};

TEST_F(ImportVerb, BringsAnAssemblyIntoTheVaultCheckedIn) {
  const auto outcome = ImportAs1();

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out,
              AllOf(ContainsRegex("l-bracket-assembly +assembly +4 +added"), ContainsRegex("nut +part +added"),
                    HasSubstr("imported 'as1' into the vault: 9 added, 0 revised, 0 unchanged")));
  for (const auto* number : {"as1", "rod-assembly", "nut"}) EXPECT_EQ(RevisionAndState(number), "A1") << number;
  EXPECT_THAT(Open()->Check(), IsEmpty());
}

TEST_F(ImportVerb, CountsTheInstancesOfEachChild) {
  ImportAs1();

  const auto vault = Open();
  const auto identity = vault->FindNewest("l-bracket-assembly").at(0).identity;
  const auto store = vault->Application()->Engine()->Sessions(0)->ObjectStore();
  const auto children = vault->Structure(store->ObjectById(identity.classId, identity.objectId));
  ASSERT_EQ(children.size(), 2U);
  EXPECT_EQ(std::max(children[0].quantity, children[1].quantity), 3);
}

TEST_F(ImportVerb, KeepsTheLightRepresentations) {
  ImportAs1();

  const auto vault = Open();
  const auto identity = vault->FindNewest("as1").at(0).identity;
  const auto store = vault->Application()->Engine()->Sessions(0)->ObjectStore();
  EXPECT_THAT(vault->LightFileOf(store->ObjectById(identity.classId, identity.objectId)), StartsWith("glTF"));
}

TEST_F(ImportVerb, TouchesNeitherTheWorkDirectoryNorLeavesFilesElsewhere) {
  const auto before = Leftovers();

  Run({"import", Data("as1-oc-214.stp"), "--matrix", "none", "--work", work.Path()});

  EXPECT_THAT(work.Names(), IsEmpty());
  EXPECT_EQ(Leftovers(), before);
}

TEST_F(ImportVerb, OfTheSameFileAgainChangesNothing) {
  ImportAs1();
  const auto stored = StoredFiles();

  const auto outcome = ImportAs1();

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("0 added, 0 revised, 9 unchanged"));
  EXPECT_EQ(StoredFiles(), stored);
}

TEST_F(ImportVerb, GivesAChangedPartANewRevision) {
  Import(PartFile("washer", "washer.stp"));
  auto changed = work.Read("washer.stp");
  changed.insert(changed.find("DATA;"), "/* drawn again */");
  work.Write("other.stp", changed);
  const auto same = Import(work.Path("other.stp"));
  EXPECT_THAT(same.out, HasSubstr("0 added, 0 revised, 1 unchanged"));

  const auto vault = Open();
  vault->InTransaction([&] {
    const auto identity = vault->FindNewest("washer").at(0).identity;
    const auto store = vault->Application()->Engine()->Sessions(0)->ObjectStore();
    const auto next = vault->NewRevision(store->ObjectById(identity.classId, identity.objectId));
    work.Write("washer.stp", "an older shape");
    vault->StoreFile(next, work.Path("washer.stp"));
    CheckIn(*vault, next);
  });
  const auto outcome = Import(work.Path("other.stp"));

  EXPECT_THAT(outcome.out, AllOf(ContainsRegex("washer +part +new revision C"), HasSubstr("holds no assembly")));
  EXPECT_EQ(RevisionAndState("washer"), "C1");
}

TEST_F(ImportVerb, RefusesWhatIsCheckedOutAndChangedByNameAndChangesNothing) {
  ImportAs1();
  {
    const auto vault = Open();
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto identity = vault->FindNewest("nut").at(0).identity;
    const auto nut = session->ObjectStore()->ObjectById(identity.classId, identity.objectId);
    session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckOut(nut, nullptr, false);
    work.Write("nut.stp", "my nut");
    vault->StoreFile(nut, work.Path("nut.stp"));
  }
  const auto stored = StoredFiles();
  const auto leftovers = Leftovers();

  const auto outcome = ImportAs1();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("\"nut\" has changed, and its revision A is checked out"));
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_EQ(StoredFiles(), stored);
  EXPECT_EQ(Leftovers(), leftovers);
}

TEST_F(ImportVerb, TellsInADryRunWhatItWouldDoAndChangesNothing) {
  const auto stored = StoredFiles();

  const auto outcome = ImportAs1({"--dry-run"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("nothing changed, as asked; 'as1' would be: 9 added, 0 revised, 0 unchanged"));
  EXPECT_EQ(RevisionAndState("as1"), "0");
  EXPECT_EQ(StoredFiles(), stored);
}

TEST_F(ImportVerb, ListsTheNamesThatItChanged) {
  const auto outcome = Import(Data("as1_pe_203.stp"), {"--dry-run"});

  EXPECT_THAT(outcome.out, AllOf(HasSubstr("names that were changed:"), HasSubstr("because")));
}

TEST_F(ImportVerb, TakesTheFirstClassesOfTheSettings) {
  // What the other way round is taken for would be refused by name.
  Run({"settings", "QD", "CLASS_PRODUCTS", "ZORVA Part,ZORVA Product"});
  Run({"settings", "QD", "CLASS_PARTS", "ZORVA Product"});

  const auto outcome = ImportAs1();

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Run({"ls", "as1"}).out, HasSubstr("ZORVA Part"));
  EXPECT_THAT(Run({"ls", "nut"}).out, HasSubstr("ZORVA Product"));
}

TEST_F(ImportVerb, NamesTheSettingOfAClassThatIsNotThereBeforeTheFileIsRead) {
  Run({"settings", "QD", "CLASS_PARTS", "Teil"});
  work.Write("broken.stp", "no STEP at all");

  const auto outcome = Import(work.Path("broken.stp"));

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("the setting QD CLASS_PARTS names 'Teil'"));
}

TEST_F(ImportVerb, HasNoUseForReplace) {
  const auto outcome = ImportAs1({"--replace"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("--replace"));
  EXPECT_EQ(RevisionAndState("as1"), "0");
}

TEST_F(ImportVerb, LeavesNothingBehindWhenTheFileIsDamaged) {
  work.Write("broken.stp", "no STEP at all");
  const auto leftovers = Leftovers();

  const auto outcome = Import(work.Path("broken.stp"));

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("broken.stp"));
  EXPECT_THAT(StoredFiles(), IsEmpty());
  EXPECT_EQ(Leftovers(), leftovers);
}

TEST_F(ImportVerb, LeavesNothingBehindWhenTheStoreFails) {
  gate->FailOperation("VdSessionUtil.CheckIn", 3);
  const auto leftovers = Leftovers();

  const auto outcome = ImportAs1();

  EXPECT_EQ(outcome.exitCode, kFailed);
  gate->Reset();
  EXPECT_EQ(RevisionAndState("nut"), "0");
  EXPECT_THAT(StoredFiles(), IsEmpty());
  EXPECT_EQ(Leftovers(), leftovers);
}

TEST_F(ImportVerb, RefusesAUserWhomTheVaultDoesNotKnowBeforeTheFileIsRead) {
  work.Write("broken.stp", "no STEP at all");

  const auto outcome = Import(work.Path("broken.stp"), {"--user", "nobody"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("nobody"), Not(HasSubstr("broken.stp"))));
}

PositionMatrix At(double x) {
  auto position = kIdentityPosition;
  position[9] = x;
  return position;
}

cad::ProductFile Product() {
  return {"car", {}, kIdentityPosition, {}, {{"wheel.1", "wheel.stp", At(1), {}}, {"wheel.2", "wheel.stp", At(2), {}}},
          {}};
}

bool IsTheSameAs(const cad::ProductFile& changed) {
  return HoldTheSameChildren(cad::ProductFileText(Product()), cad::ProductFileText(changed));
}

TEST(TwoProductFiles, HoldTheSameChildrenWhateverTheirSpelling) {
  auto text = cad::ProductFileText(Product());
  text.insert(text.find("<Component"), "<!-- saved again -->\n\n");

  EXPECT_TRUE(HoldTheSameChildren(cad::ProductFileText(Product()), text));
}

TEST(TwoProductFiles, HoldTheSameChildrenWhateverTheirProperties) {
  auto changed = Product();
  changed.properties.Create("colour", "red");
  changed.components[0].properties.Create("TYPE", "LWT");

  EXPECT_TRUE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferInAPosition) {
  auto changed = Product();
  changed.components[1].position[9] += 1e-12;

  EXPECT_FALSE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferInAnInstanceName) {
  auto changed = Product();
  changed.components[1].name = "wheel.3";

  EXPECT_FALSE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferInAChild) {
  auto changed = Product();
  changed.components[1].file = "tyre.stp";

  EXPECT_FALSE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferInTheirOrder) {
  auto changed = Product();
  std::swap(changed.components[0], changed.components[1]);

  EXPECT_FALSE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferWhenOneHasAnInstanceMore) {
  auto changed = Product();
  changed.components.push_back({"wheel.3", "wheel.stp", At(3), {}});

  EXPECT_FALSE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferInThePartNumber) {
  auto changed = Product();
  changed.partNumber = "van";

  EXPECT_FALSE(IsTheSameAs(changed));
}

TEST(TwoProductFiles, DifferWhenOneCannotBeRead) {
  EXPECT_FALSE(HoldTheSameChildren("broken", "broken"));
}

}  // namespace
}  // namespace quintara::test
