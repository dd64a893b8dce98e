#include "commands/Cls_InsertFromVD.h"

#include <string>

#include "access/contracts/spreadsheet.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/messages.h"
#include "base/attempt.h"
#include "base/counter16.h"
#include "matrix/matrix_of_wip.h"
#include "matrix/matrix_workbook.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

using veldora::VdObject;

constexpr bool kDontSave = false;

// A matrix workbook that is only looked at. Letting go of it ends nothing.
struct SeenWorkbook {
  Ref<excel::Application> application;
  Ref<excel::Workbook> workbook;

  void Open(const std::string& path) {
    application = ThePlatform().Create(excel::kProgramName)->AsSpreadsheetApplication();
    workbook = application->Workbooks()->Open(path);
  }
  void Close() {
    workbook->Close(kDontSave);
    workbook = nullptr;
    application->Quit();
    application = nullptr;
  }
  // What is there still.
  void Abandon() {
    ErrorState ignored;
    if (workbook) Attempt(ignored, [&] { workbook->Close(kDontSave); });
    if (application) Attempt(ignored, [&] { application->Quit(); });
  }
};

// Nothing after a message.
Ref<AnyObject> TakeActiveDocument() {
  ErrorState failure;
  Ref<AnyObject> document;
  Attempt(failure, [&] { document = Process().gZorva->ActiveDocument(); });
  if (document) return document;
  Show(Process().texts.QD_INSERTWLT_CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT, box::kCriticalModal, failure.description);
  return nullptr;
}

// A box for each; the text was never in the catalogue.
void TellOfEach(const std::string& partNumber, const Ref<zorva::Products>& components) {
  for (const int i : Counting(1, components->Count())) {
    const auto component = components->Item(i);
    if (!component || component->PartNumber() != partNumber) continue;
    ThePlatform().ShowBox("Ca existe deja", box::kOkOnly, "Quintara");
  }
}

void Look(const Ref<VdObject>& object, SeenWorkbook& matrix) {
  const auto document = TakeActiveDocument();
  if (!document) return;
  const auto root = document->AsProductDocument()->Product();
  if (!Utils().TestWIP(root)) {
    Show(Process().texts.QD_INSERTWLT_IS_NOT_WIP, box::kCriticalModal, "");
    return;
  }
  const auto path = BringMatrix(MatrixIdsOf(root, MatrixType::Excel), box::kInformationModal, Reading::kAsItIs);
  if (!path) return;
  matrix.Open(*path);
  const auto sheets = matrix_workbook::SheetsOf(matrix.application->ActiveWorkbook());
  matrix_workbook::TellOfAge(sheets.list);
  const auto partNumber = object->Record()->ValueAsString("NM_CN_PART_NUMBER");
  TellOfEach(partNumber, root->Products());
  matrix.Close();
}

}  // namespace

void Cls_InsertFromVD::Run(const Ref<VdObject>& VeldoraObject) {
  if (!StartCommand()) return;
  SeenWorkbook matrix;
  ErrorState silent;
  Attempt(silent, [&] { Look(VeldoraObject, matrix); });
  matrix.Abandon();
}

}  // namespace quintara
