#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "quintara/component_choice.h"

namespace quintara {

class CommandContext;

// One function a verb. A failure is thrown and ends the verb, a WrongUse before anything was
// changed; results go to the context.

/// Of which assemblies an import into the vault writes the matrices.
enum class ImportedMatrices { kAll, kRoot, kNone };

struct ImportOptions {
  std::string file;
  std::optional<ImportedMatrices> matrices;  ///< nothing: all of them, where there is a vault
  bool replace = false;
  bool dryRun = false;
};
/// Brings a STEP assembly into the vault, or splits it into the work directory where there is none.
void RunImport(CommandContext& context, const ImportOptions& options);

struct TreeOptions {
  std::vector<std::string> products;
  std::optional<int> depth;
};
/// Prints the structure of products and STEP files.
void RunTree(CommandContext& context, const TreeOptions& options);

struct MatrixOptions {
  std::string product;
  std::string output;  ///< empty: "PART NUMBER Matrix.xml" in the work directory
  bool replace = false;
  bool dryRun = false;
};
/// Writes the matrix of a product.
void RunMatrix(CommandContext& context, const MatrixOptions& options);

struct FlattenOptions {
  std::string product;
  std::string name;  ///< empty: the product's part number
  std::vector<ChoiceRule> rules;
  bool replace = false;
  bool dryRun = false;
};
/// Makes a flat work-in-progress product with the chosen components at the origin.
void RunFlatten(CommandContext& context, const FlattenOptions& options);

struct PositionOptions {
  std::string product;
  std::string matrix;
  bool allInstances = false;    ///< a component for each instance in the matrix
  bool firstInstances = false;  ///< one component for each part number, at its first instance
  bool dryRun = false;
};
/// Places the components of a flat product from a matrix.
void RunPosition(CommandContext& context, const PositionOptions& options);

struct ScatterOptions {
  std::string product;
  std::uint64_t seed = 1;
  double distance = 500;
  bool dryRun = false;
};
/// Moves the components of a flat product to random positions.
void RunScatter(CommandContext& context, const ScatterOptions& options);

struct CompareOptions {
  std::string product;
  std::string original;
};
/// Compares the positions in a flat product with those of the original STEP file.
void RunCompare(CommandContext& context, const CompareOptions& options);

struct ExportOptions {
  std::string product;
  std::string output;
  bool replace = false;
  bool dryRun = false;
};
/// Writes a product as STEP or binary glTF.
void RunExport(CommandContext& context, const ExportOptions& options);

struct RenderOptions {
  std::vector<std::string> products;
  std::vector<std::string> captions;
  std::string output;
  int width = 0;  ///< 0: by the number of products
  int height = 700;
  bool replace = false;
  bool dryRun = false;
};
/// Draws products and STEP files side by side.
void RunRender(CommandContext& context, const RenderOptions& options);

}  // namespace quintara
