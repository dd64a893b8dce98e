#pragma once

#include <memory>
#include <string>

#include "hosts/workbook/cell_grid.h"

namespace quintara::workbook {

/// A workbook where its cells are kept. Sheets are counted from 1.
class Document {
 public:
  Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  virtual ~Document() = default;

  virtual int SheetCount() = 0;
  /// All cells of a sheet.
  virtual CellGrid Read(int sheet) = 0;
  /// Takes over what changed in `grid`, which is the sheet's.
  virtual void Write(int sheet, const CellGrid& grid) = 0;
  /// The file that it makes.
  virtual std::string Bytes() = 0;
  virtual void Close() = 0;
};

/// What keeps workbooks, and knows their files from inside. Fails with 462 once it has ended, with 1004 for what
/// it refuses.
class Engine {
 public:
  Engine() = default;
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;
  virtual ~Engine() = default;

  /// A new workbook with so many empty sheets.
  virtual std::unique_ptr<Document> Add(int sheets) = 0;
  /// The workbook that a file with these bytes holds; failures call it `name`.
  virtual std::unique_ptr<Document> Load(const std::string& bytes, const std::string& name) = 0;
  virtual void RequireAlive() const = 0;
  /// Ends it, with what is open.
  virtual void End() noexcept = 0;
};

}  // namespace quintara::workbook
