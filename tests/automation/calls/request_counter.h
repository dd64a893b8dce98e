#pragma once

#include <atomic>

#include "automation/dispatch/com.h"

namespace quintara::test {

/// Counts what other threads and programs ask the objects of the calling thread for, while it lives.
class RequestCounter final : public IMessageFilter {
 public:
  struct Counts {
    int invocations = 0;  ///< of members
    int names = 0;        ///< asked for the ids of names
    int others = 0;       ///< what the system asks by itself: for interfaces, and to let objects go
    int All() const { return invocations + names + others; }
  };

  RequestCounter();
  ~RequestCounter();
  RequestCounter(const RequestCounter&) = delete;
  RequestCounter& operator=(const RequestCounter&) = delete;

  const Counts& Counted() const { return counts_; }
  void Reset() { counts_ = {}; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID kind, void** given) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // it belongs to whoever made it
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD callType, HTASK caller, DWORD ticks, INTERFACEINFO* asked) override;
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK callee, DWORD ticks, DWORD why) override;
  DWORD STDMETHODCALLTYPE MessagePending(HTASK callee, DWORD ticks, DWORD type) override;

 private:
  Counts counts_;
  automation::ComPtr<IMessageFilter> before_;
};

}  // namespace quintara::test
