#pragma once

#include <string>

#include "hosts/vault/embedded_vault.h"

namespace quintara {

/// The first class that a setting of the site names in its first value, "CLASS_PARTS" of the section "QD" for one;
/// empty for none. In whatever generation the vault has its columns. Fails for a class that the vault hasn't got.
std::string FirstClassOfSiteSetting(EmbeddedVault& vault, const std::string& section, const std::string& subject);

}  // namespace quintara
