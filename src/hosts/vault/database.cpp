#include "hosts/vault/database.h"

#include <soci/soci.h>

#include <unordered_map>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/database_message.h"
#include "hosts/vault/database_server.h"

extern "C" const soci::backend_factory* factory_sqlite3();

namespace quintara::vault {
namespace {

constexpr std::string_view kSqlitePrefix = "sqlite:";
constexpr std::string_view kPostgresPrefix = "postgresql://";
constexpr auto kDatabase = "The vault's database";

[[noreturn]] void ThrowDatabaseFailure(const std::string& database, const soci::soci_error& error) {
  const auto message = MessageOf(error);
  const bool locked =
      message.find("database is locked") != message.npos || message.find("lock timeout") != message.npos;
  if (locked) throw Failure(failure::kPermissionDenied, database + " is locked by another process");
  throw Failure(failure::kDeviceError, database + ": " + message);
}

template <class Body>
auto Guarded(const std::string& database, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const soci::soci_error& error) {
    ThrowDatabaseFailure(database, error);
  }
}

// For messages. The address of a server is left out, since it may hold a password.
std::string DatabaseNamed(const std::string& connection) {
  if (!connection.starts_with(kSqlitePrefix)) return kDatabase;
  return kDatabase + (" \"" + connection.substr(kSqlitePrefix.size())) + "\"";
}

// SOCI names its placeholders; ours are told apart by their places.
std::string WithNamedPlaceholders(const std::string& sql) {
  std::string named;
  int number = 0;
  for (const char character : sql) {
    if (character == '?') {
      named += ":p" + std::to_string(++number);
    } else {
      named += character;
    }
  }
  return named;
}

std::string SqliteTarget(std::string_view path) {
  if (path.find('"') != path.npos) {
    throw Failure(failure::kInvalidCall, "A vault can't stand in a folder with a quotation mark in its path");
  }
  return "db=\"" + std::string(path) + "\" timeout=60";
}

std::unique_ptr<soci::session> Connected(const std::string& connection) {
  return Guarded(DatabaseNamed(connection), [&] {
    if (connection.starts_with(kPostgresPrefix)) return ConnectedToServer(connection, kPostgresPrefix);
    if (!connection.starts_with(kSqlitePrefix)) {
      throw Failure(failure::kInvalidCall, "A vault's database is \"sqlite:PATH\" or \"postgresql://...\"");
    }
    return std::make_unique<soci::session>(*factory_sqlite3(),
                                           SqliteTarget(std::string_view(connection).substr(kSqlitePrefix.size())));
  });
}

// What is no text means something else to each database: one cuts it off, another fails and takes the
// whole transaction with it.
void RequireTexts(const std::vector<SqlValue>& values) {
  for (const auto& value : values) {
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr || (IsUtf8(*text) && text->find('\0') == text->npos)) continue;
    throw Failure(failure::kInvalidCall, "What the vault was asked for holds a character that no text has");
  }
}

}  // namespace

std::int64_t IntegerOf(const SqlValue& value) {
  const auto* number = std::get_if<std::int64_t>(&value);
  return number == nullptr ? 0 : *number;
}

std::string TextOf(const SqlValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text == nullptr ? std::string() : *text;
}

SqlValue TextOrNull(const std::string& text) {
  return text.empty() ? SqlValue() : SqlValue(text);
}

struct Database::Prepared {
  struct Slot {
    long long number = 0;
    std::string text;
    soci::indicator indicator = soci::i_ok;
  };

  Prepared(soci::session& session, std::size_t in, std::size_t out) : statement(session), bound(in), results(out) {}

  void Bind(const std::vector<SqlValue>& values);
  SqlRow Row(std::string_view columns) const;

  soci::statement statement;
  std::vector<Slot> bound;
  std::vector<Slot> results;
};

void Database::Prepared::Bind(const std::vector<SqlValue>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    auto& slot = bound[i];
    slot.indicator = std::holds_alternative<std::monostate>(values[i]) ? soci::i_null : soci::i_ok;
    slot.number = IntegerOf(values[i]);
    slot.text = TextOf(values[i]);
  }
}

SqlRow Database::Prepared::Row(std::string_view columns) const {
  SqlRow row(results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (results[i].indicator != soci::i_ok) continue;
    if (columns[i] == static_cast<char>(ColumnType::kInteger)) {
      row[i] = static_cast<std::int64_t>(results[i].number);
    } else {
      row[i] = results[i].text;
    }
  }
  return row;
}

struct Database::Statements {
  std::unique_ptr<soci::session> session;
  std::unordered_map<std::string, std::unique_ptr<Prepared>> prepared;

  ~Statements() { prepared.clear(); }
};

Database::Database(const std::string& connection)
    : postgres_(connection.starts_with(kPostgresPrefix)),
      name_(DatabaseNamed(connection)),
      statements_(std::make_unique<Statements>()) {
  statements_->session = Connected(connection);
  if (postgres_) {
    ExecuteOnce("SET client_min_messages = warning");
    ExecuteOnce("SET lock_timeout = '60s'");
  } else {
    for (const char* pragma : {"journal_mode = WAL", "synchronous = FULL", "foreign_keys = ON"}) {
      ExecuteOnce(std::string("PRAGMA ") + pragma);
    }
  }
}

Database::~Database() = default;

Database::Prepared& Database::PreparedFor(std::string_view columns, const std::string& sql,
                                          const std::vector<SqlValue>& values) {
  ++count_;
  std::string key = sql + '\n';
  key += columns;
  key += '\n';
  for (const auto& value : values) key += std::holds_alternative<std::int64_t>(value) ? 'i' : 't';
  auto& kept = statements_->prepared[key];
  if (kept) return *kept;

  auto made = std::make_unique<Prepared>(*statements_->session, values.size(), columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    auto& slot = made->results[i];
    if (columns[i] == static_cast<char>(ColumnType::kInteger)) {
      made->statement.exchange(soci::into(slot.number, slot.indicator));
    } else {
      made->statement.exchange(soci::into(slot.text, slot.indicator));
    }
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    auto& slot = made->bound[i];
    if (std::holds_alternative<std::int64_t>(values[i])) {
      made->statement.exchange(soci::use(slot.number, slot.indicator));
    } else {
      made->statement.exchange(soci::use(slot.text, slot.indicator));
    }
  }
  made->Bind(values);
  made->statement.alloc();
  made->statement.prepare(WithNamedPlaceholders(sql));
  made->statement.define_and_bind();
  kept = std::move(made);
  return *kept;
}

std::vector<SqlRow> Database::Query(std::string_view columns, const std::string& sql,
                                    const std::vector<SqlValue>& values) {
  RequireTexts(values);
  return Guarded(name_, [&] {
    auto& prepared = PreparedFor(columns, sql, values);
    prepared.Bind(values);
    std::vector<SqlRow> rows;
    for (bool more = prepared.statement.execute(true); more; more = prepared.statement.fetch()) {
      rows.push_back(prepared.Row(columns));
    }
    return rows;
  });
}

SqlValue Database::QueryOne(ColumnType type, const std::string& sql, const std::vector<SqlValue>& values) {
  const char column = static_cast<char>(type);
  const auto rows = Query(std::string_view(&column, 1), sql, values);
  return rows.empty() ? SqlValue() : rows.front().front();
}

void Database::Execute(const std::string& sql, const std::vector<SqlValue>& values) {
  RequireTexts(values);
  Guarded(name_, [&] {
    auto& prepared = PreparedFor({}, sql, values);
    prepared.Bind(values);
    prepared.statement.execute(true);
  });
}

void Database::ExecuteOnce(const std::string& sql) {
  ++count_;
  Guarded(name_, [&] { *statements_->session << sql; });
}

bool Database::Begin(bool wait) {
  if (!postgres_) return LockAlone(wait);
  ExecuteOnce("BEGIN");
  try {
    const std::string key = "(hashtext('quintara.' || current_schema()))";
    if (wait) {
      ExecuteOnce("SELECT pg_advisory_xact_lock" + key);
      return true;
    }
    if (QueryOne(ColumnType::kInteger, "SELECT CAST(pg_try_advisory_xact_lock" + key + " AS INTEGER)") ==
        SqlValue(std::int64_t{1})) {
      return true;
    }
  } catch (const Failure&) {
    Rollback();
    throw;
  }
  Rollback();
  return false;
}

// One writer at a time, from the very beginning: a transaction that read first could not begin to
// write once another one has.
bool Database::LockAlone(bool wait) {
  if (!wait) ExecuteOnce("PRAGMA busy_timeout = 0");
  bool locked = true;
  try {
    ExecuteOnce("BEGIN IMMEDIATE");
  } catch (const Failure& failure) {
    if (wait || failure.Number() != failure::kPermissionDenied) throw;
    locked = false;
  }
  if (!wait) ExecuteOnce("PRAGMA busy_timeout = 60000");
  return locked;
}

void Database::Commit() {
  ExecuteOnce("COMMIT");
}

void Database::Rollback() noexcept {
  try {
    ExecuteOnce("ROLLBACK");
  } catch (const std::exception&) {
    // A connection that is lost has rolled back already.
    return;
  }
}

void Database::SetSavepoint(int level) {
  Execute("SAVEPOINT nested_" + std::to_string(level));
}

void Database::ReleaseSavepoint(int level) {
  Execute("RELEASE SAVEPOINT nested_" + std::to_string(level));
}

void Database::RollbackToSavepoint(int level) noexcept {
  try {
    ExecuteOnce("ROLLBACK TO SAVEPOINT nested_" + std::to_string(level));
    ExecuteOnce("RELEASE SAVEPOINT nested_" + std::to_string(level));
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace quintara::vault
