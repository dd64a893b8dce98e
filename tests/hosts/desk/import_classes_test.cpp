#include "hosts/desk/import_classes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "base/failure.h"
#include "hosts/native/native_files.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

class TheClassesOfAnImport : public testing::Test {
 protected:
  void GivenAVault(const std::string& generation) {
    VaultPlan plan;
    plan.folder = folder.Path("v");
    plan.settings = SettingsColumns::OfGeneration(generation);
    plan.productClass = "Assembly";
    plan.partClass = "Piece,Other piece";
    InitVault(plan, *files);
    EmbeddedVault::Options options;
    options.gate = gate;
    options.files = files;
    options.workDirectory = folder.Path("work");
    vault = std::make_unique<EmbeddedVault>(plan.folder, options);
  }

  TemporaryFolder folder;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::shared_ptr<NativeContents> files = std::make_shared<NativeContents>(gate);
  std::unique_ptr<EmbeddedVault> vault;
};

TEST_F(TheClassesOfAnImport, AreReadInEveryGenerationOfTheSettings) {
  for (const auto* generation : {"TDM_", "TDMX_", "CN_"}) {
    vault.reset();
    std::filesystem::remove_all(folder.Path("v"));
    GivenAVault(generation);

    EXPECT_EQ(FirstClassOfSiteSetting(*vault, "QD", "CLASS_PRODUCTS"), "Assembly") << generation;
  }
}

TEST_F(TheClassesOfAnImport, AreNoneWhereNothingIsSet) {
  GivenAVault("TDMX_");

  EXPECT_EQ(FirstClassOfSiteSetting(*vault, "QD", "NOT_THERE"), "");
  EXPECT_EQ(FirstClassOfSiteSetting(*vault, "COMMON", "CLASS_PRODUCTS"), "");
}

TEST_F(TheClassesOfAnImport, MustBeClassesOfTheVault) {
  GivenAVault("TDMX_");

  EXPECT_THROW(FirstClassOfSiteSetting(*vault, "QD", "CLASS_PARTS"), Failure);
}

}  // namespace
}  // namespace quintara::test
