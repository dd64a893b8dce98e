#pragma once

#include <memory>
#include <string>

#include "hosts/workbook/session.h"

namespace quintara::workbook {

class ApplicationObject final : public SessionObject<"ExcelApplication", excel::Application>,
                                public std::enable_shared_from_this<ApplicationObject> {
 public:
  using SessionObject::SessionObject;

  bool Visible() override;
  void SetVisible(bool visible) override;
  int SheetsInNewWorkbook() override;
  void SetSheetsInNewWorkbook(int count) override;
  Ref<excel::Workbooks> Workbooks() override;
  Ref<excel::Workbook> ActiveWorkbook() override;
  void Quit() override;

  Ref<excel::Application> AsSpreadsheetApplication() override;
};

class WorkbooksObject final : public SessionObject<"Workbooks", excel::Workbooks> {
 public:
  using SessionObject::SessionObject;

  int Count() override;
  Ref<excel::Workbook> Item(int index) override;
  Ref<excel::Workbook> Add() override;
  Ref<excel::Workbook> Open(const std::string& fullPath) override;
};

}  // namespace quintara::workbook
