#pragma once

#include <cstddef>
#include <string_view>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// Told of every call that other programs make of this one's objects, on the thread that serves them.
class CallWatch {
 public:
  virtual ~CallWatch() = default;

  /// Before an operation runs. A failed result is the caller's answer in its place; `End` isn't called then.
  virtual HRESULT Begin(std::string_view kind, std::string_view operation) = 0;
  /// After it, whatever came of it.
  virtual void End() = 0;
  /// Around what an object that goes out is asked for only to tell of what kind it is. Nobody asked for that.
  virtual void BeginTelling() {}
  virtual void EndTelling() {}
};

/// There is one watch at most; null for none. It must outlive its use.
void WatchCalls(CallWatch* watch);

/// One call, from its beginning to its end.
class WatchedCall {
 public:
  WatchedCall(std::string_view kind, std::string_view operation);
  ~WatchedCall();
  WatchedCall(const WatchedCall&) = delete;
  WatchedCall& operator=(const WatchedCall&) = delete;

  /// Failed where the call is refused.
  HRESULT Result() const noexcept { return result_; }

 private:
  CallWatch* watch_ = nullptr;
  HRESULT result_ = S_OK;
};

/// The telling of a kind, from its beginning to its end.
class WatchedTelling {
 public:
  WatchedTelling();
  ~WatchedTelling();
  WatchedTelling(const WatchedTelling&) = delete;
  WatchedTelling& operator=(const WatchedTelling&) = delete;
};

/// How many objects of this program others, or it itself, hold as served.
std::size_t ServedObjects();

}  // namespace quintara::automation
