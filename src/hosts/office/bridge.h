#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "hosts/office/cell_grid.h"

namespace quintara::office {

/// How long is waited for LibreOffice, at most, before it is taken for dead and ended.
struct Limits {
  std::chrono::milliseconds start{60'000};  ///< until it can be spoken to
  std::chrono::milliseconds answer{120'000};
  std::chrono::milliseconds end{10'000};
};

/// A workbook that is open in LibreOffice. Sheets are counted from 1.
class OfficeDocument {
 public:
  OfficeDocument() = default;
  OfficeDocument(const OfficeDocument&) = delete;
  OfficeDocument& operator=(const OfficeDocument&) = delete;
  virtual ~OfficeDocument() = default;

  virtual int SheetCount() = 0;
  /// All cells of a sheet, in a number of calls that doesn't grow with their number.
  virtual CellGrid Read(int sheet) = 0;
  /// Sends what changed in `grid`, which is the sheet's, in few calls.
  virtual void Write(int sheet, const CellGrid& grid) = 0;
  /// Writes a `.xls` file at `path`.
  virtual void Store(const std::string& path) = 0;
  virtual void Close() = 0;
};

struct Connection;

/// A LibreOffice of its own and the way to it. Fails with 429 when it can't be started, with 462 once it has
/// ended or was ended for an overdue answer, with 1004 for what it refuses. One thread, that which made it.
class Bridge {
 public:
  Bridge(const std::string& program, const Limits& limits);
  ~Bridge();
  Bridge(const Bridge&) = delete;
  Bridge& operator=(const Bridge&) = delete;

  /// A new workbook with so many empty sheets.
  std::unique_ptr<OfficeDocument> Add(int sheets);
  /// Opens the file at `path`; failures call it `name`.
  std::unique_ptr<OfficeDocument> Load(const std::string& path, const std::string& name);
  /// A folder for files that pass between LibreOffice and us, gone at the end.
  const std::string& Folder() const;

  bool IsAlive() const noexcept;
  void RequireAlive() const;
  /// Ends LibreOffice.
  void End() noexcept;

  /// The process, and the calls that went to it.
  int Process() const noexcept;
  int Calls() const noexcept;

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace quintara::office
