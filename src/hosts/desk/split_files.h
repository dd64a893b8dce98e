#pragma once

#include <string>

#include "access/contracts/file_system.h"
#include "access/contracts/geometry.h"
#include "hosts/vault/assembly_import.h"

namespace quintara {

// The files that an assembly was split into: a part file or product document for each definition, and beside it its
// light representation.

/// The name of the file of a definition, "PART NUMBER.stp" or "PART NUMBER.ZVAProduct".
std::string FileOfDefinition(const AssemblyStructure::Definition& definition);
/// The name of its light representation, "PART NUMBER.lwt".
std::string LightFileOfDefinition(const AssemblyStructure::Definition& definition);

/// What a vault is to take of the files of `structure` that stand in `folder`.
AssemblyPlan PlanOfStructure(const AssemblyStructure& structure, const std::string& folder);

/// The same from the files alone, without any geometry. `path` is that of the root's product document or part file,
/// or of a folder with the files of one tree. The files of components are where their product documents say. A light
/// file is taken where there is one, "PART NUMBER.lwt" or the file's name and ".lwt".
/// Fails, naming the file, for one that is missing or can't be read, a product that holds itself, a component that is
/// a light file, two files of one part number, a STEP file that holds an assembly, and a folder with no tree or
/// several.
AssemblyPlan PlanOfFiles(const std::string& path, FileContents& files);

}  // namespace quintara
