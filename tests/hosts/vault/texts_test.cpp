#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

constexpr auto kControls = "norvik.solutions.NLS.Controls.QNTR";

class VaultTexts : public testing::Test, public VaultBase {
 protected:
  VaultTexts() : VaultBase({}) {
    auto plan = Plan();
    plan.texts[PathOf("EN", "Controls", kControls)] =
        "<NLS><Text Key=\"QD.FIND_CAPTION\">Find &amp; go</Text><Text Key=\"EMPTY\"/></NLS>";
    plan.texts[PathOf("DE", "Controls", kControls)] = "<NLS><Text Key=\"QD.FIND_CAPTION\">Suchen</Text></NLS>";
    plan.texts[PathOf("EN", "Errors", "broken")] = "<NLS><Text";
    InitVault(plan, *files);
    Open();
    translator = vault->NewTranslator();
    translator->SetLanguage("EN");
  }
  static std::string PathOf(const std::string& language, const std::string& appendix, const std::string& nameSpace) {
    return language + "/Custom/" + appendix + "/" + nameSpace + "/1.0/NLS.xml";
  }

  Ref<veldora::VdTranslator> translator;
};

TEST_F(VaultTexts, AKeyGivesTheTextOfTheLanguage) {
  EXPECT_EQ(translator->Translate(kControls, "QD.FIND_CAPTION", "Controls", "1.0"), "Find & go");
  EXPECT_EQ(translator->Translate(kControls, "EMPTY", "Controls", "1.0"), "");

  translator->SetLanguage("DE");
  EXPECT_EQ(translator->Translate(kControls, "QD.FIND_CAPTION", "Controls", "1.0"), "Suchen");
}

TEST_F(VaultTexts, AnEmptyKeyAndAppendixOnlyLoadTheFile) {
  EXPECT_EQ(translator->Translate(kControls, "", "", "1.0"), "");
}

TEST_F(VaultTexts, AnUnknownKeyFails) {
  EXPECT_THAT(FailureOf([&] { translator->Translate(kControls, "NONSENSE", "Controls", "1.0"); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { translator->Translate(kControls, "", "Controls", "1.0"); }),
              FailsWith(failure::kInvalidCall));
}

TEST_F(VaultTexts, AMissingFileFails) {
  EXPECT_THAT(FailureOf([&] { translator->Translate("missing", "K", "Controls", "1.0"); }),
              FailsWith(failure::kPathNotFound));
  EXPECT_THAT(FailureOf([&] { translator->Translate("missing", "", "", "1.0"); }), FailsWith(failure::kFileNotFound));
  EXPECT_THAT(FailureOf([&] { translator->Translate(kControls, "", "", "2.0"); }), FailsWith(failure::kFileNotFound));
}

TEST_F(VaultTexts, ABrokenFileFails) {
  EXPECT_THAT(FailureOf([&] { translator->Translate("broken", "", "", "1.0"); }), FailsWith(failure::kInvalidFormat));
}

TEST_F(VaultTexts, NoPieceLeadsOutOfTheFolder) {
  EXPECT_THAT(FailureOf([&] { translator->Translate("..", "K", "Controls", "1.0"); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { translator->Translate(kControls, "K", "../Controls", "1.0"); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { translator->SetLanguage("../EN"); }), FailsWith(failure::kInvalidCall));
}

TEST_F(VaultTexts, WithoutALanguageThereAreNoTexts) {
  EXPECT_THAT(FailureOf([&] { vault->NewTranslator()->Translate(kControls, "", "", "1.0"); }),
              FailsWith(failure::kInvalidCall));
}

}  // namespace
}  // namespace quintara::test
