#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "access/contracts/platform.h"
#include "hosts/vault/assembly_import.h"

namespace quintara {

/// An assembly that an import has stored, all but checked in: nothing holds it yet.
struct StoredAssembly {
  Ref<veldora::VdObject> object;
  std::size_t definition;
  std::string file;  ///< its path, where the files of all that it holds are beside it
  bool isRoot;
};

struct VaultImportRequest {
  std::string stepFile;  ///< absolute path
  bool dryRun = false;   ///< splits and compares, changes nothing in the vault
  /// Called for each assembly that was added or revised; what it throws ends the import. May be empty.
  std::function<void(const StoredAssembly& assembly)> beforeCheckIn = {};
};

/// What an import did, or would do.
struct VaultImportReport {
  AssemblyStructure structure;
  std::vector<ImportedObject> objects;  ///< one for each definition
};

/// Splits a STEP file into a folder of its own, which goes at the end, and brings the assembly into the
/// vault from there, as one transaction. Its classes are the first ones of the site's settings. Nothing is written
/// anywhere else, but by `beforeCheckIn`.
VaultImportReport ImportIntoVault(const VaultImportRequest& request, EmbeddedVault& vault, Geometry& geometry,
                                  Platform& platform, const Progress& progress);

}  // namespace quintara
