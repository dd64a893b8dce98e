#include "hosts/desk/product_comparison.h"

#include <algorithm>

#include "base/attempt.h"
#include "hosts/cad/product_file.h"

namespace quintara {
namespace {

bool IsSameChild(const cad::ProductFile::Component& left, const cad::ProductFile::Component& right) {
  return left.name == right.name && left.file == right.file && left.position == right.position;
}

}  // namespace

bool HoldTheSameChildren(const std::string& left, const std::string& right) {
  return OrElse(false, [&] {
    const auto first = cad::ParseProductFile(left, "the stored file");
    const auto second = cad::ParseProductFile(right, "the new file");
    return first.partNumber == second.partNumber &&
           std::ranges::equal(first.components, second.components, IsSameChild);
  });
}

}  // namespace quintara
