#include "raw_vault.h"

#include <algorithm>
#include <stdexcept>

namespace quintara::bench {
namespace {

void Demand(bool done, sqlite3* connection) {
  if (!done) throw std::runtime_error(sqlite3_errmsg(connection));
}

std::string Marks(const std::string& columns) {
  std::string marks = "?";
  for (auto rest = std::ranges::count(columns, ','); rest > 0; --rest) marks += ", ?";
  return marks;
}

}  // namespace

RawDatabase::RawDatabase(const std::string& path) {
  if (sqlite3_open(path.c_str(), &connection_) != SQLITE_OK) {
    sqlite3_close(connection_);
    throw std::runtime_error("the database can't be opened: " + path);
  }
  Execute("PRAGMA journal_mode = WAL");
  Execute("PRAGMA synchronous = FULL");
  Execute("PRAGMA foreign_keys = ON");
}

RawDatabase::~RawDatabase() {
  sqlite3_close(connection_);
}

void RawDatabase::Execute(const std::string& sql) const {
  Demand(sqlite3_exec(connection_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, connection_);
}

std::int64_t RawDatabase::Number(const std::string& sql) const {
  sqlite3_stmt* statement = nullptr;
  Demand(sqlite3_prepare_v2(connection_, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK, connection_);
  const bool found = sqlite3_step(statement) == SQLITE_ROW;
  const auto number = found ? sqlite3_column_int64(statement, 0) : 0;
  sqlite3_finalize(statement);
  if (!found) throw std::runtime_error("no row for " + sql);
  return number;
}

RawDatabase::Insertion::Insertion(const RawDatabase& database, const std::string& table, const std::string& columns) {
  const auto sql = "INSERT INTO " + table + " (" + columns + ") VALUES (" + Marks(columns) + ")";
  Demand(sqlite3_prepare_v2(database.connection_, sql.c_str(), -1, &statement_, nullptr) == SQLITE_OK,
         database.connection_);
}

RawDatabase::Insertion::~Insertion() {
  sqlite3_finalize(statement_);
}

void RawDatabase::Insertion::Run(std::initializer_list<Value> values) {
  int place = 0;
  for (const auto& value : values) {
    ++place;
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
      sqlite3_bind_int64(statement_, place, *number);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      sqlite3_bind_text(statement_, place, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
    } else {
      sqlite3_bind_null(statement_, place);
    }
  }
  Demand(sqlite3_step(statement_) == SQLITE_DONE, sqlite3_db_handle(statement_));
  sqlite3_reset(statement_);
}

}  // namespace quintara::bench
