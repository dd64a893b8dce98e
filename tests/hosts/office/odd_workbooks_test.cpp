#include <cstdlib>
#include <filesystem>
#include <map>

#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

constexpr const char* kDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2"
 xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:automatic-styles>
<number:date-style style:name="D"><number:day/><number:text>.</number:text><number:month/><number:text>.</number:text><number:year number:style="long"/></number:date-style>
<number:boolean-style style:name="B"><number:boolean/></number:boolean-style>
<style:style style:name="date" style:family="table-cell" style:data-style-name="D"/>
<style:style style:name="boolean" style:family="table-cell" style:data-style-name="B"/>
<style:style style:name="hidden" style:family="table"><style:table-properties table:display="false"/></style:style>
</office:automatic-styles><office:body><office:spreadsheet>SHEETS</office:spreadsheet></office:body></office:document>
)";

std::string DocumentOf(const std::string& sheets) {
  const std::string mark = "SHEETS";
  std::string document = kDocument;
  return document.replace(document.find(mark), mark.size(), sheets);
}

// Workbooks that the application itself can't make, made by LibreOffice of a text.
class AnOddWorkbook : public Spreadsheet {
 protected:
  // One with these tables, as a file of the format `extension`. Each is made once.
  void Make(const std::string& sheets, const std::string& extension) const {
    static const TemporaryFolder making;
    static std::map<std::string, std::string> made;
    auto& bytes = made[extension + sheets];
    const auto file = "odd" + std::to_string(made.size());
    if (bytes.empty()) {
      making.Write(file + ".fods", DocumentOf(sheets));
      const auto command = "cd '" + making.Path() +
                           "' && timeout 120 " QUINTARA_OFFICE_PROGRAM
                           "/soffice.bin --headless -env:UserInstallation=file://" +
                           making.Path("profile") + " --convert-to " + extension + " " + file + ".fods >/dev/null 2>&1";
      // With a new profile it may only make that.
      for (int run = 0; run < 2 && !making.Has(file + "." + extension); ++run) {
        ASSERT_NE(std::system(command.c_str()), -1);
      }
      ASSERT_TRUE(making.Has(file + "." + extension));
      bytes = making.Read(file + "." + extension);
    }
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

TEST_F(AnOddWorkbook, OfOneWorksheetHasNoSecond) {
  app->SetSheetsInNewWorkbook(1);
  app->Workbooks()->Add();
  Reopen();

  EXPECT_TRUE(Sheet(1));
  EXPECT_EQ(NumberOf([&] { Sheet(2); }), 9);
  EXPECT_EQ(NumberOf([&] { Sheet(0); }), 9);
}

TEST_F(AnOddWorkbook, FullToTheLastRowIsReadAndWritten) {
  app->Workbooks()->Add();
  Put("A1:A65536", 1.5);
  Put("IV65536", "corner");

  Reopen();

  EXPECT_EQ(Value("A65536"), Variant(1.5));
  EXPECT_EQ(Value("IV65536"), Variant("corner"));
  EXPECT_TRUE(Value("B65536").IsEmpty());
  EXPECT_EQ(Sheet()->Cells()->SpecialCells(excel::cell_type::kLastCell)->Row(), 65'536);
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

TEST_F(AnOddWorkbook, MayBeAFolderAndFails) {
  const auto path = folder.Path("folder.xls");
  std::filesystem::create_directory(path);

  EXPECT_EQ(NumberOf([&] { app->Workbooks()->Open(path); }), 1004);
  EXPECT_EQ(NumberOf([&] { app->Workbooks()->Open(""); }), 1004);
}

TEST_F(AnOddWorkbook, ThatIsReadOnlyIsReadButNotSaved) {
  folder.Write("book.xls", WorkbookWith("x"));
  const auto path = folder.Path("book.xls");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  app->Workbooks()->Open(path);
  EXPECT_EQ(Value("A1"), Variant("x"));
  Put("A1", "y");

  EXPECT_EQ(NumberOf([&] { app->ActiveWorkbook()->Save(); }), 1004);

  app->ActiveWorkbook()->Close(false);
  app->Workbooks()->Open(path);
  EXPECT_EQ(Value("A1"), Variant("x"));
}

}  // namespace
}  // namespace quintara::test
