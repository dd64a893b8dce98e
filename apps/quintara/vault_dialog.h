#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>

#include "hosts/vault/embedded_vault.h"

namespace quintara {

/// Answers one of the vault's dialogs on a terminal: a numbered list to pick from, or the object to look at. Gives
/// the index of the picked object, or nothing when the user dismissed it.
std::optional<std::size_t> AnswerVaultDialog(const VaultDialog& dialog, std::istream& in, std::ostream& out);

}  // namespace quintara
