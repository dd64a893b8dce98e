#include "hosts/vault/sha256.h"

namespace quintara::vault {

std::string HexText(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  text.reserve(2 * bytes.size());
  for (const auto byte : bytes) {
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 15U];
  }
  return text;
}

std::string Sha256Text(std::string_view bytes) {
  return HexText(Sha256(bytes));
}

}  // namespace quintara::vault
