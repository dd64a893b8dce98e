#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>

#include "hosts/vault/embedded_vault.h"

namespace quintara {

/// The kind of dialog that shows an object and asks for nothing.
inline constexpr int kLookAtDialog = 8;

/// Answers one of the vault's dialogs on a terminal: a numbered list to pick from, or the object to look at. Gives
/// the index of the picked object, or nothing when the user dismissed it.
std::optional<std::size_t> AnswerVaultDialog(const VaultDialog& dialog, std::istream& in, std::ostream& out);

}  // namespace quintara
