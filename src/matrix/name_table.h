#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace quintara {

/// Finds the first number that was entered under a name. One flat array, entered once in order:
/// several times as fast as a map of nodes for names that are long and nearly all different.
class NameTable {
 public:
  static constexpr int kNone = -1;

  /// Room for `count` names. The texts must live longer.
  explicit NameTable(std::size_t count = 0) : slots_(std::bit_ceil(2 * count + 2)) {}

  /// Enters `number` under `name` unless one is there; gives the one that is there then.
  int Enter(std::string_view name, int number) {
    auto& slot = SlotOf(name);
    if (slot.number == kNone) slot = {name, Hash(name), number};
    return slot.number;
  }

  /// The number entered under `name`, or `kNone`.
  int Find(std::string_view name) const { return const_cast<NameTable*>(this)->SlotOf(name).number; }

 private:
  struct Slot {
    std::string_view name;
    std::uint32_t hash = 0;
    int number = kNone;
  };

  static std::uint32_t Hash(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(name) >> 16);
  }

  // Where the name stands, or the free slot where it belongs. At most half of the slots are taken.
  Slot& SlotOf(std::string_view name) {
    const auto hash = Hash(name);
    for (std::size_t at = hash;; ++at) {
      auto& slot = slots_[at & (slots_.size() - 1)];
      if (slot.number == kNone || (slot.hash == hash && slot.name == name)) return slot;
    }
  }

  std::vector<Slot> slots_;
};

}  // namespace quintara
