#pragma once

#include <optional>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "access/contracts/position_matrix.h"

namespace quintara {

/// One component of a flat product, as far as it matters where it stands.
struct FlatComponent {
  std::string name;  ///< the full path of its instance in the original, once it was placed
  std::string partNumber;
  bool isLight = false;
  PositionMatrix position = kIdentityPosition;
};

enum class Verdict {
  kInPlace,
  kOutOfPlace,  ///< further off than the bound
  kMissing,     ///< an instance that no component stands for
  kSurplus,     ///< a component that stands for no instance, or for one that another stands for
  kOtherPart,   ///< a component of another part number than the instance
};

struct ComparedInstance {
  std::string name;
  Verdict verdict;
  std::optional<bool> isLight;      ///< unknown for a missing component
  std::optional<double> deviation;  ///< millimetres; known where both positions are
};

struct PositionComparison {
  std::vector<ComparedInstance> instances;  ///< those of the original in its order, then the surplus
  double bound;                             ///< millimetres
};

/// How far a point of an assembly of that size can be moved by the difference of two positions.
double Deviation(const PositionMatrix& left, const PositionMatrix& right, double size);

/// Compares the components of a flat product with the occurrences of the original. Expected is
/// each occurrence of a part number that the flat product has, unless something above it is
/// expected already. The bound is 1e-9 of `size`, the size of the assembly in millimetres.
PositionComparison ComparePositions(const std::vector<PlacedOccurrence>& occurrences, double size,
                                    const std::vector<FlatComponent>& components);

}  // namespace quintara
