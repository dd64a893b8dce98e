#pragma once

#include <concepts>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/failure.h"

namespace quintara {

/// The one gate that every operation of an embedded host passes first. It can record what is
/// called, in order, and can make chosen calls fail: a test asserts the record, or sweeps a whole
/// command, failing each call once.
class Gate {
 public:
  /// Passes `operation`, a name of the form "Product.PartNumber". `detail` is called only while
  /// recording and gives the text that stands behind the name, in brackets. Throws the failure
  /// that was asked for, if this is the call to fail.
  template <std::invocable Detail>
  void Pass(std::string_view operation, Detail&& detail) {
    if (armed_) [[unlikely]]
      PassArmed(operation, recording_ ? std::string(std::forward<Detail>(detail)()) : std::string());
  }
  void Pass(std::string_view operation) {
    if (armed_) [[unlikely]]
      PassArmed(operation, {});
  }

  /// Lets everything pass unseen for as long as it lives: neither recorded nor counted, and nothing fails.
  class Rest {
   public:
    explicit Rest(Gate& gate) : gate_(gate), armed_(std::exchange(gate.armed_, false)) {}
    ~Rest() { gate_.armed_ = armed_; }
    Rest(const Rest&) = delete;
    Rest& operator=(const Rest&) = delete;

   private:
    Gate& gate_;
    bool armed_;
  };

  /// Starts an empty record.
  void StartRecording();
  /// Calls are counted and made to fail as before.
  void StopRecording();
  /// The calls passed while recording, as "Product.PartNumber" or "Documents.Read(x.stp)".
  const std::vector<std::string>& Record() const noexcept { return record_; }

  /// Counts calls from now on and makes the n-th of them fail, once. Throws
  /// for an n below 1, as `FailOperation` does.
  void FailCall(int n, Failure failure = Failure(failure::kDeviceError, "Injected failure"));
  /// Makes each call of `operation` fail from its n-th on (from 1), until `Reset`.
  void FailOperation(std::string operation, int n = 1,
                     Failure failure = Failure(failure::kDeviceError, "Injected failure"));
  /// The calls counted since the last `FailCall`, `FailOperation` or `StartRecording`.
  int Calls() const noexcept { return calls_; }
  /// True when a failure that was asked for has been thrown.
  bool HasFailed() const noexcept { return hasFailed_; }
  /// Nothing is recorded, counted or failed any more; the record stays readable.
  void Reset();

 private:
  struct Fault {
    std::string operation;
    int remaining;
    bool once;
    Failure failure;
  };

  void PassArmed(std::string_view operation, const std::string& detail);
  void Arm();

  bool armed_ = false;
  bool recording_ = false;
  bool hasFailed_ = false;
  int calls_ = 0;
  std::vector<std::string> record_;
  std::vector<Fault> faults_;
};

}  // namespace quintara
