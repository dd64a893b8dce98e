#include "matrix/product_element.h"

#include <array>
#include <cstddef>
#include <utility>

#include "access/contracts/position_matrix.h"
#include "base/failure.h"
#include "base/numbers.h"

namespace quintara {
namespace {

constexpr std::array<const char*, 12> kNumberNames = {"XX", "XY", "XZ", "YX", "YY", "YZ",
                                                      "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

const char* Whole(const std::string& text) {
  if (text.find('\0') != text.npos) throw Failure(failure::kInvalidCall, "A name holds a NUL character");
  return text.c_str();
}

}  // namespace

std::string FullNameUnder(const std::string& parent, const std::string& name) {
  return parent.empty() ? name : parent + "\\" + name;
}

XmlNode AppendElement(XmlNode parent, const char* tag, const ElementTexts& texts, const Ref<zorva::Product>& product) {
  PositionMatrix position{};
  product->Position()->GetComponents(position);
  auto element = parent.append_child(tag);
  element.append_attribute("PART_NUMBER") = Whole(texts.partNumber);
  element.append_attribute("INSTANCE_NAME") = Whole(texts.instanceName);
  element.append_attribute("FULL_INSTANCE_NAME") = Whole(texts.fullName);
  for (std::size_t i = 0; i < position.size(); ++i) {
    element.append_attribute(kNumberNames[i]) = NumberText(position[i]).c_str();
  }
  return element;
}

WrittenProduct WriteProduct(XmlNode parent, const std::string& parentFullName, const std::string& partNumber,
                            const Ref<zorva::Product>& product) {
  const auto instanceName = product->Name();
  WrittenProduct written;
  written.children = product->Products();
  written.count = written.children->Count();
  written.fullName = FullNameUnder(parentFullName, instanceName);
  written.element = AppendElement(parent, written.count >= 1 ? kProductTag : kPartTag,
                                  {partNumber, instanceName, written.fullName}, product);
  return written;
}

}  // namespace quintara
