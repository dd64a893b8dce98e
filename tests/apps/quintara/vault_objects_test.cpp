#include "apps/quintara/vault_cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

class WithAGear : public VaultCli {
 protected:
  WithAGear() { AddGear(); }

  void ExpectWrongUse(const std::vector<std::string>& arguments, const std::string& message) {
    const auto outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, kWrongUse);
    EXPECT_THAT(outcome.errors, AllOf(StartsWith("quintara: "), HasSubstr(message)));
    EXPECT_THAT(outcome.out, IsEmpty());
  }
  static long Lines(const std::string& text) { return std::ranges::count(text, '\n'); }
};

using LsVerb = WithAGear;

TEST_F(LsVerb, ShowsTheNewestRevisionOfEach) {
  const auto outcome = Run({"ls"});

  EXPECT_EQ(Lines(outcome.out), 2 + 3);
  EXPECT_THAT(outcome.out, HasSubstr("\nnut          B         new    ZORVA Part     nut.stp   "));
  EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST_F(LsVerb, ShowsAllRevisionsWhenAsked) {
  const auto outcome = Run({"ls", "--all", "nut"});

  EXPECT_THAT(outcome.out,
              AllOf(HasSubstr("nut          A         checked in"), HasSubstr("nut          B         new")));
}

TEST_F(LsVerb, SaysWhoHasWhatIsCheckedOut) {
  {
    const auto vault = Open();
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto nut = session->ObjectStore()->ObjectById(vault->FindNewest("nut")[0].identity.classId,
                                                        vault->FindNewest("nut")[0].identity.objectId);
    CheckIn(*vault, nut);
    session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckOut(nut, nullptr, false);
  }

  EXPECT_THAT(Run({"ls", "nut"}).out, HasSubstr("checked out (admin)"));
}

TEST_F(LsVerb, TakesPatternsWhateverTheCapitals) {
  EXPECT_EQ(Lines(Run({"ls", "N?T", "ax*"}).out), 2 + 2);
}

TEST_F(LsVerb, TakesPatternsOnNumberAndRevision) {
  EXPECT_EQ(Lines(Run({"ls", "* - A"}).out), 2 + 2);
}

TEST_F(LsVerb, TellsProductsFromParts) {
  EXPECT_EQ(Lines(Run({"ls", "product:*"}).out), 2 + 2);
  EXPECT_EQ(Lines(Run({"ls", "part:*"}).out), 2 + 1);
}

TEST_F(LsVerb, TakesOneClass) {
  EXPECT_EQ(Lines(Run({"ls", "--class", "ZORVA Part"}).out), 2 + 1);
  EXPECT_EQ(Run({"ls", "--class", "Document"}).out, "the vault holds nothing of the class 'Document'\n");
}

TEST_F(LsVerb, NamesThePatternThatMatchesNothing) {
  ExpectWrongUse({"ls", "nut", "wheel*"}, "the pattern 'wheel*' matches no object");
}

TEST_F(LsVerb, RefusesAnEmptyPattern) {
  ExpectWrongUse({"ls", "part:"}, "'part:' is empty");
}

TEST_F(LsVerb, NamesTheClassThatItDoesNotKnow) {
  ExpectWrongUse({"ls", "--class", "Wheel"}, "the vault has no class 'Wheel'");
}

using TreeVerbOnTheVault = WithAGear;

TEST_F(TreeVerbOnTheVault, ShowsTheStructureWithQuantities) {
  const auto outcome = Run({"tree", "gear"});

  EXPECT_EQ(outcome.out,
            "part number  quantity  revision  state       file\n"
            "-----------  --------  --------  ----------  --------\n"
            "gear                   A         new         gear.stp\n"
            "|-- axle            1  A         new         axle.stp\n"
            "|   `-- nut         2  A         checked in  nut.stp\n"
            "`-- nut             8  A         checked in  nut.stp\n");
}

TEST_F(TreeVerbOnTheVault, EndsAtTheDepthAskedForAndTellsSo) {
  const auto outcome = Run({"tree", "gear", "--depth", "1"});

  EXPECT_EQ(Lines(outcome.out), 2 + 3);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("axle ..."), Not(HasSubstr("nut ..."))));
}

TEST_F(TreeVerbOnTheVault, TakesTheNewestRevisionUnlessAnotherIsNamed) {
  EXPECT_THAT(Run({"tree", "nut"}).out, HasSubstr("nut                    B         new"));
  EXPECT_THAT(Run({"tree", "nut@A"}).out, HasSubstr("nut                    A         checked in"));
}

TEST_F(TreeVerbOnTheVault, TakesAFileForThatFile) {
  work.Write("gear", "no product");

  const auto outcome = Run({"tree", "gear", "--work", work.Path()});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr(work.Path("gear")));
}

TEST_F(TreeVerbOnTheVault, FindsWhatOnlyTheWorkDirectoryHas) {
  work.Write("flat.ZVAProduct", R"(<ZVAProduct partNumber="WIP~~gear"/>)");

  EXPECT_THAT(Run({"tree", "WIP~~gear", "--work", work.Path()}).out, HasSubstr("flat.ZVAProduct"));
}

TEST_F(TreeVerbOnTheVault, SaysWhatItLookedFor) {
  ExpectWrongUse({"tree", "wheel"}, "the vault has no object 'wheel'");
}

TEST_F(TreeVerbOnTheVault, PrintsNothingBeforeAllIsFound) {
  ExpectWrongUse({"tree", "gear", "wheel"}, "'wheel'");
}

TEST_F(TreeVerbOnTheVault, ShowsADeepStructureToItsEnd) {
  {
    const auto vault = Open();
    vault->InTransaction([&] {
      auto below = Add(*vault, "ZORVA Part", "level");
      for (int i = 0; i < 400; ++i) {
        const auto above = vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "level" + std::to_string(i)}}, {});
        vault->SetStructure(above, {{below, 1}});
        below = above;
      }
    });
  }

  EXPECT_EQ(Lines(Run({"tree", "level399"}).out), 2 + 401);
}

using ShowVerb = WithAGear;

TEST_F(ShowVerb, BeginsWithWhatTheObjectIs) {
  EXPECT_THAT(FirstLine(Run({"show", "nut@A"}).out),
              ::testing::MatchesRegex("nut - A, checked in, ZORVA Part 3:[0-9]+"));
}

TEST_F(ShowVerb, ShowsEveryAttribute) {
  const auto out = Run({"show", "nut"}).out;

  for (const auto* attribute : {"OBJECT_ID", "CN_ID", "NM_CN_PART_NUMBER  nut", "REVISION           B", "DIRECTORY"}) {
    EXPECT_THAT(out, HasSubstr(attribute));
  }
}

TEST_F(ShowVerb, ShowsWhatIsLinked) {
  const auto axle = Run({"show", "axle"}).out;
  const auto nut = Run({"show", "nut@A"}).out;

  EXPECT_THAT(axle, AllOf(HasSubstr("\ncomponents\n"), HasSubstr("\nnut                 2  A"),
                          HasSubstr("\nused in\n"), HasSubstr("\ngear                1  A")));
  EXPECT_THAT(nut, AllOf(Not(HasSubstr("\ncomponents\n")), HasSubstr("\naxle                2"),
                         HasSubstr("\ngear                8")));
}

TEST_F(ShowVerb, ShowsDocuments) {
  std::string name;
  {
    const auto vault = Open();
    const auto document = vault->AddObject("Document", {{"CN_DESCRIPTION", "gear Matrix"}}, {});
    const auto gear = vault->FindNewest("gear")[0].identity;
    const auto session = vault->Application()->Engine()->Sessions(0);
    session->ObjectStore()
        ->ObjectById(gear.classId, gear.objectId)
        ->AddLink(session->MetaInfo()->ClassByName("Document Link")->ClassId(), document, nullptr,
                  session->ObjectStore()->DefaultBehavior()->Clone());
    name = "Document:" + std::to_string(document->ObjectId());
  }

  EXPECT_THAT(Run({"show", "gear"}).out, HasSubstr("Document Link  to  gear Matrix"));
  EXPECT_THAT(Run({"show", name}).out, AllOf(StartsWith("gear Matrix - A"), HasSubstr("Document Link  from  gear")));
}

TEST_F(ShowVerb, ShowsTheRevisions) {
  const auto out = Run({"show", "nut"}).out;

  EXPECT_THAT(out.substr(out.find("\nrevisions\n")),
              AllOf(HasSubstr("\nA         checked in"), HasSubstr("\nB         new")));
}

TEST_F(ShowVerb, TakesAClassAndAnId) {
  const auto id = Open()->FindNewest("axle")[0].identity;

  EXPECT_THAT(FirstLine(Run({"show", std::to_string(id.classId) + ":" + std::to_string(id.objectId)}).out),
              StartsWith("axle - A"));
  EXPECT_THAT(FirstLine(Run({"show", "ZORVA Product:" + std::to_string(id.objectId)}).out), StartsWith("axle - A"));
}

TEST_F(ShowVerb, ListsSeveralObjectsOfOneName) {
  {
    const auto vault = Open();
    vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "nut"}}, {});
  }

  ExpectWrongUse({"show", "nut"}, "several objects of the vault are called 'nut'");
  EXPECT_EQ(Lines(Run({"show", "nut"}).errors), 1 + 2 + 2);
}

TEST_F(ShowVerb, SaysWhatItLookedFor) {
  for (const auto* argument : {"wheel", "nut@C", "2:999999", "Wheel:1", "99:1", "nut:", ":1", "", "1:99999999999"}) {
    ExpectWrongUse({"show", argument}, "the vault has no object '" + std::string(argument) + "'");
  }
}

// Trouble with the vault is never taken for a name that it doesn't know.
TEST_F(WithAGear, FailsWithEachCallThatFails) {
  const std::vector<std::vector<std::string>> verbs = {{"ls", "nut"}, {"show", "gear"}, {"tree", "gear"},
                                                       {"settings"},  {"user"},         {"vault", "check"}};
  for (const auto& verb : verbs) {
    for (int n = 1;; ++n) {
      gate = std::make_shared<Gate>();
      gate->FailCall(n);
      const auto outcome = Run(verb);
      if (!gate->HasFailed()) break;
      ASSERT_EQ(outcome.exitCode, kFailed) << verb.front() << ", call " << n << ": " << outcome.errors;
      ASSERT_THAT(outcome.errors + outcome.out, HasSubstr("Injected failure"));
    }
  }
}

using SettingsVerb = WithAGear;

TEST_F(SettingsVerb, ListsSiteAndUser) {
  Run({"settings", "QD", "TREE_VIEW", "REVISION", "--user-setting"});

  EXPECT_THAT(Run({"settings"}).out, AllOf(HasSubstr("admin  QD       TREE_VIEW            NM_CN_PART_NUMBER,REVISION"),
                                           HasSubstr("admin  QD       TREE_VIEW_SEPARATOR  ' - '"),
                                           HasSubstr("user   QD       TREE_VIEW            REVISION")));
}

TEST_F(SettingsVerb, ListsOneSection) {
  EXPECT_EQ(Lines(Run({"settings", "QD"}).out), 2 + 4);
  EXPECT_EQ(Lines(Run({"settings", "QD", "TREE_VIEW"}).out), 2 + 1);
}

TEST_F(SettingsVerb, SetsWhatIsThere) {
  EXPECT_EQ(Run({"settings", "QD", "TREE_VIEW", "REVISION", "it's"}).out, "set QD TREE_VIEW to REVISION 'it'\\''s'\n");

  EXPECT_THAT(Run({"settings", "QD", "TREE_VIEW"}).out, HasSubstr("TREE_VIEW  REVISION 'it'\\''s'\n"));
}

TEST_F(SettingsVerb, EmptiesTheValuesThatAreNotNamed) {
  Run({"settings", "MY", "COLOURS", "red", "green"});

  Run({"settings", "MY", "COLOURS", "blue"});

  EXPECT_THAT(Run({"settings", "MY"}).out, HasSubstr("COLOURS  blue\n"));
}

TEST_F(SettingsVerb, EmptiesTheLongValueToo) {
  std::vector<std::string> arguments{"settings", "MY", "NUMBERS"};
  arguments.resize(3 + 11, "1");
  arguments.back() = std::string(1000, 'x');
  EXPECT_EQ(Run(arguments).exitCode, kDone);
  EXPECT_THAT(Run({"settings", "MY"}).out, HasSubstr("1 1 " + arguments.back() + "\n"));

  Run({"settings", "MY", "NUMBERS", "2"});

  EXPECT_THAT(Run({"settings", "MY"}).out, HasSubstr("NUMBERS  2\n"));
}

TEST_F(SettingsVerb, KeepsTheSettingsOfUsersApart) {
  variables["QUINTARA_NEW_PASSWORD"] = "geheim";
  variables["QUINTARA_PASSWORD"] = "geheim";
  {
    const auto vault = Open();
    vault->AddUser("anna", "geheim", false);
  }
  EXPECT_EQ(Run({"settings", "MY", "COLOUR", "red", "--user-setting", "--user", "anna"}).exitCode, kDone);
  variables.clear();

  ExpectWrongUse({"settings", "MY"}, "the vault has no setting 'MY'");
}

TEST_F(SettingsVerb, OfTheSiteAreForUsersWithAllRights) {
  {
    const auto vault = Open();
    vault->AddUser("anna", "geheim", false);
  }
  variables["QUINTARA_PASSWORD"] = "geheim";

  const auto outcome = Run({"settings", "QD", "TREE_VIEW", "REVISION", "--user", "anna"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("only a user with all rights"));
}

TEST_F(SettingsVerb, NamesTheSettingThatIsNotThere) {
  ExpectWrongUse({"settings", "QD", "COLOUR"}, "'QD' 'COLOUR'");
}

TEST_F(SettingsVerb, DoesNotSetWhatHasNoName) {
  ExpectWrongUse({"settings", "QD", "", "red"}, "needs a section and a subject");
  ExpectWrongUse({"settings", "", "TREE_VIEW", "red"}, "needs a section and a subject");

  EXPECT_THAT(Run({"settings"}).out, Not(HasSubstr("red")));
}

TEST_F(SettingsVerb, TakesNoPatternThatWouldFindTheSettingsOfOthers) {
  ExpectWrongUse({"settings", "Q*", "TREE_VIEW", "red"}, "'Q*'");
  ExpectWrongUse({"settings", "QD", "TREE_V*", "red"}, "'TREE_V*'");
  ExpectWrongUse({"settings", "Q*"}, "'Q*'");

  EXPECT_THAT(Run({"settings"}).out, Not(HasSubstr("red")));
}

TEST_F(SettingsVerb, SetsNothingThatIsThereTwice) {
  {
    const auto vault = Open();
    const auto store = vault->Application()->Engine()->Sessions(0)->ObjectStore();
    for (const auto* id : {"90000001", "90000002"}) {
      const auto row = store->NewObject(
          vault->Application()->Engine()->Sessions(0)->MetaInfo()->ClassByName("Admin Setting")->ClassId());
      row->InitData();
      row->Record()->ValuateFromString("TDMX_ID", id);
      row->Record()->ValuateFromString("TDMX_SECTION", "MY");
      row->Record()->ValuateFromString("TDMX_SUBJECT", "COLOUR");
      row->Record()->ValuateFromString("TDMX_VALUE_1", id);
      row->AddToVault(store->DefaultBehavior()->Clone());
    }
  }

  const auto outcome = Run({"settings", "MY", "COLOUR", "red"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("'MY' 'COLOUR' 2 times"));
  EXPECT_THAT(Run({"settings", "MY"}).out, AllOf(HasSubstr("90000001"), HasSubstr("90000002"), Not(HasSubstr("red"))));
}

TEST_F(SettingsVerb, TakesNoMoreValuesThanThereAreColumns) {
  std::vector<std::string> arguments{"settings", "MY", "NUMBERS"};
  arguments.resize(3 + 12, "1");

  ExpectWrongUse(arguments, "up to 11 values");
}

}  // namespace
}  // namespace quintara::test
