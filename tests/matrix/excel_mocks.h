#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "access/contracts/spreadsheet.h"

/// A spreadsheet application that notes what is written into its cells, and whose answers a test sets.
namespace quintara::test {

class MockRange : public excel::Range {
 public:
  MOCK_METHOD(Variant, Value, (), (override));
  MOCK_METHOD(void, SetValue, (const Variant&), (override));
  MOCK_METHOD(std::string, NumberFormat, (), (override));
  MOCK_METHOD(void, SetNumberFormat, (const std::string&), (override));
  MOCK_METHOD(void, Copy, (const Ref<excel::Range>&), (override));
  MOCK_METHOD(Ref<excel::Range>, SpecialCells, (int), (override));
  MOCK_METHOD(Ref<excel::Range>, End, (int), (override));
  MOCK_METHOD(int, Row, (), (override));
};

class MockWorksheet : public excel::Worksheet {
 public:
  MOCK_METHOD(Ref<excel::Range>, Range, (const std::string&), (override));
  MOCK_METHOD(Ref<excel::Range>, Cells, (), (override));
  MOCK_METHOD(Ref<excel::Range>, Cells, (int, int), (override));
};

class MockWorksheets : public excel::Worksheets {
 public:
  MOCK_METHOD(Ref<excel::Worksheet>, Item, (int), (override));
};

class MockWorkbook : public excel::Workbook {
 public:
  MOCK_METHOD(Ref<excel::Worksheets>, Worksheets, (), (override));
  MOCK_METHOD(void, Save, (), (override));
  MOCK_METHOD(void, SaveAs, (const std::string&), (override));
  MOCK_METHOD(void, Close, (bool), (override));
};

class MockExcel : public excel::Application {
 public:
  MOCK_METHOD(bool, Visible, (), (override));
  MOCK_METHOD(void, SetVisible, (bool), (override));
  MOCK_METHOD(int, SheetsInNewWorkbook, (), (override));
  MOCK_METHOD(void, SetSheetsInNewWorkbook, (int), (override));
  MOCK_METHOD(Ref<excel::Workbooks>, Workbooks, (), (override));
  MOCK_METHOD(Ref<excel::Workbook>, ActiveWorkbook, (), (override));
  MOCK_METHOD(void, Quit, (), (override));
};

/// One open workbook. Its worksheet 2 has cells; each writing to one of them is noted as
/// "row,column format text" or "row,column value text", in their order.
class WorkbookOnTheBench {
 public:
  WorkbookOnTheBench();

  Ref<::testing::NiceMock<MockExcel>> excel = MakeRef<::testing::NiceMock<MockExcel>>();
  Ref<::testing::NiceMock<MockWorksheets>> worksheets = MakeRef<::testing::NiceMock<MockWorksheets>>();
  std::vector<std::string> written;
  /// Called before each writing; what it throws becomes of the writing.
  std::function<void(const std::string& writing)> beforeWriting = [](const std::string&) {};

 private:
  Ref<excel::Range> Cell(int row, int column);
};

}  // namespace quintara::test
