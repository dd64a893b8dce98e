#include <filesystem>

#include "automation/remote/remote_hosts.h"
#include "hosts/native/native_files.h"
#include "hosts/vault/contract/fixture.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;

/// The vault of another process.
class RemoteVault {
 public:
  static constexpr auto kName = "Remote";

  RemoteVault() {
    fs::create_directory(folder_.Path("work"));
    fs::create_directory(folder_.Path("source"));
    VaultPlan plan;
    plan.folder = folder_.Path("quintara.vault");
    plan.password = "secret";
    InitVault(plan, files_);
    RemoteHosts::OpenVault(plan.folder, folder_.Path("work"));
    application_ = HostsProcess::Attach<veldora::VdApplication>("Veldora.VdApplication");
  }
  ~RemoteVault() {
    application_ = nullptr;
    RemoteHosts::CloseVault();
  }
  RemoteVault(const RemoteVault&) = delete;
  RemoteVault& operator=(const RemoteVault&) = delete;

  Ref<veldora::VdApplication> Application() { return application_; }
  const TemporaryFolder& Folder() { return folder_; }
  std::string Dump() { return DumpOf(ReadVaultFolder(folder_.Path("quintara.vault"), files_).connection); }

 private:
  TemporaryFolder folder_;
  NativeContents files_{std::make_shared<Gate>()};
  Ref<veldora::VdApplication> application_;
};

}  // namespace

using VaultContractHosts = testing::Types<RemoteVault>;

}  // namespace quintara::test

#include "hosts/vault/contract/file_contract.h"
#include "hosts/vault/contract/life_cycle_contract.h"
#include "hosts/vault/contract/meta_contract.h"
#include "hosts/vault/contract/object_contract.h"
#include "hosts/vault/contract/query_contract.h"
#include "hosts/vault/contract/session_contract.h"
#include "hosts/vault/contract/structure_contract.h"
