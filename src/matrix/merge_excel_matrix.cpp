#include <string>
#include <vector>

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/behaviors.h"
#include "access/utils/files.h"
#include "matrix/Cls_GetMatrix.h"
#include "matrix/column_names.h"
#include "matrix/matrix_workbook.h"
#include "matrix/vault_part.h"

namespace quintara {
namespace {

using excel::Range;
using excel::Worksheet;
using matrix_workbook::Sheets;

constexpr std::size_t kA = 0;
constexpr std::size_t kB = 1;
constexpr std::size_t kC = 2;
constexpr std::size_t kD = 3;
constexpr std::size_t kFirstNumber = 14;  // O
constexpr int kRootLevel = 1;
constexpr int kChildLevel = 2;
constexpr bool kDontSave = false;

// Of these the position of the merged root is made, whatever the product's is.
constexpr PositionMatrix kNothing{};
constexpr std::size_t kDiagonal[] = {0, 4, 8};

PositionMatrix PositionOf(const Ref<zorva::Product>& product) {
  PositionMatrix position{};
  product->Position()->GetComponents(position);
  return position;
}

// A new workbook, and the row that comes next in it.
class MergedWorkbook {
 public:
  explicit MergedWorkbook(const Ref<excel::Application>& excel)
      : target_(matrix_workbook::SheetsOf(matrix_workbook::Add(excel))) {}

  void AddRoot(const std::string& partNumber, const std::string& name);
  void AddPart(const std::string& partNumber, const Ref<zorva::Product>& child);
  // All rows of the sub-assembly's own workbook.
  void AddRows(const Sheets& source, const Ref<zorva::Product>& child);

 private:
  Ref<Range> At(const Ref<Worksheet>& sheet, std::size_t column, int row) const {
    return sheet->Range(columns_.at(column) + std::to_string(row));
  }
  void WriteListed(const std::string& partNumber, int level, const std::string& name) const;
  void WritePosition(const PositionMatrix& position) const;
  // The source's column, a number added to each of its cells.
  void AddColumn(const Ref<Worksheet>& source, std::size_t column, int rows, int added) const;

  std::vector<std::string> columns_ = ColumnNames();
  Sheets target_;
  Counter16 next_ = 1;
};

void MergedWorkbook::WriteListed(const std::string& partNumber, int level, const std::string& name) const {
  At(target_.list, kA, next_)->SetValue(partNumber);
  At(target_.list, kB, next_)->SetValue(Variant(int{next_}));
  At(target_.list, kC, next_)->SetValue(Variant(level));
  At(target_.list, kD, next_)->SetValue(name);
}

void MergedWorkbook::WritePosition(const PositionMatrix& position) const {
  for (std::size_t i = 0; i < position.size(); ++i) At(target_.tree, kFirstNumber + i, next_)->SetValue(position[i]);
}

void MergedWorkbook::AddRoot(const std::string& partNumber, const std::string& name) {
  At(target_.tree, kA, next_)->SetValue(partNumber);
  WriteListed(partNumber, kRootLevel, name);
  WritePosition(kNothing);
  for (const auto i : kDiagonal) At(target_.tree, kFirstNumber + i, next_)->SetValue(1.0);
  ++next_;
}

void MergedWorkbook::AddPart(const std::string& partNumber, const Ref<zorva::Product>& child) {
  At(target_.tree, kB, next_)->SetValue(partNumber);
  WritePosition(PositionOf(child));
  WriteListed(partNumber, kChildLevel, child->Name());
  ++next_;
}

void MergedWorkbook::AddColumn(const Ref<Worksheet>& source, std::size_t column, int rows, int added) const {
  for (int i = 1; i <= rows; ++i) {
    At(target_.list, column, next_ + i - 1)->SetValue(At(source, column, i)->Value().ToDouble() + added);
  }
}

// The positions come from row 2 on to the row of the root, not to the one below it: those of row 3 and
// further stand a row above the part numbers that they came with, and the last of these has none.
void MergedWorkbook::AddRows(const Sheets& source, const Ref<zorva::Product>& child) {
  const Counter16 rows =
      source.tree->Cells()->SpecialCells(excel::cell_type::kLastCell)->End(excel::direction::kToLeft)->Row();
  const auto last = std::to_string(rows);
  source.tree->Range("A1:N" + last)->Copy(At(target_.tree, kB, next_));
  source.tree->Range("O2:AB" + last)->Copy(At(target_.tree, kFirstNumber, next_));
  WritePosition(PositionOf(child));
  source.list->Range("A1:A" + last)->Copy(At(target_.list, kA, next_));
  AddColumn(source.list, kB, rows, next_ - 1);
  AddColumn(source.list, kC, rows, 1);
  for (int i = 1; i <= rows; ++i) At(target_.list, kD, next_ + i - 1)->SetValue(At(source.list, kD, i)->Value());
  next_ += rows;
}

// False for an assembly without a matrix.
bool AddAssembly(const Ref<excel::Application>& excel, const Ref<veldora::VdObject>& assembly,
                 const Ref<zorva::Product>& child, MergedWorkbook& merged) {
  const auto session = Process().gSession;
  const auto document =
      Utils().GetDocumentMatrixFromObject(session, assembly, StructureBehavior(session), MatrixType::XML);
  if (!document) return false;
  const auto path = Utils().CopyVeldoraObjectToWork(document);
  const auto source = excel->Workbooks()->Open(path);
  merged.AddRows(matrix_workbook::SheetsOf(source), child);
  source->Close(kDontSave);
  DeleteIfThere(*Process().gFileSystem, path);
  return true;
}

}  // namespace

bool Cls_GetMatrix::MergeExcelMatrix(const Ref<zorva::Product>& Product) {
  MergedWorkbook merged(excel_);
  merged.AddRoot(Utils().GetThePartNumber(Product), Product->Name());
  const auto children = Product->Products();
  for (const int i : Counting(1, children->Count())) {
    const auto child = children->Item(i);
    const auto object = Utils().RetrieveVDObject(Process().gSession, child);
    if (!object) return false;
    if (IsVaultPart(Process().gSession, object)) {
      merged.AddPart(object->Record()->ValueAsString(Process().gAttrPartNumber), child);
    } else if (!AddAssembly(excel_, object, child, merged)) {
      return false;
    }
  }
  return true;
}

}  // namespace quintara
