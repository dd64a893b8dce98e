#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quintara::vault {

using Digest = std::array<std::uint8_t, 32>;

/// The SHA-256 digest of `bytes`.
Digest Sha256(std::string_view bytes);
/// The same as 64 lower-case hexadecimal digits.
std::string Sha256Text(std::string_view bytes);

std::string HexText(const Digest& digest);

}  // namespace quintara::vault
