#include "automation/dispatch/call_watch.h"

namespace quintara::automation {
namespace {

CallWatch* theWatch = nullptr;

}  // namespace

void WatchCalls(CallWatch* watch) {
  theWatch = watch;
}

WatchedCall::WatchedCall(std::string_view kind, std::string_view operation) {
  if (!theWatch) return;
  result_ = theWatch->Begin(kind, operation);
  if (SUCCEEDED(result_)) watch_ = theWatch;
}

WatchedCall::~WatchedCall() {
  if (watch_) watch_->End();
}

WatchedTelling::WatchedTelling() {
  if (theWatch) theWatch->BeginTelling();
}

WatchedTelling::~WatchedTelling() {
  if (theWatch) theWatch->EndTelling();
}

}  // namespace quintara::automation
