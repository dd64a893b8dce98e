#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <utility>

#include "hosts/gate/operation_name.h"
#include "hosts/vault/core.h"

namespace quintara::vault {

/// The base of the vault's objects: each operation first passes the gate, then requires that a user is
/// logged on. Objects taken before a log-off serve again after the log-on.
template <OperationLiteral Kind, class Contract>
class Served : public Contract {
 public:
  explicit Served(std::shared_ptr<Core> core) : core_(std::move(core)) {}

 protected:
  template <OperationLiteral Operation>
  void Pass() const {
    PassLoggedOff<Operation>();
    core_->RequireLoggedOn();
  }
  template <OperationLiteral Operation, std::invocable Detail>
  void Pass(Detail&& detail) const {
    PassLoggedOff<Operation>(std::forward<Detail>(detail));
    core_->RequireLoggedOn();
  }
  /// For the operations that need no user.
  template <OperationLiteral Operation>
  void PassLoggedOff() const {
    core_->TheGate().Pass(kGateName<Kind, Operation>);
  }
  template <OperationLiteral Operation, std::invocable Detail>
  void PassLoggedOff(Detail&& detail) const {
    core_->TheGate().Pass(kGateName<Kind, Operation>, std::forward<Detail>(detail));
  }

  std::shared_ptr<Core> core_;
};

}  // namespace quintara::vault
