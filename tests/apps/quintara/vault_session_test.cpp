#include <filesystem>

#include "apps/quintara/vault_cli_fixture.h"
#include "base/text.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class SessionVerb : public VaultCli {
 protected:
  Outcome Start(std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"vault", "session"});
    return Run(options);
  }
  void DropTexts(const std::string& language) const { fs::remove_all(ToPath(Folder() + "/base/NLS/" + language)); }
  void DropSettings(const std::string& section) const {
    const auto vault = Open();
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto store = session->ObjectStore();
    const auto query = store->NewQuery();
    query->Definition()->From()->Add(session->MetaInfo()->ClassByName("Admin Setting")->ClassId(), "F");
    query->Definition()->Where()->Add("", "TDMX_SECTION", "=", Variant(section), 0, "F");
    query->RunClassQuery();
    const auto rows = store->ObjectsFromRecList(query->Result(), 0)->ObjectsOf("F");
    for (int i = 0, count = rows->Count(); i < count; ++i) {
      const auto row = rows->Item(i);
      row->Record()->ValuateFromString("TDMX_SECTION", "NONE");
      row->Update(store->DefaultBehavior()->Clone());
    }
  }
};

TEST_F(SessionVerb, TellsWhatASessionReads) {
  const auto outcome = Start();

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_THAT(
      outcome.out,
      AllOf(HasSubstr("work directory          " + AdminPath() + "\n"), HasSubstr("language                EN\n"),
            HasSubstr("QD CLASS_PRODUCTS       'ZORVA Product'\n"), HasSubstr("QD CLASS_PARTS          'ZORVA Part'\n"),
            HasSubstr("COMMON PART_NUMBER      'NM_CN_PART_NUMBER'\n"),
            HasSubstr("QD TREE_VIEW            'NM_CN_PART_NUMBER,REVISION'\n"),
            HasSubstr("QD TREE_VIEW_SEPARATOR  ' - '\n"), Not(HasSubstr("not set"))));
}

TEST_F(SessionVerb, SpeaksTheLanguageAsked) {
  EXPECT_THAT(Start({"--lang", "DE"}).out, HasSubstr("language                DE\n"));
}

TEST_F(SessionVerb, FallsBackToEnglishWhereThereAreNoTexts) {
  DropTexts("DE");

  const auto outcome = Start({"--lang", "DE"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("EN, since there are no texts in DE\n"));
}

TEST_F(SessionVerb, ShowsABoxWithoutAnyTexts) {
  DropTexts("DE");
  DropTexts("EN");

  const auto outcome = Start({"--lang", "DE"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.errors,
              AllOf(HasSubstr("Quintara (error): "), HasSubstr("the texts in '" + Folder() + "/base'")));
}

TEST_F(SessionVerb, ShowsABoxWithoutTheSettings) {
  DropSettings("COMMON");

  const auto outcome = Start();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("Error retrieving admin settings"), HasSubstr("no session starts\n")));
}

TEST_F(SessionVerb, NamesASettingThatIsMissing) {
  Run({"settings", "QD", "TREE_VIEW", ""});

  const auto outcome = Start();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, HasSubstr("QD TREE_VIEW            (not set)\n"));
  EXPECT_THAT(outcome.errors, HasSubstr("the setting QD TREE_VIEW is missing"));
}

TEST_F(SessionVerb, NamesAClassThatIsNotThere) {
  Run({"settings", "QD", "CLASS_PARTS", "ZORVA Part,Teil"});

  const auto outcome = Start();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("the setting QD CLASS_PARTS names 'Teil'"));
}

TEST_F(SessionVerb, TakesTheNameOfATableForNoClass) {
  Run({"settings", "COMMON", "TABLE_DOCUMENTS", "DOCUMENT"});

  const auto outcome = Start();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("the setting COMMON TABLE_DOCUMENTS names 'DOCUMENT'"));
}

TEST_F(SessionVerb, NeedsAVault) {
  const auto outcome = RunBare({"vault", "session", "--vault", elsewhere.Path("nowhere")});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
}

TEST_F(SessionVerb, LeavesTheProcessAsItWas) {
  DropTexts("EN");
  Start();

  EXPECT_THAT(Start({"--lang", "DE"}).out, HasSubstr("language                DE\n"));
}

}  // namespace
}  // namespace quintara::test
