#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "access/session/matrix_type.h"
#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/text16.h"
#include "automation/server/arrays.h"
#include "automation/server/interface.h"
#include "automation/server/invocation.h"
#include "base/attempt.h"

namespace quintara::automation {

/// An argument of a public method as the class behind it takes it: made from the caller's reference, none of which is
/// the neutral value, and written back at its end where the class takes a reference that it writes.
template <class Taken>
class Argument;

/// One that is only read.
template <class Held>
class InArgument {
 public:
  explicit InArgument(Held held) : held_(std::move(held)) {}
  InArgument(const InArgument&) = delete;
  InArgument& operator=(const InArgument&) = delete;

  const Held& Get() const noexcept { return held_; }

 private:
  Held held_;
};

inline ComPtr<IDispatch> ObjectAt(IDispatch* const* given) {
  return given ? *given : nullptr;
}
inline SAFEARRAY* ArrayAt(SAFEARRAY* const* given) {
  return given ? *given : nullptr;
}

template <>
class Argument<bool> : public InArgument<bool> {
 public:
  explicit Argument(const VARIANT_BOOL* given) : InArgument(given && *given != VARIANT_FALSE) {}
};

template <>
class Argument<std::int16_t> : public InArgument<std::int16_t> {
 public:
  explicit Argument(const short* given) : InArgument(given ? *given : std::int16_t{0}) {}
};

// 32 bits, for both types that have them.
template <>
class Argument<int> : public InArgument<int> {
 public:
  explicit Argument(const LONG* given) : InArgument(given ? static_cast<int>(*given) : 0) {}
};

template <>
class Argument<MatrixType> : public InArgument<MatrixType> {
 public:
  explicit Argument(const ::MatrixType* given)
      : InArgument(given ? static_cast<MatrixType>(*given) : MatrixType::Excel) {}
};

template <>
class Argument<const std::string&> : public InArgument<std::string> {
 public:
  explicit Argument(const BSTR* given) : InArgument(FromBstr(given ? *given : nullptr)) {}
};

template <class Contract>
class Argument<const Ref<Contract>&> : public InArgument<Ref<Contract>> {
 public:
  explicit Argument(IDispatch* const* given) : InArgument<Ref<Contract>>(Adapt<Contract>(ObjectAt(given), nullptr)) {}
};

template <>
class Argument<const std::vector<Variant>&> : public InArgument<std::vector<Variant>> {
 public:
  explicit Argument(SAFEARRAY* const* given) : InArgument(VariantsFromZero(ArrayAt(given))) {}
};

template <>
class Argument<std::span<const Variant>> : public InArgument<std::vector<Variant>> {
 public:
  explicit Argument(SAFEARRAY* const* given) : InArgument(VariantsIn(ArrayAt(given))) {}
};

template <>
class Argument<const std::vector<std::uint8_t>&> : public InArgument<std::vector<std::uint8_t>> {
 public:
  explicit Argument(SAFEARRAY* const* given) : InArgument(BytesIn(ArrayAt(given))) {}
};

template <>
class Argument<const std::vector<PN_IN_Couple>&> : public InArgument<std::vector<PN_IN_Couple>> {
 public:
  explicit Argument(SAFEARRAY* const* given) : InArgument(CouplesIn(ArrayAt(given))) {}
};

/// A run-time error as a script holds it, read when it is asked for. Failure 91 for nothing.
ErrorState ErrorIn(const ComPtr<IDispatch>& object);

template <>
class Argument<const std::function<ErrorState()>&> : public InArgument<std::function<ErrorState()>> {
 public:
  explicit Argument(IDispatch* const* given) : InArgument([object = ObjectAt(given)] { return ErrorIn(object); }) {}
};

template <>
class Argument<bool&> {
 public:
  explicit Argument(VARIANT_BOOL* given) noexcept : given_(given) {}
  ~Argument() {
    if (given_) *given_ = held_ ? VARIANT_TRUE : VARIANT_FALSE;
  }
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;

  bool& Get() noexcept { return held_; }

 private:
  VARIANT_BOOL* given_;
  bool held_ = false;
};

template <>
class Argument<std::int16_t&> {
 public:
  explicit Argument(short* given) noexcept : given_(given ? given : &none_) {}
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;

  std::int16_t& Get() noexcept { return *given_; }

 private:
  std::int16_t none_ = 0;
  std::int16_t* given_;
};

template <>
class Argument<std::string&> {
 public:
  explicit Argument(BSTR* given) : given_(given), held_(FromBstr(given ? *given : nullptr)), before_(held_) {}
  ~Argument() {
    if (!given_ || held_ == before_) return;
    ErrorState noMemory;
    Attempt(noMemory, [&] { SysFreeString(std::exchange(*given_, NewBstr(held_))); });
  }
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;

  std::string& Get() noexcept { return held_; }

 private:
  BSTR* given_;
  std::string held_;
  std::string before_;
};

/// An object that comes out. A single one is written only where there is one, a list always.
template <class Contract>
class Argument<Ref<Contract>&> {
 public:
  explicit Argument(IDispatch** given) noexcept : given_(given) {
    if (given_ && *given_ != Unwritten()) *given_ = nullptr;
  }
  ~Argument() {
    if (!given_ || (!held_ && std::is_same_v<Contract, veldora::VdObject>)) return;
    ErrorState noMemory;
    Attempt(noMemory, [&] { *given_ = Outgoing(held_).Detach(); });
  }
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;

  Ref<Contract>& Get() noexcept { return held_; }

 private:
  IDispatch** given_;
  Ref<Contract> held_;
};

// How results go out. `place` isn't read, and may be missing.
inline void Give(VARIANT_BOOL* place, bool result) {
  if (place) *place = result ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void Give(short* place, std::int16_t result) {
  if (place) *place = result;
}
inline void Give(BSTR* place, const std::string& result) {
  if (place) *place = NewBstr(result);
}
inline void Give(VARIANT* place, const Variant& result) {
  if (place) *place = Value(result).Release();
}
inline void Give(SAFEARRAY** place, const std::vector<std::uint8_t>& result) {
  if (place) *place = NewArray(result);
}
template <class Contract>
void Give(IDispatch** place, const Ref<Contract>& result) {
  if (place) *place = Outgoing(result).Detach();
}

}  // namespace quintara::automation
