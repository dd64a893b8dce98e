#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/spreadsheet.h"
#include "hosts/workbook/cell_grid.h"
#include "hosts/workbook/engine.h"

namespace quintara::workbook {

/// A workbook with what is known here of its cells. Sheets are counted from 1.
class OpenWorkbook {
 public:
  /// `path` is empty for a new workbook, whose sheets are empty.
  OpenWorkbook(std::unique_ptr<Document> document, std::string path);

  bool IsOpen() const noexcept { return document_ != nullptr; }
  const std::string& Path() const noexcept { return path_; }
  int SheetCount() const noexcept { return static_cast<int>(sheets_.size()); }

  /// The cells of a sheet as they were last read; its formulas may be of an earlier time.
  const CellGrid& Cells(int sheet) { return Known(sheet).cells; }
  /// The same with all formulas up to date.
  const CellGrid& FreshCells(int sheet);
  const Cell& CellAt(int sheet, int row, int column);
  /// The same, to be written.
  CellGrid& Change(int sheet);

  /// The file that it makes with all that was written.
  std::string Bytes();
  void SetPath(const std::string& path) { path_ = path; }
  void Close();

  int activation = 0;                     ///< the one with the highest is active
  std::weak_ptr<excel::Workbook> object;  ///< what stands for it, as long as somebody holds it

 private:
  struct Sheet {
    CellGrid cells;
    int revision;  ///< of the workbook when it was read
  };

  Sheet& Known(int sheet);
  void Flush();

  std::unique_ptr<Document> document_;
  std::string path_;
  std::vector<std::optional<Sheet>> sheets_;
  int revision_ = 0;
};

}  // namespace quintara::workbook
