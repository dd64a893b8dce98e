#include "positioning/Cls_AllInstances.h"

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/arrays.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/child_part_numbers.h"
#include "matrix/matrix_of_wip.h"
#include "matrix/matrix_workbook.h"
#include "positioning/free_positions.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

ChildPartNumbers PartNumbersOf(const Ref<zorva::Products>& components, Counter16 count) {
  if (count < 1) throw Failure(failure::kSubscriptOutOfRange);
  ChildPartNumbers partNumbers;
  for (const int i : Counting(1, count)) partNumbers.Add(Utils().GetThePartNumber(components->Item(i)));
  return partNumbers;
}

}  // namespace

void Cls_AllInstances::Run() {
  OpenedWorkbook workbook;
  Reported("Cls_AllInstances.Run", box::kCritical, false, [&] { return PlaceComponents(workbook); });
  workbook.Abandon();
}

bool Cls_AllInstances::PlaceComponents(OpenedWorkbook& workbook) {
  auto& globals = Process();
  if (!StartCommand()) return false;
  const auto document = globals.gZorva->ActiveDocument()->AsProductDocument();
  const auto root = document->Product();
  const auto components = root->Products();
  const Wip wip{components, document->Selection(), components->Count()};
  if (globals.gSkipPositioning) return true;
  const auto ids = MatrixIdsOf(root);
  if (!ids) return false;
  if (!Variant(Utils().ReadStringProperty(root, "WIP", "String")).ToBoolean()) {
    Show(globals.texts.QD_ALLINSTANCES_RETRIEVE_MATRIX_ONLY_AVAILABLE_FOR_WIP, box::kInformationModal);
    return false;
  }
  const auto path = BringMatrix(*ids, box::kInformationModal);
  if (!path) return false;
  if (ids->type == MatrixType::XML) {
    return Cls_Matrice().PositionAllInstances(root, *path, globals.gAllInstancesRequested, wip.selection);
  }
  ProcessExcelFile(wip, workbook, *path);
  return true;
}

void Cls_AllInstances::ProcessExcelFile(const Wip& wip, OpenedWorkbook& workbook, const std::string& path) {
  workbook.StartApplication();
  workbook.Open(path);
  matrix_workbook::TellOfAge(workbook.Sheets().list);
  PlaceFromSheets(wip, workbook.Sheets());
  workbook.SaveAndQuit();
}

void Cls_AllInstances::PlaceFromSheets(const Wip& wip, const matrix_workbook::Sheets& sheets) {
  const auto partNumbers = PartNumbersOf(wip.components, wip.count);
  Counter16 lastIndex = wip.count;
  for (const int i : Counting(1, wip.count)) {
    const auto component = wip.components->Item(i);
    const auto instances = GetFreePositions(sheets, Utils().GetThePartNumber(component), partNumbers);
    if (UpperBound(instances) >= 1 && Process().gAllInstancesRequested) {
      PlaceEachInstance(wip, component, instances, sheets.tree, lastIndex);
      continue;
    }
    const auto& first = instances.front();
    Positionner(sheets.tree, first.Row, first.Column);
    component->SetName(first.InstanceName);
    Place(component);
  }
}

// `source` takes the first instance and stays what is on the clipboard; every other instance gets a copy of it,
// which the host appends at the end of the children.
void Cls_AllInstances::PlaceEachInstance(const Wip& wip, const Ref<zorva::Product>& source,
                                         const std::vector<ExcelPosition>& instances, const Ref<excel::Worksheet>& tree,
                                         Counter16& lastIndex) {
  Ref<zorva::Product> component;
  for (const auto& instance : instances) {
    Positionner(tree, instance.Row, instance.Column);
    if (!component) {
      wip.selection->Clear();
      wip.selection->Add(source);
      wip.selection->Copy();
      wip.selection->Clear();
      component = source;
    } else {
      wip.selection->Add(wip.components);
      wip.selection->Paste();
      wip.selection->Clear();
      component = wip.components->Item(++lastIndex);
    }
    component->SetName(instance.InstanceName);
    Place(component);
  }
}

void Cls_AllInstances::Positionner(const Ref<excel::Worksheet>& CurrentWorkSheet, std::int16_t ligne_fils,
                                   std::int16_t colonne_fils) {
  ComposeUpward(CurrentWorkSheet, ligne_fils, colonne_fils, PositionAt(CurrentWorkSheet, ligne_fils));
}

bool Cls_AllInstances::getLineColumn(const Ref<excel::Worksheet>& CurrentWorkSheet, const std::string& PartNumber,
                                     const std::string& InstanceName, std::int16_t& startLine) {
  for (Counter16 row = startLine; FindInList(CurrentWorkSheet, PartNumber, row); ++row) {
    if (TextAt(CurrentWorkSheet, row, matrix_workbook::kInstanceName) != InstanceName) continue;
    lineFound = ValueAt(CurrentWorkSheet, row, matrix_workbook::kRow).ToInteger16();
    columnFound = ValueAt(CurrentWorkSheet, row, matrix_workbook::kLevel).ToInteger16();
    startLine = static_cast<std::int16_t>(int{row});
    return true;
  }
  return false;
}

}  // namespace quintara
