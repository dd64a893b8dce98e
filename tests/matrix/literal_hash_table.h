#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "matrix/hash_records.h"

namespace quintara::test {

/// The renaming read word by word, over a table that is copied for each slot it grows by. What
/// `Cls_HashTable` is measured against.
class LiteralHashTable {
 public:
  /// Where the names go, what the random numbers are as text, and who is told of a failure.
  struct Surroundings {
    std::function<void(int row, const std::string& name)> write;
    std::function<std::string()> random;
    std::function<void(const std::string& box)> show;
  };

  struct Slot {
    std::string partNumber;
    std::string instanceName;
    int row = 0;
    int next = 0;
  };

  explicit LiteralHashTable(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}

  bool Rename(const std::vector<PN_IN_Couple>& couples, int arrayIndex);

  void Create(int size);
  bool Search(const PN_IN_Couple& couple, bool& found, int& lastIndex);
  bool AddInIndex(const PN_IN_Couple& couple, int index);
  bool Add(const PN_IN_Couple& couple);

  std::vector<Slot> slots;

 private:
  bool Fail(const char* operation, const char* description);
  bool IsInside(int index);
  int Home(const std::string& instanceName) const;
  void GrowByOne();
  bool RenameOne(const PN_IN_Couple& couple);

  Surroundings surroundings_;
  int size_ = 0;
};

}  // namespace quintara::test
