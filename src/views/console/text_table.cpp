#include "views/console/text_table.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "base/failure.h"
#include "views/console/screen_text.h"

namespace quintara {

TextTable::TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {
  for (const auto& column : columns_) widths_.push_back(ScreenWidth(column.title));
}

void TextTable::AddRow(std::vector<std::string> cells) {
  if (cells.size() > columns_.size()) throw Failure(failure::kSubscriptOutOfRange);
  cells.resize(columns_.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    cells[i] = OneLine(cells[i]);
    widths_[i] = std::max(widths_[i], ScreenWidth(cells[i]));
  }
  rows_.push_back(std::move(cells));
}

void TextTable::Print(std::ostream& out) const {
  std::vector<std::string> titles;
  std::vector<std::string> rules;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    titles.push_back(columns_[i].title);
    rules.emplace_back(widths_[i], '-');
  }
  PrintRow(titles, out);
  PrintRow(rules, out);
  for (const auto& row : rows_) PrintRow(row, out);
}

void TextTable::PrintRow(const std::vector<std::string>& cells, std::ostream& out) const {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string padding(widths_[i] - ScreenWidth(cells[i]), ' ');
    if (i > 0) line += "  ";
    line += columns_[i].alignRight ? padding + cells[i] : cells[i] + padding;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

}  // namespace quintara
