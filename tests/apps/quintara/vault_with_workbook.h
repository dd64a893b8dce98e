#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <map>
#include <string>

#include "apps/quintara/vault_with_as1.h"
#include "hosts/office/spreadsheet_host.h"

namespace quintara::test {

/// The built program, which finds the spreadsheet application beside it, on a vault with "as1", whose matrix is a
/// workbook, with the instance names that older ones haven't.
class VaultWithWorkbook : public VaultWithAs1 {
 protected:
  explicit VaultWithWorkbook(bool hasNames = true) : VaultWithAs1("none") {
    work.Write("as1 Matrix.xls", BytesOfWorkbook(hasNames));
    const auto vault = Open();
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto matrix = vault->AddObject("Document",
                                         {{"CN_DESCRIPTION", "as1 Matrix"},
                                          {"NM_CN_PART_NUMBER", "as1 Matrix"},
                                          {"FILE_TYPE", std::to_string(vault->FileTypeId("Microsoft Excel"))}},
                                         work.Path("as1 Matrix.xls"));
    const auto as1 = ObjectIn(*vault, vault->FindNewest("as1").at(0).identity);
    as1->AddLink(session->MetaInfo()->ClassByName("Document Link")->ClassId(), matrix, nullptr,
                 session->ObjectStore()->DefaultBehavior());
  }

  Outcome RunProgram(const std::string& arguments) {
    const auto command = "'" QUINTARA_PROGRAM "' " + arguments + " --vault '" + Folder() + "' --lang EN >'" +
                         work.Path("out") + "' 2>'" + work.Path("errors") + "' </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, work.Read("out"), work.Read("errors")};
  }

 private:
  // Written once for all tests: the application takes its time to start.
  std::string BytesOfWorkbook(bool hasNames) const {
    static std::map<bool, std::string> made;
    auto& bytes = made[hasNames];
    if (!bytes.empty()) return bytes;
    const auto own = std::make_shared<Gate>();
    const auto application = StartSpreadsheet({own, std::make_shared<NativeContents>(own)});
    const auto book = application->Workbooks()->Add();
    Add(book, 1, "as1", 1, 0);
    Add(book, 2, "plate", 2, 50);
    Add(book, 3, "l-bracket-assembly", 2, 100);
    Add(book, 4, "l-bracket", 3, 7);
    for (int row = 1; hasNames && row <= 4; ++row) {
      book->Worksheets()->Item(2)->Cells(row, 4)->SetValue(Variant("instance " + std::to_string(row)));
    }
    book->SaveAs(work.Path("written.xls"));
    book->Close(false);
    application->Quit();
    return bytes = work.Read("written.xls");
  }
  static void Add(const Ref<excel::Workbook>& book, int row, const std::string& partNumber, int level, double x) {
    const auto put = [&](int sheet, int column, const Variant& value) {
      book->Worksheets()->Item(sheet)->Cells(row, column)->SetValue(value);
    };
    auto position = kIdentityPosition;
    position[9] = x;
    put(1, level, Variant(partNumber));
    for (int column = 15; const double number : position) put(1, column++, Variant(number));
    put(2, 1, Variant(partNumber));
    put(2, 2, Variant(static_cast<double>(row)));
    put(2, 3, Variant(static_cast<double>(level)));
  }
};

}  // namespace quintara::test
