#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "matrix/Cls_HashTable.h"
#include "matrix/excel_mocks.h"
#include "support/test_platform.h"

namespace quintara {

/// The private operations, and a table to try them on.
class HashTableInternals {
 public:
  /// A table as a renaming creates it.
  void Create(std::int32_t tableSize) {
    size = tableSize;
    table.assign(static_cast<std::size_t>(tableSize) + 1, {});
  }

  bool Search(const std::string& partNumber, const std::string& instanceName) {
    return hash.SearchInHashTable(partNumber, instanceName, table, size, found, lastIndex);
  }
  bool Add(const std::string& partNumber, const std::string& instanceName, int row = 0) {
    return hash.AddInHashTable(partNumber, instanceName, row, table, size);
  }
  bool AddInIndex(const std::string& partNumber, const std::string& instanceName, std::int32_t index, int row = 0) {
    return hash.AddInHashTableInIndex(partNumber, instanceName, row, table, index);
  }
  bool IsFree(std::int32_t index, bool& free, std::int32_t& next) { return hash.IsIndexFree(table, index, free, next); }
  bool Key(const std::string& text, std::int32_t& key) { return hash.ConvertToKey(text, key); }
  bool Index(std::int32_t key, std::int32_t tableSize, std::int32_t& index) {
    return hash.GetHashTableIndex(key, tableSize, index);
  }
  bool Hash(const std::string& text, std::int32_t tableSize, std::int32_t& index) {
    return hash.HashFunction(text, tableSize, index);
  }
  bool NextPrime(std::int32_t number, std::int32_t& prime) { return hash.GetPrimeNumber(number, prime); }
  bool IsPrime(std::int32_t number, bool& isPrime) { return hash.IsPrimeNumber(number, isPrime); }

  Cls_HashTable hash;
  std::vector<HashElementType> table;
  std::int32_t size = 0;
  bool found = false;
  std::int32_t lastIndex = 0;
};

namespace test {

/// The box of an unexpected error in `operation`.
inline Box HashError(const std::string& operation, const std::string& description) {
  return {"Unexpected error in function Cls_HashTable." + operation + " : " + description, 16, "QNTR"};
}

/// Twenty characters: names that begin with them have one home.
inline const std::string kTwenty = "ABCDEFGHIJKLMNOPQRST";

}  // namespace test
}  // namespace quintara
