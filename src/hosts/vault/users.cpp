#include "hosts/vault/users.h"

#include <array>
#include <charconv>
#include <string_view>

#include "base/failure.h"
#include "hosts/vault/embedded_vault.h"
#include "hosts/vault/sequences.h"
#include "hosts/vault/sha256.h"

namespace quintara::vault {
namespace {

// Slow on purpose, so that a stolen database doesn't give its passwords away cheaply, and yet nothing
// that a user would feel at each command: some milliseconds.
constexpr int kRounds = 20000;
constexpr std::string_view kScheme = "pbkdf2-sha256:";

// What is kept of a password: the scheme and its rounds, so that both can be changed, and the digest.
std::string HashOf(const std::string& salt, const std::string& password, int rounds) {
  return std::string(kScheme) + std::to_string(rounds) + ":" + HexText(PasswordDigest(password, salt, rounds));
}

int RoundsOf(const std::string& hash) {
  int rounds = 0;
  if (hash.starts_with(kScheme)) std::from_chars(hash.data() + kScheme.size(), hash.data() + hash.size(), rounds);
  return rounds > 0 ? rounds : kRounds;
}

// Takes the same time wherever the two differ.
bool AreEqual(const std::string& one, const std::string& other) {
  if (one.size() != other.size()) return false;
  volatile unsigned difference = 0;
  for (std::size_t i = 0; i < one.size(); ++i) {
    difference = difference | (static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]));
  }
  return difference == 0;
}

std::string NewSalt() {
  std::array<std::uint8_t, 16> bytes;
  FillWithRandom(bytes);
  return HexText(bytes);
}

}  // namespace

std::int32_t AddUser(Database& database, const std::string& login, const std::string& password) {
  if (login.empty()) throw Failure(failure::kInvalidCall, "A login can't be empty");
  if (UserIdOf(database, login)) throw Failure(failure::kInvalidCall, "There is a user \"" + login + "\" already");
  const auto id = NextNumber(database, sequence::kUser);
  const auto salt = NewSalt();
  database.Execute("INSERT INTO vd_user (user_id, login, salt, password_hash) VALUES (?, ?, ?, ?)",
                   {std::int64_t{id}, login, salt, HashOf(salt, password, kRounds)});
  return id;
}

std::int32_t Authenticated(Database& database, const std::string& login, const std::string& password) {
  const auto rows = database.Query("itt", "SELECT user_id, salt, password_hash FROM vd_user WHERE login = ?", {login});
  // The work is the same for an unknown login, so that it can't be told by the time it takes.
  const auto kept = rows.empty() ? std::string() : TextOf(rows[0][2]);
  const auto hash = HashOf(rows.empty() ? std::string() : TextOf(rows[0][1]), password, RoundsOf(kept));
  if (rows.empty() || !AreEqual(hash, kept)) {
    throw LogOnRefused(failure::kPermissionDenied,
                       "The vault doesn't know the user \"" + login + "\" with this password");
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
