#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace quintara::cad {

/// Objects owned in an order, of which any can be taken out: only pointers move then.
template <class T>
class OwnedList {
 public:
  OwnedList() = default;
  ~OwnedList() { Clear(); }
  OwnedList(const OwnedList&) = delete;
  OwnedList& operator=(const OwnedList&) = delete;

  std::size_t size() const noexcept { return items_.size(); }
  bool empty() const noexcept { return items_.empty(); }
  T* operator[](std::size_t index) const noexcept { return items_[index]; }
  auto begin() const noexcept { return items_.begin(); }
  auto end() const noexcept { return items_.end(); }

  T& Append(std::unique_ptr<T> item) {
    items_.push_back(item.get());
    return *item.release();
  }
  std::unique_ptr<T> TakeOut(std::size_t index) {
    std::unique_ptr<T> taken(items_[index]);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    return taken;
  }
  void Clear() noexcept {
    for (auto* const item : std::exchange(items_, {})) delete item;
  }

 private:
  std::vector<T*> items_;
};

}  // namespace quintara::cad
