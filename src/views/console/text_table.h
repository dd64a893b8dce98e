#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace quintara {

/// A table of UTF-8 texts in columns, aligned by what its characters take on the screen.
class TextTable {
 public:
  struct Column {
    std::string title;
    bool alignRight = false;
  };

  explicit TextTable(std::vector<Column> columns);

  /// Cells that are missing at the end are empty. Failure 9 for more cells than columns.
  void AddRow(std::vector<std::string> cells);
  bool Empty() const noexcept { return rows_.empty(); }

  /// Title row, a rule and the rows; no line ends in blanks. Control characters become "?".
  void Print(std::ostream& out) const;

 private:
  void PrintRow(const std::vector<std::string>& cells, std::ostream& out) const;

  std::vector<Column> columns_;
  std::vector<std::size_t> widths_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace quintara
