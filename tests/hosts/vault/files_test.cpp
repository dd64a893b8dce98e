#include "hosts/vault/vault_fixture.h"

#include <filesystem>

namespace quintara::test {
namespace {

template <class Maker>
class VaultFiles : public VaultTest<Maker> {
 protected:
  std::string CadName(const Ref<VdObject>& object) const { return this->TextOf(object, "CAD_REF_FILE_NAME"); }
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

TYPED_TEST(VaultFiles, StoringAMissingFileChangesNothing) {
  const auto before = this->Dump();
  const auto document = this->Store()->NewObject(this->ClassId("Document"));
  document->Record()->ValuateFromString("FILE_NAME", "missing.xml");
  document->Record()->ValuateFromString("DIRECTORY", this->folder.Path("work"));

  const auto failure = FailureOf([&] { document->AddToVault(this->Behavior()); });

  EXPECT_THAT(failure, FailsWith(failure::kFileNotFound));
  EXPECT_THAT(failure.Description(), testing::HasSubstr("missing.xml"));
  EXPECT_EQ(document->ObjectId(), 0);
  EXPECT_EQ(this->Dump(), before);
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

TYPED_TEST(VaultFiles, EachContentHasADirectoryOfItsOwn) {
  const auto part = this->AddPart("BOLT", "old");
  const auto old = this->TextOf(part, "DIRECTORY");
  this->WriteWork("BOLT.stp", "new");

  part->Record()->ValuateFromString("DIRECTORY", this->folder.Path("work"));
  part->Record()->ValuateFromString("FILE_NAME", "BOLT.stp");
  part->Update(this->Behavior());

  EXPECT_NE(this->TextOf(part, "DIRECTORY"), old);
  EXPECT_EQ(this->Util()->CopyVaultFile(1, old, "BOLT.stp", this->folder.Path("work"), "old.stp"), 0);
  EXPECT_EQ(this->ReadWork("old.stp"), "old");
}

TYPED_TEST(VaultFiles, ARenamedFileKeepsItsContent) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  part->Record()->ValuateFromString("FILE_NAME", "NUT.stp");
  part->Update(this->Behavior());

  EXPECT_EQ(this->CopyVaultFile(part, "NUT.stp.lwt", "x.lwt"), 0);
  EXPECT_EQ(this->ReadWork("x.lwt"), "light");
}

TYPED_TEST(VaultFiles, EqualBytesAreStoredOnce) {
  this->AddPart("A", "same");
  this->AddPart("B", "same");

  int stored = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(this->vault->Folder().store))
    stored += entry.is_regular_file();
  EXPECT_EQ(stored, 1);
}

TYPED_TEST(VaultFiles, CopyFileToBringsTheLightFileToo) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  part->CopyFileTo("x.stp", this->folder.Path("work"));

  EXPECT_EQ(this->ReadWork("x.stp"), "bytes");
  EXPECT_EQ(this->ReadWork("x.stp.lwt"), "light");
}

TYPED_TEST(VaultFiles, CopyFileToWithoutALightFileBringsTheFileAlone) {
  this->AddPart("BOLT", "bytes")->CopyFileTo("x.stp", this->folder.Path("work"));

  EXPECT_TRUE(this->WorkHas("x.stp"));
  EXPECT_FALSE(this->WorkHas("x.stp.lwt"));
}

TYPED_TEST(VaultFiles, AnObjectWithoutAFileCannotBeCopied) {
  EXPECT_THAT(FailureOf([&] { this->AddPart("BOLT")->CopyFileTo("x.stp", this->folder.Path("work")); }),
              FailsWith(failure::kFileNotFound));
  EXPECT_THAT(FailureOf([&] { this->CopyStructure(this->AddPart("NUT")); }), FailsWith(failure::kFileNotFound));
}

TYPED_TEST(VaultFiles, CopyDocumentFileBringsTheFileUnderAName) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  this->Util()->CopyDocumentFile(part, "BOLT Matrix.xml", this->folder.Path("work"), 0);

  EXPECT_EQ(this->ReadWork("BOLT Matrix.xml"), "bytes");
  EXPECT_FALSE(this->WorkHas("BOLT Matrix.xml.lwt"));
}

TYPED_TEST(VaultFiles, CopyVaultFileOfAMissingFileGivesAStatus) {
  const auto part = this->AddPart("BOLT", "bytes");

  EXPECT_EQ(this->CopyVaultFile(part, "BOLT.stp", "x.stp"), 0);
  EXPECT_NE(this->CopyVaultFile(part, "BOLT.stp.lwt", "x.lwt"), 0);
  EXPECT_NE(this->CopyVaultFile(part, "NUT.stp", "y.stp"), 0);
  EXPECT_NE(this->Util()->CopyVaultFile(1, "/etc", "passwd", this->folder.Path("work"), "z"), 0);
  EXPECT_NE(this->Util()->CopyVaultFile(2, this->TextOf(part, "DIRECTORY"), "BOLT.stp", this->folder.Path("work"), "z"),
            0);
  EXPECT_FALSE(this->WorkHas("x.lwt") || this->WorkHas("y.stp") || this->WorkHas("z"));
}

TYPED_TEST(VaultFiles, NoNameLeadsOutOfTheFolder) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  for (const auto* name : {"../x.stp", "..\\..\\x", "/tmp/x", "C:\\x", "a/b", "", ".", "..", "CON", "nul.stp", "Com1",
                           "x.", "x ", "a\tb", "x:y"}) {
    EXPECT_THAT(FailureOf([&] { part->CopyFileTo(name, this->folder.Path("work")); }), FailsWith(failure::kInvalidCall))
        << name;
    EXPECT_THAT(FailureOf([&] { this->Util()->CopyDocumentFile(part, name, this->folder.Path("work"), 0); }),
                FailsWith(failure::kInvalidCall))
        << name;
    EXPECT_THAT(FailureOf([&] { this->CopyVaultFile(part, "BOLT.stp", name); }), FailsWith(failure::kInvalidCall))
        << name;
  }
}

TYPED_TEST(VaultFiles, AnUnusableFileNameIsNotStored) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto before = this->Dump();

  part->Record()->ValuateFromString("CAD_REF_FILE_NAME", "..\\..\\x");
  EXPECT_THAT(FailureOf([&] { part->Update(this->Behavior()); }), FailsWith(failure::kInvalidCall));

  part->Retrieve();
  part->Record()->ValuateFromString("FILE_NAME", "../x");
  EXPECT_THAT(FailureOf([&] { part->Update(this->Behavior()); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
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

TYPED_TEST(VaultFiles, AnUnchangedWorkingCopyStoresNothing) {
  const auto part = this->AddPart("BOLT", "bytes");
  this->CheckIn(part);
  this->CheckOut(part);
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  const auto directory = this->TextOf(part, "DIRECTORY");

  this->CheckIn(part);

  EXPECT_EQ(this->TextOf(part, "DIRECTORY"), directory);
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

TYPED_TEST(VaultFiles, TwoDifferentChangedCopiesAreRefused) {
  const auto part = this->AddPart("BOLT", "old");
  part->CopyFileTo("a.stp", this->folder.Path("work"));
  part->CopyFileTo("b.stp", this->folder.Path("work"));
  this->WriteWork("a.stp", "one");
  this->WriteWork("b.stp", "other");
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { this->CheckIn(part); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultFiles, CopyFileBringsAllThatAnAssemblyHolds) {
  const auto bolt = this->AddPart("BOLT", "bolt", "light");
  const auto axle = this->AddProduct("AXLE", {bolt});
  const auto car = this->AddProduct("CAR", {axle, bolt});

  this->CopyStructure(car);

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bolt");
  EXPECT_EQ(this->ReadWork("AXLE.ZVAProduct"), "product AXLE");
  EXPECT_EQ(this->ReadWork("CAR.ZVAProduct"), "product CAR");
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

TYPED_TEST(VaultFiles, AWorkingCopyStaysAndAllElseIsBrought) {
  const auto bolt = this->AddPart("BOLT", "bolt");
  const auto nut = this->AddPart("NUT", "nut");
  const auto car = this->AddProduct("CAR", {bolt, nut});
  this->CheckIn(nut);
  this->CopyStructure(car);
  this->WriteWork("BOLT.stp", "my change");
  this->WriteWork("NUT.stp", "nobody's change");

  this->CopyStructure(car);

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "my change");
  EXPECT_EQ(this->ReadWork("NUT.stp"), "nut");
}

TYPED_TEST(VaultFiles, DifferentObjectsOfOneFileNameAreRefusedBeforeAnyIsWritten) {
  const auto bolt = this->AddPart("BOLT", "bolt");
  const auto other = this->AddPart("bolt", "other");

  EXPECT_THAT(FailureOf([&] {
                this->CopyStructure(this->AddProduct("CAR", {bolt, other}));
              }),
              FailsWith(failure::kInvalidCall));
  EXPECT_FALSE(this->WorkHas("BOLT.stp") || this->WorkHas("CAR.ZVAProduct"));
}

TYPED_TEST(VaultFiles, ParametersOfAnotherOperationAreRefused) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto table = this->vault->Application()->NewRecList();
  table->AddField("OPERATION_ID", 1, 2);
  table->SetValue("OPERATION_ID", table->AddRow(), Variant(this->Operation("CHECKIN")->OperationId()));
  const auto run = [&] { this->Util()->RunOperation(part, this->Operation("CopyFile"), true, nullptr, table); };

  EXPECT_THAT(FailureOf(run), FailsWith(failure::kInvalidCall));
  table->SetValue("OPERATION_ID", 0, Variant(this->Operation("CopyFile")->OperationId()));
  run();
  EXPECT_TRUE(this->WorkHas("BOLT.stp"));
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
}

}  // namespace
}  // namespace quintara::test
