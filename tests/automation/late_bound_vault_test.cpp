#include "automation/host_thread.h"
#include "hosts/vault/contract/fixture.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

class VaultOnSqlite : public VaultBase {
 public:
  VaultOnSqlite() : VaultBase({}) {
    InitVault(Plan(), *files);
    Open();
  }
};

/// The embedded vault itself.
class EmbeddedVaultHost : public VaultOnSqlite {
 public:
  static constexpr auto kName = "Embedded";

  Ref<veldora::VdApplication> Application() { return vault->Application(); }
  const TemporaryFolder& Folder() { return folder; }
};

/// The same on another thread, driven by late binding.
class LateBoundVaultHost {
 public:
  static constexpr auto kName = "LateBound";

  LateBoundVaultHost() {
    thread_.Run([this] { host_ = std::make_unique<EmbeddedVaultHost>(); });
    application_ = thread_.Served<veldora::VdApplication>([this] { return host_->Application(); });
  }
  ~LateBoundVaultHost() {
    application_ = nullptr;
    thread_.Run([this] { host_.reset(); });
  }
  LateBoundVaultHost(const LateBoundVaultHost&) = delete;
  LateBoundVaultHost& operator=(const LateBoundVaultHost&) = delete;

  Ref<veldora::VdApplication> Application() { return application_; }
  const TemporaryFolder& Folder() { return host_->Folder(); }
  std::string Dump() {
    std::string dump;
    thread_.Run([&] { dump = host_->Dump(); });
    return dump;
  }

 private:
  HostThread& thread_ = HostThread::Shared();
  std::unique_ptr<EmbeddedVaultHost> host_;
  Ref<veldora::VdApplication> application_;
};

}  // namespace

using VaultContractHosts = testing::Types<EmbeddedVaultHost, LateBoundVaultHost>;

}  // namespace quintara::test

#include "hosts/vault/contract/file_contract.h"
#include "hosts/vault/contract/life_cycle_contract.h"
#include "hosts/vault/contract/meta_contract.h"
#include "hosts/vault/contract/object_contract.h"
#include "hosts/vault/contract/query_contract.h"
#include "hosts/vault/contract/session_contract.h"
#include "hosts/vault/contract/structure_contract.h"
