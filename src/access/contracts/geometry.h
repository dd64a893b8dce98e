#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"

namespace quintara {

/// Told while long work goes on: how much is done, from 0 to 1, and what is being done.
using Progress = std::function<void(double fraction, const std::string& what)>;

/// The tree of a STEP assembly as the CAD host takes it: names made unique and usable.
struct AssemblyStructure {
  struct Instance {
    std::string name;         ///< unique under its parent, without backslash
    std::size_t definition;   ///< index in `definitions`
    PositionMatrix position;  ///< in the parent's frame, millimetres
  };
  struct Definition {
    std::string partNumber;  ///< unique over all definitions without regard to case, usable as a file name
    bool isAssembly;
    std::vector<Instance> children;  ///< empty for a part
  };
  /// One name that the file gives and that was changed.
  struct NameChange {
    std::string kind;  ///< "part number" or "instance name"
    std::string from;  ///< empty for an unnamed one
    std::string to;
    std::string reason;
  };

  std::vector<Definition> definitions;  ///< children stand before what holds them
  std::size_t root;                     ///< index in `definitions`
  std::vector<NameChange> changes;
  double size;  ///< diagonal of the box around the whole, millimetres
};

/// One leaf or sub-assembly occurrence of the original file, placed by the geometry kernel itself.
struct PlacedOccurrence {
  std::string path;  ///< part number of the root, then instance names, parted by backslashes
  std::string partNumber;
  bool isAssembly;
  PositionMatrix position;  ///< in the frame of the root, millimetres
};

/// An opened STEP assembly, split on demand.
class SplitAssembly {
 public:
  virtual ~SplitAssembly() = default;

  virtual const AssemblyStructure& Structure() const = 0;
  /// Every occurrence below the root, parents before children, in the order of the tree.
  virtual std::vector<PlacedOccurrence> Occurrences() const = 0;
  /// Writes one part as STEP, its exact geometry, alone. Equal parts give equal bytes.
  virtual void WritePart(std::size_t definition, const std::string& path) const = 0;
  /// Writes the light representation, a binary glTF mesh, of a part or of a whole assembly, with
  /// its part number in `asset.extras`.
  virtual void WriteLight(std::size_t definition, const std::string& path) const = 0;
};

/// What a CAD product looks like to export and pictures: files put in place.
struct SceneNode {
  std::string name;
  std::string partNumber;
  PositionMatrix position = kIdentityPosition;  ///< in the parent's frame
  std::string file;  ///< .stp, .step or .lwt of a leaf; empty for a node that only holds children
  std::vector<SceneNode> children;
};

/// One picture beside others, with a line of text below it.
struct PictureView {
  std::string caption;
  SceneNode scene;
};

/// The geometry kernel. A failure names the file at fault; an unfinished file never stays behind
/// and an old one survives until the new one is complete.
class Geometry {
 public:
  virtual ~Geometry() = default;

  /// Reads STEP AP203, AP214 or AP242, an assembly of several files included. A file that is
  /// damaged, however badly, is a failure of this call.
  virtual std::unique_ptr<SplitAssembly> ReadAssembly(const std::string& path, const Progress& progress) = 0;
  /// Writes a scene as STEP. Light components become facets. Gives a line for each thing that
  /// could not be written as it stands, such as a singular or mirrored position.
  virtual std::vector<std::string> WriteStep(const SceneNode& scene, const std::string& path,
                                             const Progress& progress) = 0;
  /// The same as binary glTF.
  virtual std::vector<std::string> WriteGltf(const SceneNode& scene, const std::string& path,
                                             const Progress& progress) = 0;
  /// Writes a PNG picture of the scenes side by side, without needing a display.
  virtual void WritePicture(const std::vector<PictureView>& views, const std::string& path, int width, int height) = 0;
};

}  // namespace quintara
