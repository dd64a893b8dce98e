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

}  // namespace
}  // namespace quintara::test
