#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/text.h"
#include "hosts/native/native_files.h"
#include "hosts/vault/embedded_vault.h"
#include "nls/embedded_texts.h"
#include "nls/text_check.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

constexpr auto kControls = "norvik.solutions.NLS.Controls.QNTR";
constexpr auto kMessages = "norvik.solutions.NLS.Errors.QNTR";

// A vault that was made with the texts that are built in.
class VaultTexts : public testing::Test {
 protected:
  VaultTexts() {
    VaultPlan plan;
    plan.folder = folder_.Path("vault");
    for (const auto& file : EmbeddedTexts()) plan.texts.emplace(file.path, file.bytes);
    InitVault(plan, *files_);
    EmbeddedVault::Options options;
    options.gate = std::make_shared<Gate>();
    options.files = files_;
    options.workDirectory = folder_.Path("work");
    std::filesystem::create_directory(ToPath(options.workDirectory));
    vault_ = std::make_unique<EmbeddedVault>(plan.folder, options);
    translator = vault_->NewTranslator();
  }
  std::string Caption(const std::string& key) const { return translator->Translate(kControls, key, "Controls", "1.0"); }
  std::string Message(const std::string& key) const { return translator->Translate(kMessages, key, "Errors", "1.0"); }

 private:
  TemporaryFolder folder_;
  std::shared_ptr<FileContents> files_ = std::make_shared<NativeContents>(std::make_shared<Gate>());
  std::unique_ptr<EmbeddedVault> vault_;

 protected:
  Ref<veldora::VdTranslator> translator;
};

class VaultTextsOf : public VaultTexts, public testing::WithParamInterface<const char*> {};

TEST_P(VaultTextsOf, HaveAWordForEveryKey) {
  translator->SetLanguage(GetParam());

  for (const auto& key : KeysOf(Catalogue::kControls)) EXPECT_NE(Caption(std::string(key.key)), "") << key.key;
  for (const auto& key : KeysOf(Catalogue::kMessages)) EXPECT_NE(Message(std::string(key.key)), "") << key.key;
}

INSTANTIATE_TEST_SUITE_P(Languages, VaultTextsOf, testing::Values("EN", "FR", "DE"),
                         [](const auto& language) { return std::string(language.param); });

TEST_F(VaultTexts, KeepTheirAccentsAndUmlauts) {
  translator->SetLanguage("FR");
  EXPECT_EQ(Caption("QD.WIP_LBLWIPNAME"), "Nom du WIP\u00a0:");
  EXPECT_EQ(Message("QD.GETMATRIX.SUCCESSFUL"), "La matrice a été générée.");

  translator->SetLanguage("DE");
  EXPECT_EQ(Caption("QD.FIND_CMDCANCEL"), "Schließen");
  EXPECT_EQ(Caption("QD.FIND_LBLNOOCCURRENCES"), "Kein Treffer für „REP1“");

  translator->SetLanguage("EN");
  EXPECT_EQ(Caption("QD.FIND_LBLNOOCCURRENCES"), "No match for \"REP1\"");
}

}  // namespace
}  // namespace quintara::test
