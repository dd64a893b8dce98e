#include "hosts/vault/users.h"

#include <random>

#include "base/failure.h"
#include "hosts/vault/sequences.h"
#include "hosts/vault/sha256.h"

namespace quintara::vault {
namespace {

constexpr int kRounds = 10000;

// Slow on purpose: a stolen database shall not give its passwords away cheaply.
std::string HashOf(const std::string& salt, const std::string& password) {
  auto hash = Sha256Text(salt + '\n' + password);
  for (int i = 0; i < kRounds; ++i) hash = Sha256Text(hash + salt + password);
  return hash;
}

std::string NewSalt() {
  std::random_device chance;
  std::string bytes;
  for (int i = 0; i < 8; ++i) bytes += std::to_string(chance());
  return Sha256Text(bytes).substr(0, 32);
}

}  // namespace

std::int32_t AddUser(Database& database, const std::string& login, const std::string& password) {
  if (login.empty()) throw Failure(failure::kInvalidCall, "A login can't be empty");
  if (UserIdOf(database, login)) throw Failure(failure::kInvalidCall, "There is a user \"" + login + "\" already");
  const auto id = NextNumber(database, sequence::kUser);
  const auto salt = NewSalt();
  database.Execute("INSERT INTO vd_user (user_id, login, salt, password_hash) VALUES (?, ?, ?, ?)",
                   {std::int64_t{id}, login, salt, HashOf(salt, password)});
  return id;
}

std::int32_t Authenticated(Database& database, const std::string& login, const std::string& password) {
  const auto rows = database.Query("itt", "SELECT user_id, salt, password_hash FROM vd_user WHERE login = ?", {login});
  // The work is the same for an unknown login, so that it can't be told by the time it takes.
  const auto hash = HashOf(rows.empty() ? std::string() : TextOf(rows[0][1]), password);
  if (rows.empty() || hash != TextOf(rows[0][2])) {
    throw Failure(failure::kPermissionDenied, "The vault doesn't know the user \"" + login + "\" with this password");
  }
  return static_cast<std::int32_t>(IntegerOf(rows[0][0]));
}

void Grant(Database& database, std::int32_t userId, std::int32_t operationId, std::int16_t classId) {
  database.Execute("INSERT INTO vd_right (user_id, operation_id, class_id) VALUES (?, ?, ?) ON CONFLICT DO NOTHING",
                   {std::int64_t{userId}, std::int64_t{operationId}, std::int64_t{classId}});
}

void Revoke(Database& database, std::int32_t userId, std::int32_t operationId, std::int16_t classId) {
  database.Execute("DELETE FROM vd_right WHERE user_id = ? AND operation_id = ? AND class_id = ?",
                   {std::int64_t{userId}, std::int64_t{operationId}, std::int64_t{classId}});
}

bool IsAllowed(Database& database, std::int32_t userId, std::int32_t operationId, std::int16_t classId) {
  return IntegerOf(database.QueryOne(ColumnType::kInteger,
                                     "SELECT COUNT(*) FROM vd_right WHERE user_id = ? AND operation_id IN (0, ?) AND "
                                     "class_id IN (0, ?)",
                                     {std::int64_t{userId}, std::int64_t{operationId}, std::int64_t{classId}})) != 0;
}

std::optional<std::int32_t> UserIdOf(Database& database, const std::string& login) {
  const auto id = database.QueryOne(ColumnType::kInteger, "SELECT user_id FROM vd_user WHERE login = ?", {login});
  if (std::holds_alternative<std::monostate>(id)) return std::nullopt;
  return static_cast<std::int32_t>(IntegerOf(id));
}

}  // namespace quintara::vault
