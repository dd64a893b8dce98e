#include "hosts/vault/contract/fixture.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class EmbeddedVaultHost : public VaultBase {
 public:
  static constexpr auto kName = Maker::kName;

  EmbeddedVaultHost() : VaultBase(Maker::NewConnection()) {
    InitVault(Plan(), *files);
    Open();
  }

  Ref<veldora::VdApplication> Application() { return vault->Application(); }
  const TemporaryFolder& Folder() { return folder; }
};

}  // namespace

using VaultContractHosts = testing::Types<EmbeddedVaultHost<OnSqlite>, EmbeddedVaultHost<OnPostgres>>;

}  // namespace quintara::test

#include "hosts/vault/contract/file_contract.h"
#include "hosts/vault/contract/life_cycle_contract.h"
#include "hosts/vault/contract/meta_contract.h"
#include "hosts/vault/contract/object_contract.h"
#include "hosts/vault/contract/query_contract.h"
#include "hosts/vault/contract/session_contract.h"
#include "hosts/vault/contract/structure_contract.h"
