#pragma once

#include <string>
#include <vector>

#include "hosts/vault/embedded_vault.h"

namespace quintara::bench {

/// A tree with so many links, each assembly with sixteen children; gives its root.
inline Ref<veldora::VdObject> MakeStructure(EmbeddedVault& vault, int links) {
  constexpr std::size_t kFan = 16;
  std::vector<Ref<veldora::VdObject>> level;
  vault.InTransaction([&] {
    const auto objects = static_cast<std::size_t>(links) + 1;
    const auto add = [&vault](std::size_t number) {
      return vault.AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "N" + std::to_string(number)}}, {});
    };
    level.push_back(add(0));
    for (std::size_t next = 0; level.size() < objects; ++next) {
      std::vector<EmbeddedVault::Component> components;
      while (components.size() < kFan && level.size() + components.size() < objects) {
        components.push_back({add(level.size() + components.size()), 1});
      }
      vault.SetStructure(level[next], components);
      for (const auto& component : components) level.push_back(component.object);
    }
  });
  return level.front();
}

}  // namespace quintara::bench
