#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quintara::vault {

using Digest = std::array<std::uint8_t, 32>;

/// The SHA-256 digest of `bytes`.
Digest Sha256(std::string_view bytes);
/// The same as 64 lower-case hexadecimal digits.
std::string Sha256Text(std::string_view bytes);

std::string HexText(std::span<const std::uint8_t> bytes);

/// PBKDF2 with HMAC-SHA-256: 32 bytes from a password, that cost `rounds` times two digests.
Digest PasswordDigest(std::string_view password, std::string_view salt, int rounds);

/// Fills all of `bytes` with random numbers that nobody can foretell.
void FillWithRandom(std::span<std::uint8_t> bytes);

}  // namespace quintara::vault
