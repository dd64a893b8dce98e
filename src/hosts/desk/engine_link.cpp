#include "hosts/desk/engine_link.h"

#include "hosts/integration/embedded_engine.h"

namespace quintara {
namespace {

constexpr auto kEngine = "HIXEngine";

}  // namespace

void ConnectEngine(const std::shared_ptr<Gate>& gate, EmbeddedVault& vault, CadHost& host, IntegrationCad& cad) {
  const EmbeddedEngine::Surroundings between{gate, vault.Application()->Engine()->Sessions(0), host.Application(),
                                             &vault.Integration(), &cad};
  host.RegisterItem(kEngine, MakeRef<EmbeddedEngine>(between));
}

void DisconnectEngine(CadHost& host) {
  host.RegisterItem(kEngine, nullptr);
}

}  // namespace quintara
