#pragma once

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

template <class Host>
class VaultObjectContract : public VaultContract<Host> {};
TYPED_TEST_SUITE(VaultObjectContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultObjectContract, AnUnknownIdIsNothing) {
  const auto part = this->AddPart("BOLT");

  EXPECT_FALSE(this->Store()->ObjectById(part->ClassId(), part->ObjectId() + 1000));
  EXPECT_FALSE(this->Store()->ObjectById(this->ClassId("ZORVA Product"), part->ObjectId()));
  EXPECT_FALSE(this->Store()->ObjectById(999, part->ObjectId()));
}

TYPED_TEST(VaultObjectContract, ANewObjectIsStoredWithItsMasksFilled) {
  const auto part = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  part->InitData();
  part->Record()->ValuateFromString("NM_CN_PART_NUMBER", "BOLT");

  part->AddToVault(this->Behavior());

  const auto record = this->Again(part)->Record();
  EXPECT_EQ(record->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
  EXPECT_EQ(record->ValueAsString("REVISION"), "A");
  EXPECT_EQ(record->ValueAsInteger("STATE"), 0);
  EXPECT_NE(record->ValueAsString("CN_ID"), "");
  EXPECT_EQ(record->ValueAsInteger("OBJECT_ID"), part->ObjectId());
  EXPECT_EQ(record->ValueAsInteger("CLASS_ID"), part->ClassId());
  EXPECT_EQ(record->ValueAsInteger("USER_OBJECT_ID"), this->Session()->UserMetaInfo()->UserId());
  EXPECT_EQ(record->ValueAsString("CREATION_DATE").size(), 20U);
}

TYPED_TEST(VaultObjectContract, ANewObjectIsNotInTheVaultBeforeItIsAdded) {
  const auto part = this->Store()->NewObject(this->ClassId("ZORVA Part"));

  EXPECT_EQ(part->ObjectId(), 0);
  EXPECT_THAT(FailureOf([&] { part->Retrieve(); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { part->Update(this->Behavior()); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { part->GetVersion(3); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { part->Children(nullptr); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, AnIdentityGivenByHandIsTakenOnceAndPassedOverByTheSequence) {
  const auto next = std::stoi(this->TextOf(this->AddPart("A"), "CN_ID")) + 1;
  const auto given = std::string(7, '0') + std::to_string(next);
  this->Add("ZORVA Part", {{"CN_ID", given}});

  EXPECT_THAT(FailureOf([&] { this->Add("ZORVA Part", {{"CN_ID", given}}); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(std::stoi(this->TextOf(this->AddPart("B"), "CN_ID")), next + 1);
}

TYPED_TEST(VaultObjectContract, LinksAreNotAddedAsObjects) {
  EXPECT_THAT(FailureOf([&] { this->Add("Structure Link", {}); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->Store()->NewObject(this->ClassId("Document Link")); }),
              FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, AddingTwiceFails) {
  const auto part = this->AddPart("BOLT");

  EXPECT_THAT(FailureOf([&] { part->AddToVault(this->Behavior()); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, WhatWasNeverSetReadsAsTheEmptyTextOrZero) {
  const auto record = this->Again(this->AddPart("BOLT"))->Record();

  EXPECT_EQ(record->Value("CN_DESCRIPTION"), Variant(""));
  EXPECT_EQ(record->Value("FILE_TYPE"), Variant(0));
  EXPECT_EQ(record->ValueAsInteger("CN_DESCRIPTION"), 0);
  EXPECT_EQ(record->ValueAsString("FILE_TYPE"), "0");
}

TYPED_TEST(VaultObjectContract, AnUnknownAttributeFails) {
  const auto record = this->AddPart("BOLT")->Record();

  EXPECT_THAT(FailureOf([&] { record->Value("NONSENSE"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { record->ValuateFromString("NONSENSE", "x"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { record->Value("state"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, ATextThatIsNoNumberFailsOnAnIntegerAttribute) {
  const auto record = this->AddPart("BOLT")->Record();

  EXPECT_THAT(FailureOf([&] { record->ValuateFromString("FILE_TYPE", "abc"); }), FailsWith(failure::kTypeMismatch));
  EXPECT_THAT(FailureOf([&] { record->ValuateFromString("FILE_TYPE", "2147483648"); }), FailsWith(failure::kOverflow));
}

TYPED_TEST(VaultObjectContract, ATextIsKeptAsItIs) {
  const auto part = this->AddPart("BOLT");
  const std::string odd = " \xC3\xA9\xE2\x82\xAC'\"; DROP TABLE vd_object; --\n%_*?[x]\\ ";

  part->Record()->ValuateFromString("CN_DESCRIPTION", odd);
  part->Update(this->Behavior());

  EXPECT_EQ(this->TextOf(part, "CN_DESCRIPTION"), odd);
}

TYPED_TEST(VaultObjectContract, WhatIsNoTextIsRefused) {
  const auto record = this->AddPart("BOLT")->Record();

  EXPECT_THAT(FailureOf([&] { record->ValuateFromString("CN_DESCRIPTION", "\xFF"); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { record->ValuateFromString("CN_DESCRIPTION", std::string("a\0b", 3)); }),
              FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, TheVaultKeepsItsOwnAttributes) {
  const auto record = this->AddPart("BOLT")->Record();

  for (const auto* name :
       {"OBJECT_ID", "CLASS_ID", "STATE", "CN_ID", "REVISION", "VAULT_OBJECT_ID", "TDM_FILE_ID", "CREATION_DATE"}) {
    EXPECT_THAT(FailureOf([&] { record->ValuateFromString(name, "1"); }), FailsWith(failure::kPermissionDenied))
        << name;
  }
}

TYPED_TEST(VaultObjectContract, UpdateWritesOnlyWhatWasSet) {
  const auto part = this->AddPart("BOLT");
  const auto mine = this->Again(part);
  mine->Retrieve();
  part->Record()->ValuateFromString("CN_DESCRIPTION", "theirs");
  part->Update(this->Behavior());

  mine->Record()->ValuateFromString("NM_CN_PART_NUMBER", "NUT");
  mine->Update(this->Behavior());

  EXPECT_EQ(this->TextOf(part, "CN_DESCRIPTION"), "theirs");
  EXPECT_EQ(this->TextOf(part, "NM_CN_PART_NUMBER"), "NUT");
}

TYPED_TEST(VaultObjectContract, RetrieveDropsWhatWasNotStored) {
  const auto part = this->AddPart("BOLT");
  part->Record()->ValuateFromString("NM_CN_PART_NUMBER", "NUT");

  part->Retrieve();

  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
}

TYPED_TEST(VaultObjectContract, RetrieveAttributesReadsOnlyThose) {
  const auto part = this->AddPart("BOLT");
  part->Record()->ValuateFromString("NM_CN_PART_NUMBER", "NUT");
  part->Record()->ValuateFromString("CN_DESCRIPTION", "mine");

  part->RetrieveAttributes("NM_CN_PART_NUMBER; FILE_NAME");

  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
  EXPECT_EQ(part->Record()->ValueAsString("CN_DESCRIPTION"), "mine");
  EXPECT_THAT(FailureOf([&] { part->RetrieveAttributes("NONSENSE"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, InitDataNeverResetsAStoredObject) {
  const auto part = this->AddPart("BOLT");

  part->InitData();

  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
}

TYPED_TEST(VaultObjectContract, ACloneIsIndependent) {
  const auto part = this->AddPart("BOLT");

  const auto clone = part->Clone();
  clone->Record()->ValuateFromString("NM_CN_PART_NUMBER", "NUT");

  EXPECT_EQ(clone->ObjectId(), part->ObjectId());
  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
}

TYPED_TEST(VaultObjectContract, TheHeaderNamesEveryAttributeOfTheClass) {
  const auto header = this->AddPart("BOLT")->Record()->Header();

  EXPECT_EQ(header->Count(), this->Session()->MetaInfo()->ClassByName("ZORVA Part")->Attributes()->Count());
  EXPECT_TRUE(header->Contains("CAD_REF_FILE_NAME"));
  EXPECT_FALSE(header->Contains("NONSENSE"));
  EXPECT_EQ(header->Item(0)->Name(), "OBJECT_ID");
  EXPECT_EQ(header->Item(0)->TypeCode(), veldora::column_type::kInteger);
  EXPECT_THAT(FailureOf([&] { header->Item(header->Count()); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultObjectContract, AListKeepsItsOrderAndFailsPastTheEnd) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddPart("A"));
  list->Add(this->AddPart("B"));
  list->Add(this->AddPart("C"));

  list->Remove(0);

  EXPECT_EQ(this->PartNumbers(list), (std::vector<std::string>{"B", "C"}));
  EXPECT_THAT(FailureOf([&] { list->Item(2); }), FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { list->Remove(-1); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultObjectContract, AListOfOldObjectsIsReadTogether) {
  const auto list = this->Store()->NewObjects();
  for (int i = 0; i < 450; ++i) list->Add(this->Again(this->AddPart("P" + std::to_string(i))));
  list->SetAttributeNames("NM_CN_PART_NUMBER, STATE");

  list->RetrieveAll();

  EXPECT_EQ(list->Item(449)->Record()->ValueAsString("NM_CN_PART_NUMBER"), "P449");
  EXPECT_EQ(list->Item(0)->Record()->ValueAsString("REVISION"), "A");
}

TYPED_TEST(VaultObjectContract, ReadingAheadAnUnknownAttributeFails) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddPart("A"));
  list->SetAttributeNames("NONSENSE");

  EXPECT_THAT(FailureOf([&] { list->RetrieveAll(); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, RecordsOfAListStandForItsObjects) {
  const auto part = this->AddPart("BOLT");
  const auto list = this->Store()->NewObjects();
  list->Add(part);

  const auto records = list->Records();

  ASSERT_EQ(records->RecordCount(), 1);
  EXPECT_EQ(records->GetRecord(0)->ValueAsInteger("OBJECT_ID"), part->ObjectId());
  EXPECT_EQ(records->GetRecord(0)->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
  EXPECT_EQ(this->Store()->ObjectFromRecord(records->GetRecord(0), -1)->ObjectId(), part->ObjectId());
}

TYPED_TEST(VaultObjectContract, ATableMadeByHandStandsForObjectsToo) {
  const auto part = this->AddPart("BOLT");
  const auto table = this->application->NewRecList();
  table->AddField("OBJECT_ID", veldora::column_type::kInteger, 4);
  table->AddField("CLASS_ID", veldora::column_type::kInteger, 2);
  table->SetValue("OBJECT_ID", table->AddRow(), Variant(part->ObjectId()));
  table->SetCell(1, 0, Variant(part->ClassId()));

  EXPECT_EQ(this->Store()->ObjectFromRecord(table->GetRecord(0), -1)->ObjectId(), part->ObjectId());
  EXPECT_EQ(this->Store()->ObjectsFromRecList(table, 0)->ObjectsOf("")->Count(), 1);
}

TYPED_TEST(VaultObjectContract, ARecordOfAnObjectThatIsGoneFails) {
  const auto table = this->application->NewRecList();
  table->AddField("OBJECT_ID", veldora::column_type::kInteger, 4);
  table->AddField("CLASS_ID", veldora::column_type::kInteger, 2);
  table->SetValue("OBJECT_ID", table->AddRow(), Variant(12345));

  EXPECT_THAT(FailureOf([&] { this->Store()->ObjectFromRecord(table->GetRecord(0), -1); }),
              FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultObjectContract, ATableRefusesWhatItHasNot) {
  const auto table = this->application->NewRecList();
  table->AddField("A", veldora::column_type::kInteger, 2);

  EXPECT_THAT(FailureOf([&] { table->AddField("A", 1, 2); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { table->AddField("B", 9, 2); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { table->GetRecord(0); }), FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { table->Value("A"); }), FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { table->SetValue("B", table->AddRow(), Variant(1)); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { table->SetValue("A", 0, Variant("x")); }), FailsWith(failure::kTypeMismatch));
  EXPECT_THAT(FailureOf([&] { table->ColumnName(1); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultObjectContract, ATableAnswersItsFirstRow) {
  const auto table = this->application->NewRecList();
  table->AddField("OPERATION_ID", veldora::column_type::kInteger, 2);
  table->SetValue("OPERATION_ID", table->AddRow(), Variant("7"));

  EXPECT_EQ(table->ValueAsInteger("OPERATION_ID"), 7);
  EXPECT_EQ(table->ValueAt("OPERATION_ID", 0), "7");
  EXPECT_EQ(table->ColumnCount(), 1);
  EXPECT_TRUE(table->Header()->Contains("OPERATION_ID"));
}

TYPED_TEST(VaultObjectContract, ThePolicyOfTheSessionKeepsWhatIsWrittenOnIt) {
  this->Store()->DefaultBehavior()->SetOptionC(2);

  EXPECT_EQ(this->Store()->DefaultBehavior()->OptionC(), 2);
  const auto copy = this->Store()->DefaultBehavior()->Clone();
  copy->SetOptionC(5);
  EXPECT_EQ(this->Store()->DefaultBehavior()->OptionC(), 2);
}

TYPED_TEST(VaultObjectContract, ACellThatWasNeverSetReadsAsTheEmptyTextOrZero) {
  const auto table = this->application->NewRecList();
  table->AddField("NUMBER", veldora::column_type::kInteger, 4);
  table->AddRow();
  table->AddField("TEXT", veldora::column_type::kText, 4);

  EXPECT_EQ(table->Value("NUMBER"), Variant(0));
  EXPECT_EQ(table->Value("TEXT"), Variant(""));
  EXPECT_EQ(table->ValueAsInteger("TEXT"), 0);
  EXPECT_EQ(table->ValueAt("NUMBER", 0), "0");
  table->SetValue("NUMBER", 0, Variant(""));
  EXPECT_EQ(table->Value("NUMBER"), Variant(0));
}

TYPED_TEST(VaultObjectContract, TheMaskPassesOverAnIdentityGivenByHand) {
  const auto attributes = this->Session()->MetaInfo()->ClassByName("ZORVA Part")->Attributes();
  const auto mask = this->Store()->Masks()->MaskOf(attributes->ItemByName("CN_ID"));
  const auto next = std::stoi(mask->NextValue()) + 1;
  this->Add("ZORVA Part", {{"CN_ID", std::string(7, '0') + std::to_string(next)}});

  EXPECT_EQ(std::stoi(mask->NextValue()), next + 1);
}

TYPED_TEST(VaultObjectContract, AnObjectWithFilledMasksIsStoredWithThem) {
  const auto part = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  part->InitData();
  const auto attributes = part->ClassInfo()->Attributes();
  std::string identity;
  for (int i = 0; i < attributes->Count(); ++i) {
    const auto attribute = attributes->Item(Variant(i));
    const auto mask = this->Store()->Masks()->MaskOf(attribute);
    if (!mask) continue;
    const bool revision = attribute->Name() == "REVISION";
    const auto value = revision ? mask->FirstRevision() : mask->NextValue();
    if (!revision) identity = value;
    part->Record()->ValuateFromString(attribute->Name(), value);
  }

  part->AddToVault(this->Behavior());

  EXPECT_EQ(this->TextOf(part, "CN_ID"), identity);
  EXPECT_EQ(this->TextOf(part, "REVISION"), "A");
}

TYPED_TEST(VaultObjectContract, AFailedInsertLeavesTheObjectNewAndAsItWasFilled) {
  const auto part = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  part->Record()->ValuateFromString("NM_CN_PART_NUMBER", "BOLT");
  part->Record()->ValuateFromString("FILE_NAME", "missing.stp");
  part->Record()->ValuateFromString("DIRECTORY", this->folder.Path("work"));
  EXPECT_NE(FailureOf([&] { part->AddToVault(this->Behavior()); }).Number(), 0);

  part->Record()->ValuateFromString("FILE_NAME", "");
  part->AddToVault(this->Behavior());

  EXPECT_EQ(this->TextOf(part, "NM_CN_PART_NUMBER"), "BOLT");
}

}  // namespace quintara::test
