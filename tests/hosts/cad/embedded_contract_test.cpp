#include "hosts/cad/cad_host.h"
#include "hosts/cad/contract/fixture.h"
#include "hosts/native/native_files.h"

namespace quintara::test {
namespace {

class EmbeddedHost {
 public:
  Ref<zorva::Application> Application() { return host_.Application(); }
  void LoadWithoutDesign(const Ref<zorva::Product>& product) { host_.SetForm(product, ComponentForm::kWithoutDesign); }
  void Unload(const Ref<zorva::Product>& product) { host_.SetForm(product, ComponentForm::kUnloaded); }

 private:
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  CadHost host_{{gate_, std::make_shared<NativeContents>(gate_), {}}};
};

}  // namespace

using CadContractHosts = testing::Types<EmbeddedHost>;

}  // namespace quintara::test

#include "hosts/cad/contract/change_contract.h"
#include "hosts/cad/contract/selection_contract.h"
#include "hosts/cad/contract/session_contract.h"
#include "hosts/cad/contract/tree_contract.h"
