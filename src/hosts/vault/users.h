#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "hosts/vault/database.h"

namespace quintara::vault {

/// Adds a user; within a transaction. Fails for an empty login and for one that is there already.
std::int32_t AddUser(Database& database, const std::string& login, const std::string& password);

/// The id of the user; fails for an unknown login and a wrong password in the same words.
std::int32_t Authenticated(Database& database, const std::string& login, const std::string& password);

/// Gives a right; operation 0 and class 0 stand for all of them.
void Grant(Database& database, std::int32_t userId, std::int32_t operationId, std::int16_t classId);
void Revoke(Database& database, std::int32_t userId, std::int32_t operationId, std::int16_t classId);
bool IsAllowed(Database& database, std::int32_t userId, std::int32_t operationId, std::int16_t classId);

std::optional<std::int32_t> UserIdOf(Database& database, const std::string& login);

}  // namespace quintara::vault
