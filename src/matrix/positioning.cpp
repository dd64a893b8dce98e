#include <utility>

#include "base/arrays.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/guarded.h"

namespace quintara {

void Cls_Matrice::TakeStock(FlatProduct& product) {
  for (const int i : Counting(1, product.count)) {
    product.partNumbers.Add(utils_->GetThePartNumber(product.children->Item(i)));
  }
}

// `Found` is never cleared: the caller's variable keeps what it held.
bool Cls_Matrice::CheckPN(std::string_view PartNumber, const ChildPartNumbers& Children, bool& Found) {
  return Guarded("Cls_Matrice.CheckPN", [&] {
    if (Children.Contains(PartNumber)) Found = true;
    return true;
  });
}

// True in `Used` when an ancestor is itself a component: what lies inside it is in place already.
bool Cls_Matrice::CheckIfParentsAreUsed(MatrixIndex& Document, int Node, const ChildPartNumbers& Children, bool& Used) {
  using Cover = MatrixIndex::Cover;
  return Guarded("Cls_Matrice.CheckIfParentsAreUsed", [&] {
    bool found = false;
    const int first = Document.Parent(Node);
    int parent = first;
    for (; parent != MatrixIndex::kNone && !found; parent = Document.Parent(parent)) {
      if (const auto known = Document.CoverOf(parent); known != Cover::kUnknown) {
        found = known == Cover::kYes;
        break;
      }
      const int partNumber = Document.PartNumberId(parent);
      if (partNumber == MatrixIndex::kNone) continue;
      if (!CheckPN(Document.PartNumberOf(partNumber), Children, found)) return false;
    }
    for (int below = first; below != parent; below = Document.Parent(below)) {
      Document.CoverOf(below) = found ? Cover::kYes : Cover::kNo;
    }
    Used = found;
    return true;
  });
}

bool Cls_Matrice::GetInstancesFromPN(MatrixIndex& Document, const std::string& PartNumber,
                                     const ChildPartNumbers& Children, std::vector<int>& Instances) {
  return Guarded("Cls_Matrice.GetInstancesFromPN", [&] {
    Instances.clear();
    Document.Build();
    const auto& candidates = Document.WithPartNumber(PartNumber);
    Instances.reserve(candidates.size());
    for (const int element : candidates) {
      Document.CheckScanUpTo(element);
      bool used = false;
      if (!CheckIfParentsAreUsed(Document, element, Children, used)) return false;
      if (used) continue;
      if (!ConvertOnce(Document, element)) return false;
      Instances.push_back(element);
    }
    Document.CheckWholeScan();
    return true;
  });
}

// The chain is composed from the element upward, the root element included, afresh for each
// instance: sums in another order would give other bits.
bool Cls_Matrice::PositionnerXML(MatrixIndex& Document, int element, PositionMatrix& OutMatrix) {
  return Guarded("Cls_Matrice.PositionnerXML", [&] {
    const auto& record = Document.RecordOf(element);
    PositionMatrix matrix{};
    if (!ConvertXMLElementToMatrix(record.element, matrix)) return false;
    for (int parent = Document.Parent(record.chainStart); parent != MatrixIndex::kNone;
         parent = Document.Parent(parent)) {
      if (!ConvertOnce(Document, parent)) return false;
      PositionMatrix parentMatrix{};
      if (!ConvertXMLElementToMatrix(Document.RecordOf(parent).element, parentMatrix)) return false;
      PositionMatrix composed{};
      if (!MultiplicateMatrixes(matrix, parentMatrix, composed)) return false;
      matrix = composed;
    }
    OutMatrix = matrix;
    return true;
  });
}

// The working record outlives the loop's turns on purpose: a child more than there are records is
// placed where the last record was.
bool Cls_Matrice::PlaceChildren(FlatProduct& product, MatrixIndex& document) {
  std::vector<PNInstances> cache;
  int working = MatrixIndex::kNone;
  for (const int i : Counting(1, product.count)) {
    const auto child = product.children->Item(i);
    const auto partNumber = utils_->GetThePartNumber(child);
    auto& instances = InstancesOf(cache, product.partNumbers.KindOf(partNumber, static_cast<std::size_t>(i - 1)));
    if (!instances.isSearched && !GetInstancesFromPN(document, partNumber, product.partNumbers, instances.elements)) {
      return false;
    }
    instances.isSearched = true;
    if (instances.used <= UpperBound(instances.elements)) working = instances.elements[instances.used++];
    if (document.RecordOf(working).element.PartNumber.empty()) continue;
    PositionMatrix position{};
    if (!PositionnerXML(document, working, position)) return false;
    child->Position()->SetComponents(position);
  }
  return true;
}

Cls_Matrice::PNInstances& Cls_Matrice::InstancesOf(std::vector<PNInstances>& cache, int kind) {
  const auto at = static_cast<std::size_t>(kind);
  if (at >= cache.size()) cache.resize(at + 1);
  return cache[at];
}

}  // namespace quintara
