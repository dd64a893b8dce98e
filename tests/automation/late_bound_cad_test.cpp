#include "automation/host_thread.h"
#include "hosts/cad/cad_host.h"
#include "hosts/cad/contract/fixture.h"
#include "hosts/native/native_files.h"

namespace quintara::test {
namespace {

/// The embedded CAD host on another thread, driven by late binding.
class LateBoundHost {
 public:
  LateBoundHost() {
    thread_.Run([this] {
      host_ = std::make_unique<CadHost>(CadHost::Surroundings{
          std::make_shared<Gate>(), std::make_shared<NativeContents>(std::make_shared<Gate>()), {}});
    });
    application_ = thread_.Served<zorva::Application>([this] { return host_->Application(); });
  }
  ~LateBoundHost() {
    application_ = nullptr;
    thread_.Run([this] { host_.reset(); });
  }
  LateBoundHost(const LateBoundHost&) = delete;
  LateBoundHost& operator=(const LateBoundHost&) = delete;

  Ref<zorva::Application> Application() { return application_; }
  void LoadWithoutDesign(const Ref<zorva::Product>& product) { SetForm(product, ComponentForm::kWithoutDesign); }
  void Unload(const Ref<zorva::Product>& product) { SetForm(product, ComponentForm::kUnloaded); }

 private:
  void SetForm(const Ref<zorva::Product>& product, ComponentForm form) {
    thread_.RunWith(product, [&](const Ref<AnyObject>& own) { host_->SetForm(own->AsProduct(), form); });
  }

  HostThread& thread_ = HostThread::Shared();
  std::unique_ptr<CadHost> host_;
  Ref<zorva::Application> application_;
};

}  // namespace

using CadContractHosts = testing::Types<LateBoundHost>;

}  // namespace quintara::test

#include "hosts/cad/contract/change_contract.h"
#include "hosts/cad/contract/selection_contract.h"
#include "hosts/cad/contract/session_contract.h"
#include "hosts/cad/contract/tree_contract.h"
