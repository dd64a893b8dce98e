#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

namespace quintara::bench {

/// A vault's SQLite database, written by hand with prepared statements: the least that the same rows cost.
class RawDatabase {
 public:
  using Value = std::variant<std::monostate, std::int64_t, std::string>;

  /// One insertion, prepared once and run for each row.
  class Insertion {
   public:
    /// Into these columns, parted by commas.
    Insertion(const RawDatabase& database, const std::string& table, const std::string& columns);
    ~Insertion();
    Insertion(const Insertion&) = delete;
    Insertion& operator=(const Insertion&) = delete;

    void Run(std::initializer_list<Value> values);

   private:
    sqlite3_stmt* statement_ = nullptr;
  };

  /// One question, prepared once and asked for each row.
  class Question {
   public:
    Question(const RawDatabase& database, const std::string& sql);
    ~Question();
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    /// The columns of the first row, as texts; no columns where there is none.
    const std::vector<std::string>& Ask(std::initializer_list<Value> values);
    /// The numbers that stand in one column, from 0, of all rows.
    std::vector<std::int64_t> Numbers(std::initializer_list<Value> values, int column);

   private:
    sqlite3_stmt* statement_ = nullptr;
    std::vector<std::string> columns_;
  };

  /// With the settings under which the vault works.
  explicit RawDatabase(const std::string& path);
  ~RawDatabase();
  RawDatabase(const RawDatabase&) = delete;
  RawDatabase& operator=(const RawDatabase&) = delete;

  void Execute(const std::string& sql) const;
  std::int64_t Number(const std::string& sql) const;

 private:
  sqlite3* connection_ = nullptr;
};

}  // namespace quintara::bench
