#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "access/contracts/spreadsheet.h"
#include "base/attempt.h"
#include "support/test_platform.h"

/// What every implementation of the spreadsheet's contract has to do. A program that runs this suite names its hosts
/// as `SpreadsheetContractHosts`, a `testing::Types<...>`, and then includes the headers beside this one. A host type
/// is made without arguments and has
///   Ref<excel::Application> Application();  // without open workbooks; it may be that of the test before
///   Ref<excel::Application> NewApplication();  // one of its own
namespace quintara::test {

/// The number of the failure that `body` ends in, 0 without one.
template <class Body>
int NumberOf(Body&& body) {
  ErrorState state;
  Attempt(state, std::forward<Body>(body));
  return state.number;
}
template <class Body>
std::string DescriptionOf(Body&& body) {
  ErrorState state;
  Attempt(state, std::forward<Body>(body));
  return state.description;
}

/// A test on an application, with no workbook open at its beginning.
template <class Host>
class SpreadsheetContract : public testing::Test {
 protected:
  ~SpreadsheetContract() override {
    app->SetSheetsInNewWorkbook(3);
    for (int count = app->Workbooks()->Count(); count > 0; --count) app->Workbooks()->Item(count)->Close(false);
  }

  /// Worksheet `index` of the active workbook.
  Ref<excel::Worksheet> Sheet(int index = 1) const { return app->ActiveWorkbook()->Worksheets()->Item(index); }
  Variant Value(const std::string& address, int sheet = 1) const { return Sheet(sheet)->Range(address)->Value(); }
  void Put(const std::string& address, const Variant& value, int sheet = 1) const {
    Sheet(sheet)->Range(address)->SetValue(value);
  }
  /// Saves the active workbook under this name in `folder`, closes it and opens it again.
  void Reopen(const std::string& name = "book.xls") const {
    const auto workbook = app->ActiveWorkbook();
    workbook->SaveAs(folder.Path(name));
    workbook->Close(false);
    app->Workbooks()->Open(folder.Path(name));
  }
  /// The bytes of a workbook with this value in its first cell.
  std::string WorkbookWith(const Variant& value) const {
    const auto workbook = app->Workbooks()->Add();
    workbook->Worksheets()->Item(1)->Range("A1")->SetValue(value);
    workbook->SaveAs(folder.Path("bytes.xls"));
    workbook->Close(false);
    return folder.Read("bytes.xls");
  }

  TemporaryFolder folder;
  Host host;
  Ref<excel::Application> app = host.Application();
};

}  // namespace quintara::test
