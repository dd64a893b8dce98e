#include <filesystem>

#include "hosts/vault/database.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultFiles : public VaultTest<Maker> {
 protected:
  void CopyStructure(const Ref<VdObject>& object) const {
    this->Util()->RunOperation(object, this->Operation("CopyFile"), true, nullptr, nullptr);
  }
  int CopyVaultFile(const Ref<VdObject>& object, const std::string& fileName, const std::string& target) const {
    const auto record = this->Again(object)->Record();
    return this->Util()->CopyVaultFile(record->ValueAsInteger("VAULT_OBJECT_ID"), record->ValueAsString("DIRECTORY"),
                                       fileName, this->folder.Path("work"), target);
  }
  // The only file below the store's "objects" that holds `bytes`.
  std::string StoredPath(const std::string& bytes) const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(this->vault->Folder().store)) {
      if (entry.is_regular_file() && this->files->Read(entry.path().string()) == bytes) return entry.path().string();
    }
    return {};
  }
};
TYPED_TEST_SUITE(VaultFiles, Databases, DatabaseName);

TYPED_TEST(VaultFiles, StoringTakesTheFileFromItsDirectory) {
  this->WriteWork("CAR Matrix.xml", "<matrix/>");
  const auto document = this->Store()->NewObject(this->ClassId("Document"));
  document->Record()->ValuateFromString("FILE_NAME", "CAR Matrix.xml");
  document->Record()->ValuateFromString("DIRECTORY", this->folder.Path("work"));

  document->AddToVault(this->Behavior());

  EXPECT_EQ(this->vault->FileOf(document), "<matrix/>");
  EXPECT_NE(this->TextOf(document, "DIRECTORY"), this->folder.Path("work"));
  EXPECT_EQ(this->TextOf(document, "CAD_REF_FILE_NAME"), "CAR Matrix.xml");
  EXPECT_EQ(document->Record()->ValueAsString("DIRECTORY"), this->TextOf(document, "DIRECTORY"));
}

TYPED_TEST(VaultFiles, ADirectoryOfTheStoreIsTakenForNothing) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto directory = this->TextOf(part, "DIRECTORY");

  part->Record()->ValuateFromString("DIRECTORY", directory);
  part->Record()->ValuateFromString("FILE_NAME", "BOLT.stp");
  part->Update(this->Behavior());

  EXPECT_EQ(this->TextOf(part, "DIRECTORY"), directory);
  EXPECT_EQ(this->vault->FileOf(part), "bytes");
}

TYPED_TEST(VaultFiles, EqualBytesAreStoredOnce) {
  this->AddPart("A", "same");
  this->AddPart("B", "same");

  int stored = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(this->vault->Folder().store))
    stored += entry.is_regular_file();
  EXPECT_EQ(stored, 1);
}

TYPED_TEST(VaultFiles, ADamagedFileIsNeverGivenOut) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto path = this->StoredPath("bytes");
  this->files->Write(path, "bytez");

  const auto failure = FailureOf([&] { part->CopyFileTo("x.stp", this->folder.Path("work")); });

  EXPECT_THAT(failure, FailsWith(failure::kInvalidFormat));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(path));
  EXPECT_FALSE(this->WorkHas("x.stp"));
}

TYPED_TEST(VaultFiles, StoringTheBytesAgainMakesADamagedFileGood) {
  const auto part = this->AddPart("BOLT", "bytes");
  this->files->Write(this->StoredPath("bytes"), "bytez");

  this->AddPart("NUT", "bytes");

  EXPECT_EQ(this->vault->FileOf(part), "bytes");
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultFiles, CheckInStoresAChangedWorkingCopy) {
  const auto part = this->AddPart("BOLT", "old", "old light");
  this->CheckIn(part);
  this->CheckOut(part);
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  this->WriteWork("BOLT.stp", "new");
  this->WriteWork("BOLT.stp.lwt", "new light");

  this->CheckIn(part);

  EXPECT_EQ(this->vault->FileOf(part), "new");
  EXPECT_EQ(this->vault->LightFileOf(part), "new light");
  EXPECT_EQ(part->Record()->ValueAsString("DIRECTORY"), this->TextOf(part, "DIRECTORY"));
}

TYPED_TEST(VaultFiles, NewContentWithoutALightFileBesideKeepsTheOneBefore) {
  const auto part = this->AddPart("BOLT", "old", "light");
  this->CheckIn(part);
  this->CheckOut(part);
  this->Util()->CopyDocumentFile(part, "BOLT.stp", this->folder.Path("work"), 0);
  this->WriteWork("BOLT.stp", "new");

  this->CheckIn(part);

  EXPECT_EQ(this->vault->LightFileOf(part), "light");
}

TYPED_TEST(VaultFiles, ACopyMadeBeforeTheCheckOutIsAWorkingCopyToo) {
  const auto part = this->AddPart("BOLT", "old");
  this->CheckIn(part);
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  this->CheckOut(part);
  this->WriteWork("BOLT.stp", "new");

  this->Open();
  this->CheckIn(this->Again(part));

  EXPECT_EQ(this->vault->FileOf(this->Again(part)), "new");
}

TYPED_TEST(VaultFiles, ACopyOfOlderContentIsNoWorkingCopy) {
  const auto part = this->AddPart("BOLT", "old");
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  this->folder.Write("source/BOLT.stp", "newer");
  this->vault->StoreFile(part, this->folder.Path("source/BOLT.stp"));
  this->WriteWork("BOLT.stp", "changed from old");

  this->CheckIn(part);

  EXPECT_EQ(this->vault->FileOf(part), "newer");
}

TYPED_TEST(VaultFiles, ACopyOutsideTheWorkDirectoryIsNoWorkingCopy) {
  const auto part = this->AddPart("BOLT", "old");
  part->CopyFileTo("copy.stp", this->folder.Path("source"));
  this->folder.Write("source/copy.stp", "changed");

  this->CheckIn(part);

  EXPECT_EQ(this->vault->FileOf(part), "old");
}

TYPED_TEST(VaultFiles, CopyFileBringsTheLinkedRevisionNotTheNewest) {
  const auto bolt = this->AddPart("BOLT", "old");
  this->Release(bolt);
  const auto car = this->AddProduct("CAR", {bolt});
  const auto newer = this->Util()->NewRelease(bolt, nullptr, false);
  this->folder.Write("source/BOLT.stp", "new");
  this->vault->StoreFile(newer, this->folder.Path("source/BOLT.stp"));

  this->CopyStructure(car);

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "old");
}

TYPED_TEST(VaultFiles, OfTwoHeldRevisionsTheNewerIsBrought) {
  const auto bolt = this->AddPart("BOLT", "old");
  this->Release(bolt);
  const auto newer = this->Util()->NewRelease(bolt, nullptr, false);
  this->folder.Write("source/BOLT.stp", "new");
  this->vault->StoreFile(newer, this->folder.Path("source/BOLT.stp"));

  this->CopyStructure(this->AddProduct("CAR", {newer, this->AddProduct("AXLE", {bolt})}));

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "new");
}

TYPED_TEST(VaultFiles, EveryCopyIsNotedForOtherProcesses) {
  const auto part = this->AddPart("BOLT", "bytes");
  this->CopyStructure(part);
  part->CopyFileTo("a.stp", this->folder.Path("work"));
  this->CopyVaultFile(part, "BOLT.stp", "b.stp");
  const auto other = this->OpenAnother(this->Options());

  for (const auto* name : {"BOLT.stp", "a.stp", "b.stp"}) {
    const auto noted = other->Integration().NotedObject(this->WorkPath(name));
    ASSERT_TRUE(noted) << name;
    EXPECT_EQ(noted->objectId, part->ObjectId());
    EXPECT_EQ(noted->classId, part->ClassId());
  }
  EXPECT_FALSE(other->Integration().NotedObject(this->WorkPath("unknown.stp")));
}

TYPED_TEST(VaultFiles, ACopyMadeAgainIsNotNotedAgain) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto statementsOfACopy = [&] {
    const auto before = this->vault->StatementCount();
    part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
    return this->vault->StatementCount() - before;
  };

  const auto first = statementsOfACopy();
  const auto again = statementsOfACopy();

  EXPECT_LT(again, first);
  this->WriteWork("BOLT.stp", "new");
  this->CheckIn(part);
  EXPECT_EQ(this->vault->FileOf(part), "new");
}

TYPED_TEST(VaultFiles, ALightFileIsNoWorkingCopyOfItsObject) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  this->CopyVaultFile(part, "BOLT.stp.lwt", "BOLT.lwt");

  EXPECT_FALSE(this->vault->Integration().NotedObject(this->WorkPath("BOLT.lwt")));
}

TYPED_TEST(VaultFiles, WithoutTheRightNothingIsCopied) {
  const auto part = this->AddPart("BOLT", "bytes");
  this->vault->AddUser("eve", "", false);
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);

  EXPECT_THAT(FailureOf([&] { this->Again(part)->CopyFileTo("x.stp", this->folder.Path("work")); }),
              FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->CopyVaultFile(part, "BOLT.stp", "x.stp"); }),
              FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->CopyStructure(this->Again(part)); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->FileOf(this->Again(part)); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->LightFileOf(this->Again(part)); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultFiles, AStaleHandleNeverBringsOlderContentBack) {
  const auto part = this->AddPart("BOLT", "old");
  const auto stale = this->Again(part);
  stale->Retrieve();
  this->folder.Write("source/BOLT.stp", "new");
  this->vault->StoreFile(part, this->folder.Path("source/BOLT.stp"));

  stale->Record()->ValuateFromString("CAD_REF_FILE_NAME", "bolt.stp");
  stale->Update(this->Behavior());

  EXPECT_EQ(this->vault->FileOf(part), "new");
  EXPECT_EQ(this->TextOf(part, "CAD_REF_FILE_NAME"), "bolt.stp");
  EXPECT_EQ(stale->Record()->ValueAsString("DIRECTORY"), this->TextOf(part, "DIRECTORY"));
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultFiles, AnEmptiedFileNameLeavesTheObjectWithoutAFile) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  part->Record()->ValuateFromString("FILE_NAME", "");
  part->Update(this->Behavior());

  EXPECT_EQ(this->vault->FileOf(part), "");
  EXPECT_EQ(this->TextOf(part, "DIRECTORY"), "");
  EXPECT_EQ(this->TextOf(part, "TDM_FILE_ID"), "0");
  EXPECT_THAT(FailureOf([&] { part->CopyFileTo("x.stp", this->folder.Path("work")); }),
              FailsWith(failure::kFileNotFound));
  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
}

TYPED_TEST(VaultFiles, AStoredNameThatLeadsOutOfTheFolderIsNeverWritten) {
  for (const auto* name : {"../x", "..\\..\\x", "/tmp/x", "C:x", "NUL", "x.", "a/b", "x "}) {
    const auto part = this->AddPart("BOLT", "bytes");
    vault::Database(this->vault->Folder().connection)
        .Execute("UPDATE \"ZORVA_PART\" SET \"CAD_REF_FILE_NAME\" = ?", {std::string(name)});
    const auto outside = this->folder.Names();

    EXPECT_THAT(FailureOf([&] { this->CopyStructure(part); }), FailsWith(failure::kInvalidCall)) << name;
    EXPECT_EQ(this->folder.Names(), outside) << name;
  }
}

TYPED_TEST(VaultFiles, AWorkingCopyStaysOneAfterANewRelease) {
  const auto part = this->AddPart("BOLT", "old");
  this->Release(part);
  this->CopyStructure(part);
  const auto next = this->Util()->NewRelease(part, nullptr, false);
  this->WriteWork("BOLT.stp", "new");

  this->CopyStructure(next);
  this->CheckIn(next);

  EXPECT_EQ(this->vault->FileOf(next), "new");
  EXPECT_EQ(this->vault->FileOf(part), "old");
  EXPECT_EQ(this->vault->Integration().NotedObject(this->WorkPath("BOLT.stp"))->objectId, next->ObjectId());
}

TYPED_TEST(VaultFiles, ALightFileMadeAnewIsStoredThoughTheFileIsAsItWas) {
  const auto part = this->AddPart("BOLT", "bytes", "old light");
  this->CheckIn(part);
  this->CheckOut(part);
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  this->WriteWork("BOLT.stp.lwt", "new light");

  this->CheckIn(part);

  EXPECT_EQ(this->vault->FileOf(part), "bytes");
  EXPECT_EQ(this->vault->LightFileOf(part), "new light");
}

TYPED_TEST(VaultFiles, ALightFileThatStandsBesideIsRenewedWithTheFile) {
  const auto part = this->AddPart("BOLT", "old", "old light");
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  this->CheckIn(part);
  this->CheckOut(part);
  this->folder.Write("source/BOLT.stp", "new");
  this->folder.Write("source/BOLT.stp.lwt", "new light");
  this->vault->StoreFile(part, this->folder.Path("source/BOLT.stp"));

  this->CopyStructure(part);
  EXPECT_EQ(this->ReadWork("BOLT.stp.lwt"), "new light");

  this->CheckIn(part);
  EXPECT_EQ(this->vault->LightFileOf(part), "new light");
}

TYPED_TEST(VaultFiles, AFileThatWasOverwrittenIsNoCopyOfWhatItWasBefore) {
  const auto bolt = this->AddPart("BOLT", "bolt");
  const auto nut = this->AddPart("NUT", "nut", "nut light");
  bolt->CopyFileTo("x.stp", this->folder.Path("work"));

  this->CopyVaultFile(nut, "NUT.stp.lwt", "x.stp");
  this->CheckIn(bolt);

  EXPECT_EQ(this->ReadWork("x.stp"), "nut light");
  EXPECT_FALSE(this->vault->Integration().NotedObject(this->WorkPath("x.stp")));
  EXPECT_EQ(this->vault->FileOf(bolt), "bolt");
}

TYPED_TEST(VaultFiles, ACopyOfATransactionThatIsUndoneIsNoCopyOfWhatItWasBefore) {
  const auto bolt = this->AddPart("BOLT", "bolt");
  const auto nut = this->AddPart("NUT", "nut");
  bolt->CopyFileTo("x.stp", this->folder.Path("work"));

  FailureOf([&] {
    this->vault->InTransaction([&] {
      nut->CopyFileTo("x.stp", this->folder.Path("work"));
      throw Failure(failure::kInternal);
    });
  });
  this->CheckIn(bolt);

  EXPECT_EQ(this->ReadWork("x.stp"), "nut");
  EXPECT_EQ(this->vault->FileOf(bolt), "bolt");
}

TYPED_TEST(VaultFiles, ACopyOfASavepointThatIsUndoneIsNoCopyOfWhatItWasBefore) {
  const auto bolt = this->AddPart("BOLT", "bolt");
  const auto nut = this->AddPart("NUT", "nut");
  bolt->CopyFileTo("x.stp", this->folder.Path("work"));

  this->vault->InTransaction([&] {
    FailureOf([&] {
      this->vault->InTransaction([&] {
        nut->CopyFileTo("x.stp", this->folder.Path("work"));
        throw Failure(failure::kInternal);
      });
    });
    this->AddPart("AXLE");
  });
  this->CheckIn(bolt);

  EXPECT_EQ(this->vault->FileOf(bolt), "bolt");
}

TYPED_TEST(VaultFiles, AnAssemblyIsCopiedWithTheRightToAllThatItHolds) {
  const auto car = this->AddProduct("CAR", {this->AddPart("BOLT", "bytes")});
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "CopyFile", "ZORVA Product");
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);

  EXPECT_THAT(FailureOf([&] { this->CopyStructure(this->Again(car)); }), FailsWith(failure::kPermissionDenied));
  EXPECT_FALSE(this->WorkHas("CAR.ZVAProduct") || this->WorkHas("BOLT.stp"));
}

TYPED_TEST(VaultFiles, OlderContentNeedsTheRightToAllClasses) {
  const auto part = this->AddPart("BOLT", "old");
  const auto old = this->TextOf(part, "DIRECTORY");
  this->folder.Write("source/BOLT.stp", "new");
  this->vault->StoreFile(part, this->folder.Path("source/BOLT.stp"));
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "CopyFile", "ZORVA Part");
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);
  const auto copy = [&](const std::string& directory) {
    return this->Util()->CopyVaultFile(1, directory, "BOLT.stp", this->folder.Path("work"), "x.stp");
  };

  EXPECT_THAT(FailureOf([&] { copy(old); }), FailsWith(failure::kPermissionDenied));
  EXPECT_EQ(copy(this->TextOf(part, "DIRECTORY")), 0);
}

TYPED_TEST(VaultFiles, TheRightToOneOfTheObjectsOfAContentIsEnough) {
  this->WriteWork("same.stp", "same");
  const auto add = [&](const std::string& className) {
    return this->vault->AddObject(className, {}, this->WorkPath("same.stp"));
  };
  add("ZORVA Part");
  const auto document = add("Document");
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "CopyFile", "Document");
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);

  EXPECT_EQ(this->CopyVaultFile(document, "same.stp", "x.stp"), 0);
}

TYPED_TEST(VaultFiles, AContentWhoseBytesAreLostGivesAStatus) {
  const auto part = this->AddPart("BOLT", "bytes");
  std::filesystem::remove(this->StoredPath("bytes"));

  EXPECT_NE(this->CopyVaultFile(part, "BOLT.stp", "x.stp"), 0);
  EXPECT_THAT(FailureOf([&] { part->CopyFileTo("x.stp", this->folder.Path("work")); }),
              FailsWith(failure::kFileNotFound));
}

}  // namespace
}  // namespace quintara::test
