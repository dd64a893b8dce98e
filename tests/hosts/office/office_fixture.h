#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "access/contracts/spreadsheet.h"
#include "hosts/gate/gate.h"
#include "hosts/native/native_files.h"
#include "hosts/office/spreadsheet_host.h"
#include "hosts/workbook/application.h"
#include "hosts/workbook/contract/fixture.h"
#include "support/test_platform.h"

namespace quintara::test {

/// The gate of the application that the tests of this program share, and what it is made with.
std::shared_ptr<Gate> TheGate();
SpreadsheetSurroundings Surroundings();

/// The application that the tests of this program share.
Ref<excel::Application> SharedApplication();
const office::Bridge& BridgeOf(const Ref<excel::Application>& application);

/// A test on the shared application, with no workbook open at its beginning.
class Spreadsheet : public testing::Test {
 protected:
  Spreadsheet();
  ~Spreadsheet() override;

  /// Worksheet `index` of the active workbook.
  Ref<excel::Worksheet> Sheet(int index = 1) const;
  Variant Value(const std::string& address, int sheet = 1) const;
  void Put(const std::string& address, const Variant& value, int sheet = 1) const;
  /// Saves the active workbook under this name in `folder`, closes it and opens it again.
  void Reopen(const std::string& name = "book.xls") const;
  /// The bytes of a workbook with this value in its first cell.
  std::string WorkbookWith(const Variant& value) const;

  TemporaryFolder folder;
  Ref<excel::Application> app;
};

}  // namespace quintara::test
