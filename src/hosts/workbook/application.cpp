#include "hosts/workbook/application.h"

#include <utility>

#include "hosts/workbook/workbook.h"

namespace quintara::workbook {
namespace {

constexpr int kMostSheets = 255;

// One object for each workbook, as long as somebody holds it.
Ref<excel::Workbook> ObjectOf(const std::shared_ptr<Session>& session, const Session::Workbook& workbook) {
  if (!workbook) return nullptr;
  auto object = workbook->object.lock();
  if (!object) object = std::make_shared<WorkbookObject>(session, workbook);
  workbook->object = object;
  return Ref<excel::Workbook>(std::move(object));
}

}  // namespace

bool ApplicationObject::Visible() {
  Pass<"Visible">();
  return session_->visible;
}

void ApplicationObject::SetVisible(bool visible) {
  Pass<"Visible=">([&] { return visible ? "True" : "False"; });
  session_->visible = visible;
}

int ApplicationObject::SheetsInNewWorkbook() {
  Pass<"SheetsInNewWorkbook">();
  return session_->sheetsInNewWorkbook;
}

void ApplicationObject::SetSheetsInNewWorkbook(int count) {
  Pass<"SheetsInNewWorkbook=">([&] { return std::to_string(count); });
  if (count < 1 || count > kMostSheets) {
    throw Failure(failure::kRefused, "A new workbook has 1 to 255 worksheets, not " + std::to_string(count));
  }
  session_->sheetsInNewWorkbook = count;
}

Ref<excel::Workbooks> ApplicationObject::Workbooks() {
  Pass<"Workbooks">();
  return MakeRef<WorkbooksObject>(session_);
}

Ref<excel::Workbook> ApplicationObject::ActiveWorkbook() {
  Pass<"ActiveWorkbook">();
  return ObjectOf(session_, session_->Active());
}

void ApplicationObject::Quit() {
  Pass<"Quit">();
  session_->Quit();
}

Ref<excel::Application> ApplicationObject::AsSpreadsheetApplication() {
  session_->gate->Pass("ExcelApplication.AsSpreadsheetApplication");
  return Ref<excel::Application>(shared_from_this());
}

int WorkbooksObject::Count() {
  Pass<"Count">();
  return static_cast<int>(session_->Workbooks().size());
}

Ref<excel::Workbook> WorkbooksObject::Item(int index) {
  Pass<"Item">([&] { return std::to_string(index); });
  const auto& workbooks = session_->Workbooks();
  if (index < 1 || std::cmp_greater(index, workbooks.size())) {
    throw Failure(failure::kSubscriptOutOfRange, "Subscript out of range: workbook " + std::to_string(index) + " of " +
                                                     std::to_string(workbooks.size()));
  }
  return ObjectOf(session_, workbooks[static_cast<std::size_t>(index) - 1]);
}

Ref<excel::Workbook> WorkbooksObject::Add() {
  Pass<"Add">();
  return ObjectOf(session_, session_->Add());
}

Ref<excel::Workbook> WorkbooksObject::Open(const std::string& fullPath) {
  Pass<"Open">([&] { return fullPath; });
  return ObjectOf(session_, session_->Open(fullPath));
}

}  // namespace quintara::workbook
