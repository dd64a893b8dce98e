#include "quintara/position_comparison.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace quintara {
namespace {

constexpr double kRelativeBound = 1e-9;

double RowDistance(const PositionMatrix& left, const PositionMatrix& right, std::size_t first) {
  return std::hypot(left[first] - right[first], left[first + 1] - right[first + 1], left[first + 2] - right[first + 2]);
}

bool LiesBelow(const std::string& path, const std::string& above) {
  return path.size() > above.size() && path.starts_with(above) && path[above.size()] == '\\';
}

std::vector<const PlacedOccurrence*> Expected(const std::vector<PlacedOccurrence>& occurrences,
                                              const std::vector<FlatComponent>& components) {
  std::unordered_set<std::string> partNumbers;
  for (const auto& component : components) partNumbers.insert(component.partNumber);
  std::vector<const PlacedOccurrence*> expected;
  for (const auto& occurrence : occurrences) {
    // Parents come before children, so what lies below the one expected last follows it at once.
    if (!expected.empty() && LiesBelow(occurrence.path, expected.back()->path)) continue;
    if (partNumbers.contains(occurrence.partNumber)) expected.push_back(&occurrence);
  }
  return expected;
}

ComparedInstance Compared(const PlacedOccurrence& occurrence, const FlatComponent& component, double size,
                          double bound) {
  const double deviation = Deviation(occurrence.position, component.position, size);
  auto verdict = deviation <= bound ? Verdict::kInPlace : Verdict::kOutOfPlace;
  if (component.partNumber != occurrence.partNumber) verdict = Verdict::kOtherPart;
  return {occurrence.path, verdict, component.isLight, deviation};
}

}  // namespace

double Deviation(const PositionMatrix& left, const PositionMatrix& right, double size) {
  double turned = 0;
  for (std::size_t row = 0; row < 9; row += 3) turned += RowDistance(left, right, row);
  return RowDistance(left, right, 9) + turned * size;
}

PositionComparison ComparePositions(const std::vector<PlacedOccurrence>& occurrences, double size,
                                    const std::vector<FlatComponent>& components) {
  PositionComparison comparison{{}, kRelativeBound * size};
  std::unordered_map<std::string, std::vector<const FlatComponent*>> byName;
  for (const auto& component : components) byName[component.name].push_back(&component);
  std::unordered_set<const FlatComponent*> used;
  for (const auto* occurrence : Expected(occurrences, components)) {
    const auto found = byName.find(occurrence->path);
    if (found == byName.end()) {
      comparison.instances.push_back({occurrence->path, Verdict::kMissing, {}, {}});
      continue;
    }
    used.insert(found->second.front());
    comparison.instances.push_back(Compared(*occurrence, *found->second.front(), size, comparison.bound));
  }
  for (const auto& component : components) {
    if (!used.contains(&component)) {
      comparison.instances.push_back({component.name, Verdict::kSurplus, component.isLight, {}});
    }
  }
  return comparison;
}

}  // namespace quintara
