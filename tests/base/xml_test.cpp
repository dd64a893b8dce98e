#include "base/xml.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace quintara {
namespace {

bool Parses(std::string_view text) {
  XmlDocument document;
  const bool parsed = document.Parse(text);
  EXPECT_EQ(parsed, document.ParseError().code == 0) << text;
  EXPECT_EQ(parsed, document.ParseError().reason.empty()) << text;
  EXPECT_EQ(parsed, bool(document.Root())) << text;
  return parsed;
}

TEST(XmlDocument, TakesWhatIsWellFormed) {
  for (const char* text :
       {"<a/>", "<?xml version='1.0' encoding='UTF-8'?><a><b c=\"1\"/>text</a>", "\xEF\xBB\xBF<a/>",
        "<!-- c --><?target data?><a/><!-- d -->", "<a><![CDATA[ & < ]]></a>", "<a b='&amp;&lt;&#65;&#x41;'/>",
        "<a b='\xC3\xA4'/>", "<a>&gt;</a>", "<?xml version='1.0' encoding='us-ascii'?><a/>",
        "<?xml version='1.1' standalone='no'?><a/>"}) {
    EXPECT_TRUE(Parses(text)) << text;
  }
}

TEST(XmlDocument, DoesNotEndACommentInItsBeginning) {
  EXPECT_TRUE(Parses("<a><!--->< 1 b c--></a>"));
  EXPECT_TRUE(Parses("<a><!--->\n<5\n13; --></a>"));
}

TEST(XmlDocument, RefusesWhatIsNot) {
  for (const char* text : {"",
                           "   ",
                           "text",
                           "<a>",
                           "<a></b>",
                           "<a/><b/>",
                           "<a/>text",
                           "text<a/>",
                           "<a b='1' b='2'/>",
                           "<a b=1/>",
                           "<a b='1'c='2'/>",
                           "<a b='<'/>",
                           "<a b='&undefined;'/>",
                           "<a>&undefined;</a>",
                           "<a b='&'/>",
                           "<a b='&#0;'/>",
                           "<a b='&#xD800;'/>",
                           "<a>]]></a>",
                           "<!-- a -- b --><a/>",
                           "<a><?xml version='1.0'?></a>",
                           " <?xml version='1.0'?><a/>",
                           "<?xML version='1.0'?><a/>",
                           "<a b='\x01'/>",
                           "<a b='\xFF'/>",
                           "<a b='\xC0\x80'/>",
                           "<a b='\xEF\xBF\xBF'/>",
                           "<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
                           "<a/><![CDATA[x]]>",
                           "<?XML version='1.0'?><a/>",
                           "<?XML version='1.0' encoding='UTF-16'?><a/>",
                           "<!-- c ---><a/>",
                           "<p:/>",
                           "<:/>",
                           "<:a/>",
                           "<a:b:c/>",
                           "<a p:=''/>",
                           "<a :b=''/>",
                           "<a"}) {
    EXPECT_FALSE(Parses(text)) << text;
  }
}

TEST(XmlDocument, RefusesADeclarationThatIsNotWellFormed) {
  for (const char* declaration :
       {"", "encoding='UTF-8'", "version='2.0'", "version='1.0<'", "version='1.0' version='1.0'",
        "encoding='UTF-8' version='1.0'", "version='1.0' other='1'", "version='1.0' encoding='&#85;TF-8'",
        "version='1.0' standalone='maybe'", "version='1.0' standalone='yes' encoding='UTF-8'"}) {
    EXPECT_FALSE(Parses("<?xml " + std::string(declaration) + "?><a/>")) << declaration;
  }
}

TEST(XmlDocument, RefusesADeclarationThatEndsLikeATag) {
  EXPECT_FALSE(Parses("<?xml version='1.0'/><a/>"));
  EXPECT_FALSE(Parses("<?xml version='1.0'/>?><a/>"));
  EXPECT_FALSE(Parses("<?xml version='1.0'/><a><?b ?></a>"));
  EXPECT_FALSE(Parses("<?xml version='1.0'/><a b='1' b='2'><?c ?></a>"));
}

TEST(XmlDocument, RefusesADocumentType) {
  EXPECT_FALSE(Parses("<!DOCTYPE a><a/>"));
  EXPECT_FALSE(Parses("<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"));
  EXPECT_FALSE(Parses("<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a/>"));
}

TEST(XmlDocument, RefusesANulByte) {
  EXPECT_FALSE(Parses(std::string_view("<a/>\0", 5)));
  EXPECT_FALSE(Parses(std::string_view("<a b='\0'/>", 10)));
}

TEST(XmlDocument, RefusesADoubledAttributeAmongMany) {
  std::string text = "<a";
  for (int i = 0; i < 40; ++i) text += " b" + std::to_string(i) + "=''";

  EXPECT_TRUE(Parses(text + "/>"));
  EXPECT_FALSE(Parses(text + " b7=''/>"));
}

TEST(XmlDocument, DecodesReferences) {
  XmlDocument document;

  ASSERT_TRUE(document.Parse("<a b='&lt;&amp;amp;&#xE4;&#10;'>x&amp;y</a>"));

  EXPECT_STREQ(document.Root().attribute("b").value(), "<&amp;\xC3\xA4\n");
  EXPECT_STREQ(document.Root().text().get(), "x&y");
}

TEST(XmlDocument, TellsLineAndColumnOfAFault) {
  XmlDocument document;

  ASSERT_FALSE(document.Parse("<a>\n  <b></c>\n</a>"));

  EXPECT_NE(document.ParseError().reason.find("(line 2, column"), std::string::npos) << document.ParseError().reason;
}

TEST(XmlDocument, ForgetsTheErrorOfTheDocumentBefore) {
  XmlDocument document;
  ASSERT_FALSE(document.Parse("<a>"));

  EXPECT_TRUE(document.Parse("<a/>"));

  EXPECT_EQ(document.ParseError().code, 0);
}

TEST(XmlDocument, WritesWhatItReads) {
  XmlDocument document;
  const std::string text = "<?xml version=\"1.0\"?><a b=\"&lt;&amp;&quot;&#10;\xC3\xA4\"><c/><d>x&amp;y</d></a>";

  ASSERT_TRUE(document.Parse(text));

  EXPECT_EQ(document.Text(), text);
}

TEST(XmlDocument, WritesNothingThatItWouldNotRead) {
  for (const std::string value : {"\x01", "a\x1F", "\xFF", "\xC3"}) {
    XmlDocument document;
    document.Node().append_child("a").append_attribute("b") = value.c_str();

    EXPECT_THROW(document.Text(), Failure) << value;
  }
}

TEST(XmlDocument, WritesWhatOnlyLooksLikeAForbiddenReference) {
  XmlDocument document;
  const std::string text = "<?target &#1;?><a><!-- &#2; --><![CDATA[&#3;]]>&amp;#4;</a>";

  ASSERT_TRUE(document.Parse(text));

  EXPECT_EQ(document.Text(), text);
}

TEST(XmlDocument, KeepsWhiteSpaceInAnAttribute) {
  XmlDocument document;
  document.Node().append_child("a").append_attribute("b") = "\t \r\n";
  XmlDocument again;

  ASSERT_TRUE(again.Parse(document.Text()));

  EXPECT_STREQ(again.Root().attribute("b").value(), "\t \r\n");
}

TEST(XmlDocument, ReadsADeepTreeWithoutTheStack) {
  constexpr int kDepth = 200'000;
  std::string text;
  for (int i = 0; i < kDepth; ++i) text += "<a>";
  for (int i = 0; i < kDepth; ++i) text += "</a>";

  EXPECT_TRUE(Parses(text));
}

TEST(BaseName, LeavesThePrefixOut) {
  EXPECT_EQ(BaseName("x:PART_NUMBER"), "PART_NUMBER");
  EXPECT_EQ(BaseName("PART_NUMBER"), "PART_NUMBER");
  EXPECT_EQ(BaseName(""), "");
}

}  // namespace
}  // namespace quintara
