#pragma once

#include <vector>

#include "access/contracts/integration.h"
#include "access/contracts/veldora.h"

namespace quintara::integration {

/// What a check-out to the latest revisions left.
struct Refreshed {
  Ref<veldora::VdObject> root;                ///< the revision that can be changed now
  std::vector<Ref<veldora::VdObject>> taken;  ///< all that was made changeable, components first
};

/// Points the structure below `root` at the latest revisions, from below, and makes the root and each
/// assembly that held an outdated component changeable. Fails where the configuration in force doesn't
/// permit what is needed, and for what another user has taken. In a transaction.
Refreshed RefreshStructure(const Ref<veldora::VdObject>& root, const Ref<veldora::VdSession>& session,
                           IntegrationVault& vault);

/// Whether a configuration value under the user's settings reads so.
bool Permits(IntegrationVault& vault, const char* path, const char* value);

}  // namespace quintara::integration
