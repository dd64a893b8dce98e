#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quintara {

/// A text as an argument of a template.
template <std::size_t Size>
struct OperationLiteral {
  char text[Size];
  consteval OperationLiteral(const char (&characters)[Size]) {
    for (std::size_t i = 0; i < Size; ++i) text[i] = characters[i];
  }
};

template <OperationLiteral Kind, OperationLiteral Operation>
inline constexpr auto kGateText = [] {
  constexpr std::size_t kKind = sizeof Kind.text - 1;
  constexpr std::size_t kOperation = sizeof Operation.text - 1;
  std::array<char, kKind + 1 + kOperation> text{};
  for (std::size_t i = 0; i < kKind; ++i) text[i] = Kind.text[i];
  text[kKind] = '.';
  for (std::size_t i = 0; i < kOperation; ++i) text[kKind + 1 + i] = Operation.text[i];
  return text;
}();

/// "VdObject.Retrieve" of the literals "VdObject" and "Retrieve".
template <OperationLiteral Kind, OperationLiteral Operation>
inline constexpr std::string_view kGateName{kGateText<Kind, Operation>.data(), kGateText<Kind, Operation>.size()};

}  // namespace quintara
