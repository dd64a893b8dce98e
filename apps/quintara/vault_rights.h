#pragma once

#include <vector>

#include "hosts/vault/embedded_vault.h"
#include "quintara/command_context.h"

namespace quintara {

/// "all", "CHECKIN on ZORVA Part, CHECKOUT", "none".
std::string TextOf(const std::vector<EmbeddedVault::Right>& rights);

/// Fails unless the user has all rights: who may do everything may also change what holds for everyone. Gives
/// all users.
std::vector<EmbeddedVault::User> RequireManager(CommandContext& context);

/// The user of that login, or null.
const EmbeddedVault::User* FindUser(const std::vector<EmbeddedVault::User>& users, const std::string& login);

}  // namespace quintara
