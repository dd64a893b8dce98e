#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "access/contracts/spreadsheet.h"
#include "base/ref.h"
#include "matrix/hash_records.h"

namespace quintara {

/// Renames the rows of a matrix workbook whose part number and instance name stood in a row before,
/// since a reader finds an instance by that pair.
///
/// The pairs met so far stand in a hash table of p + 1 slots, p being the smallest prime that isn't
/// below their number. A name's home slot depends on its first twenty characters alone; what finds
/// its home taken goes to a new slot behind the others, at the end of the home's chain. Indices in a
/// chain have 16 bits: a pair that would need slot 32,768 for one is failure 6.
///
/// A failure is shown in a critical box, titled "QNTR", that names the operation it came up in; the
/// result is False, and nothing is thrown.
class Cls_HashTable {
 public:
  /// Gives numbers from 0 to 1.
  using RandomNumbers = std::function<float()>;

  /// Unless told otherwise, each renaming makes a generator of its own, seeded from the clock.
  explicit Cls_HashTable(RandomNumbers random = {});

  /// Takes the first `ArrayIndex` entries in their order. The new name of a repeated pair is the old
  /// one followed by a number between 0 and 10,000, in the shortest text that reads back to the same
  /// single-precision value, with the user's decimal separator; nothing makes sure that it is new.
  /// It is written as text to column 4 of the entry's row, on the second worksheet of the active
  /// workbook. Rows renamed before a failure stay renamed.
  bool RenameDoublesWithHashTable(const std::vector<PN_IN_Couple>& Array_PN_IN_Couple, std::int32_t ArrayIndex,
                                  const Ref<excel::Application>& AppExcel);

 private:
  friend class HashTableInternals;  // the tests' way to the private operations

  using Table = std::vector<HashElementType>;
  // One renaming on its way.
  struct Renaming {
    Table table;
    std::int32_t size;
    RandomNumbers random;
    const Ref<excel::Application>& excel;
  };

  bool Take(const PN_IN_Couple& couple, Renaming& renaming);
  bool Rename(const PN_IN_Couple& couple, Renaming& renaming);

  bool SearchInHashTable(std::string_view PartNumber, std::string_view InstanceName, const Table& HashTable,
                         std::int32_t Size, bool& Found, std::int32_t& LastIndex);
  bool AddInHashTable(const std::string& PartNumber, const std::string& InstanceName, Counter16 Row, Table& HashTable,
                      std::int32_t Size);
  bool AddInHashTableInIndex(const std::string& PartNumber, const std::string& InstanceName, Counter16 Row,
                             Table& HashTable, std::int32_t Index);
  bool IsIndexFree(const Table& HashTable, std::int32_t Index, bool& Free, std::int32_t& NextIndex);
  bool ConvertToKey(std::string_view Text, std::int32_t& Key);
  bool GetHashTableIndex(std::int32_t Key, std::int32_t Size, std::int32_t& Index);
  bool HashFunction(std::string_view Text, std::int32_t Size, std::int32_t& Index);
  bool GetPrimeNumber(std::int32_t Number, std::int32_t& Prime);
  bool IsPrimeNumber(std::int32_t Number, bool& IsPrime);

  RandomNumbers random_;
};

}  // namespace quintara
