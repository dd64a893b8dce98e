#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "automation/dispatch/call_watch.h"
#include "hosts/gate/gate.h"

namespace quintara::hosts {

/// Watches the calls of other programs: counts them, lets none in while one is on its way, and can end the process in
/// the middle of one.
///
/// A call can come while another one runs where that shows a box, which lets all messages in. It is turned away to be
/// tried again, since the hosts may be in the midst of a transaction.
class CallCounter final : public automation::CallWatch {
 public:
  /// Nothing that is asked only to tell what goes out passes `gate`.
  explicit CallCounter(std::shared_ptr<Gate> gate) : gate_(std::move(gate)) { automation::WatchCalls(this); }
  ~CallCounter() override { automation::WatchCalls(nullptr); }
  CallCounter(const CallCounter&) = delete;
  CallCounter& operator=(const CallCounter&) = delete;

  HRESULT Begin(std::string_view kind, std::string_view operation) override;
  void End() override;
  void BeginTelling() override;
  void EndTelling() override;

  /// Calls of the hosts' objects; those of the control don't count.
  std::int32_t Count() const noexcept { return count_; }
  bool IsBusy() const noexcept { return busy_; }
  /// See `HostsControl::EndInMidCall`.
  void EndInCall(const std::string& member, std::int32_t n);
  /// Called right before the process ends so.
  void BeforeEnd(std::function<void()> last) { beforeEnd_ = std::move(last); }

 private:
  void EndNow();

  std::shared_ptr<Gate> gate_;
  std::optional<Gate::Rest> telling_;
  bool busy_ = false;
  std::int32_t count_ = 0;
  std::string last_;
  std::int32_t untilLast_ = 0;
  std::function<void()> beforeEnd_;
};

}  // namespace quintara::hosts
