#include "automation/calls/request_counter.h"

#include <objbase.h>

namespace quintara::test {
namespace {

// The places of the members in the interface that all objects of automation have.
constexpr WORD kGetIdsOfNames = 5;
constexpr WORD kInvoke = 6;

}  // namespace

RequestCounter::RequestCounter() {
  CoRegisterMessageFilter(this, &before_);
}

RequestCounter::~RequestCounter() {
  CoRegisterMessageFilter(before_.Get(), nullptr);
}

HRESULT RequestCounter::QueryInterface(REFIID kind, void** given) {
  const bool isKnown = kind == IID_IUnknown || kind == IID_IMessageFilter;
  *given = isKnown ? static_cast<IMessageFilter*>(this) : nullptr;
  return isKnown ? S_OK : E_NOINTERFACE;
}

DWORD RequestCounter::HandleInComingCall(DWORD /*callType*/, HTASK /*caller*/, DWORD /*ticks*/, INTERFACEINFO* asked) {
  const bool isAutomation = asked && asked->iid == IID_IDispatch;
  if (isAutomation && asked->wMethod == kInvoke) {
    ++counts_.invocations;
  } else if (isAutomation && asked->wMethod == kGetIdsOfNames) {
    ++counts_.names;
  } else {
    ++counts_.others;
  }
  return SERVERCALL_ISHANDLED;
}

DWORD RequestCounter::RetryRejectedCall(HTASK /*callee*/, DWORD /*ticks*/, DWORD /*why*/) {
  return static_cast<DWORD>(-1);
}

DWORD RequestCounter::MessagePending(HTASK /*callee*/, DWORD /*ticks*/, DWORD /*type*/) {
  return PENDINGMSG_WAITDEFPROCESS;
}

}  // namespace quintara::test
