#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quintara::vault {

/// NULL, an integer or a text.
using SqlValue = std::variant<std::monostate, std::int64_t, std::string>;
using SqlRow = std::vector<SqlValue>;

/// NULL reads as 0 and as the empty text.
std::int64_t IntegerOf(const SqlValue& value);
std::string TextOf(const SqlValue& value);
/// NULL for the empty text, which the vault doesn't tell from it.
SqlValue TextOrNull(const std::string& text);

/// How the text of a result's column is read.
enum class ColumnType : char { kInteger = 'i', kText = 't' };

/// One connection to the vault's SQL database. Statements hold a "?" where a value is bound; they are
/// prepared once and kept. Failures carry the database's message.
class Database {
 public:
  /// `connection` is "sqlite:" and a file's path, or begins with "postgresql://".
  explicit Database(const std::string& connection);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  bool IsPostgres() const noexcept { return postgres_; }

  /// All rows; `columns` has one letter for each column, "i" or "t".
  std::vector<SqlRow> Query(std::string_view columns, const std::string& sql, const std::vector<SqlValue>& values = {});
  /// The first row's only value, or NULL without a row.
  SqlValue QueryOne(ColumnType type, const std::string& sql, const std::vector<SqlValue>& values = {});
  void Execute(const std::string& sql, const std::vector<SqlValue>& values = {});
  /// A statement that isn't worth keeping, such as one that makes a table.
  void ExecuteOnce(const std::string& sql);

  /// Begins a transaction that may write, waiting until no other process has one. Failure 70 when
  /// the wait takes too long; without `wait` False at once.
  bool Begin(bool wait);
  void Commit();
  void Rollback() noexcept;
  /// The statements run so far.
  std::int64_t StatementCount() const noexcept { return count_; }

  void SetSavepoint(int level);
  void ReleaseSavepoint(int level);
  void RollbackToSavepoint(int level) noexcept;

 private:
  struct Prepared;
  struct Statements;

  Prepared& PreparedFor(std::string_view columns, const std::string& sql, const std::vector<SqlValue>& values);
  bool LockAlone(bool wait);

  bool postgres_;
  std::string name_;  ///< for messages
  std::int64_t count_ = 0;
  std::unique_ptr<Statements> statements_;
};

}  // namespace quintara::vault
