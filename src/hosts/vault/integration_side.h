#pragma once

#include <memory>
#include <string>
#include <vector>

#include "access/contracts/integration.h"
#include "hosts/vault/core.h"

namespace quintara::vault {

class IntegrationSide final : public IntegrationVault {
 public:
  explicit IntegrationSide(std::shared_ptr<Core> core);

  std::optional<Identity> NotedObject(const std::string& path) override;
  void InTransaction(const std::function<void()>& body) override;
  void ReplaceChildren(const Ref<veldora::VdObject>& parent, const std::vector<Replacement>& replacements) override;
  bool StoreWorkingCopy(const Ref<veldora::VdObject>& object) override;
  void CopyStructureToWork(const Ref<veldora::VdObject>& object) override;
  std::vector<std::string> FilesToReplace(const Ref<veldora::VdObject>& object) override;
  std::string ConfigInForce(const std::string& path) override;
  std::string WorkDirectory() override;

 private:
  std::shared_ptr<Core> core_;
};

}  // namespace quintara::vault
