#pragma once

#include <memory>

#include "access/contracts/integration.h"
#include "hosts/cad/cad_host.h"
#include "hosts/gate/gate.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara {

/// Makes the integration engine between a vault and a CAD host what the host's item "HIXEngine" is. All of these must
/// outlive the engine, which serves until `DisconnectEngine`.
void ConnectEngine(const std::shared_ptr<Gate>& gate, EmbeddedVault& vault, CadHost& host, IntegrationCad& cad);

/// Makes the item nothing: an engine that isn't there. The host would keep the engine, and the engine the host.
void DisconnectEngine(CadHost& host);

}  // namespace quintara
