#include "matrix/Cls_HashTable.h"

#include <utility>

#include "base/arrays.h"
#include "matrix/guarded.h"
#include "matrix/matrix_workbook.h"
#include "matrix/random_text.h"

namespace quintara {

Cls_HashTable::Cls_HashTable(RandomNumbers random) : random_(std::move(random)) {}

bool Cls_HashTable::RenameDoublesWithHashTable(const std::vector<PN_IN_Couple>& Array_PN_IN_Couple,
                                               std::int32_t ArrayIndex, const Ref<excel::Application>& AppExcel) {
  return Guarded("Cls_HashTable.RenameDoublesWithHashTable", [&] {
    std::int32_t prime = 0;
    if (!GetPrimeNumber(ArrayIndex, prime)) return false;
    Renaming renaming{Table(static_cast<std::size_t>(prime) + 1), prime, {}, AppExcel};
    renaming.random = random_ ? random_ : RandomFromClock();
    for (std::int32_t i = 0; i < ArrayIndex; ++i) {
      if (!Take(ElementAt(Array_PN_IN_Couple, i), renaming)) return false;
    }
    return true;
  });
}

bool Cls_HashTable::Take(const PN_IN_Couple& couple, Renaming& renaming) {
  bool found = false;
  std::int32_t last = 0;
  if (!SearchInHashTable(couple.PartNumber, couple.InstanceName, renaming.table, renaming.size, found, last)) {
    return false;
  }
  if (found) return Rename(couple, renaming);
  return AddInHashTableInIndex(couple.PartNumber, couple.InstanceName, couple.Row, renaming.table, last);
}

// The new name only chooses the chain; what is kept there is the old one.
bool Cls_HashTable::Rename(const PN_IN_Couple& couple, Renaming& renaming) {
  const auto newName = couple.InstanceName + TextOf(renaming.random() * 10000.0F);
  bool found = false;
  std::int32_t last = 0;
  if (!SearchInHashTable(couple.PartNumber, newName, renaming.table, renaming.size, found, last)) return false;
  if (!AddInHashTableInIndex(couple.PartNumber, couple.InstanceName, couple.Row, renaming.table, last)) return false;
  matrix_workbook::Rename(renaming.excel, couple.Row, newName);
  return true;
}

bool Cls_HashTable::SearchInHashTable(std::string_view PartNumber, std::string_view InstanceName,
                                      const Table& HashTable, std::int32_t Size, bool& Found, std::int32_t& LastIndex) {
  return Guarded("Cls_HashTable.SearchInHashTable", [&] {
    Found = false;
    LastIndex = -1;
    if (!HashFunction(InstanceName, Size, LastIndex)) return false;
    for (;;) {
      bool free = false;
      std::int32_t next = 0;
      if (!IsIndexFree(HashTable, LastIndex, free, next)) return false;
      if (free) return true;
      const auto& slot = ElementAt(HashTable, LastIndex);
      Found = slot.InstanceName == InstanceName && slot.PartNumber == PartNumber;
      if (Found || next < 0) return true;
      LastIndex = next;
    }
  });
}

// A chain holds a free slot only where one was linked to it beforehand; the slot before that leads to
// it already. At the end of any other chain the slot behind it is asked for, which there isn't.
bool Cls_HashTable::AddInHashTable(const std::string& PartNumber, const std::string& InstanceName, Counter16 Row,
                                   Table& HashTable, std::int32_t Size) {
  return Guarded("Cls_HashTable.AddInHashTable", [&] {
    std::int32_t index = 0;
    if (!HashFunction(InstanceName, Size, index)) return false;
    std::int32_t next = index;
    for (bool free = false; !free;) {
      index = next;
      if (!IsIndexFree(HashTable, index, free, next)) return false;
    }
    ElementAt(HashTable, index) = {PartNumber, InstanceName, Row, -1};
    return true;
  });
}

bool Cls_HashTable::AddInHashTableInIndex(const std::string& PartNumber, const std::string& InstanceName, Counter16 Row,
                                          Table& HashTable, std::int32_t Index) {
  return Guarded("Cls_HashTable.AddInHashTableInIndex", [&] {
    HashElementType element{PartNumber, InstanceName, Row, -1};
    std::int32_t reached = Index;
    bool free = false;
    std::int32_t next = -1;
    if (!IsIndexFree(HashTable, reached, free, next)) return false;
    if (free) {
      ElementAt(HashTable, reached) = std::move(element);
      return true;
    }
    while (!free && next != -1) {
      reached = next;
      if (!IsIndexFree(HashTable, reached, free, next)) return false;
    }
    const auto added = UpperBound(HashTable) + 1;
    HashTable.push_back(std::move(element));
    ElementAt(HashTable, reached).NextIndex = added;
    return true;
  });
}

bool Cls_HashTable::IsIndexFree(const Table& HashTable, std::int32_t Index, bool& Free, std::int32_t& NextIndex) {
  return Guarded("Cls_HashTable.IsIndexFree", [&] {
    const auto& slot = ElementAt(HashTable, Index);
    Free = slot.PartNumber.empty();
    if (!Free) NextIndex = slot.NextIndex;
    return true;
  });
}

}  // namespace quintara
