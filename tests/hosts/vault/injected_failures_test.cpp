#include "hosts/vault/vault_fixture.h"

#include <filesystem>

namespace quintara::test {
namespace {

template <class Maker>
class VaultUnderFailure : public VaultTest<Maker> {
 protected:
  std::vector<std::string> StoredFiles() const {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(this->vault->Folder().store)) {
      if (entry.is_regular_file()) paths.push_back(entry.path().string());
    }
    std::ranges::sort(paths);
    return paths;
  }
  // Fails each call of `operation` once; as long as it fails, database and store stay as they were.
  template <class Operation>
  void Sweep(Operation&& operation) {
    const auto before = this->Dump();
    const auto stored = StoredFiles();
    for (int n = 1; n < 200; ++n) {
      this->gate->FailCall(n);
      const auto failure = FailureOf(operation);
      const bool injected = this->gate->HasFailed();
      this->gate->Reset();
      if (!injected) {
        EXPECT_EQ(failure.Number(), 0) << failure.Description();
        EXPECT_GT(n, 1);
        return;
      }
      // A call that only tidies up after the work is done may fail without harm.
      if (failure.Number() == 0) return;
      EXPECT_EQ(this->Dump(), before) << "call " << n;
      EXPECT_EQ(StoredFiles(), stored) << "call " << n;
    }
    ADD_FAILURE() << "the operation never came through";
  }
};
TYPED_TEST_SUITE(VaultUnderFailure, Databases, DatabaseName);

TYPED_TEST(VaultUnderFailure, AddingAnObjectWithAFileIsAllOrNothing) {
  this->folder.Write("source/BOLT.stp", "bytes");
  this->folder.Write("source/BOLT.stp.lwt", "light");

  this->Sweep([&] {
    this->vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", "BOLT"}}, this->folder.Path("source/BOLT.stp"));
  });
}

TYPED_TEST(VaultUnderFailure, UpdatingWithANewFileIsAllOrNothing) {
  const auto part = this->AddPart("BOLT", "old");
  this->WriteWork("BOLT.stp", "new");
  const auto store = this->Store();
  const auto behavior = this->Behavior();

  this->Sweep([&] {
    part->Retrieve();
    const auto record = part->Record();
    record->ValuateFromString("DIRECTORY", this->folder.Path("work"));
    part->Update(behavior);
  });
  EXPECT_EQ(this->vault->FileOf(part), "new");
}

TYPED_TEST(VaultUnderFailure, CheckInWithAChangedWorkingCopyIsAllOrNothing) {
  const auto part = this->AddPart("BOLT", "old");
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  this->WriteWork("BOLT.stp", "new");
  const auto util = this->Util();

  this->Sweep([&] { util->CheckIn(part, nullptr, false); });
  EXPECT_EQ(this->vault->FileOf(part), "new");
  EXPECT_EQ(this->StateOf(part), 1);
}

TYPED_TEST(VaultUnderFailure, ALargerTransactionIsAllOrNothing) {
  this->folder.Write("source/A.stp", "a");
  this->folder.Write("source/B.stp", "b");

  this->Sweep([&] {
    this->vault->InTransaction([&] {
      const auto a =
          this->vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", "A"}}, this->folder.Path("source/A.stp"));
      const auto b =
          this->vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", "B"}}, this->folder.Path("source/B.stp"));
      const auto car = this->vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "CAR"}}, {});
      this->vault->SetStructure(car, {{a, 1}, {b, 2}});
      this->Util()->CheckIn(car, nullptr, false);
    });
  });
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultUnderFailure, AFailedOperationInsideATransactionIsUndoneAlone) {
  this->vault->InTransaction([&] {
    this->AddPart("A", "a");
    EXPECT_NE(FailureOf([&] {
                this->vault->InTransaction([&] {
                  this->AddPart("B", "b");
                  throw Failure(failure::kInternal);
                });
              }).Number(),
              0);
    this->AddPart("C", "c");
  });

  EXPECT_EQ(this->vault->FindNewest("A").size(), 1U);
  EXPECT_EQ(this->vault->FindNewest("B").size(), 0U);
  EXPECT_EQ(this->vault->FindNewest("C").size(), 1U);
  EXPECT_EQ(this->StoredFiles().size(), 2U);
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultUnderFailure, BytesThatCouldNotBeMovedStayReadableAndAreMovedLater) {
  this->gate->FailOperation("Files.Rename");
  const auto part = this->AddPart("BOLT", "bytes");
  this->gate->Reset();

  EXPECT_EQ(this->vault->FileOf(part), "bytes");
  this->AddPart("NUT");
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultUnderFailure, AFailedCopyLeavesTheOldFile) {
  const auto part = this->AddPart("BOLT", "bytes");
  this->WriteWork("BOLT.stp", "mine");
  this->gate->FailOperation("Files.Rename");

  EXPECT_NE(FailureOf([&] { part->CopyFileTo("BOLT.stp", this->folder.Path("work")); }).Number(), 0);

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "mine");
  this->gate->Reset();
  EXPECT_FALSE(this->vault->Integration().NotedObject(this->WorkPath("BOLT.stp")));
}

}  // namespace
}  // namespace quintara::test
