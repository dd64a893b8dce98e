#pragma once

#include <memory>
#include <string>

#include "hosts/workbook/cell_area.h"
#include "hosts/workbook/session.h"

namespace quintara::workbook {

class WorkbookObject final : public WorkbookPart<"Workbook", excel::Workbook> {
 public:
  using WorkbookPart::WorkbookPart;

  Ref<excel::Worksheets> Worksheets() override;
  void Save() override;
  void SaveAs(const std::string& fullPath) override;
  void Close(bool saveChanges) override;
};

class WorksheetsObject final : public WorkbookPart<"Worksheets", excel::Worksheets> {
 public:
  using WorkbookPart::WorkbookPart;

  Ref<excel::Worksheet> Item(int index) override;
};

class WorksheetObject final : public WorkbookPart<"Worksheet", excel::Worksheet>,
                              public std::enable_shared_from_this<WorksheetObject> {
 public:
  WorksheetObject(std::shared_ptr<Session> session, std::shared_ptr<OpenWorkbook> workbook, int sheet);

  Ref<excel::Range> Range(const std::string& address) override;
  Ref<excel::Range> Cells() override;
  Ref<excel::Range> Cells(int row, int column) override;

  Ref<excel::Worksheet> AsWorksheet() override;

 private:
  Ref<excel::Range> RangeOf(const CellArea& area);

  int sheet_;
};

}  // namespace quintara::workbook
