#include "hosts/vault/core.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <utility>

#include "base/attempt.h"
#include "base/failure.h"
#include "hosts/vault/migrations.h"
#include "hosts/vault/users.h"

namespace quintara::vault {
namespace {

// A newer database is refused, and an older one brought up to date, before its schema is read.
Database& Migrated(Database& database) {
  if (SchemaVersion(database) == 0) throw Failure(failure::kInvalidFormat, "The database holds no vault");
  Migrate(database, AllMigrations());
  return database;
}

EmbeddedVault::Options Checked(EmbeddedVault::Options options) {
  if (!options.gate) options.gate = std::make_shared<Gate>();
  if (!options.files) throw Failure(failure::kObjectNotSet, "The vault was opened without an access to files");
  return options;
}

}  // namespace

Core::Core(const EmbeddedVault::Options& options, const VaultFolder& folder)
    : options_(Checked(options)),
      folder_(folder),
      database_(folder.connection),
      store_(folder.store, *options_.files),
      schema_(Migrated(database_)) {
  // What a transaction that was cut off left behind is cleared at once where no other one is at work.
  if (!database_.Begin(false)) return;
  try {
    store_.Recover([this](const std::string& sha256) { return IsReferred(sha256); });
    database_.Commit();
  } catch (const std::exception&) {
    database_.Rollback();
    throw;
  }
}

void Core::InTransaction(const std::function<void()>& body) {
  if (depth_ == 0) {
    RunOuter(body);
  } else {
    RunNested(body);
  }
}

void Core::RunOuter(const std::function<void()>& body) {
  const auto isReferred = [this](const std::string& sha256) { return IsReferred(sha256); };
  database_.Begin(true);
  try {
    store_.Recover(isReferred);
    depth_ = 1;
    body();
    store_.Sync();
    depth_ = 0;
  } catch (...) {
    depth_ = 0;
    store_.Discard();
    database_.Rollback();
    RunWhenUndone();
    throw;
  }
  try {
    database_.Commit();
  } catch (...) {
    // A server that was lost may have committed: what was taken in is left to the next transaction,
    // which knows.
    store_.Leave();
    database_.Rollback();
    RunWhenUndone();
    throw;
  }
  whenUndone_.clear();
  store_.Publish(isReferred);
}

void Core::RunWhenUndone() noexcept {
  ErrorState ignored;
  for (const auto& then : std::exchange(whenUndone_, {})) Attempt(ignored, then);
}

void Core::RunNested(const std::function<void()>& body) {
  const int level = depth_;
  const auto before = whenUndone_.size();
  database_.SetSavepoint(level);
  ++depth_;
  try {
    body();
  } catch (...) {
    depth_ = level;
    database_.RollbackToSavepoint(level);
    // Not taken out: they are undone once more if the outer one is.
    const auto then = std::vector(whenUndone_.begin() + static_cast<std::ptrdiff_t>(before), whenUndone_.end());
    ErrorState ignored;
    for (const auto& one : then) Attempt(ignored, one);
    throw;
  }
  depth_ = level;
  database_.ReleaseSavepoint(level);
}

bool Core::IsReferred(const std::string& sha256) {
  const auto* sql =
      "SELECT 1 FROM vd_deposit WHERE sha256 = ? UNION ALL SELECT 1 FROM vd_deposit WHERE light_sha256 = ? LIMIT 1";
  return IntegerOf(database_.QueryOne(ColumnType::kInteger, sql, {sha256, sha256})) != 0;
}

void Core::LogOn(const std::string& login, const std::string& password) {
  const auto userId = Authenticated(database_, login, password);
  std::map<std::string, std::string> config;
  for (const auto& row :
       database_.Query("tt", "SELECT path, value FROM vd_config WHERE user_id IN (0, ?)", {std::int64_t{userId}})) {
    config[TextOf(row[0])] = TextOf(row[1]);
  }
  userId_ = userId;
  login_ = login;
  password_ = password;
  configAtLogOn_ = std::move(config);
  loggedOn_ = true;
}

void Core::LogOff() {
  loggedOn_ = false;
  password_.clear();
}

void Core::RequireLoggedOn() const {
  if (!loggedOn_) throw Failure(failure::kPermissionDenied, "Nobody is logged on to the vault");
}

void Core::RequireRight(const std::string& operation, const ClassInfo& info) {
  if (IsAllowed(database_, userId_, schema_.OperationByName(operation), info.id)) return;
  throw Failure(failure::kPermissionDenied, "The user \"" + login_ + "\" has no right to " + operation +
                                                " on objects of the class \"" + info.name + "\"");
}

void Core::RequireAdministrator() {
  RequireLoggedOn();
  if (IsAllowed(database_, userId_, 0, 0)) return;
  throw Failure(failure::kPermissionDenied,
                "The user \"" + login_ + "\" hasn't all rights, and so can't change those of users");
}

// What lies under "$User" is each user's own, all else everybody's.
std::int64_t Core::ConfigOwner(const std::string& path) const {
  return path == "$User" || path.starts_with("$User\\") ? userId_ : 0;
}

std::string Core::ConfigValue(const std::string& path) {
  return TextOf(database_.QueryOne(ColumnType::kText, "SELECT value FROM vd_config WHERE user_id = ? AND path = ?",
                                   {ConfigOwner(path), path}));
}

void Core::SetConfigValue(const std::string& path, const std::string& value) {
  InTransaction([&] {
    database_.Execute(
        "INSERT INTO vd_config (user_id, path, value) VALUES (?, ?, ?) "
        "ON CONFLICT (user_id, path) DO UPDATE SET value = excluded.value",
        {ConfigOwner(path), path, value});
  });
}

std::string TimeStamp() {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto day = std::chrono::floor<std::chrono::days>(now);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(now - day);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text.data();
}

}  // namespace quintara::vault
