#include "automation/driver/remote_tree.h"

#include <commctrl.h>

#include <array>
#include <cstring>

#include "automation/driver/steps.h"
#include "base/text16_windows.h"

namespace quintara::driver {
namespace {

constexpr std::size_t kTextUnits = 512;
constexpr std::size_t kTextAt = 128;  // in the memory, behind the record
constexpr std::size_t kMemory = kTextAt + kTextUnits * sizeof(wchar_t);

// The record of an item as it stands in a process whose addresses have this type.
template <typename Address>
struct ItemRecord {
  UINT mask;
  Address item;
  UINT state;
  UINT stateMask;
  Address text;
  int textUnits;
  int picture;
  int selectedPicture;
  int children;
  Address parameter;
};

template <typename Address>
ItemRecord<Address> Fetch(HWND tree, RemoteMemory& memory, std::uintptr_t item) {
  ItemRecord<Address> record{};
  record.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_IMAGE | TVIF_STATE;
  record.item = static_cast<Address>(item);
  record.stateMask = TVIS_EXPANDED | TVIS_SELECTED;
  record.text = static_cast<Address>(reinterpret_cast<std::uintptr_t>(memory.Address()) + kTextAt);
  record.textUnits = static_cast<int>(kTextUnits);
  memory.Write(0, &record, sizeof record);
  if (Ask(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(memory.Address())) == 0) {
    throw Failed("a node of the tree can't be read");
  }
  memory.Read(0, &record, sizeof record);
  return record;
}

}  // namespace

RemoteTree::RemoteTree(HWND tree) : tree_(tree), memory_(tree, kMemory) {}

RemoteTree::Item RemoteTree::Next(unsigned relation, Item item) const {
  return static_cast<Item>(Ask(tree_, TVM_GETNEXTITEM, relation, static_cast<LPARAM>(item)));
}

// The next one in the order in which the nodes stand, whether they are seen or not.
RemoteTree::Item RemoteTree::Following(Item item) const {
  if (const auto child = Next(TVGN_CHILD, item); child != 0) return child;
  for (; item != 0; item = Next(TVGN_PARENT, item)) {
    if (const auto next = Next(TVGN_NEXT, item); next != 0) return next;
  }
  return 0;
}

RemoteTree::Values RemoteTree::Read(Item item) {
  Values values;
  std::uintptr_t address = 0;
  const auto take = [&](const auto& record) {
    values.picture = record.picture;
    values.state = record.state;
    address = static_cast<std::uintptr_t>(record.text);
  };
  if (memory_.IsNarrow()) {
    take(Fetch<std::uint32_t>(tree_, memory_, item));
  } else {
    take(Fetch<std::uint64_t>(tree_, memory_, item));
  }
  std::array<wchar_t, kTextUnits> text{};
  const auto start = reinterpret_cast<std::uintptr_t>(memory_.Address());
  memory_.Read(address - start, text.data(), sizeof text - sizeof(wchar_t));
  values.text = Narrow(text.data());
  return values;
}

bool RemoteTree::Matches(Item item, const std::vector<std::string>& path) {
  for (auto word = path.rbegin(); word != path.rend(); ++word) {
    if (item == 0 || Text(item) != *word) return false;
    item = Next(TVGN_PARENT, item);
  }
  return true;
}

RemoteTree::Item RemoteTree::Find(const std::vector<std::string>& path) {
  Item found = 0;
  for (auto item = Next(TVGN_ROOT, 0); item != 0; item = Following(item)) {
    if (!Matches(item, path)) continue;
    if (found != 0) throw Failed("the tree has several nodes " + Quoted(path.back()) + "; name one's parent before it");
    found = item;
  }
  if (found == 0) throw Failed("the tree has no node " + Quoted(path.back()) + ", only\n" + Outline());
  return found;
}

RECT RemoteTree::Show(Item item) {
  Ask(tree_, TVM_ENSUREVISIBLE, 0, static_cast<LPARAM>(item));
  RECT box{};
  std::uint64_t handle = item;
  std::memcpy(&box, &handle, sizeof handle);
  memory_.Write(0, &box, sizeof box);
  if (Ask(tree_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(memory_.Address())) == 0) {
    throw Failed("the node " + Quoted(Text(item)) + " can't be scrolled to");
  }
  memory_.Read(0, &box, sizeof box);
  RECT client{};
  GetClientRect(tree_, &client);
  IntersectRect(&box, &box, &client);
  MapWindowPoints(tree_, nullptr, reinterpret_cast<POINT*>(&box), 2);
  return box;
}

std::string RemoteTree::Text(Item item) {
  return Read(item).text;
}

int RemoteTree::Picture(Item item) {
  return Read(item).picture;
}

bool RemoteTree::IsExpanded(Item item) {
  return (Read(item).state & TVIS_EXPANDED) != 0;
}

RemoteTree::Item RemoteTree::Selected() const {
  return Next(TVGN_CARET, 0);
}

std::string RemoteTree::Outline() {
  std::string lines;
  for (auto item = Next(TVGN_ROOT, 0); item != 0; item = Following(item)) {
    std::size_t depth = 0;
    for (auto above = Next(TVGN_PARENT, item); above != 0; above = Next(TVGN_PARENT, above)) ++depth;
    const auto values = Read(item);
    lines += std::string(2 * depth, ' ') + std::to_string(values.picture) + " " + values.text + "\n";
  }
  return lines;
}

}  // namespace quintara::driver
