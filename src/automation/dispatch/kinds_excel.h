#pragma once

#include "access/contracts/spreadsheet.h"
#include "automation/dispatch/kinds.h"

namespace quintara::automation {

template <>
struct Kind<excel::Application> : UsualKind {
  static constexpr std::string_view kName = "Application";
  static constexpr std::string_view kTelltale = "SheetsInNewWorkbook";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Visible", &excel::Application::Visible>, Put<"Visible", &excel::Application::SetVisible>,
                 Call<"SheetsInNewWorkbook", &excel::Application::SheetsInNewWorkbook>,
                 Put<"SheetsInNewWorkbook", &excel::Application::SetSheetsInNewWorkbook>,
                 Call<"Workbooks", &excel::Application::Workbooks>,
                 Call<"ActiveWorkbook", &excel::Application::ActiveWorkbook>, Call<"Quit", &excel::Application::Quit>>;
};

template <>
struct Kind<excel::Workbooks> : UsualKind {
  static constexpr std::string_view kName = "Workbooks";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Count", &excel::Workbooks::Count>, Call<"Item", &excel::Workbooks::Item>,
                                Call<"Add", &excel::Workbooks::Add>, Call<"Open", &excel::Workbooks::Open>>;
};

template <>
struct Kind<excel::Workbook> : UsualKind {
  static constexpr std::string_view kName = "Workbook";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Worksheets", &excel::Workbook::Worksheets>, Call<"Save", &excel::Workbook::Save>,
                                Call<"SaveAs", &excel::Workbook::SaveAs>, Call<"Close", &excel::Workbook::Close>>;
};

template <>
struct Kind<excel::Worksheets> : UsualKind {
  static constexpr std::string_view kName = "Worksheets";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Item", &excel::Worksheets::Item>>;
};

template <>
struct Kind<excel::Worksheet> : UsualKind {
  static constexpr std::string_view kName = "Worksheet";
  static constexpr std::string_view kTelltale = "Cells";
  using Base = AnyObject;
  using Operations = std::tuple<
      Call<"Range", &excel::Worksheet::Range>,
      Call<"Cells", static_cast<Ref<excel::Range> (excel::Worksheet::*)()>(&excel::Worksheet::Cells)>,
      Call<"Cells", static_cast<Ref<excel::Range> (excel::Worksheet::*)(int, int)>(&excel::Worksheet::Cells)>>;
};

template <>
struct Kind<excel::Range> : UsualKind {
  static constexpr std::string_view kName = "Range";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Value", &excel::Range::Value>, Put<"Value", &excel::Range::SetValue>,
                 Call<"NumberFormat", &excel::Range::NumberFormat>, Put<"NumberFormat", &excel::Range::SetNumberFormat>,
                 Call<"Copy", &excel::Range::Copy>, Call<"SpecialCells", &excel::Range::SpecialCells>,
                 Call<"End", &excel::Range::End>, Call<"Row", &excel::Range::Row>>;
};

}  // namespace quintara::automation
