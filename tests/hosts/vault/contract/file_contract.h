#pragma once

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

template <class Host>
class VaultFileContract : public VaultContract<Host> {
 protected:
  void CopyStructure(const Ref<VdObject>& object) const {
    this->Util()->RunOperation(object, this->Operation("CopyFile"), true, nullptr, nullptr);
  }
  int CopyVaultFile(const Ref<VdObject>& object, const std::string& fileName, const std::string& target) const {
    const auto record = this->Again(object)->Record();
    return this->Util()->CopyVaultFile(record->ValueAsInteger("VAULT_OBJECT_ID"), record->ValueAsString("DIRECTORY"),
                                       fileName, this->folder.Path("work"), target);
  }
};
TYPED_TEST_SUITE(VaultFileContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultFileContract, StoringAMissingFileChangesNothing) {
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

TYPED_TEST(VaultFileContract, EachContentHasADirectoryOfItsOwn) {
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

TYPED_TEST(VaultFileContract, ARenamedFileKeepsItsContent) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  part->Record()->ValuateFromString("FILE_NAME", "NUT.stp");
  part->Update(this->Behavior());

  EXPECT_EQ(this->CopyVaultFile(part, "NUT.stp.lwt", "x.lwt"), 0);
  EXPECT_EQ(this->ReadWork("x.lwt"), "light");
}

TYPED_TEST(VaultFileContract, CopyFileToBringsTheLightFileToo) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  part->CopyFileTo("x.stp", this->folder.Path("work"));

  EXPECT_EQ(this->ReadWork("x.stp"), "bytes");
  EXPECT_EQ(this->ReadWork("x.stp.lwt"), "light");
}

TYPED_TEST(VaultFileContract, CopyFileToWithoutALightFileBringsTheFileAlone) {
  this->AddPart("BOLT", "bytes")->CopyFileTo("x.stp", this->folder.Path("work"));

  EXPECT_TRUE(this->WorkHas("x.stp"));
  EXPECT_FALSE(this->WorkHas("x.stp.lwt"));
}

TYPED_TEST(VaultFileContract, AnObjectWithoutAFileCannotBeCopied) {
  EXPECT_THAT(FailureOf([&] { this->AddPart("BOLT")->CopyFileTo("x.stp", this->folder.Path("work")); }),
              FailsWith(failure::kFileNotFound));
  EXPECT_THAT(FailureOf([&] { this->CopyStructure(this->AddPart("NUT")); }), FailsWith(failure::kFileNotFound));
}

TYPED_TEST(VaultFileContract, CopyDocumentFileBringsTheFileUnderAName) {
  const auto part = this->AddPart("BOLT", "bytes", "light");

  this->Util()->CopyDocumentFile(part, "BOLT Matrix.xml", this->folder.Path("work"), 0);

  EXPECT_EQ(this->ReadWork("BOLT Matrix.xml"), "bytes");
  EXPECT_FALSE(this->WorkHas("BOLT Matrix.xml.lwt"));
}

TYPED_TEST(VaultFileContract, CopyVaultFileOfAMissingFileGivesAStatus) {
  const auto part = this->AddPart("BOLT", "bytes");

  EXPECT_EQ(this->CopyVaultFile(part, "BOLT.stp", "x.stp"), 0);
  EXPECT_NE(this->CopyVaultFile(part, "BOLT.stp.lwt", "x.lwt"), 0);
  EXPECT_NE(this->CopyVaultFile(part, "NUT.stp", "y.stp"), 0);
  EXPECT_NE(this->Util()->CopyVaultFile(1, "/etc", "passwd", this->folder.Path("work"), "z"), 0);
  EXPECT_NE(this->Util()->CopyVaultFile(2, this->TextOf(part, "DIRECTORY"), "BOLT.stp", this->folder.Path("work"), "z"),
            0);
  EXPECT_FALSE(this->WorkHas("x.lwt") || this->WorkHas("y.stp") || this->WorkHas("z"));
}

TYPED_TEST(VaultFileContract, NoNameLeadsOutOfTheFolder) {
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

TYPED_TEST(VaultFileContract, AnUnusableFileNameIsNotStored) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto before = this->Dump();

  part->Record()->ValuateFromString("CAD_REF_FILE_NAME", "..\\..\\x");
  EXPECT_THAT(FailureOf([&] { part->Update(this->Behavior()); }), FailsWith(failure::kInvalidCall));

  part->Retrieve();
  part->Record()->ValuateFromString("FILE_NAME", "../x");
  EXPECT_THAT(FailureOf([&] { part->Update(this->Behavior()); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultFileContract, AnUnchangedWorkingCopyStoresNothing) {
  const auto part = this->AddPart("BOLT", "bytes");
  this->CheckIn(part);
  this->CheckOut(part);
  part->CopyFileTo("BOLT.stp", this->folder.Path("work"));
  const auto directory = this->TextOf(part, "DIRECTORY");

  this->CheckIn(part);

  EXPECT_EQ(this->TextOf(part, "DIRECTORY"), directory);
}

TYPED_TEST(VaultFileContract, TwoDifferentChangedCopiesAreRefused) {
  const auto part = this->AddPart("BOLT", "old");
  part->CopyFileTo("a.stp", this->folder.Path("work"));
  part->CopyFileTo("b.stp", this->folder.Path("work"));
  this->WriteWork("a.stp", "one");
  this->WriteWork("b.stp", "other");
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { this->CheckIn(part); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultFileContract, CopyFileBringsAllThatAnAssemblyHolds) {
  const auto bolt = this->AddPart("BOLT", "bolt", "light");
  const auto axle = this->AddProduct("AXLE", {bolt});
  const auto car = this->AddProduct("CAR", {axle, bolt});

  this->CopyStructure(car);

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bolt");
  EXPECT_EQ(this->ReadWork("AXLE.ZVAProduct"), "product AXLE");
  EXPECT_EQ(this->ReadWork("CAR.ZVAProduct"), "product CAR");
}

TYPED_TEST(VaultFileContract, AWorkingCopyStaysAndAllElseIsBrought) {
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

TYPED_TEST(VaultFileContract, DifferentObjectsOfOneFileNameAreRefusedBeforeAnyIsWritten) {
  const auto bolt = this->AddPart("BOLT", "bolt");
  const auto other = this->AddPart("bolt", "other");

  EXPECT_THAT(FailureOf([&] {
                this->CopyStructure(this->AddProduct("CAR", {bolt, other}));
              }),
              FailsWith(failure::kInvalidCall));
  EXPECT_FALSE(this->WorkHas("BOLT.stp") || this->WorkHas("CAR.ZVAProduct"));
}

TYPED_TEST(VaultFileContract, ParametersOfAnotherOperationAreRefused) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto table = this->application->NewRecList();
  table->AddField("OPERATION_ID", 1, 2);
  table->SetValue("OPERATION_ID", table->AddRow(), Variant(this->Operation("CHECKIN")->OperationId()));
  const auto run = [&] { this->Util()->RunOperation(part, this->Operation("CopyFile"), true, nullptr, table); };

  EXPECT_THAT(FailureOf(run), FailsWith(failure::kInvalidCall));
  table->SetValue("OPERATION_ID", 0, Variant(this->Operation("CopyFile")->OperationId()));
  run();
  EXPECT_TRUE(this->WorkHas("BOLT.stp"));
}

TYPED_TEST(VaultFileContract, ADirectoryThatTheStoreHasNotIsRefused) {
  const auto part = this->AddPart("BOLT", "bytes");
  const auto before = this->Dump();

  for (const auto* directory : {"store:/99999", "store:/1x", "store:/", "store:/-1", ""}) {
    part->Retrieve();
    part->Record()->ValuateFromString("DIRECTORY", directory);
    EXPECT_NE(FailureOf([&] { part->Update(this->Behavior()); }).Number(), 0) << directory;
  }
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultFileContract, ACadFileNameThatWasGivenStays) {
  this->WriteWork("x.stp", "bytes");
  const auto part = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  part->Record()->ValuateFromString("FILE_NAME", "x.stp");
  part->Record()->ValuateFromString("CAD_REF_FILE_NAME", "BOLT.stp");
  part->Record()->ValuateFromString("DIRECTORY", this->folder.Path("work"));

  part->AddToVault(this->Behavior());
  this->CopyStructure(part);

  EXPECT_EQ(this->TextOf(part, "CAD_REF_FILE_NAME"), "BOLT.stp");
  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bytes");
}

}  // namespace quintara::test
