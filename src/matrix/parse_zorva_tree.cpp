#include <exception>
#include <utility>
#include <vector>

#include "matrix/Cls_Matrice.h"
#include "matrix/product_element.h"

namespace quintara {
namespace {

// A product whose children are being walked.
struct Level {
  WrittenProduct product;
  int done = 0;
};

// False for a product without part number.
bool Write(Cls_Utils& utils, const Ref<zorva::Product>& product, XmlNode parent, const std::string& parentFullName,
           WrittenProduct& written) {
  const auto partNumber = utils.GetThePartNumber(product);
  if (partNumber.empty()) return false;
  written = WriteProduct(parent, parentFullName, partNumber, product);
  return true;
}

}  // namespace

// The walk goes depth first, in the order of the children, on a stack of its own: a tree may be
// deeper than the thread's. Whatever goes wrong in it is a silent False.
bool Cls_Matrice::ParseZORVATree(const Ref<zorva::Product>& Product, XmlNode Document) {
  try {
    std::vector<Level> levels(1);
    if (!Write(*utils_, Product, Document, {}, levels.back().product)) return false;
    while (!levels.empty()) {
      auto& [product, done] = levels.back();
      if (done >= product.count) {
        levels.pop_back();
        continue;
      }
      Level next;
      const auto child = product.children->Item(++done);
      if (!Write(*utils_, child, product.element, product.fullName, next.product)) return false;
      if (next.product.count >= 1) levels.push_back(std::move(next));
    }
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace quintara
