#include <filesystem>

#include "hosts/vault/database.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using Kind = VaultFinding::Kind;

template <class Maker>
class VaultCheck : public VaultTest<Maker> {
 protected:
  VaultCheck() {
    const auto bolt = this->AddPart("BOLT", "bolt bytes", "light");
    const auto car = this->AddProduct("CAR", {bolt});
    this->Link(car, this->AddDocument("CAR Matrix"), "Document Link");
    this->Release(bolt);
    this->Util()->NewRelease(bolt, nullptr, false);
  }
  void Execute(const std::string& sql) { vault::Database(this->vault->Folder().connection).ExecuteOnce(sql); }
  std::vector<Kind> Kinds() {
    std::vector<Kind> kinds;
    for (const auto& finding : this->vault->Check()) kinds.push_back(finding.kind);
    return kinds;
  }
  std::filesystem::path Stored(const std::string& bytes) const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(this->vault->Folder().store)) {
      if (entry.is_regular_file() && this->files->Read(entry.path().string()) == bytes) return entry.path();
    }
    return {};
  }
};
TYPED_TEST_SUITE(VaultCheck, Databases, DatabaseName);

TYPED_TEST(VaultCheck, AGoodVaultHasNoFindings) {
  const auto before = this->Dump();

  EXPECT_THAT(this->vault->Check(), testing::IsEmpty());

  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultCheck, ADamagedFileIsFound) {
  this->files->Write(this->Stored("bolt bytes").string(), "bolt bytez");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kDamagedFile});
}

TYPED_TEST(VaultCheck, ALostLightFileIsFoundByName) {
  std::filesystem::remove(this->Stored("light"));

  const auto findings = this->vault->Check();

  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::kMissingFile);
  EXPECT_THAT(findings[0].text, testing::HasSubstr("BOLT.stp.lwt"));
}

TYPED_TEST(VaultCheck, BytesThatNobodyHasAreFound) {
  const auto place = this->Stored("bolt bytes").parent_path().parent_path() / "aa" / std::string(64, 'a');
  std::filesystem::create_directories(place.parent_path());
  this->files->Write(place.string(), "stray");
  this->files->Write(this->vault->Folder().store + "/notes.txt", "stray");

  EXPECT_EQ(this->Kinds(), (std::vector<Kind>{Kind::kStrayFile, Kind::kStrayFile}));
}

TYPED_TEST(VaultCheck, AnUnknownStateIsFound) {
  this->Execute("UPDATE \"ZORVA_PRODUCT\" SET \"STATE\" = 7");

  EXPECT_THAT(this->Kinds(), testing::Contains(Kind::kObject));
}

TYPED_TEST(VaultCheck, AnObjectCheckedOutByNobodyIsFound) {
  this->Execute("UPDATE \"ZORVA_PRODUCT\" SET \"STATE\" = 2");
  this->Execute("UPDATE vd_object SET owner_id = NULL");

  EXPECT_THAT(this->Kinds(), testing::Contains(Kind::kObject));
}

TYPED_TEST(VaultCheck, ADirectoryOfAnotherFileIsFound) {
  this->Execute("UPDATE \"ZORVA_PRODUCT\" SET \"DIRECTORY\" = 'store:/1'");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kObject});
}

TYPED_TEST(VaultCheck, AGapInTheRevisionsIsFound) {
  this->Execute("UPDATE vd_object SET version = 3 WHERE version = 2");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kVersion});
}

TYPED_TEST(VaultCheck, AForeignIdentityIsFound) {
  this->Execute("UPDATE \"ZORVA_PART\" SET \"CN_ID\" = 'other'");

  EXPECT_THAT(this->Kinds(), testing::Each(Kind::kVersion));
  EXPECT_EQ(this->Kinds().size(), 2U);
}

TYPED_TEST(VaultCheck, ACycleIsFound) {
  const auto parent = this->AddProduct("P");
  const auto child = this->AddProduct("C");
  this->Link(parent, child, "Structure Link");
  this->Execute(
      "INSERT INTO vd_link SELECT 9999, \"CLASS_ID\", to_object, from_object, 1, 1 FROM vd_link WHERE from_object = " +
      std::to_string(parent->ObjectId()));
  this->Execute("UPDATE vd_sequence SET next_value = 10000 WHERE name = 'link'");

  EXPECT_EQ(this->Kinds(), (std::vector<Kind>{Kind::kLink, Kind::kLink}));
}

TYPED_TEST(VaultCheck, ASequenceThatWouldRepeatItselfIsFound) {
  this->Execute("UPDATE vd_sequence SET next_value = 1 WHERE name = 'object'");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kObject});
}

TYPED_TEST(VaultCheck, ALostFileIsFoundForEachObjectThatHasIt) {
  this->AddPart("SAME", "bolt bytes");
  std::filesystem::remove(this->Stored("bolt bytes"));

  EXPECT_EQ(this->Kinds(), (std::vector<Kind>{Kind::kMissingFile, Kind::kMissingFile}));
}

TYPED_TEST(VaultCheck, AnotherFileNameThanTheStoredOneIsFound) {
  this->Execute("UPDATE \"ZORVA_PRODUCT\" SET \"FILE_NAME\" = 'other'");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kObject});
}

TYPED_TEST(VaultCheck, AnotherClassIdIsFound) {
  this->Execute("UPDATE \"ZORVA_PRODUCT\" SET \"CLASS_ID\" = 1");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kObject});
}

TYPED_TEST(VaultCheck, AnObjectWithoutAttributesIsFound) {
  this->Execute("DELETE FROM \"ZORVA_PRODUCT\"");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kObject});
}

TYPED_TEST(VaultCheck, AnObjectThatBelongsToSomebodyWithoutBeingCheckedOutIsFound) {
  this->Execute("UPDATE \"ZORVA_PRODUCT\" SET \"STATE\" = 1");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kObject});
}

TYPED_TEST(VaultCheck, AnObjectWithoutAnIdentityIsFound) {
  this->Execute("UPDATE vd_object SET identity = NULL WHERE object_id = (SELECT \"OBJECT_ID\" FROM \"ZORVA_PRODUCT\")");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kVersion});
}

TYPED_TEST(VaultCheck, LinksWithoutAnOrderAreFound) {
  const auto car = this->AddProduct("P", {this->AddPart("A"), this->AddPart("B")});
  this->Execute("UPDATE vd_link SET place = 1 WHERE from_object = " + std::to_string(car->ObjectId()));

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kLink});
}

TYPED_TEST(VaultCheck, ALinkOfAnotherClassIsFound) {
  this->Execute("UPDATE vd_link SET \"CLASS_ID\" = 1 WHERE \"OBJECT_ID\" = (SELECT MIN(\"OBJECT_ID\") FROM vd_link)");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kLink});
}

TYPED_TEST(VaultCheck, ASettingInAStructureIsFound) {
  const auto setting = this->vault->AddObject("Admin Setting", {}, {});
  this->Execute("UPDATE vd_link SET to_object = " + std::to_string(setting->ObjectId()) +
                " WHERE \"OBJECT_ID\" = (SELECT MIN(\"OBJECT_ID\") FROM vd_link)");

  EXPECT_EQ(this->Kinds(), std::vector<Kind>{Kind::kLink});
}

// What the database's own keys keep from happening, where they were switched off.
TEST(VaultCheckWithoutKeys, EndsFilesUsersAndClassesThatAreNotThereAreFound) {
  VaultBase base({});
  InitVault(base.Plan(), *base.files);
  base.Open();
  const auto bolt = base.AddPart("BOLT", "bytes");
  const auto nut = base.AddPart("NUT");
  const auto axle = base.AddPart("AXLE");
  base.AddProduct("CAR", {bolt});
  vault::Database database(base.vault->Folder().connection);
  database.ExecuteOnce("PRAGMA foreign_keys = OFF");
  const auto where = [](const Ref<VdObject>& object) {
    return " WHERE object_id = " + std::to_string(object->ObjectId());
  };

  database.ExecuteOnce("UPDATE vd_link SET to_object = 77777");
  database.ExecuteOnce("UPDATE vd_object SET deposit_id = 77777" + where(bolt));
  database.ExecuteOnce("UPDATE vd_object SET owner_id = 77777" + where(nut));
  database.ExecuteOnce("UPDATE vd_object SET class_id = 77" + where(axle));

  std::vector<std::string> texts;
  for (const auto& finding : base.vault->Check()) texts.push_back(finding.text);
  for (const auto* text :
       {"has an end that isn't there", "has a file that isn't there", "belongs to a user who isn't there",
        "is of no class of objects", "has attributes, but isn't an object"}) {
    EXPECT_THAT(texts, testing::Contains(testing::HasSubstr(text)));
  }
}

TYPED_TEST(VaultCheck, AVaultIsNotCheckedInTheMidstOfAChange) {
  this->vault->InTransaction([&] {
    this->AddPart("NUT");
    EXPECT_THAT(FailureOf([&] { this->vault->Check(); }), FailsWith(failure::kInvalidCall));
  });

  EXPECT_EQ(this->vault->FindNewest("NUT").size(), 1U);
}

}  // namespace
}  // namespace quintara::test
