#include <vector>

#include "hosts/workbook/workbook_fixture.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Files of the XML form that others wrote.
class AFileOfXml : public InMemory {
 protected:
  static std::string With(const std::string& sheets, const std::string& styles = {}) {
    return "<?xml version=\"1.0\"?>\n<?mso-application progid=\"Excel.Sheet\"?>\n<Workbook "
           "xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\" xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
           "xmlns:ss=\"urn:schemas-microsoft-com:office:spreadsheet\" xmlns:html=\"http://www.w3.org/TR/REC-html40\">\n"
           " <DocumentProperties xmlns=\"urn:schemas-microsoft-com:office:office\"/>\n <Styles>" +
           styles + "</Styles>\n" + sheets + "</Workbook>\n";
  }
  static std::string Sheet1(const std::string& table) {
    return " <Worksheet ss:Name=\"Sheet1\">\n  <Table>\n" + table + "\n  </Table>\n </Worksheet>\n";
  }
  static std::string Cell(const std::string& type, const std::string& text, const std::string& attributes = {}) {
    return "    <Cell " + attributes + "><Data ss:Type=\"" + type + "\">" + text + "</Data></Cell>\n";
  }
  void OpenBytes(const std::string& bytes) const {
    folder.Write("book.xls", bytes);
    Open("book.xls");
  }
  void OpenRow(const std::string& cells) const { OpenBytes(With(Sheet1("   <Row>\n" + cells + "   </Row>"))); }
  // What opening says of these bytes, without the name of the file that it begins with.
  std::string Refusal(const std::string& bytes) const {
    const auto open = [&] { OpenBytes(bytes); };
    EXPECT_EQ(NumberOf(open), 1004);
    const auto text = DescriptionOf(open);
    EXPECT_THAT(text, StartsWith(folder.Path("book.xls")));
    EXPECT_EQ(app->Workbooks()->Count(), 0);
    return text.substr(folder.Path("book.xls").size());
  }
  std::string RefusalOfRow(const std::string& cells) const { return Refusal(With(Sheet1("<Row>" + cells + "</Row>"))); }
};

TEST_F(AFileOfXml, GivesAllKindsOfValues) {
  OpenRow(Cell("String", "007") + Cell("Number", "1.0000000000000001E-5") + Cell("Boolean", "1") +
          Cell("Boolean", "0") + "<Cell/>" + Cell("Number", "-12"));

  EXPECT_EQ(Value("A1"), Variant("007"));
  EXPECT_EQ(Value("B1"), Variant(1.0000000000000001e-5));
  EXPECT_EQ(Value("C1"), Variant(true));
  EXPECT_EQ(Value("D1"), Variant(false));
  EXPECT_TRUE(Value("E1").IsEmpty());
  EXPECT_EQ(Value("F1"), Variant(-12.0));
}

TEST_F(AFileOfXml, GivesDatesAsNumbers) {
  OpenRow(Cell("DateTime", "2024-01-02T12:00:00.000") + Cell("DateTime", "1900-01-01T00:00:00.000") +
          Cell("DateTime", "1900-03-01T00:00:00") + Cell("DateTime", "1899-12-31T18:00:00.000") +
          Cell("DateTime", "2024-01-02") + Cell("DateTime", "1899-12-30T06:00:00") +
          Cell("DateTime", "1900-02-28T23:59:59.500"));

  EXPECT_EQ(Value("A1"), Variant(45'293.5));
  EXPECT_EQ(Value("B1"), Variant(1.0));
  EXPECT_EQ(Value("C1"), Variant(61.0));
  EXPECT_EQ(Value("D1"), Variant(0.75));
  EXPECT_EQ(Value("E1"), Variant(45'293.0));
  EXPECT_EQ(Value("F1"), Variant(0.25));
  EXPECT_EQ(Value("G1"), Variant(59 + 86'399.5 / 86'400));
}

TEST_F(AFileOfXml, KeepsADateANumberOfItsFormat) {
  OpenBytes(With(Sheet1("<Row>" + Cell("DateTime", "2024-01-02T00:00:00.000", "ss:StyleID=\"d\"") + "</Row>"),
                 "<Style ss:ID=\"d\"><NumberFormat ss:Format=\"yyyy\\-mm\\-dd\"/></Style>"));

  Reopen();

  EXPECT_EQ(Value("A1"), Variant(45'293.0));
  EXPECT_EQ(Format("A1"), "yyyy\\-mm\\-dd");
}

TEST_F(AFileOfXml, GivesTheResultsOfFormulas) {
  OpenRow(Cell("Number", "3", "ss:Formula=\"=1+2\"") + Cell("String", "", "ss:Formula=\"=&quot;&quot;\"") +
          Cell("Boolean", "1", "ss:Formula=\"=TRUE()\"") + Cell("String", "#DIV/0!", "ss:Formula=\"of:=1/0\"") +
          Cell("String", "#DIV/0!") + "<Cell ss:Formula=\"=RC[-1]\"/>");

  EXPECT_EQ(Value("A1"), Variant(3.0));
  EXPECT_EQ(Value("B1"), Variant(""));
  EXPECT_EQ(Value("C1"), Variant(true));
  EXPECT_EQ(NumberOf([&] { Value("D1"); }), 13);
  EXPECT_EQ(Value("E1"), Variant("#DIV/0!"));
  EXPECT_EQ(NumberOf([&] { Value("F1"); }), 13);
}

TEST_F(AFileOfXml, KeepsErrors) {
  OpenRow(Cell("Error", "#REF!", "ss:Formula=\"=R0C0\""));
  EXPECT_EQ(NumberOf([&] { Value("A1"); }), 13);

  Reopen();

  EXPECT_EQ(NumberOf([&] { Value("A1"); }), 13);
  EXPECT_THAT(folder.Read("again.xls"), HasSubstr("<Data ss:Type=\"Error\">#REF!</Data>"));
}

TEST_F(AFileOfXml, GivesFormattedTextsAsAWhole) {
  OpenRow(
      "<Cell><ss:Data ss:Type=\"String\" xmlns=\"http://www.w3.org/TR/REC-html40\"><B>PART</B><Font "
      "html:Color=\"#FF0000\"> 1 <I>x</I></Font></ss:Data><Comment><ss:Data>no</ss:Data></Comment></Cell>");

  EXPECT_EQ(Value("A1"), Variant("PART 1 x"));
}

TEST_F(AFileOfXml, GivesTextsWithAllTheirBlanks) {
  OpenRow(Cell("String", "  ") + Cell("String", " a&#10;b &#13;&#10;") + Cell("String", "a\r\nb") +
          Cell("String", "<![CDATA[ <&> ]]>") + Cell("String", ""));

  EXPECT_EQ(Value("A1"), Variant("  "));
  EXPECT_EQ(Value("B1"), Variant(" a\nb \r\n"));
  EXPECT_EQ(Value("C1"), Variant("a\nb"));
  EXPECT_EQ(Value("D1"), Variant(" <&> "));
  EXPECT_TRUE(Value("E1").IsEmpty());
}

TEST_F(AFileOfXml, KeepsBlanksAndEndsOfLines) {
  const std::vector<std::string> texts = {" ", "\t", "\n", "\r", "\r\n", " a\rb\r\nc ", "]]>", "<&>\"'", "&#13;"};
  app->Workbooks()->Add();
  for (std::size_t i = 0; i < texts.size(); ++i) Sheet()->Cells(static_cast<int>(i) + 1, 1)->SetValue(texts[i]);

  Reopen();

  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(Sheet()->Cells(static_cast<int>(i) + 1, 1)->Value(), Variant(texts[i])) << i;
  }
}

TEST_F(AFileOfXml, SaysWhereItsCellsStand) {
  OpenBytes(With(Sheet1("<Row ss:Index=\"3\"><Cell ss:Index=\"2\"><Data ss:Type=\"Number\">1</Data></Cell>" +
                        Cell("Number", "2") + Cell("Number", "3", "ss:Index=\"6\" ss:MergeAcross=\"2\"") +
                        Cell("Number", "4") + "</Row><Row ss:Span=\"4\"/><Row>" + Cell("Number", "5") + "</Row>")));

  EXPECT_EQ(Value("B3"), Variant(1.0));
  EXPECT_EQ(Value("C3"), Variant(2.0));
  EXPECT_EQ(Value("F3"), Variant(3.0));
  EXPECT_EQ(Value("I3"), Variant(4.0));
  EXPECT_EQ(Value("A9"), Variant(5.0));
}

TEST_F(AFileOfXml, MayUseOtherPrefixes) {
  OpenBytes(
      "<x:Workbook xmlns:x=\"urn:schemas-microsoft-com:office:spreadsheet\"><x:Worksheet x:Name=\"a\"><x:Table>"
      "<x:Row><x:Cell x:Index=\"2\"><x:Data x:Type=\"Number\">1</x:Data></x:Cell></x:Row></x:Table>"
      "</x:Worksheet></x:Workbook>");

  EXPECT_EQ(Value("B1"), Variant(1.0));
}

TEST_F(AFileOfXml, KeepsItsWorksheetsInTheirOrderWithTheirNames) {
  OpenBytes(With("<Worksheet ss:Name=\"B &amp; &quot;C&quot;\"/><Worksheet ss:Name=\"A\"><Table><Row>" +
                 Cell("Number", "2") + "</Row></Table></Worksheet>"));
  EXPECT_EQ(NumberOf([&] { Sheet(3); }), 9);

  Reopen();

  EXPECT_EQ(Value("A1", 2), Variant(2.0));
  const auto bytes = folder.Read("again.xls");
  const auto first = bytes.find("ss:Name=\"B &amp; &quot;C&quot;\"");
  ASSERT_NE(first, bytes.npos);
  EXPECT_NE(bytes.find("ss:Name=\"A\"", first), bytes.npos);
}

const std::string kStyles =
    "<Style ss:ID=\"Default\" ss:Name=\"Normal\"/><Style ss:ID=\"text\"><NumberFormat ss:Format=\"@\"/></Style>"
    "<Style ss:ID=\"fixed\"><NumberFormat ss:Format=\"Fixed\"/></Style><Style ss:ID=\"child\" ss:Parent=\"fixed\"/>"
    "<Style ss:ID=\"plain\"><NumberFormat/></Style><Style ss:ID=\"loop\" ss:Parent=\"loop\"/>";

TEST_F(AFileOfXml, GivesCellsTheNumberFormatsOfTheirStyles) {
  OpenBytes(
      With(Sheet1("<Row>" + Cell("String", "x", "ss:StyleID=\"text\"") + Cell("Number", "1", "ss:StyleID=\"fixed\"") +
                  Cell("Number", "1", "ss:StyleID=\"child\"") + Cell("Number", "1", "ss:StyleID=\"plain\"") +
                  Cell("Number", "1", "ss:StyleID=\"loop\"") + Cell("Number", "1", "ss:StyleID=\"absent\"") +
                  Cell("Number", "1") + "<Cell ss:StyleID=\"text\"/></Row>"),
           kStyles));

  EXPECT_EQ(Format("A1"), "@");
  EXPECT_EQ(Format("B1"), "0.00");
  EXPECT_EQ(Format("C1"), "0.00");
  for (const auto* const address : {"D1", "E1", "F1", "G1"}) EXPECT_EQ(Format(address), "General") << address;
  EXPECT_EQ(Format("H1"), "@");
}

TEST_F(AFileOfXml, GivesCellsTheFormatsOfTheirRowsAndColumnsAndKeepsThem) {
  OpenBytes(With(Sheet1("<Column ss:Index=\"2\" ss:Span=\"1\" ss:StyleID=\"text\"/><Column ss:StyleID=\"fixed\"/>"
                        "<Row>" +
                        Cell("Number", "1") + Cell("Number", "1", "ss:StyleID=\"plain\"") +
                        "</Row><Row ss:Index=\"5\" ss:Span=\"1\" ss:StyleID=\"fixed\"/><Row ss:StyleID=\"child\"/>"
                        "<Row ss:Index=\"9\" ss:StyleID=\"fixed\"/>"),
                 kStyles));
  const auto check = [&] {
    EXPECT_EQ(Format("A1"), "General");
    EXPECT_EQ(Format("B1"), "General");
    EXPECT_EQ(Format("B2"), "@");
    EXPECT_EQ(Format("C65536"), "@");
    EXPECT_EQ(Format("D1"), "0.00");
    EXPECT_EQ(Format("A5"), "0.00");
    EXPECT_EQ(Format("B7"), "0.00");
    EXPECT_EQ(Format("IV7"), "0.00");
    EXPECT_EQ(Format("A8"), "General");
    EXPECT_EQ(Format("A9"), "0.00");
    EXPECT_EQ(Format("A10"), "General");
  };
  check();

  Reopen();

  check();
  Put("B10", 5.0);
  EXPECT_EQ(Value("B10"), Variant("5"));
}

TEST_F(AFileOfXml, GivesAllCellsTheFormatOfTheTableOrOfTheDefaultStyle) {
  const auto table = "<Worksheet ss:Name=\"1\"><Table ss:StyleID=\"text\"/></Worksheet>";
  OpenBytes(With(table, kStyles));
  EXPECT_EQ(Format("K9"), "@");
  Reopen();
  EXPECT_EQ(Format("K9"), "@");
  app->ActiveWorkbook()->Close(false);

  OpenBytes(With(Sheet1("<Row>" + Cell("Number", "1") + "</Row>"),
                 "<Style ss:ID=\"Default\"><NumberFormat ss:Format=\"0.0\"/></Style>"));

  EXPECT_EQ(Format("A1"), "0.0");
  EXPECT_EQ(Format("K9"), "0.0");
  Reopen();
  EXPECT_EQ(Format("A1"), "0.0");
}

TEST_F(AFileOfXml, IsWrittenUnderWhateverExtension) {
  app->Workbooks()->Add();
  Put("A1", "007");

  app->ActiveWorkbook()->SaveAs(folder.Path("book.xls"));

  EXPECT_THAT(folder.Read("book.xls"),
              AllOf(StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?><?mso-application progid=\"Excel.Sheet\"?>"),
                    HasSubstr("<Data ss:Type=\"String\">007</Data>")));
}

// LibreOffice loses Booleans that are none.
TEST_F(AFileOfXml, HasBooleansAsFormulasToo) {
  app->Workbooks()->Add();
  Put("A1", true);
  Put("B1", false);

  app->ActiveWorkbook()->SaveAs(folder.Path("book.xls"));

  EXPECT_THAT(folder.Read("book.xls"), AllOf(HasSubstr("ss:Formula=\"=TRUE()\"><Data ss:Type=\"Boolean\">1</Data>"),
                                             HasSubstr("ss:Formula=\"=FALSE()\"><Data ss:Type=\"Boolean\">0</Data>")));
}

TEST_F(AFileOfXml, IsRefusedForEveryOtherFormOfAWorkbook) {
  EXPECT_THAT(Refusal("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more"), HasSubstr("is a binary workbook"));
  EXPECT_THAT(Refusal("PK\x03\x04 and more"), HasSubstr("is a zipped workbook"));
}

TEST_F(AFileOfXml, IsRefusedForWhatIsNoWorkbook) {
  EXPECT_THAT(Refusal(""), HasSubstr("is empty"));
  EXPECT_THAT(Refusal("a,b\n1,2\n"), HasSubstr("is no workbook"));
  EXPECT_THAT(Refusal("<PART PART_NUMBER=\"A\"/>"), HasSubstr("but no workbook"));
  EXPECT_THAT(Refusal("<html><p>x</html>"), HasSubstr("is damaged"));
  EXPECT_THAT(Refusal(With("")), HasSubstr("no worksheet"));
}

TEST_F(AFileOfXml, IsRefusedAtWhateverLengthItIsCut) {
  const auto bytes = With(Sheet1("<Row>" + Cell("Number", "1") + Cell("String", "x") + "</Row>"));

  for (std::size_t length = 0; length + 2 < bytes.size(); length += 11) Refusal(bytes.substr(0, length));
}

TEST_F(AFileOfXml, IsRefusedWithWhatResolvesToSomethingElse) {
  EXPECT_THAT(Refusal("<!DOCTYPE Workbook [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>" + With(Sheet1("")).substr(22)),
              HasSubstr("is damaged"));
}

TEST_F(AFileOfXml, IsRefusedForAValueThatIsNoneOfItsType) {
  EXPECT_THAT(RefusalOfRow("<Cell/>" + Cell("Number", "1,5")),
              AllOf(HasSubstr("Sheet1"), HasSubstr("B1"), HasSubstr("\"1,5\" is no number")));
  EXPECT_THAT(RefusalOfRow(Cell("Number", "")), HasSubstr("no number"));
  EXPECT_THAT(RefusalOfRow(Cell("Boolean", "true")), HasSubstr("no Boolean"));
  EXPECT_THAT(RefusalOfRow(Cell("Text", "x")), HasSubstr("\"Text\" is no type"));
  EXPECT_THAT(RefusalOfRow("<Cell><Data>x</Data></Cell>"), HasSubstr("no type"));
}

TEST_F(AFileOfXml, IsRefusedForADateThatIsNone) {
  for (const auto* const text : {"", "2024", "2024-02-30T00:00:00", "2024-1-02", "2024-01-02 12:00:00",
                                 "2024-01-02T24:00:00", "2024-01-02T12:60:00", "2024-01-02T12:00:60",
                                 "2024-01-02T12:00", "2024-01-02T12:00:00Z", "-024-01-02", "2024-01-02T12:00:nan"}) {
    EXPECT_THAT(RefusalOfRow(Cell("DateTime", text)), HasSubstr("no date")) << text;
  }
}

TEST_F(AFileOfXml, IsRefusedForAPlaceThatIsNone) {
  for (const auto* const index : {"0", "-1", "x", "1.5", "", "257", "99999999999", "3x"}) {
    RefusalOfRow(Cell("Number", "1", "ss:Index=\"" + std::string(index) + "\""));
  }
  RefusalOfRow(Cell("Number", "1", "ss:Index=\"256\"") + Cell("Number", "1"));
  RefusalOfRow(Cell("Number", "1", "ss:Index=\"250\" ss:MergeAcross=\"7\""));
  RefusalOfRow(Cell("Number", "1", "ss:Index=\"2\"") + Cell("Number", "1", "ss:Index=\"2\""));
  Refusal(With(Sheet1("<Row ss:Index=\"65537\"/>")));
  Refusal(With(Sheet1("<Row ss:Index=\"65536\"/><Row/>")));
  Refusal(With(Sheet1("<Row ss:Index=\"65530\" ss:Span=\"7\"/>")));
  Refusal(With(Sheet1("<Column ss:Index=\"257\"/>")));
}

TEST_F(AFileOfXml, ReachesToTheLastRowAndColumn) {
  OpenBytes(With(Sheet1("<Row ss:Index=\"65536\">" + Cell("Number", "1", "ss:Index=\"256\"") + "</Row>")));

  EXPECT_EQ(Value("IV65536"), Variant(1.0));
}

}  // namespace
}  // namespace quintara::test
