#include <array>
#include <cstddef>
#include <exception>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/numbers.h"
#include "matrix/Cls_Matrice.h"

namespace quintara {
namespace {

constexpr std::array<const char*, 12> kNumberNames = {"XX", "XY", "XZ", "YX", "YY", "YZ",
                                                      "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

// A product whose children are being walked.
struct Level {
  Ref<zorva::Products> children;
  int count = 0;
  int done = 0;
  XmlNode element;
  std::string fullName;
};

// A NUL would end the text before its end.
const char* Whole(const std::string& text) {
  if (text.find('\0') != text.npos) throw Failure(failure::kInvalidCall, "A name holds a NUL character");
  return text.c_str();
}

void SetAttributes(XmlNode element, const std::string& partNumber, const std::string& instanceName,
                   const std::string& fullName, const PositionMatrix& position) {
  element.append_attribute("PART_NUMBER") = Whole(partNumber);
  element.append_attribute("INSTANCE_NAME") = Whole(instanceName);
  element.append_attribute("FULL_INSTANCE_NAME") = Whole(fullName);
  for (std::size_t i = 0; i < position.size(); ++i) {
    element.append_attribute(kNumberNames[i]) = NumberText(position[i]).c_str();
  }
}

// Writes the element of one product; false for a product without part number.
bool WriteElement(Cls_Utils& utils, const Ref<zorva::Product>& product, XmlNode parent,
                  const std::string& parentFullName, Level& level) {
  const auto partNumber = utils.GetThePartNumber(product);
  if (partNumber.empty()) return false;
  const auto instanceName = product->Name();
  level.children = product->Products();
  level.count = Counter16(level.children->Count());
  level.fullName = parentFullName.empty() ? instanceName : parentFullName + "\\" + instanceName;
  PositionMatrix position{};
  product->Position()->GetComponents(position);
  level.element = parent.append_child(level.count >= 1 ? "PRODUCT" : "PART");
  SetAttributes(level.element, partNumber, instanceName, level.fullName, position);
  return true;
}

}  // namespace

// The walk goes depth first, in the order of the children, on a stack of its own: a tree may be
// deeper than the thread's. Whatever goes wrong in it is a silent False.
bool Cls_Matrice::ParseZORVATree(const Ref<zorva::Product>& Product, XmlNode Document) {
  try {
    std::vector<Level> levels(1);
    if (!WriteElement(*utils_, Product, Document, {}, levels.back())) return false;
    while (!levels.empty()) {
      auto& level = levels.back();
      if (level.done >= level.count) {
        levels.pop_back();
        continue;
      }
      Level next;
      const auto child = level.children->Item(++level.done);
      if (!WriteElement(*utils_, child, level.element, level.fullName, next)) return false;
      if (next.count >= 1) levels.push_back(std::move(next));
    }
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace quintara
