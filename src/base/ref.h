#pragma once

#include <concepts>
#include <cstddef>
#include <memory>
#include <utility>

#include "base/failure.h"

namespace quintara {

/// A shared hold on an object of one of the host systems; empty means "nothing".
/// Using nothing raises failure 91, since much of the logic does so on purpose and counts on a
/// failure that can be caught.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  template <class U>
  requires std::convertible_to<U*, T*>
  explicit Ref(std::shared_ptr<U> object) : object_(std::move(object)) {}
  template <class U>
  requires std::convertible_to<U*, T*> Ref(const Ref<U>& other) : object_(other.Shared()) {}
  template <class U>
  requires std::convertible_to<U*, T*> Ref(Ref<U>&& other) : object_(std::move(other).Shared()) {}

  T* operator->() const { return &**this; }
  T& operator*() const {
    if (!object_) throw Failure(failure::kObjectNotSet);
    return *object_;
  }
  explicit operator bool() const noexcept { return object_ != nullptr; }

  /// The plain shared pointer, for the adapters that own objects.
  const std::shared_ptr<T>& Shared() const& noexcept { return object_; }
  std::shared_ptr<T> Shared() && noexcept { return std::move(object_); }

  /// Equal when both hold the same object, or both hold nothing.
  friend bool operator==(const Ref& left, const Ref& right) noexcept { return left.object_ == right.object_; }

 private:
  std::shared_ptr<T> object_;
};

template <class T, class... Arguments>
Ref<T> MakeRef(Arguments&&... arguments) {
  return Ref<T>(std::make_shared<T>(std::forward<Arguments>(arguments)...));
}

}  // namespace quintara
