#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/xml.h"
#include "nls/text_check.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto kFile = "QD.ALLINSTANCES.NO_MATRIX_FOR_FILE";

// A catalogue without a fault, with one text that takes values, one that takes none and one question.
std::string TextFor(const TextKey& key) {
  std::string text = "Text";
  for (std::size_t i = 1; i <= key.parameters.size(); ++i) text += " REP" + std::to_string(i);
  return text + (key.key.find("QUESTION") == std::string_view::npos ? "." : "\u00a0?");
}

class TextCheck : public testing::Test {
 protected:
  TextCheck() {
    auto root = document.Node().append_child("NLS");
    for (const auto& key : KeysOf(Catalogue::kMessages)) Add(root, std::string(key.key), TextFor(key));
  }
  static void Add(XmlNode root, const std::string& key, const std::string& text) {
    auto node = root.append_child("Text");
    node.append_attribute("Key") = key.c_str();
    node.append_child(pugi::node_pcdata).set_value(text.c_str());
  }
  XmlNode NodeOf(const char* key) const { return document.Root().find_child_by_attribute("Text", "Key", key); }

  std::vector<std::string> Faults() const { return FaultsOf(language, Catalogue::kMessages, document.Text()); }
  std::vector<std::string> FaultsWith(const char* key, const char* text) const {
    NodeOf(key).first_child().set_value(text);
    return Faults();
  }

  std::string language = "EN";
  XmlDocument document;
};

std::vector<std::string> FaultsOfControl(const std::string& key, const std::string& text) {
  const auto bytes = "<NLS><Text Key=\"" + key + "\">" + text + "</Text></NLS>";
  auto faults = FaultsOf("EN", Catalogue::kControls, bytes);
  std::erase_if(faults, [](const std::string& fault) { return fault.ends_with("it is missing"); });
  return faults;
}

TEST_F(TextCheck, PassesAFileWithoutFaults) {
  EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(TextCheck, RefusesWhatIsNoXml) {
  EXPECT_THAT(FaultsOf("EN", Catalogue::kMessages, "<NLS><Text"), ElementsAre(HasSubstr("broken")));
}

TEST_F(TextCheck, FindsAMissingKey) {
  document.Root().remove_child(NodeOf(kFile));

  EXPECT_THAT(Faults(), ElementsAre(std::string(kFile) + ": it is missing"));
}

TEST_F(TextCheck, FindsADoubledKey) {
  Add(document.Root(), kFile, "Text REP1.");

  EXPECT_THAT(Faults(), ElementsAre(std::string(kFile) + ": it is there twice"));
}

TEST_F(TextCheck, FindsAnUnknownKey) {
  Add(document.Root(), "QD.WIP_CAPTION", "Text");

  EXPECT_THAT(Faults(), ElementsAre("QD.WIP_CAPTION: no such key is read"));
}

TEST_F(TextCheck, FindsKeysOutOfOrder) {
  auto node = NodeOf(kFile);
  document.Root().append_move(node);

  EXPECT_THAT(Faults(), ElementsAre("the keys are out of order"));
}

TEST_F(TextCheck, FindsWhatIsNoText) {
  document.Root().append_child("Txt");

  EXPECT_THAT(Faults(), ElementsAre("<Txt> is no text"));
}

TEST_F(TextCheck, FindsMoreThanTheText) {
  NodeOf(kFile).append_child("b");

  EXPECT_THAT(Faults(), ElementsAre(EndsWith("it has more than its text")));
}

TEST_F(TextCheck, FindsAValueThatIsLeftOut) {
  EXPECT_THAT(FaultsWith(kFile, "The file."), ElementsAre(EndsWith("REP1 is left out (file)")));
}

TEST_F(TextCheck, FindsATokenThatNothingStandsFor) {
  EXPECT_THAT(FaultsWith(kFile, "REP1 and REP2."), ElementsAre(EndsWith("nothing stands for REP2")));
}

TEST_F(TextCheck, FindsTokensThatAreNone) {
  for (const auto* text :
       {"REP1, REP0.", "REP1, REP.", "REP1, REPLACE.", "REP1, REP12.", "REP1, REP1s.", "REP1, xREP1.", "REP1, ENTRY.",
        "REP1, PARENT.", "REP1, DOCUMENT.", "REP1, ÄENT.", "REP1, ENTÉ."}) {
    EXPECT_THAT(FaultsWith(kFile, text), ElementsAre(HasSubstr("inside the word"))) << text;
  }
}

TEST_F(TextCheck, PassesTokensSideBySideAndSmallLetters) {
  EXPECT_THAT(FaultsWith(kFile, "Parent: ENTREP1.ENTENT(REP1) represents the document."), IsEmpty());
}

TEST_F(TextCheck, FindsALineBreakThatIsNotMade) {
  EXPECT_THAT(FaultsWith("COMMON.UTILS.MESSAGE_IS_EMPTY", "It is ENT empty."), ElementsAre(HasSubstr("line break")));
  EXPECT_THAT(FaultsOfControl("QD.WAITING_LBL", "Wait ENT now"), ElementsAre(HasSubstr("line break")));
}

TEST_F(TextCheck, FindsALineBreakInTheTitleOfAWindow) {
  EXPECT_THAT(FaultsWith("QD.FRMMAINPANEL.INFORMATION", "Title ENT here."), ElementsAre(HasSubstr("line break")));
}

TEST_F(TextCheck, FindsAnEmptyLineWhereThereIsNoError) {
  EXPECT_THAT(FaultsWith("QD.INSERTWLT.IS_NOT_WIP", "It is none.ENTREP1"), ElementsAre(HasSubstr("empty line")));
  EXPECT_THAT(FaultsWith("QD.INSERTWLT.IS_NOT_WIP", "It is none. REP1"), IsEmpty());
}

TEST_F(TextCheck, FindsAnEmptyText) {
  NodeOf("QD.GETMATRIX.SUCCESSFUL").remove_children();

  EXPECT_THAT(Faults(), ElementsAre(EndsWith("it is empty")));
}

TEST_F(TextCheck, FindsBlanksAtTheEnds) {
  for (const auto* text : {" REP1.", "REP1. ", "\u00a0REP1.", "REP1.\u00a0"}) {
    EXPECT_THAT(FaultsWith(kFile, text), ElementsAre(EndsWith("a blank stands at an end"))) << text;
  }
}

TEST_F(TextCheck, FindsDoubledBlanksAndLineBreaks) {
  EXPECT_THAT(FaultsWith(kFile, "A  REP1."), ElementsAre(EndsWith("a blank is doubled")));
  EXPECT_THAT(FaultsWith(kFile, "A\nREP1."), ElementsAre(EndsWith("a line break or tab is no token")));
}

TEST_F(TextCheck, FindsAQuestionThatIsNone) {
  EXPECT_THAT(FaultsWith("QD.UTILS.QUESTION_UPDATE_MATRIX", "Updates REP1."),
              ElementsAre(EndsWith("it is no question")));
}

TEST_F(TextCheck, FindsAProductsNameSpeltWrongly) {
  EXPECT_THAT(FaultsWith(kFile, "Zorva, REP1."), ElementsAre(EndsWith("\"Zorva\" is no name of a product")));
  EXPECT_THAT(FaultsWith(kFile, "VELDORA, REP1."), ElementsAre(EndsWith("\"VELDORA\" is no name of a product")));
}

TEST_F(TextCheck, FindsButtonsThatAreTooLongAndMarkedLetters) {
  EXPECT_THAT(FaultsOfControl("QD.WIP_CMDFIND", "ÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄÄ"), IsEmpty());
  EXPECT_THAT(FaultsOfControl("QD.WIP_CMDFIND", "Look for the component"),
              ElementsAre(EndsWith("too long for a button")));
  EXPECT_THAT(FaultsOfControl("QD.WIP_CMDFIND", "&amp;Find"), ElementsAre(HasSubstr("\"&\"")));
}

TEST_F(TextCheck, FindsQuotesOfAnotherLanguage) {
  EXPECT_THAT(FaultsWith(kFile, "“REP1”."), ElementsAre(HasSubstr("foreign"), HasSubstr("foreign")));

  language = "DE";
  EXPECT_THAT(FaultsWith(kFile, "\"REP1\"."), ElementsAre(HasSubstr("foreign"), HasSubstr("foreign")));

  language = "FR";
  EXPECT_THAT(FaultsWith(kFile, "l'objet REP1."), ElementsAre(HasSubstr("foreign")));
}

TEST_F(TextCheck, FindsQuotesWithoutAPartner) {
  EXPECT_THAT(FaultsWith(kFile, "\"REP1."), ElementsAre(EndsWith("quotes are not in pairs")));

  language = "DE";
  EXPECT_THAT(FaultsWith(kFile, "REP1“."), ElementsAre(EndsWith("quotes are not in pairs")));
  EXPECT_THAT(FaultsWith(kFile, "„„REP1“."), ElementsAre(EndsWith("quotes are not in pairs")));
}

TEST_F(TextCheck, FindsFrenchSignsWithoutTheirHardBlanks) {
  language = "FR";

  EXPECT_THAT(FaultsWith(kFile, "Voilà\u00a0: «\u00a0REP1\u00a0»."), IsEmpty());
  EXPECT_THAT(FaultsWith(kFile, "Voilà: REP1."), ElementsAre(HasSubstr("before \":\"")));
  EXPECT_THAT(FaultsWith(kFile, "Voilà ; REP1."), ElementsAre(HasSubstr("before \";\"")));
  EXPECT_THAT(FaultsWith(kFile, "« REP1 »."), ElementsAre(HasSubstr("behind"), HasSubstr("before")));
}

}  // namespace
}  // namespace quintara::test
