#include "automation/platform/own_translator.h"

#include <filesystem>

#include "automation/dispatch/com.h"
#include "base/text.h"
#include "hosts/native/native_platform.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

constexpr auto kControls = "norvik.solutions.NLS.Controls.QNTR";

std::string PathOf(const std::string& language) {
  return language + "/Custom/Controls/" + kControls + "/1.0/NLS.xml";
}

std::string FileWith(const std::string& text) {
  return "<NLS><Text Key=\"QD.FIND_CAPTION\">" + text + "</Text></NLS>";
}

class AnOwnTranslator : public testing::Test, public VaultBase {
 protected:
  AnOwnTranslator() : VaultBase({}) {
    auto plan = Plan();
    plan.texts[PathOf("EN")] = FileWith("of the vault");
    InitVault(plan, *files);
    Open();
  }
  // A language that only the folder beside the program has.
  ~AnOwnTranslator() override { std::filesystem::remove_all(BesideTheProgram() / language); }

  static std::filesystem::path BesideTheProgram() { return ToPath(automation::OwnFolder()) / "nls"; }
  void WriteBesideTheProgram(const std::string& text) {
    const auto file = BesideTheProgram() / ToPath(PathOf(language));
    std::filesystem::create_directories(file.parent_path());
    platform.Contents().Write(FromPath(file), FileWith(text));
  }
  void TheVaultRuns() { platform.Register("Veldora.VdApplication", vault->Application()); }
  std::string Text() { return translator->Translate(kControls, "QD.FIND_CAPTION", "Controls", "1.0"); }

  const std::string language = "T" + std::to_string(GetCurrentProcessId());
  NativePlatform platform{std::make_shared<Gate>(), {}};
  Ref<automation::OwnTranslator> translator = MakeRef<automation::OwnTranslator>(platform);
};

TEST_F(AnOwnTranslator, ReadsTheFilesUnderTheBaseDirectoryOfTheSession) {
  TheVaultRuns();

  translator->SetLanguage("EN");

  EXPECT_EQ(Text(), "of the vault");
}

TEST_F(AnOwnTranslator, ReadsThoseBesideTheProgramWhereTheSessionHasNone) {
  TheVaultRuns();
  WriteBesideTheProgram("of the program");

  translator->SetLanguage(language);

  EXPECT_EQ(Text(), "of the program");
}

TEST_F(AnOwnTranslator, ReadsThoseBesideTheProgramWithoutASession) {
  WriteBesideTheProgram("of the program");

  translator->SetLanguage(language);

  EXPECT_EQ(Text(), "of the program");
}

TEST_F(AnOwnTranslator, PrefersTheFilesOfTheSession) {
  TheVaultRuns();
  WriteBesideTheProgram("of the program");
  const auto own = BesideTheProgram() / "EN";
  ASSERT_FALSE(std::filesystem::exists(own));
  std::filesystem::rename(BesideTheProgram() / language, own);

  translator->SetLanguage("EN");
  const auto text = Text();
  std::filesystem::remove_all(own);

  EXPECT_EQ(text, "of the vault");
}

TEST_F(AnOwnTranslator, OnlyLoadsTheFileWithoutKeyAndAppendix) {
  TheVaultRuns();
  translator->SetLanguage("EN");

  EXPECT_EQ(translator->Translate(kControls, "", "", "1.0"), "");
}

TEST_F(AnOwnTranslator, FailsWhereNeitherHasTheFile) {
  TheVaultRuns();
  translator->SetLanguage("FR");

  EXPECT_EQ(FailureOf([&] { Text(); }).Number(), failure::kPathNotFound);
  EXPECT_EQ(FailureOf([&] { translator->Translate(kControls, "", "", "1.0"); }).Number(), failure::kFileNotFound);
}

TEST_F(AnOwnTranslator, FailsForAnUnknownKeyAndWithoutALanguage) {
  TheVaultRuns();
  EXPECT_EQ(FailureOf([&] { Text(); }).Number(), failure::kInvalidCall);

  translator->SetLanguage("EN");

  EXPECT_EQ(FailureOf([&] { translator->Translate(kControls, "NONSENSE", "Controls", "1.0"); }).Number(),
            failure::kInvalidCall);
}

TEST_F(AnOwnTranslator, IsATranslator) {
  EXPECT_EQ(translator->AsVdTranslator(), Ref<veldora::VdTranslator>(translator));
}

}  // namespace
}  // namespace quintara::test
