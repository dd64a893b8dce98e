#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "hosts/office/office_process.h"

namespace quintara::office {

/// Watches over a process from a thread of its own: notices its end, and ends it when an answer is overdue, so
/// that whoever waits for that answer goes on with a failure.
class Watchdog {
 public:
  explicit Watchdog(OfficeProcess& process);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// An answer is expected within that time, until `Answered`.
  void Expect(std::chrono::milliseconds within);
  void Answered();

  /// The process was seen to end.
  void NoteEnd() noexcept { alive_ = false; }

  /// False soon after the process has ended.
  bool IsAlive() const noexcept { return alive_; }
  /// True when it was ended for an overdue answer.
  bool HasBitten() const noexcept { return bitten_; }

 private:
  using Clock = std::chrono::steady_clock;

  void Watch();
  bool Check();

  OfficeProcess& process_;
  std::atomic<bool> alive_ = true;
  std::atomic<bool> bitten_ = false;
  std::mutex mutex_;
  std::condition_variable wake_;
  Clock::time_point deadline_ = Clock::time_point::max();
  bool over_ = false;
  std::thread thread_;
};

}  // namespace quintara::office
