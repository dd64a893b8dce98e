#pragma once

#include <string>

#include "access/contracts/any_object.h"
#include "base/ref.h"

namespace quintara::bench {

inline constexpr int kNodes = 1'000;

/// A vault with a checked-in product of so many nodes, and a CAD host, in a new folder. Its items are those of the
/// program names "Veldora.VdApplication", "ZORVA.Application", "Veldora.VdClientContext" and "Veldora.VdTranslator",
/// and these two.
Ref<AnyObject> NewWorld(const std::string& folder);
/// What the vault's user has selected: the product.
inline constexpr auto kSelection = "Selection";
/// See `CounterItem`.
inline constexpr auto kWorldCounter = "RequestCounter";

/// The task of the other process that serves such a world. Behind it stands the folder.
inline constexpr auto kServeWorld = "--serve-world";
int ServeWorld(const std::string& folder, const std::string& classText);

}  // namespace quintara::bench
