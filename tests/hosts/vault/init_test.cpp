#include <filesystem>

#include "hosts/vault/database.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultInit : public testing::Test, public VaultBase {
 protected:
  VaultInit() : VaultBase(Maker::NewConnection()) {}
};
TYPED_TEST_SUITE(VaultInit, Databases, DatabaseName);

TYPED_TEST(VaultInit, MakesTheMacroProjectUnderTheBaseDirectory) {
  InitVault(this->Plan(), *this->files);
  this->Open();

  const auto project = this->Session()->Config()->BaseDirectory() + "/QNTR/ProjectQNTR.zvavba";

  EXPECT_THAT(this->files->Read(project), testing::HasSubstr("RetrieveMatrix.UpdateDisplay"));
}

TYPED_TEST(VaultInit, IsRefusedWhereThereIsAVault) {
  InitVault(this->Plan(), *this->files);
  this->Open();
  this->AddPart("BOLT");
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { InitVault(this->Plan(), *this->files); }), FailsWith(failure::kPathAccess));

  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultInit, NamesOfTheSiteAreTaken) {
  auto plan = this->Plan();
  plan.productClass = "Assembly";
  plan.partClass = "Part";
  plan.furtherClasses = {"Drawing"};
  InitVault(plan, *this->files);
  this->Open();

  EXPECT_GT(this->ClassId("Assembly"), 0);
  const auto drawing = this->vault->AddObject("Drawing", {{"NM_CN_PART_NUMBER", "D"}}, {});
  this->CheckIn(drawing);
  EXPECT_EQ(this->StateOf(drawing), 1);
}

TYPED_TEST(VaultInit, AFailureLeavesNothingBehind) {
  const auto names = this->folder.Names();
  for (int n = 1; n < 5; ++n) {
    this->gate->Reset();
    this->gate->FailCall(n);
    if (FailureOf([&] { InitVault(this->Plan(), *this->files); }).Number() == 0) {
      EXPECT_GT(n, 1);
      return;
    }
    EXPECT_EQ(this->folder.Names(), names) << n;
  }
  ADD_FAILURE() << "the vault was never made";
}

TYPED_TEST(VaultInit, OnlyAVaultIsOpened) {
  EXPECT_THAT(FailureOf([&] { this->Open(); }), FailsWith(failure::kPathNotFound));
}

TYPED_TEST(VaultInit, ABrokenFolderFileIsNamed) {
  InitVault(this->Plan(), *this->files);
  this->folder.Write("quintara.vault/vault.xml", "<Vault");

  const auto failure = FailureOf([&] { this->Open(); });

  EXPECT_THAT(failure, FailsWith(failure::kInvalidFormat));
  EXPECT_THAT(failure.Description(), testing::HasSubstr("vault.xml"));
}

TYPED_TEST(VaultInit, ANewerVaultIsRefusedAndLeftAlone) {
  InitVault(this->Plan(), *this->files);
  this->Open();
  vault::Database(this->vault->Folder().connection).ExecuteOnce("UPDATE schema_version SET version = 99");

  EXPECT_THAT(FailureOf([&] { this->OpenAnother(this->Options()); }), FailsWith(failure::kInvalidFormat));
}

TYPED_TEST(VaultInit, AStoreMayBeShared) {
  auto plan = this->Plan();
  plan.store = this->folder.Path("shared");
  InitVault(plan, *this->files);
  this->Open();
  this->AddPart("BOLT", "bytes");

  EXPECT_TRUE(this->folder.Has("shared/objects"));
  EXPECT_FALSE(this->folder.Has("quintara.vault/store"));
}

TEST(VaultJoining, PostgresNeedsTheStoreAndSharesAll) {
  if (std::getenv("PGHOST") == nullptr) GTEST_SKIP() << "no PostgreSQL server";
  VaultBase first(OnPostgres::NewConnection());
  auto plan = first.Plan();
  plan.store = first.folder.Path("shared");
  InitVault(plan, *first.files);
  first.Open();
  const auto part = first.AddPart("BOLT", "bytes");
  plan.folder = first.folder.Path("second.vault");
  auto withoutStore = plan;
  withoutStore.store.clear();

  EXPECT_THAT(FailureOf([&] { InitVault(withoutStore, *first.files); }), FailsWith(failure::kPathAccess));
  InitVault(plan, *first.files);

  EmbeddedVault second(plan.folder, first.Options());
  const auto same =
      second.Application()->Engine()->Sessions(0)->ObjectStore()->ObjectById(part->ClassId(), part->ObjectId());
  EXPECT_EQ(second.FileOf(same), "bytes");
}

class VaultOpening : public VaultTest<OnSqlite> {
 protected:
  // What opening the vault ends with after one of its files was given these bytes.
  Failure OpenedWith(const std::string& file, const std::string& bytes) {
    vault.reset();
    folder.Write("quintara.vault/" + file, bytes);
    return FailureOf([&] { Open(); });
  }
};

TEST_F(VaultOpening, AMissingDatabaseIsNamedAndNotMadeAnew) {
  vault.reset();
  for (const auto* name : {"vault.sqlite", "vault.sqlite-wal", "vault.sqlite-shm"}) {
    std::filesystem::remove(folder.Path("quintara.vault/" + std::string(name)));
  }

  const auto failure = FailureOf([&] { Open(); });

  EXPECT_THAT(failure, FailsWith(failure::kFileNotFound));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(folder.Path("quintara.vault/vault.sqlite")));
  EXPECT_FALSE(folder.Has("quintara.vault/vault.sqlite"));
}

TEST_F(VaultOpening, ADatabaseThatIsNoneIsNamed) {
  const auto failure = OpenedWith("vault.sqlite", std::string(4096, 'x'));

  EXPECT_THAT(failure, FailsWith(failure::kDeviceError));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(folder.Path("quintara.vault/vault.sqlite")));
}

TEST_F(VaultOpening, AFolderFileOfAnotherKindIsNamed) {
  const auto failure = OpenedWith("vault.xml", "<Product Connection=\"\" Store=\"\"/>");

  EXPECT_THAT(failure, FailsWith(failure::kInvalidFormat));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(folder.Path("quintara.vault/vault.xml")));
}

TEST(VaultFolders, TheFileWithTheConnectionIsForItsOwnerAlone) {
  VaultBase base({});
  InitVault(base.Plan(), *base.files);

  const auto permissions = std::filesystem::status(base.folder.Path("quintara.vault/vault.xml")).permissions();

  EXPECT_EQ(permissions & (std::filesystem::perms::group_all | std::filesystem::perms::others_all),
            std::filesystem::perms::none);
}

TEST(VaultFolders, AFailureTakesTheFoldersAboveAwayToo) {
  VaultBase base({});
  auto plan = base.Plan();
  plan.folder = base.folder.Path("above/further/quintara.vault");
  const auto names = base.folder.Names();
  base.gate->FailOperation("Files.Write", 2);

  EXPECT_NE(FailureOf([&] { InitVault(plan, *base.files); }).Number(), 0);

  EXPECT_EQ(base.folder.Names(), names);
}

TEST(VaultFolders, AFailedConnectionLeavesNothingAndShowsNoPassword) {
  VaultBase base({});
  auto plan = base.Plan();
  plan.connection = "postgresql://host=/nowhere/at/all password=hidden";
  const auto names = base.folder.Names();

  const auto failure = FailureOf([&] { InitVault(plan, *base.files); });

  EXPECT_THAT(failure, FailsWith(failure::kDeviceError));
  EXPECT_THAT(failure.Description(), testing::Not(testing::HasSubstr("hidden")));
  EXPECT_EQ(base.folder.Names(), names);
}

}  // namespace
}  // namespace quintara::test
