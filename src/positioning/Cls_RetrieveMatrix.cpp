#include "positioning/Cls_RetrieveMatrix.h"

#include <algorithm>
#include <optional>

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/matrix_of_wip.h"
#include "matrix/matrix_workbook.h"
#include "positioning/flat_list.h"
#include "positioning/opened_workbook.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

constexpr int kNotFound = -1;

struct ActiveRoot {
  Ref<zorva::Product> root;
  Ref<zorva::Products> components;
};

bool IsCalledOnWip() {
  if (Utils().IsAWIP()) return true;
  Show(Process().texts.QD_RETRIEVEMATRIX_ONLY_AVAILABLE_FOR_WIP, box::kInformationModal);
  return false;
}

std::optional<ActiveRoot> TakeActiveRoot() {
  ActiveRoot active;
  ErrorState ignored;
  const bool isTaken = Attempt(ignored, [&] {
    active.root = Process().gZorva->ActiveDocument()->AsProductDocument()->Product();
    active.components = active.root->Products();
  });
  if (isTaken) return active;
  Show(Process().texts.QD_RETRIEVEMATRIX_NO_ZORVA_ACTIVEDOCUMENT, box::kInformationModal);
  return std::nullopt;
}

// The first child with this part number and, unless that is empty, this name.
int FindProductIndex(const Ref<zorva::Products>& products, const std::string& partNumber,
                     const std::string& instanceName) {
  for (const int i : Counting(1, products->Count())) {
    const auto child = products->Item(i);
    if (child->PartNumber() != partNumber) continue;
    if (instanceName.empty() || child->Name() == instanceName) return i;
  }
  return kNotFound;
}

// The part number of a component in whatever form. The mode on the way differs from the usual one.
std::string PartNumberOf(const Ref<zorva::Product>& product) {
  if (Utils().IsInDesignMode(product)) return product->PartNumber();
  product->SetWorkMode(2);
  auto partNumber = product->PartNumber();
  product->SetWorkMode(1);
  return partNumber;
}

// Never empty: without an instance there is one blank entry. A failure keeps what was found before it.
std::vector<ExcelPosition> GetPositionsOfPartNumber(const Ref<excel::Worksheet>& sheet,
                                                    const Ref<zorva::Product>& product) {
  std::vector<ExcelPosition> found;
  ErrorState ignored;
  Attempt(ignored, [&] {
    const auto partNumber = PartNumberOf(product);
    for (Counter16 row = 1; FindInList(sheet, partNumber, row); ++row) found.push_back(EntryAt(sheet, row));
  });
  if (found.empty()) found.emplace_back();
  return found;
}

}  // namespace

void Cls_RetrieveMatrix::Run() {
  Reported("Cls_RetrieveMatrix.Run", box::kCriticalModal, false, [&] { return PlaceComponents(); });
}

bool Cls_RetrieveMatrix::PlaceComponents() {
  if (!StartCommand() || !IsCalledOnWip()) return false;
  const auto wip = TakeActiveRoot();
  if (!wip) return false;
  // The text isn't needed; what counts is that a root without design form goes through it.
  Utils().GetThePartNumber(wip->root);
  const auto ids = MatrixIdsOf(wip->root);
  if (!ids) return false;
  const auto path = BringMatrix(*ids, box::kCriticalModal);
  if (!path) return false;
  if (ids->type == MatrixType::XML) {
    if (!Cls_Matrice().ProcessXMLFile(wip->root, *path)) return false;
  } else if (!ProcessExcelFile(*path, wip->components)) {
    Show(Process().texts.QD_RETRIEVEMATRIX_ERROR_POSITIONNING_DATA, box::kCriticalModal);
    return false;
  }
  Process().gZorva->ActiveWindow()->ActiveViewer()->RefreshView();
  return true;
}

bool Cls_RetrieveMatrix::ProcessExcelFile(const std::string& path, const Ref<zorva::Products>& Products) {
  OpenedWorkbook workbook;
  if (ErrorState failure; !Attempt(failure, [&] { workbook.StartApplication(); })) {
    Show(Process().texts.QD_RETRIEVEMATRIX_ERROR_EXCEL, box::kCriticalModal, path, failure.description);
    return false;
  }
  return Reported("Cls_RetrieveMatrix.ProcessExcelFile", box::kCriticalModal, false, [&] {
    workbook.Open(path);
    PlaceFromSheets(workbook.Sheets(), Products);
    workbook.SaveAndQuit();
    return true;
  });
}

// The list of part numbers stays as it is made, and the flag is never cleared: all that the two do is to end the
// work at the first child without a part number.
void Cls_RetrieveMatrix::PlaceFromSheets(const matrix_workbook::Sheets& sheets, const Ref<zorva::Products>& Products) {
  const Counter16 count = Products->Count();
  MatrixPartNumbers = {""};
  bool isHandled = false;
  for (const int i : Counting(1, count)) {
    const auto product = Products->Item(i);
    if (std::ranges::find(MatrixPartNumbers, product->PartNumber()) != MatrixPartNumbers.end()) isHandled = true;
    if (!isHandled) PlaceInstancesOf(product, sheets, Products);
  }
  MatrixPartNumbers.clear();
}

void Cls_RetrieveMatrix::PlaceInstancesOf(const Ref<zorva::Product>& product, const matrix_workbook::Sheets& sheets,
                                          const Ref<zorva::Products>& Products) {
  const auto entries = GetPositionsOfPartNumber(sheets.list, product);
  for (const auto& entry : entries) {
    const auto name = entries.size() < 2 ? std::string() : entry.InstanceName;
    const int index = FindProductIndex(Products, product->PartNumber(), name);
    if (index == kNotFound) continue;
    const auto component = Products->Item(index);
    Positionner(sheets.tree, entry.Row, entry.Column);
    Place(component);
  }
}

void Cls_RetrieveMatrix::Positionner(const Ref<excel::Worksheet>& CurrentWorkSheet, std::int16_t ligne_fils,
                                     std::int16_t colonne_fils) {
  const auto position = PositionAt(CurrentWorkSheet, ligne_fils);
  MatriceResultat = position;
  ComposeUpward(CurrentWorkSheet, ligne_fils, colonne_fils, position);
}

}  // namespace quintara
