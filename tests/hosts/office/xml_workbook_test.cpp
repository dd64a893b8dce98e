#include <vector>

#include "hosts/office/foreign_workbook.h"
#include "hosts/office/office_fixture.h"
#include "hosts/workbook/workbook_host.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

const std::string kTables = R"(<table:table table:name="one"><table:table-row>
<table:table-cell office:value-type="float" office:value="1.25"/>
<table:table-cell table:formula="of:=[.A1]*2"/><table:table-cell table:formula="of:=1/0"/></table:table-row>
<table:table-row table:number-rows-repeated="2"/>
<table:table-row>
<table:table-cell table:style-name="date" office:value-type="date" office:date-value="2024-01-02T12:00:00"/>
<table:table-cell table:style-name="boolean" office:value-type="boolean" office:boolean-value="true"/>
<table:table-cell table:style-name="text" office:value-type="string"><text:p>007</text:p></table:table-cell>
<table:table-cell table:style-name="time" office:value-type="time" office:time-value="PT12H00M00S"/>
<table:table-cell table:style-name="fixed" office:value-type="float" office:value="7"/>
<table:table-cell table:number-columns-spanned="3" office:value-type="string"><text:p><text:s/>x <text:span>y</text:span></text:p><text:p>z</text:p></table:table-cell>
<table:covered-table-cell/><table:covered-table-cell/>
<table:table-cell office:value-type="string"><text:p>after</text:p></table:table-cell>
</table:table-row></table:table>
<table:table table:name="two"><table:table-row><table:table-cell/>
<table:table-cell office:value-type="string"><text:p>second</text:p></table:table-cell></table:table-row></table:table>)";

// Workbooks of the XML form between LibreOffice and the application that keeps them in memory.
class AnXmlWorkbook : public Spreadsheet {
 protected:
  Ref<excel::Range> Own(const std::string& address, int sheet = 1) const {
    return own->ActiveWorkbook()->Worksheets()->Item(sheet)->Range(address);
  }
  // Saves the one that is active in memory, and opens it here.
  void PassOn() const {
    own->ActiveWorkbook()->SaveAs(folder.Path("own.xls"));
    app->Workbooks()->Open(folder.Path("own.xls"));
  }

  Ref<excel::Application> own =
      StartWorkbooksInMemory(TheGate(), std::make_shared<NativeContents>(std::make_shared<Gate>()));
};

TEST_F(AnXmlWorkbook, ThatIsOursHasTheSameTextsInLibreOffice) {
  const std::vector<std::string> texts = {"007", "1E5", "=A1",  "TRUE",   "2024-01-02",       " x ",
                                          "  ",  "+1",  "#N/A", "a\nb",   "tab\tand\r\nmore", "<&>\"'",
                                          "]]>", "'x",  "1/2",  " a  b ", "Ø 螺丝 🔩"};
  const auto sheet = own->Workbooks()->Add()->Worksheets()->Item(2);
  for (std::size_t i = 0; i < texts.size(); ++i) sheet->Cells(static_cast<int>(i) + 1, 3)->SetValue(texts[i]);

  PassOn();

  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(Sheet(2)->Cells(static_cast<int>(i) + 1, 3)->Value(), Variant(texts[i])) << i;
  }
}

TEST_F(AnXmlWorkbook, ThatIsOursHasTheSameNumbersInLibreOffice) {
  const std::vector<double> numbers = {0.1, 1.0 / 3, 0.1 + 0.2, 1e-7, 12'345'678.5, -1e300, 1e15 + 1, 45'293.5, -0.25};
  const auto sheet = own->Workbooks()->Add()->Worksheets()->Item(1);
  for (std::size_t i = 0; i < numbers.size(); ++i) sheet->Cells(static_cast<int>(i) + 1, 1)->SetValue(numbers[i]);

  PassOn();

  for (std::size_t i = 0; i < numbers.size(); ++i) {
    EXPECT_DOUBLE_EQ(Sheet()->Cells(static_cast<int>(i) + 1, 1)->Value().ToDouble(), numbers[i]);
  }
}

TEST_F(AnXmlWorkbook, ThatIsOursHasTheSameBooleansAndFormatsInLibreOffice) {
  own->Workbooks()->Add();
  Own("A1")->SetValue(true);
  Own("B1")->SetValue(false);
  Own("C1")->SetNumberFormat("@");
  Own("C1")->SetValue(12.5);
  Own("D1")->SetNumberFormat("yyyy\\-mm\\-dd");
  Own("D1")->SetValue(45'293.0);
  Own("IV65536", 3)->SetValue("corner");

  PassOn();

  EXPECT_EQ(Value("A1"), Variant(true));
  EXPECT_EQ(Value("B1"), Variant(false));
  EXPECT_EQ(Value("C1"), Variant("12.5"));
  EXPECT_EQ(Sheet()->Range("C1")->NumberFormat(), "@");
  EXPECT_EQ(Value("D1"), Variant(45'293.0));
  EXPECT_EQ(Sheet()->Range("D1")->NumberFormat(), "YYYY-MM-DD");
  EXPECT_EQ(Value("IV65536", 3), Variant("corner"));
}

TEST_F(AnXmlWorkbook, OfLibreOfficeIsOpenedInMemory) {
  folder.Write("theirs.xls", ForeignWorkbook(kTables, "xml:MS Excel 2003 XML"));

  own->Workbooks()->Open(folder.Path("theirs.xls"));

  EXPECT_EQ(Own("A1")->Value(), Variant(1.25));
  EXPECT_EQ(Own("B1")->Value(), Variant(2.5));
  EXPECT_EQ(NumberOf([&] { Own("C1")->Value(); }), 13);
  EXPECT_TRUE(Own("A2")->Value().IsEmpty());
  EXPECT_EQ(Own("A4")->Value(), Variant(45'293.5));
  EXPECT_EQ(Own("B4")->Value(), Variant(true));
  EXPECT_EQ(Own("C4")->Value(), Variant("007"));
  EXPECT_EQ(Own("D4")->Value(), Variant(0.5));
  EXPECT_EQ(Own("E4")->Value(), Variant(7.0));
  EXPECT_EQ(Own("E4")->NumberFormat(), "0.00");
  EXPECT_EQ(Own("F4")->Value(), Variant(" x y\nz"));
  EXPECT_EQ(Own("I4")->Value(), Variant("after"));
  EXPECT_EQ(Own("B1", 2)->Value(), Variant("second"));
  EXPECT_EQ(NumberOf([&] { Own("A1", 3); }), 9);
}

TEST_F(AnXmlWorkbook, ThatIsCutOffIsNoneForLibreOffice) {
  own->Workbooks()->Add();
  Own("A1")->SetValue("x");
  own->ActiveWorkbook()->SaveAs(folder.Path("own.xls"));
  const auto bytes = folder.Read("own.xls");
  folder.Write("cut.xls", bytes.substr(0, bytes.size() - 5));

  EXPECT_EQ(NumberOf([&] { app->Workbooks()->Open(folder.Path("cut.xls")); }), 1004);
}

TEST_F(AnXmlWorkbook, IsNoneThatLibreOfficeWroteAsBinary) {
  folder.Write("binary.xls", WorkbookWith("x"));
  const auto open = [&] { own->Workbooks()->Open(folder.Path("binary.xls")); };

  EXPECT_EQ(NumberOf(open), 1004);
  EXPECT_THAT(DescriptionOf(open), AllOf(HasSubstr(folder.Path("binary.xls")), HasSubstr("binary")));
}

}  // namespace
}  // namespace quintara::test
