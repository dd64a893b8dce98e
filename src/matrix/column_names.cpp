#include "matrix/column_names.h"

namespace quintara {
namespace {

constexpr int kLetters = 26;
constexpr int kLastColumn = 256;

char Letter(int index) {
  return static_cast<char>('A' + index);
}

}  // namespace

std::vector<std::string> ColumnNames() {
  std::vector<std::string> names;
  names.reserve(kLastColumn + 1);
  for (int index = 0; index <= kLastColumn; ++index) {
    std::string name;
    if (index >= kLetters) name += Letter(index / kLetters - 1);
    names.push_back(name + Letter(index % kLetters));
  }
  return names;
}

}  // namespace quintara
