#include "windows/served_world.h"

#include <filesystem>
#include <map>
#include <memory>

#include "base/text.h"
#include "hosts/cad/cad_host.h"
#include "hosts/integration/embedded_engine.h"
#include "hosts/native/native_files.h"
#include "hosts/vault/embedded_vault.h"
#include "nls/embedded_texts.h"
#include "vault_structure.h"
#include "windows/counter_item.h"
#include "windows/figures.h"
#include "windows/other_process.h"

namespace quintara::bench {
namespace {

class World final : public AnyObject {
 public:
  explicit World(const std::string& folder) {
    std::filesystem::create_directories(ToPath(folder) / "work");
    VaultPlan plan;
    plan.folder = folder + "\\quintara.vault";
    for (const auto& [path, bytes] : EmbeddedTexts()) plan.texts[std::string(path)] = bytes;
    InitVault(plan, *files_);
    EmbeddedVault::Options options;
    options.gate = gate_;
    options.files = files_;
    options.workDirectory = folder + "\\work";
    vault_ = std::make_unique<EmbeddedVault>(plan.folder, options);
    cad_.RegisterItem("HIXEngine", MakeRef<EmbeddedEngine>(EmbeddedEngine::Surroundings{
                                       gate_, Session(), cad_.Application(), &vault_->Integration(), nullptr}));
    product_ = MakeStructure(*vault_, kNodes - 1);
    Session()->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckIn(product_, nullptr, false);
  }

  Ref<AnyObject> GetItem(const std::string& name) override {
    if (name == "Veldora.VdApplication") return vault_->Application();
    if (name == "ZORVA.Application") return cad_.Application();
    if (name == "Veldora.VdClientContext") return vault_->NewClientContext();
    if (name == "Veldora.VdTranslator") return vault_->NewTranslator();
    if (name == kWorldCounter) return counter_;
    Demand(name == kSelection, "an unknown item is asked for: " + name);
    const auto objects = Session()->ObjectStore()->NewObjects();
    objects->Add(product_);
    return objects->Records();
  }

 private:
  Ref<veldora::VdSession> Session() { return vault_->Application()->Engine()->Sessions(0); }

  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  std::shared_ptr<NativeContents> files_ = std::make_shared<NativeContents>(gate_);
  std::unique_ptr<EmbeddedVault> vault_;
  CadHost cad_{{gate_, files_, {}}};
  Ref<veldora::VdObject> product_;
  Ref<AnyObject> counter_ = MakeRef<CounterItem>();
};

}  // namespace

Ref<AnyObject> NewWorld(const std::string& folder) {
  return MakeRef<World>(folder);
}

int ServeWorld(const std::string& folder, const std::string& classText) {
  return ServeUntilTheEnd(NewWorld(folder), classText);
}

}  // namespace quintara::bench
