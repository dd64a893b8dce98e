#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

constexpr auto kAllCells = static_cast<Ref<excel::Range> (excel::Worksheet::*)()>(&excel::Worksheet::Cells);
constexpr auto kOneCell = static_cast<Ref<excel::Range> (excel::Worksheet::*)(int, int)>(&excel::Worksheet::Cells);

class ApplicationAdapter final : public LateBound<excel::Application> {
 public:
  using LateBound::LateBound;

  bool Visible() override { return Ask<&excel::Application::Visible>(); }
  void SetVisible(bool visible) override { Ask<&excel::Application::SetVisible>(visible); }
  int SheetsInNewWorkbook() override { return Ask<&excel::Application::SheetsInNewWorkbook>(); }
  void SetSheetsInNewWorkbook(int count) override { Ask<&excel::Application::SetSheetsInNewWorkbook>(count); }
  Ref<excel::Workbooks> Workbooks() override { return Ask<&excel::Application::Workbooks>(); }
  Ref<excel::Workbook> ActiveWorkbook() override { return Ask<&excel::Application::ActiveWorkbook>(); }
  void Quit() override { Ask<&excel::Application::Quit>(); }
};

class WorkbooksAdapter final : public LateBound<excel::Workbooks> {
 public:
  using LateBound::LateBound;

  int Count() override { return Ask<&excel::Workbooks::Count>(); }
  Ref<excel::Workbook> Item(int index) override { return Ask<&excel::Workbooks::Item>(index); }
  Ref<excel::Workbook> Add() override { return Ask<&excel::Workbooks::Add>(); }
  Ref<excel::Workbook> Open(const std::string& fullPath) override { return Ask<&excel::Workbooks::Open>(fullPath); }
};

class WorkbookAdapter final : public LateBound<excel::Workbook> {
 public:
  using LateBound::LateBound;

  Ref<excel::Worksheets> Worksheets() override { return Ask<&excel::Workbook::Worksheets>(); }
  void Save() override { Ask<&excel::Workbook::Save>(); }
  void SaveAs(const std::string& fullPath) override { Ask<&excel::Workbook::SaveAs>(fullPath); }
  void Close(bool saveChanges) override { Ask<&excel::Workbook::Close>(saveChanges); }
};

class WorksheetsAdapter final : public LateBound<excel::Worksheets> {
 public:
  using LateBound::LateBound;

  Ref<excel::Worksheet> Item(int index) override { return Ask<&excel::Worksheets::Item>(index); }
};

class WorksheetAdapter final : public LateBound<excel::Worksheet> {
 public:
  using LateBound::LateBound;

  Ref<excel::Range> Range(const std::string& address) override { return Ask<&excel::Worksheet::Range>(address); }
  Ref<excel::Range> Cells() override { return Ask<kAllCells>(); }
  Ref<excel::Range> Cells(int row, int column) override { return Ask<kOneCell>(row, column); }
};

class RangeAdapter final : public LateBound<excel::Range> {
 public:
  using LateBound::LateBound;

  Variant Value() override { return Ask<&excel::Range::Value>(); }
  void SetValue(const Variant& value) override { Ask<&excel::Range::SetValue>(value); }
  std::string NumberFormat() override { return Ask<&excel::Range::NumberFormat>(); }
  void SetNumberFormat(const std::string& format) override { Ask<&excel::Range::SetNumberFormat>(format); }
  void Copy(const Ref<excel::Range>& destination) override { Ask<&excel::Range::Copy>(destination); }
  Ref<excel::Range> SpecialCells(int type) override { return Ask<&excel::Range::SpecialCells>(type); }
  Ref<excel::Range> End(int where) override { return Ask<&excel::Range::End>(where); }
  int Row() override { return Ask<&excel::Range::Row>(); }
};

}  // namespace

template <>
Ref<excel::Application> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<ApplicationAdapter>(std::move(object), connection);
}

template <>
Ref<excel::Workbooks> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<WorkbooksAdapter>(std::move(object), connection);
}

template <>
Ref<excel::Workbook> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<WorkbookAdapter>(std::move(object), connection);
}

template <>
Ref<excel::Worksheets> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<WorksheetsAdapter>(std::move(object), connection);
}

template <>
Ref<excel::Worksheet> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<WorksheetAdapter>(std::move(object), connection);
}

template <>
Ref<excel::Range> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<RangeAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
