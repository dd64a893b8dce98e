#pragma once

#include <cstdint>
#include <string>

#include "hosts/vault/database.h"

namespace quintara::vault {

/// Names of the sequences that the vault itself draws from.
namespace sequence {
inline constexpr auto kObject = "object";
inline constexpr auto kLink = "link";
inline constexpr auto kDeposit = "deposit";
inline constexpr auto kUser = "user";
inline constexpr auto kIdentity = "identity";
inline constexpr auto kSetting = "setting";
}  // namespace sequence

/// The next number of a sequence, never given twice, whoever asks. Only within a transaction.
std::int32_t NextNumber(Database& database, const std::string& sequence);

/// `number` with zeros in front, at least `width` digits.
std::string Padded(std::int64_t number, int width);

/// The revision after `revision`: "A" to "B", "Z" to "AA", "AZ" to "BA", "9" to "10". Fails for a
/// text that is neither capital letters nor digits.
std::string NextRevision(const std::string& revision);

}  // namespace quintara::vault
