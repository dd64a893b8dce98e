#include "automation/remote/remote_hosts.h"
#include "hosts/cad/contract/fixture.h"

namespace quintara::test {
namespace {

/// The CAD host of another process.
class RemoteCad {
 public:
  RemoteCad() {
    RemoteHosts::StartCad();
    application_ = HostsProcess::Attach<zorva::Application>("ZORVA.Application");
  }

  Ref<zorva::Application> Application() { return application_; }
  void LoadWithoutDesign(const Ref<zorva::Product>& product) { RemoteHosts::Control()->SetForm(product, 1); }
  void Unload(const Ref<zorva::Product>& product) { RemoteHosts::Control()->SetForm(product, 2); }

 private:
  Ref<zorva::Application> application_;
};

}  // namespace

using CadContractHosts = testing::Types<RemoteCad>;

}  // namespace quintara::test

#include "hosts/cad/contract/change_contract.h"
#include "hosts/cad/contract/selection_contract.h"
#include "hosts/cad/contract/session_contract.h"
#include "hosts/cad/contract/tree_contract.h"
