#include "matrix/literal_hash_table.h"

#include "base/failure.h"
#include "base/text.h"

namespace quintara::test {
namespace {

bool IsPrime(int number) {
  if (number < 2) return false;
  for (int divisor = 2; divisor < number; ++divisor) {
    if (number % divisor == 0) return false;
  }
  return true;
}

}  // namespace

bool LiteralHashTable::Fail(const char* operation, const char* description) {
  surroundings_.show("Unexpected error in function Cls_HashTable." + std::string(operation) + " : " + description);
  return false;
}

bool LiteralHashTable::IsInside(int index) {
  if (index >= 0 && index < static_cast<int>(slots.size())) return true;
  return Fail("IsIndexFree", "Subscript out of range");
}

int LiteralHashTable::Home(const std::string& instanceName) const {
  const std::string codes = ToCodePage1252(instanceName);
  std::int64_t key = 0;
  std::int64_t power = 1;
  for (std::size_t i = 0; i < codes.size() && i < 20; ++i) {
    key += power * (static_cast<int>(codes[i]) & 255);
    power *= 2;
  }
  return static_cast<int>(key % size_);
}

void LiteralHashTable::GrowByOne() {
  std::vector<Slot> grown(slots.size() + 1);
  for (std::size_t i = 0; i < slots.size(); ++i) grown[i] = slots[i];
  slots = grown;
}

void LiteralHashTable::Create(int size) {
  size_ = size;
  slots.assign(static_cast<std::size_t>(size) + 1, Slot());
}

bool LiteralHashTable::Search(const PN_IN_Couple& couple, bool& found, int& lastIndex) {
  found = false;
  lastIndex = Home(couple.InstanceName);
  if (!IsInside(lastIndex)) return false;
  while (!slots[static_cast<std::size_t>(lastIndex)].partNumber.empty()) {
    const Slot& slot = slots[static_cast<std::size_t>(lastIndex)];
    if (slot.partNumber == couple.PartNumber && slot.instanceName == couple.InstanceName) {
      found = true;
      return true;
    }
    if (slot.next < 0) return true;
    lastIndex = slot.next;
    if (!IsInside(lastIndex)) return false;
  }
  return true;
}

bool LiteralHashTable::AddInIndex(const PN_IN_Couple& couple, int index) {
  const Slot element{couple.PartNumber, couple.InstanceName, couple.Row, -1};
  if (!IsInside(index)) return false;
  if (slots[static_cast<std::size_t>(index)].partNumber.empty()) {
    slots[static_cast<std::size_t>(index)] = element;
    return true;
  }
  int reached = index;
  while (!slots[static_cast<std::size_t>(reached)].partNumber.empty() &&
         slots[static_cast<std::size_t>(reached)].next != -1) {
    reached = slots[static_cast<std::size_t>(reached)].next;
    if (!IsInside(reached)) return false;
  }
  const int u = static_cast<int>(slots.size()) - 1;
  GrowByOne();
  slots[static_cast<std::size_t>(u) + 1] = element;
  if (u + 1 > 32767) return Fail("AddInHashTableInIndex", "Overflow");
  slots[static_cast<std::size_t>(reached)].next = u + 1;
  return true;
}

bool LiteralHashTable::Add(const PN_IN_Couple& couple) {
  const int home = Home(couple.InstanceName);
  int index = home;
  int previous = home;
  if (!IsInside(index)) return false;
  while (!slots[static_cast<std::size_t>(index)].partNumber.empty()) {
    previous = index;
    index = slots[static_cast<std::size_t>(index)].next;
    if (!IsInside(index)) return false;
  }
  slots[static_cast<std::size_t>(index)] = {couple.PartNumber, couple.InstanceName, couple.Row, -1};
  if (index != home) slots[static_cast<std::size_t>(previous)].next = index;
  return true;
}

bool LiteralHashTable::RenameOne(const PN_IN_Couple& couple) {
  const std::string newName = couple.InstanceName + surroundings_.random();
  bool found = false;
  int lastIndex = -1;
  if (!Search({couple.PartNumber, newName, couple.Row}, found, lastIndex)) return false;
  if (!AddInIndex(couple, lastIndex)) return false;
  try {
    surroundings_.write(couple.Row, newName);
  } catch (const Failure& failure) {
    return Fail("RenameDoublesWithHashTable", failure.what());
  }
  return true;
}

bool LiteralHashTable::Rename(const std::vector<PN_IN_Couple>& couples, int arrayIndex) {
  int size = arrayIndex;
  while (!IsPrime(size)) ++size;
  Create(size);
  for (int i = 0; i < arrayIndex; ++i) {
    if (i >= static_cast<int>(couples.size())) {
      return Fail("RenameDoublesWithHashTable", "Subscript out of range");
    }
    const PN_IN_Couple& couple = couples[static_cast<std::size_t>(i)];
    bool found = false;
    int lastIndex = -1;
    if (!Search(couple, found, lastIndex)) return false;
    if (!(found ? RenameOne(couple) : AddInIndex(couple, lastIndex))) return false;
  }
  return true;
}

}  // namespace quintara::test
