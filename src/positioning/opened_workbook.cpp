#include "positioning/opened_workbook.h"

#include "access/session/the_platform.h"
#include "base/attempt.h"

namespace quintara {
namespace {

constexpr bool kDontSave = false;

}  // namespace

void OpenedWorkbook::StartApplication() {
  application_ = ThePlatform().Create(excel::kProgramName)->AsSpreadsheetApplication();
}

void OpenedWorkbook::Open(const std::string& path) {
  application_->SetVisible(false);
  workbook_ = application_->Workbooks()->Open(path);
  sheets_ = matrix_workbook::SheetsOf(application_->ActiveWorkbook());
}

void OpenedWorkbook::SaveAndQuit() {
  workbook_->Save();
  workbook_->Close(kDontSave);
  workbook_ = nullptr;
  application_->Quit();
  application_ = nullptr;
}

void OpenedWorkbook::Abandon() {
  ErrorState ignored;
  if (workbook_) Attempt(ignored, [&] { workbook_->Close(kDontSave); });
  if (application_) Attempt(ignored, [&] { application_->Quit(); });
}

}  // namespace quintara
