#include <filesystem>

#include "hosts/office/foreign_workbook.h"
#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

// Workbooks that the application itself can't make, made by LibreOffice of a text.
class AnOddWorkbook : public Spreadsheet {
 protected:
  // One with these tables, as a file of the format `extension`.
  void Make(const std::string& sheets, const std::string& extension) const {
    const auto bytes = ForeignWorkbook(sheets, extension);
    ASSERT_FALSE(bytes.empty());
    folder.Write("odd." + extension, bytes);
  }
  void MakeAndOpen(const std::string& sheets, const std::string& extension = "xls") const {
    Make(sheets, extension);
    app->Workbooks()->Open(folder.Path("odd." + extension));
  }
  int OpenFailure(const std::string& bytes, const std::string& word) const {
    folder.Write("odd.xls", bytes);
    const auto path = folder.Path("odd.xls");
    EXPECT_THAT(DescriptionOf([&] { app->Workbooks()->Open(path); }), HasSubstr(word));
    EXPECT_THAT(DescriptionOf([&] { app->Workbooks()->Open(path); }), HasSubstr(path));
    return NumberOf([&] { app->Workbooks()->Open(path); });
  }
};

const std::string kFormulas = R"(<table:table table:name="one"><table:table-row>
<table:table-cell office:value-type="float" office:value="1.5"/>
<table:table-cell table:formula="of:=[.A1]*2"/>
<table:table-cell table:formula="of:=&quot;&quot;"/>
<table:table-cell table:formula="of:=1/0"/>
<table:table-cell table:formula="of:=&quot;=A&quot;&amp;[.A1]"/>
<table:table-cell table:formula="of:=[.A1]&gt;1"/>
<table:table-cell table:formula="of:=[two.A1]+1"/>
</table:table-row></table:table>
<table:table table:name="two"><table:table-row><table:table-cell office:value-type="float" office:value="4"/>
</table:table-row></table:table>)";

TEST_F(AnOddWorkbook, WithFormulasGivesTheirResults) {
  MakeAndOpen(kFormulas);

  EXPECT_EQ(Value("B1"), Variant(3.0));
  EXPECT_EQ(Value("C1"), Variant(""));
  EXPECT_EQ(NumberOf([&] { Value("D1"); }), 13);
  EXPECT_EQ(Value("E1"), Variant("=A1.5"));
  EXPECT_EQ(Value("F1"), Variant(1.0));
  EXPECT_EQ(Value("G1"), Variant(5.0));
}

TEST_F(AnOddWorkbook, WithFormulasComputesThemAgainAfterAChange) {
  MakeAndOpen(kFormulas);
  EXPECT_EQ(Value("B1"), Variant(3.0));

  Put("A1", 10.0);
  Put("A1", 20.0, 2);

  EXPECT_EQ(Value("B1"), Variant(20.0));
  EXPECT_EQ(Value("G1"), Variant(21.0));
  EXPECT_EQ(Value("A1"), Variant(10.0));
}

TEST_F(AnOddWorkbook, KeepsTheFormulasThatNobodyWroteOver) {
  MakeAndOpen(kFormulas);
  Put("A1", 10.0);
  Put("C1", "over");
  Reopen("saved.xls");

  Put("A1", 11.0);

  EXPECT_EQ(Value("B1"), Variant(22.0));
  EXPECT_EQ(Value("C1"), Variant("over"));
}

TEST_F(AnOddWorkbook, WithFormulasIsCopiedAsItsValues) {
  MakeAndOpen(kFormulas);
  Put("A1", 10.0);

  Sheet()->Range("A1:D1")->Copy(Sheet(2)->Range("B2"));

  EXPECT_EQ(Value("C2", 2), Variant(20.0));
  EXPECT_EQ(NumberOf([&] { Value("E2", 2); }), 13);
  Put("B2", 11.0, 2);
  EXPECT_EQ(Value("C2", 2), Variant(20.0));
}

const std::string kDates = R"(<table:table table:name="one"><table:table-row>
<table:table-cell table:style-name="date" office:value-type="date" office:date-value="2024-01-02T12:00:00"/>
<table:table-cell table:style-name="boolean" office:value-type="boolean" office:boolean-value="true"/>
<table:table-cell office:value-type="string"><text:p>12</text:p></table:table-cell>
</table:table-row></table:table>)";

TEST_F(AnOddWorkbook, WithDatesGivesTheirNumbers) {
  MakeAndOpen(kDates);

  EXPECT_EQ(Value("A1"), Variant(45'293.5));
  EXPECT_EQ(Value("B1"), Variant(true));
  EXPECT_EQ(Value("C1"), Variant("12"));
  EXPECT_EQ(Sheet()->Range("B1")->NumberFormat(), "General");
}

TEST_F(AnOddWorkbook, OfTheNewerFormatIsReadWhateverItIsCalled) {
  Make(kDates, "xlsx");
  folder.Write("newer.xls", folder.Read("odd.xlsx"));

  app->Workbooks()->Open(folder.Path("newer.xls"));

  EXPECT_EQ(Value("A1"), Variant(45'293.5));
  EXPECT_EQ(Value("B1"), Variant(true));
  EXPECT_EQ(Value("C1"), Variant("12"));
  app->ActiveWorkbook()->Save();
  EXPECT_TRUE(folder.Read("newer.xls").starts_with("\xD0\xCF\x11\xE0"));
}

TEST_F(AnOddWorkbook, OfTheNewerFormatWithTooManyRowsFails) {
  MakeAndOpen(R"(<table:table table:name="one"><table:table-row table:number-rows-repeated="70000"/><table:table-row>
<table:table-cell office:value-type="float" office:value="4"/></table:table-row></table:table>)",
              "xlsx");

  EXPECT_EQ(NumberOf([&] { Value("A1"); }), 1004);
}

TEST_F(AnOddWorkbook, CountsItsHiddenWorksheetsToo) {
  MakeAndOpen(
      R"(<table:table table:name="shown"/><table:table table:name="gone" table:style-name="hidden"><table:table-row>
<table:table-cell office:value-type="string"><text:p>secret</text:p></table:table-cell></table:table-row></table:table>
<table:table table:name="last"/>)");

  EXPECT_EQ(Value("A1", 2), Variant("secret"));
  EXPECT_TRUE(Value("A1", 3).IsEmpty());
}

TEST_F(AnOddWorkbook, ThatIsCutOffFails) {
  const auto bytes = WorkbookWith("x");

  EXPECT_EQ(OpenFailure(bytes.substr(0, bytes.size() - 600), "damaged"), 1004);
  EXPECT_EQ(OpenFailure(bytes.substr(0, 3000), "damaged"), 1004);
  EXPECT_EQ(OpenFailure(bytes.substr(0, 100), "damaged"), 1004);
  EXPECT_EQ(app->Workbooks()->Count(), 0);
}

TEST_F(AnOddWorkbook, ThatIsEmptyOrNoneFails) {
  EXPECT_EQ(OpenFailure("", "empty"), 1004);
  EXPECT_EQ(OpenFailure("<html><table><tr><td>1</td></tr></table></html>", "page"), 1004);
  EXPECT_EQ(OpenFailure("<?xml version='1.0' encoding='UTF-8'?>\n<PART PART_NUMBER=\"A\"/>", "page"), 1004);
  EXPECT_EQ(OpenFailure("a,b\n1,2\n", "no workbook"), 1004);
  EXPECT_EQ(OpenFailure("PK\x03\x04 and nothing else", "damaged"), 1004);
}

TEST_F(AnOddWorkbook, WithABrokenMiddleFailsOrOpensButNeverHangs) {
  auto bytes = WorkbookWith("x");
  for (std::size_t at = 2048; at < 2560; ++at) bytes[at] = static_cast<char>(at * 7);

  EXPECT_EQ(OpenFailure(bytes, ""), 1004);
}

}  // namespace
}  // namespace quintara::test
