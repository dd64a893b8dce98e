#include "hosts/gate/gate.h"

namespace quintara {

namespace {

void RequireFromOne(int n) {
  if (n < 1) throw Failure(failure::kInvalidCall, "Calls are counted from 1, not " + std::to_string(n));
}

}  // namespace

void Gate::StartRecording() {
  record_.clear();
  recording_ = true;
  Arm();
}

void Gate::StopRecording() {
  recording_ = false;
}

void Gate::FailCall(int n, Failure failure) {
  RequireFromOne(n);
  faults_.push_back({{}, n, true, std::move(failure)});
  Arm();
}

void Gate::FailOperation(std::string operation, int n, Failure failure) {
  RequireFromOne(n);
  faults_.push_back({std::move(operation), n, false, std::move(failure)});
  Arm();
}

void Gate::Reset() {
  faults_.clear();
  armed_ = recording_ = hasFailed_ = false;
  calls_ = 0;
}

void Gate::Arm() {
  armed_ = true;
  calls_ = 0;
}

void Gate::PassArmed(std::string_view operation, const std::string& detail) {
  ++calls_;
  if (recording_) {
    record_.emplace_back(operation);
    if (!detail.empty()) record_.back() += "(" + detail + ")";
  }
  for (auto& fault : faults_) {
    if (!fault.operation.empty() && fault.operation != operation) continue;
    if (--fault.remaining > 0 || (fault.once && fault.remaining < 0)) continue;
    hasFailed_ = true;
    throw fault.failure;
  }
}

}  // namespace quintara
