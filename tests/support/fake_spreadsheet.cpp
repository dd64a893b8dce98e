#include "support/fake_spreadsheet.h"

#include <filesystem>

#include "base/arrays.h"
#include "base/failure.h"
#include "base/text.h"

namespace quintara::test {
namespace {

constexpr int kRows = 65'536;
constexpr int kColumns = 256;

using SharedDesk = std::shared_ptr<FakeSpreadsheet::Desk>;

[[noreturn]] void Refuse() {
  throw Failure(failure::kRefused, "The workbook is only read here");
}

class FakeRange final : public excel::Range {
 public:
  FakeRange(SharedDesk desk, Variant value) : desk_(std::move(desk)), value_(std::move(value)) {}

  Variant Value() override {
    desk_->gate->Pass("Range.Value");
    return value_;
  }
  void SetValue(const Variant& /*value*/) override { Refuse(); }
  std::string NumberFormat() override { Refuse(); }
  void SetNumberFormat(const std::string& /*format*/) override { Refuse(); }
  void Copy(const Ref<excel::Range>& /*destination*/) override { Refuse(); }
  Ref<excel::Range> SpecialCells(int /*type*/) override { Refuse(); }
  Ref<excel::Range> End(int /*where*/) override { Refuse(); }
  int Row() override { Refuse(); }

 private:
  SharedDesk desk_;
  Variant value_;
};

class FakeWorksheet final : public excel::Worksheet {
 public:
  FakeWorksheet(SharedDesk desk, int index) : desk_(std::move(desk)), index_(index) {}

  Ref<excel::Range> Range(const std::string& /*address*/) override { Refuse(); }
  Ref<excel::Range> Cells() override { Refuse(); }
  Ref<excel::Range> Cells(int row, int column) override {
    const auto place = std::to_string(row) + ", " + std::to_string(column);
    desk_->gate->Pass("Worksheet.Cells", [&] { return std::to_string(index_) + ": " + place; });
    if (row < 1 || row > kRows || column < 1 || column > kColumns) {
      throw Failure(failure::kRefused, "There is no cell " + place);
    }
    const auto& cells = ElementAt(desk_->sheets, index_ - 1);
    const auto found = cells.find({row, column});
    return MakeRef<FakeRange>(desk_, found == cells.end() ? Variant() : found->second);
  }

 private:
  SharedDesk desk_;
  int index_;
};

class FakeWorksheets final : public excel::Worksheets {
 public:
  explicit FakeWorksheets(SharedDesk desk) : desk_(std::move(desk)) {}

  Ref<excel::Worksheet> Item(int index) override {
    desk_->gate->Pass("Worksheets.Item", [&] { return std::to_string(index); });
    ElementAt(desk_->sheets, index - 1);
    return MakeRef<FakeWorksheet>(desk_, index);
  }

 private:
  SharedDesk desk_;
};

class FakeWorkbook final : public excel::Workbook {
 public:
  FakeWorkbook(SharedDesk desk, std::string path) : desk_(std::move(desk)), path_(std::move(path)) {}

  Ref<excel::Worksheets> Worksheets() override {
    Pass("Workbook.Worksheets");
    return MakeRef<FakeWorksheets>(desk_);
  }
  void Save() override {
    Pass("Workbook.Save");
    desk_->saved.push_back(path_);
  }
  void SaveAs(const std::string& /*fullPath*/) override { Refuse(); }
  void Close(bool saveChanges) override {
    Pass(saveChanges ? "Workbook.Close(True)" : "Workbook.Close(False)");
    std::erase(desk_->open, path_);
  }

 private:
  void Pass(const char* operation) {
    desk_->gate->Pass(operation);
    if (desk_->open.empty()) throw Failure(failure::kInvalidCall, "The workbook is closed");
  }

  SharedDesk desk_;
  std::string path_;
};

class FakeWorkbooks final : public excel::Workbooks {
 public:
  explicit FakeWorkbooks(SharedDesk desk) : desk_(std::move(desk)) {}

  int Count() override { return static_cast<int>(desk_->open.size()); }
  Ref<excel::Workbook> Item(int /*index*/) override { Refuse(); }
  Ref<excel::Workbook> Add() override { Refuse(); }
  Ref<excel::Workbook> Open(const std::string& fullPath) override {
    desk_->gate->Pass("Workbooks.Open", [&] { return FromPath(ToPath(fullPath).filename()); });
    if (!std::filesystem::is_regular_file(ToPath(fullPath))) throw Failure(failure::kRefused, "No file " + fullPath);
    desk_->open.push_back(fullPath);
    return MakeRef<FakeWorkbook>(desk_, fullPath);
  }

 private:
  SharedDesk desk_;
};

class FakeApplication final : public excel::Application, public std::enable_shared_from_this<FakeApplication> {
 public:
  explicit FakeApplication(SharedDesk desk) : desk_(std::move(desk)) {}

  bool Visible() override { return false; }
  void SetVisible(bool visible) override {
    desk_->gate->Pass("ExcelApplication.Visible=", [&] { return visible ? "True" : "False"; });
  }
  int SheetsInNewWorkbook() override { Refuse(); }
  void SetSheetsInNewWorkbook(int /*count*/) override { Refuse(); }
  Ref<excel::Workbooks> Workbooks() override {
    desk_->gate->Pass("ExcelApplication.Workbooks");
    return MakeRef<FakeWorkbooks>(desk_);
  }
  Ref<excel::Workbook> ActiveWorkbook() override {
    desk_->gate->Pass("ExcelApplication.ActiveWorkbook");
    return desk_->open.empty() ? nullptr : Ref<excel::Workbook>(MakeRef<FakeWorkbook>(desk_, desk_->open.back()));
  }
  void Quit() override {
    desk_->gate->Pass("ExcelApplication.Quit");
    --desk_->running;
    desk_->open.clear();
  }
  Ref<excel::Application> AsSpreadsheetApplication() override { return Ref<excel::Application>(shared_from_this()); }

 private:
  SharedDesk desk_;
};

}  // namespace

Ref<excel::Application> FakeSpreadsheet::Start() const {
  ++desk_->running;
  return MakeRef<FakeApplication>(desk_);
}

Ref<excel::Worksheet> FakeSpreadsheet::Sheet(int index) const {
  return MakeRef<FakeWorksheet>(desk_, index);
}

}  // namespace quintara::test
