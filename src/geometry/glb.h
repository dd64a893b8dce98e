#pragma once

#include <string>
#include <vector>

namespace quintara {

/// Looks at a binary glTF file from outside: fails, naming it and the reason, when it is missing,
/// is none or is cut off.
void CheckGlb(const std::string& path);

/// Whether there is any mesh in a binary glTF file.
bool HasMeshes(const std::string& path);

/// The part numbers of a tree, in the order of the nodes of its file.
struct NumberedNode {
  std::string partNumber;
  std::vector<NumberedNode> children;
};

/// Gives each node of a binary glTF file its part number, as `extras`; `root` is the only root of its
/// scene. Nodes that the file does not have are passed over.
void NumberNodes(const std::string& path, const NumberedNode& root);

/// Writes a binary glTF file with one node and no mesh, for a part without geometry.
void WriteEmptyGlb(const std::string& path, const std::string& partNumber);

}  // namespace quintara
