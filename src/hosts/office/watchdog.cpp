#include "hosts/office/watchdog.h"

namespace quintara::office {
namespace {

constexpr std::chrono::milliseconds kRound{50};

}  // namespace

Watchdog::Watchdog(OfficeProcess& process) : process_(process), thread_([this] { Watch(); }) {}

Watchdog::~Watchdog() {
  {
    const std::scoped_lock lock(mutex_);
    over_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void Watchdog::Expect(std::chrono::milliseconds within) {
  const std::scoped_lock lock(mutex_);
  deadline_ = Clock::now() + within;
}

void Watchdog::Answered() {
  const std::scoped_lock lock(mutex_);
  deadline_ = Clock::time_point::max();
}

void Watchdog::Watch() {
  std::unique_lock lock(mutex_);
  while (!over_ && Check()) wake_.wait_for(lock, kRound);
}

bool Watchdog::Check() {
  if (process_.Ending()) {
    alive_ = false;
  } else if (Clock::now() >= deadline_) {
    bitten_ = true;
    alive_ = false;
    process_.Kill();
  }
  return alive_;
}

}  // namespace quintara::office
