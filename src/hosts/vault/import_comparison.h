#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/vault/assembly_import.h"
#include "hosts/vault/core.h"

namespace quintara::vault {

/// The newest revision of an object that has the part number of a definition.
struct PresentObject {
  std::int32_t id = 0;
  std::int16_t classId = 0;
  std::string identity;
  std::string partNumber;
  std::string revision;
  std::string cadName;  ///< of its file
  int state = 0;
  std::int64_t deposit = 0;  ///< 0 without a file
};

/// How a definition stands to the vault.
struct Comparison {
  const ClassInfo* info = nullptr;  ///< the class that it belongs to
  std::optional<PresentObject> present;
  bool changed = false;  ///< also where it isn't there
};

/// The definitions of `plan` against the vault, one each. Within a transaction; reads only. Fails for a
/// plan that is none, and where something stands in the way.
std::vector<Comparison> CompareWithVault(Core& core, const AssemblyPlan& plan, const AssemblyImportOptions& options);

}  // namespace quintara::vault
