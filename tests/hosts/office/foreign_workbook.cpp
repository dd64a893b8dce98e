#include "hosts/office/foreign_workbook.h"

#include <cstdlib>
#include <map>

#include "support/test_platform.h"

namespace quintara::test {
namespace {

constexpr const char* kDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2"
 xmlns:number="urn:oasis:names:tc:opendocument:xmlns:datastyle:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:automatic-styles>
<number:date-style style:name="D"><number:day/><number:text>.</number:text><number:month/><number:text>.</number:text><number:year number:style="long"/></number:date-style>
<number:time-style style:name="T"><number:hours number:style="long"/><number:text>:</number:text><number:minutes number:style="long"/></number:time-style>
<number:number-style style:name="N"><number:number number:decimal-places="2" number:min-integer-digits="1"/></number:number-style>
<number:text-style style:name="X"><number:text-content/></number:text-style>
<number:boolean-style style:name="B"><number:boolean/></number:boolean-style>
<style:style style:name="date" style:family="table-cell" style:data-style-name="D"/>
<style:style style:name="time" style:family="table-cell" style:data-style-name="T"/>
<style:style style:name="fixed" style:family="table-cell" style:data-style-name="N"/>
<style:style style:name="text" style:family="table-cell" style:data-style-name="X"/>
<style:style style:name="boolean" style:family="table-cell" style:data-style-name="B"/>
<style:style style:name="hidden" style:family="table"><style:table-properties table:display="false"/></style:style>
</office:automatic-styles><office:body><office:spreadsheet>SHEETS</office:spreadsheet></office:body></office:document>
)";

std::string DocumentOf(const std::string& sheets) {
  const std::string mark = "SHEETS";
  std::string document = kDocument;
  return document.replace(document.find(mark), mark.size(), sheets);
}

std::string Made(const std::string& tables, const std::string& format) {
  const TemporaryFolder folder;
  folder.Write("made.fods", DocumentOf(tables));
  const auto made = "made." + format.substr(0, format.find(':'));
  const auto command = "cd '" + folder.Path() +
                       "' && timeout 120 " QUINTARA_OFFICE_PROGRAM
                       "/soffice.bin --headless -env:UserInstallation=file://" +
                       folder.Path("profile") + " --convert-to '" + format + "' made.fods >/dev/null 2>&1";
  // With a new profile it may only make that.
  for (int run = 0; run < 2 && !folder.Has(made); ++run) {
    if (std::system(command.c_str()) == -1) return {};
  }
  return folder.Has(made) ? folder.Read(made) : std::string();
}

}  // namespace

std::string ForeignWorkbook(const std::string& tables, const std::string& format) {
  static std::map<std::string, std::string> known;
  auto& bytes = known[format + tables];
  if (bytes.empty()) bytes = Made(tables, format);
  return bytes;
}

}  // namespace quintara::test
