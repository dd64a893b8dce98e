#pragma once

#include <memory>
#include <utility>

#include "access/contracts/veldora_objects.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

/// A traversal policy. Its options are kept and given back; this vault takes no meaning from them.
class BehaviorObject final : public Served<"VdBehavior", veldora::VdBehavior> {
 public:
  /// `options` are shared with whoever else holds them: the default policy is the session's.
  BehaviorObject(std::shared_ptr<Core> core, std::shared_ptr<BehaviorOptions> options);

  Ref<veldora::VdBehavior> Clone() override;
  int OptionA() override;
  int OptionC() override;
  void SetOptionA(int value) override;
  void SetOptionB(int value) override;
  void SetOptionC(int value) override;
  void SetOptionD(bool value) override;
  void SetOptionE(int value) override;

 private:
  std::shared_ptr<BehaviorOptions> options_;
};

}  // namespace quintara::vault
