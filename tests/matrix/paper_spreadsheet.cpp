#include "matrix/paper_spreadsheet.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "base/arrays.h"
#include "base/failure.h"
#include "base/text.h"

namespace quintara::test {
namespace {

constexpr int kLastColumn = 256;
constexpr int kLastRow = 65'536;

using App = std::shared_ptr<PaperSpreadsheet>;
using Book = std::shared_ptr<PaperBook>;

// All workbooks that were ever saved.
std::vector<PaperBook>& Shelf() {
  static std::vector<PaperBook> shelf;
  return shelf;
}

struct Area {
  int row, column, lastRow, lastColumn;
};

std::string NameOf(int row, int column) {
  std::string letters;
  for (int left = column; left > 0; left = (left - 1) / 26) {
    letters.insert(letters.begin(), static_cast<char>('A' + (left - 1) % 26));
  }
  return letters + std::to_string(row);
}

std::pair<int, int> CellOf(const std::string& name) {
  int column = 0;
  std::size_t i = 0;
  for (; i < name.size() && std::isupper(static_cast<unsigned char>(name[i])) != 0; ++i) {
    column = column * 26 + (name[i] - 'A' + 1);
  }
  if (i == 0 || i == name.size()) throw Failure(failure::kRefused, name + " is no address");
  return {std::stoi(name.substr(i)), column};
}

Area AreaOf(const std::string& address) {
  const auto corners = Split(address, ':');
  const auto first = CellOf(corners.front());
  const auto last = CellOf(corners.back());
  return {std::min(first.first, last.first), std::min(first.second, last.second), std::max(first.first, last.first),
          std::max(first.second, last.second)};
}

void RequireOnSheet(const Area& area) {
  const bool on = area.row >= 1 && area.column >= 1 && area.lastRow <= kLastRow && area.lastColumn <= kLastColumn;
  if (!on) throw Failure(failure::kRefused, "outside of the worksheet");
}

struct Place {
  App app;
  Book book;
  std::size_t sheet;

  PaperSheet& Sheet() const {
    if (std::ranges::find(app->open, book) == app->open.end()) throw Failure(failure::kServerGone);
    return book->sheets[sheet];
  }
  std::string Name(const std::string& address) const { return std::to_string(sheet + 1) + "!" + address; }
};

class PaperRange final : public excel::Range {
 public:
  PaperRange(Place place, Area area) : place_(std::move(place)), area_(area) { RequireOnSheet(area_); }

  Variant Value() override {
    const auto& cells = place_.Sheet().cells;
    const auto found = cells.find(First());
    return found == cells.end() ? Variant() : found->second;
  }
  void SetValue(const Variant& value) override {
    place_.app->Do(place_.Name(NameOf(area_.row, area_.column)) + "=" + value.ToText());
    // Of numbers a worksheet knows one kind.
    Put(First(), value.IsInteger() ? Variant(value.ToDouble()) : value);
  }
  std::string NumberFormat() override {
    const auto& formats = place_.Sheet().formats;
    const auto found = formats.find(First());
    return found == formats.end() ? "General" : found->second;
  }
  void SetNumberFormat(const std::string& format) override {
    place_.app->Do(place_.Name(NameOf(area_.row, area_.column)) + " format " + format);
    place_.Sheet().formats[First()] = format;
  }
  void Copy(const Ref<excel::Range>& destination) override {
    auto& to = dynamic_cast<PaperRange&>(*destination);
    place_.app->Do(place_.Name(NameOf(area_.row, area_.column) + ":" + NameOf(area_.lastRow, area_.lastColumn)) +
                   " to " + to.place_.Name(NameOf(to.area_.row, to.area_.column)));
    const auto source = place_.Sheet();
    for (int row = area_.row; row <= area_.lastRow; ++row) {
      for (int column = area_.column; column <= area_.lastColumn; ++column) {
        const std::pair cell{to.area_.row + row - area_.row, to.area_.column + column - area_.column};
        const auto found = source.cells.find({row, column});
        to.Put(cell, found == source.cells.end() ? Variant() : found->second);
      }
    }
  }
  Ref<excel::Range> SpecialCells(int) override {
    Area last{1, 1, 1, 1};
    for (const auto& [cell, value] : place_.Sheet().cells) {
      last.row = std::max(last.row, cell.first);
      last.column = std::max(last.column, cell.second);
    }
    return MakeRef<PaperRange>(place_, Area{last.row, last.column, last.row, last.column});
  }
  Ref<excel::Range> End(int) override { return MakeRef<PaperRange>(place_, Area{area_.row, 1, area_.row, 1}); }
  int Row() override { return area_.row; }

 private:
  std::pair<int, int> First() const { return {area_.row, area_.column}; }
  void Put(const std::pair<int, int>& cell, const Variant& value) {
    RequireOnSheet({cell.first, cell.second, cell.first, cell.second});
    if (value.IsEmpty()) {
      place_.Sheet().cells.erase(cell);
    } else {
      place_.Sheet().cells[cell] = value;
    }
  }

  Place place_;
  Area area_;
};

class PaperWorksheet final : public excel::Worksheet {
 public:
  explicit PaperWorksheet(Place place) : place_(std::move(place)) {}

  Ref<excel::Range> Range(const std::string& address) override { return MakeRef<PaperRange>(place_, AreaOf(address)); }
  Ref<excel::Range> Cells() override { return MakeRef<PaperRange>(place_, Area{1, 1, kLastRow, kLastColumn}); }
  Ref<excel::Range> Cells(int row, int column) override {
    return MakeRef<PaperRange>(place_, Area{row, column, row, column});
  }

 private:
  Place place_;
};

class PaperWorksheets final : public excel::Worksheets {
 public:
  PaperWorksheets(App app, Book book) : app_(std::move(app)), book_(std::move(book)) {}

  Ref<excel::Worksheet> Item(int index) override {
    ElementAt(book_->sheets, index - 1);
    return MakeRef<PaperWorksheet>(Place{app_, book_, static_cast<std::size_t>(index - 1)});
  }

 private:
  App app_;
  Book book_;
};

class PaperWorkbook final : public excel::Workbook {
 public:
  PaperWorkbook(App app, Book book) : app_(std::move(app)), book_(std::move(book)) {}

  Ref<excel::Worksheets> Worksheets() override { return MakeRef<PaperWorksheets>(app_, book_); }
  void Save() override { SaveAs(book_->path); }
  void SaveAs(const std::string& fullPath) override {
    app_->Do("SaveAs " + fullPath);
    book_->path = fullPath;
    Shelf().push_back(*book_);
    std::ofstream(ToPath(fullPath)) << "paper " << Shelf().size() - 1;
  }
  void Close(bool saveChanges) override {
    app_->Do(saveChanges ? "Close and save" : "Close");
    std::erase(app_->open, book_);
  }

 private:
  App app_;
  Book book_;
};

class PaperWorkbooks final : public excel::Workbooks {
 public:
  explicit PaperWorkbooks(App app) : app_(std::move(app)) {}

  int Count() override { return static_cast<int>(app_->open.size()); }
  Ref<excel::Workbook> Item(int index) override {
    return MakeRef<PaperWorkbook>(app_, ElementAt(app_->open, index - 1));
  }
  Ref<excel::Workbook> Add() override {
    app_->Do("Add");
    PaperBook book;
    book.sheets.resize(static_cast<std::size_t>(app_->sheetsInNewWorkbook));
    return Opened(std::move(book));
  }
  Ref<excel::Workbook> Open(const std::string& fullPath) override {
    app_->Do("Open " + fullPath);
    std::ifstream file(ToPath(fullPath));
    std::string word;
    std::size_t number = 0;
    if (!(file >> word >> number) || word != "paper") throw Failure(failure::kRefused, fullPath + " is no workbook");
    return Opened(ElementAt(Shelf(), number));
  }

 private:
  Ref<excel::Workbook> Opened(PaperBook book) {
    app_->open.push_back(std::make_shared<PaperBook>(std::move(book)));
    return MakeRef<PaperWorkbook>(app_, app_->open.back());
  }

  App app_;
};

}  // namespace

void PaperSpreadsheet::Do(const std::string& what) {
  before(what);
  done.push_back(what);
}

void PaperSpreadsheet::SetVisible(bool visible) {
  Do(visible ? "Visible=True" : "Visible=False");
  visible_ = visible;
}

void PaperSpreadsheet::SetSheetsInNewWorkbook(int count) {
  Do("SheetsInNewWorkbook=" + std::to_string(count));
  sheetsInNewWorkbook = count;
}

Ref<excel::Workbooks> PaperSpreadsheet::Workbooks() {
  return MakeRef<PaperWorkbooks>(shared_from_this());
}

Ref<excel::Workbook> PaperSpreadsheet::ActiveWorkbook() {
  if (open.empty()) return nullptr;
  return MakeRef<PaperWorkbook>(shared_from_this(), open.back());
}

void PaperSpreadsheet::Quit() {
  Do("Quit");
  open.clear();
}

Ref<excel::Application> PaperSpreadsheet::AsSpreadsheetApplication() {
  return Ref<excel::Application>(shared_from_this());
}

}  // namespace quintara::test
