#include <string>
#include <unordered_set>

#include "base/arrays.h"
#include "matrix/Cls_Matrice.h"

namespace quintara {

// The list of part numbers isn't brought up to date, and what goes is the following child, whatever
// it is: made for twins that stand next to each other.
void Cls_Matrice::ThinOut(FlatProduct& product) {
  for (Counter16 i = 1;; ++i) {
    const auto partNumber = utils_->GetThePartNumber(product.children->Item(i));
    if (product.partNumbers.CountOf(partNumber) > 1) {
      product.children->Remove(Counter16(i + 1));
      --product.count;
    }
    if (i == product.count) return;
  }
}

bool Cls_Matrice::PlaceAllInstances(const FlatProduct& product, MatrixIndex& document, bool allInstances,
                                    const Ref<zorva::Selection>& selection) {
  std::unordered_set<std::string> dealtWith;
  Counter16 lastIndex = product.count;
  for (const int i : Counting(1, product.count)) {
    const auto child = product.children->Item(i);
    const auto partNumber = utils_->GetThePartNumber(child);
    if (!dealtWith.insert(partNumber).second) continue;
    std::vector<int> elements;
    if (!GetInstancesFromPN(document, partNumber, product.partNumbers, elements)) return false;
    if (allInstances && elements.size() >= 2) {
      if (!PlaceEachInstance(product, document, child, elements, selection, lastIndex)) return false;
      continue;
    }
    const int element = ElementAt(elements, 0);
    PositionMatrix position{};
    if (!PositionnerXML(document, element, position)) return false;
    child->SetName(std::string(document.RecordOf(element).element.FullInstanceName));
    child->Position()->SetComponents(position);
  }
  return true;
}

// `source` takes the first element and stays what is on the clipboard; every other element gets a
// copy of it, which the host appends at the end of the children.
bool Cls_Matrice::PlaceEachInstance(const FlatProduct& product, MatrixIndex& document,
                                    const Ref<zorva::Product>& source, const std::vector<int>& elements,
                                    const Ref<zorva::Selection>& selection, Counter16& lastIndex) {
  bool isFirst = true;
  for (const int element : elements) {
    PositionMatrix position{};
    if (!PositionnerXML(document, element, position)) return false;
    auto component = source;
    if (isFirst) {
      selection->Clear();
      selection->Add(source);
      selection->Copy();
      selection->Clear();
    } else {
      selection->Add(product.root->Products());
      selection->Paste();
      selection->Clear();
      ++lastIndex;
      component = product.children->Item(lastIndex);
    }
    isFirst = false;
    component->SetName(std::string(document.RecordOf(element).element.FullInstanceName));
    component->Position()->SetComponents(position);
  }
  return true;
}

}  // namespace quintara
