#include "hosts/vault/vault_fixture.h"

#include <filesystem>
#include <map>

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

TYPED_TEST(VaultUnderFailure, BytesThatCouldNotBeBroughtToTheDiskLeaveNothing) {
  this->gate->FailOperation("Files.Sync");

  EXPECT_NE(FailureOf([&] { this->AddPart("BOLT", "bytes"); }).Number(), 0);

  this->gate->Reset();
  EXPECT_TRUE(this->vault->FindNewest("BOLT").empty());
  EXPECT_THAT(this->StoredFiles(), testing::IsEmpty());
}

TYPED_TEST(VaultUnderFailure, BytesWhoseWritingFailedAreWrittenWhenTheyAreStoredAgain) {
  Ref<veldora::VdObject> nut;

  this->vault->InTransaction([&] {
    this->gate->FailOperation("Files.Write");
    EXPECT_NE(FailureOf([&] { this->AddPart("BOLT", "bytes"); }).Number(), 0);
    this->gate->Reset();
    nut = this->AddPart("NUT", "bytes");
  });

  EXPECT_EQ(this->vault->FileOf(nut), "bytes");
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultUnderFailure, BytesThatCouldNotBeMovedStayReadableAndAreMovedLater) {
  this->gate->FailOperation("Files.Rename");
  const auto part = this->AddPart("BOLT", "bytes");
  this->gate->Reset();

  EXPECT_EQ(this->vault->FileOf(part), "bytes");
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
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

TYPED_TEST(VaultUnderFailure, SettingAStructureIsAllOrNothing) {
  const auto a = this->AddPart("A");
  const auto b = this->AddPart("B");
  const auto car = this->AddProduct("CAR", {a});

  this->Sweep([&] { this->vault->SetStructure(car, {{b, 2}, {a, 1}}); });
  EXPECT_EQ(this->vault->Structure(car).size(), 2U);
}

TYPED_TEST(VaultUnderFailure, ReplacingChildrenIsAllOrNothing) {
  const auto a = this->AddPart("A");
  const auto b = this->AddPart("B");
  const auto car = this->AddProduct("CAR", {a});

  this->Sweep([&] { this->vault->Integration().ReplaceChildren(car, {{a, b}}); });
  EXPECT_EQ(this->vault->Structure(car)[0].object->ObjectId(), b->ObjectId());
}

TYPED_TEST(VaultUnderFailure, ANewReleaseIsAllOrNothing) {
  const auto part = this->AddPart("BOLT", "bytes", "light");
  const auto car = this->AddProduct("CAR", {part});
  this->Release(car);
  const auto util = this->Util();

  this->Sweep([&] { util->NewRelease(car, nullptr, false); });
  EXPECT_EQ(car->GetVersion(3)->Children(nullptr)->Count(), 1);
}

TYPED_TEST(VaultUnderFailure, LinkingIsAllOrNothing) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");
  const auto linkClass = this->ClassId("Document Link");
  const auto behavior = this->Behavior();

  this->Sweep([&] { car->AddLink(linkClass, document, nullptr, behavior); });
}

// Fails each call of a copy once. Whatever a failed copy has written, each file is whole and is noted
// as what it is, or not at all: a check-in would store it as that.
template <class Maker>
class CopyUnderFailure : public VaultUnderFailure<Maker> {
 protected:
  CopyUnderFailure() {
    bolt = this->AddPart("BOLT", "bolt", "bolt light");
    nut = this->AddPart("NUT", "nut");
    car = this->AddProduct("CAR", {bolt, nut});
  }
  // What a failed copy may leave in place of each file, and what it is noted as then; noted as nothing
  // it may hold either.
  void ExpectTrueNotes() {
    const std::map<std::int32_t, std::string> contents = {
        {bolt->ObjectId(), "bolt"}, {nut->ObjectId(), "nut"}, {car->ObjectId(), "product CAR"}};
    for (const auto* name : {"BOLT.stp", "NUT.stp", "CAR.ZVAProduct", "x.stp"}) {
      const auto noted = this->vault->Integration().NotedObject(this->WorkPath(name));
      if (!noted) continue;
      EXPECT_EQ(this->ReadWork(name), contents.at(noted->objectId)) << name;
    }
    for (const auto& entry : std::filesystem::directory_iterator(this->folder.Path("work"))) {
      EXPECT_EQ(entry.path().string().find(".new"), std::string::npos) << entry.path();
    }
  }
  template <class Operation>
  void SweepCopy(Operation&& operation) {
    for (int n = 1; n < 200; ++n) {
      // The other way round before: each file is noted as another object.
      nut->CopyFileTo("BOLT.stp", this->folder.Path("work"));
      bolt->CopyFileTo("NUT.stp", this->folder.Path("work"));
      nut->CopyFileTo("x.stp", this->folder.Path("work"));
      this->gate->FailCall(n);
      const auto failure = FailureOf(operation);
      const bool injected = this->gate->HasFailed();
      this->gate->Reset();
      ExpectTrueNotes();
      if (!injected) {
        EXPECT_EQ(failure.Number(), 0) << failure.Description();
        EXPECT_GT(n, 3);
        return;
      }
    }
    ADD_FAILURE() << "the copy never came through";
  }

  Ref<VdObject> bolt, nut, car;
};
TYPED_TEST_SUITE(CopyUnderFailure, Databases, DatabaseName);

TYPED_TEST(CopyUnderFailure, CopyFileToNeverNotesAFileForWhatItIsNot) {
  this->SweepCopy([&] { this->bolt->CopyFileTo("x.stp", this->folder.Path("work")); });

  EXPECT_EQ(this->ReadWork("x.stp"), "bolt");
  EXPECT_EQ(this->ReadWork("x.stp.lwt"), "bolt light");
}

TYPED_TEST(CopyUnderFailure, CopyFileNeverNotesAFileForWhatItIsNot) {
  this->CheckIn(this->bolt);
  this->CheckIn(this->nut);
  const auto util = this->Util();
  const auto operation = this->Operation("CopyFile");

  this->SweepCopy([&] { util->RunOperation(this->car, operation, true, nullptr, nullptr); });

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bolt");
  EXPECT_EQ(this->ReadWork("NUT.stp"), "nut");
  EXPECT_EQ(this->ReadWork("CAR.ZVAProduct"), "product CAR");
}

TYPED_TEST(CopyUnderFailure, CopyVaultFileAndCopyDocumentFileNeverDoEither) {
  const auto util = this->Util();
  const auto directory = this->TextOf(this->bolt, "DIRECTORY");
  const auto work = this->folder.Path("work");

  this->SweepCopy([&] { util->CopyVaultFile(1, directory, "BOLT.stp", work, "x.stp"); });
  this->SweepCopy([&] { util->CopyDocumentFile(this->bolt, "x.stp", work, 0); });

  EXPECT_EQ(this->ReadWork("x.stp"), "bolt");
}

TYPED_TEST(CopyUnderFailure, AChangedWorkingCopyStaysOneWhenItCouldNotBeOverwritten) {
  this->nut->CopyFileTo("x.stp", this->folder.Path("work"));
  this->WriteWork("x.stp", "changed nut");
  this->gate->FailOperation("Files.Rename");

  EXPECT_NE(FailureOf([&] { this->bolt->CopyFileTo("x.stp", this->folder.Path("work")); }).Number(), 0);
  this->gate->Reset();
  this->CheckIn(this->nut);

  EXPECT_EQ(this->vault->FileOf(this->nut), "changed nut");
}

}  // namespace
}  // namespace quintara::test
