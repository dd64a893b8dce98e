#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quintara {

// Binary glTF files. Every failure has number 321 and tells what is wrong, but doesn't know the file.

/// The bytes of a file that CheckGlb asks for.
inline constexpr std::size_t kGlbHead = 20;

/// Fails when a file whose first bytes, kGlbHead or more, are `head`, and which has `size` bytes in
/// all, is no binary glTF file, or when its length or its first chunk isn't the one that it names.
void CheckGlb(std::string_view head, std::uintmax_t size);

/// The part number that stands in the extras of the asset. Fails when there is none.
std::string PartNumberInGlb(std::string_view bytes);

/// Whether the file has any mesh.
bool HasMeshes(std::string_view bytes);

/// The part numbers of a tree, in the order of the nodes of its file.
struct NumberedNode {
  std::string partNumber;
  std::vector<NumberedNode> children;
};

/// The file with the part number of each node in the node's extras; `root` is the only root of its
/// scene. Nodes that the file does not have are passed over.
std::string GlbWithPartNumbers(std::string_view bytes, const NumberedNode& root);

/// A file with one node and no mesh, for a part without geometry.
std::string GlbWithoutMeshes(const std::string& partNumber);

}  // namespace quintara
