#include "hosts/call_counter.h"

#include "automation/dispatch/kinds_control.h"
#include "base/failure.h"
#include "base/text.h"

namespace quintara::hosts {
namespace {

constexpr UINT kEndedInCall = 3;

bool IsMeant(const std::string& wanted, std::string_view kind, std::string_view operation) {
  if (wanted.empty()) return true;
  const auto member = Capitals(operation);
  return wanted == member || wanted == Capitals(kind) + "." + member;
}

}  // namespace

HRESULT CallCounter::Begin(std::string_view kind, std::string_view operation) {
  if (busy_) return RPC_E_SERVERCALL_RETRYLATER;
  if (kind != automation::Kind<automation::HostsControl>::kName) {
    ++count_;
    if (untilLast_ > 0 && IsMeant(last_, kind, operation) && --untilLast_ == 0) EndNow();
  }
  busy_ = true;
  return S_OK;
}

// As a crash would: nobody is told.
void CallCounter::EndNow() {
  if (beforeEnd_) beforeEnd_();
  TerminateProcess(GetCurrentProcess(), kEndedInCall);
}

void CallCounter::End() {
  busy_ = false;
}

void CallCounter::BeginTelling() {
  telling_.emplace(*gate_);
}

void CallCounter::EndTelling() {
  telling_.reset();
}

void CallCounter::EndInCall(const std::string& member, std::int32_t n) {
  if (n < 0) throw Failure(failure::kInvalidCall, "Calls are counted from 1, not " + std::to_string(n));
  last_ = Capitals(member);
  untilLast_ = n;
}

}  // namespace quintara::hosts
