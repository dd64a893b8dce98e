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

// The texts must outlive the step.
void Bind(sqlite3_stmt* statement, std::initializer_list<RawDatabase::Value> values) {
  int place = 0;
  for (const auto& value : values) {
    ++place;
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
      sqlite3_bind_int64(statement, place, *number);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
    } else {
      sqlite3_bind_null(statement, place);
    }
  }
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
  Bind(statement_, values);
  Demand(sqlite3_step(statement_) == SQLITE_DONE, sqlite3_db_handle(statement_));
  sqlite3_reset(statement_);
}

RawDatabase::Question::Question(const RawDatabase& database, const std::string& sql) {
  Demand(sqlite3_prepare_v2(database.connection_, sql.c_str(), -1, &statement_, nullptr) == SQLITE_OK,
         database.connection_);
}

RawDatabase::Question::~Question() {
  sqlite3_finalize(statement_);
}

const std::vector<std::string>& RawDatabase::Question::Ask(std::initializer_list<Value> values) {
  Bind(statement_, values);
  const int result = sqlite3_step(statement_);
  Demand(result == SQLITE_ROW || result == SQLITE_DONE, sqlite3_db_handle(statement_));
  columns_.clear();
  for (int column = 0; result == SQLITE_ROW && column < sqlite3_column_count(statement_); ++column) {
    const auto* text = sqlite3_column_text(statement_, column);
    columns_.emplace_back(text == nullptr ? "" : reinterpret_cast<const char*>(text));
  }
  sqlite3_reset(statement_);
  return columns_;
}

std::vector<std::int64_t> RawDatabase::Question::Numbers(std::initializer_list<Value> values, int column) {
  Bind(statement_, values);
  std::vector<std::int64_t> numbers;
  int result = SQLITE_ROW;
  while ((result = sqlite3_step(statement_)) == SQLITE_ROW) numbers.push_back(sqlite3_column_int64(statement_, column));
  Demand(result == SQLITE_DONE, sqlite3_db_handle(statement_));
  sqlite3_reset(statement_);
  return numbers;
}

}  // namespace quintara::bench
