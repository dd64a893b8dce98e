#include "quintara/wip_check.h"

#include <algorithm>
#include <map>

namespace quintara {
namespace {

// What is counted for each part number.
struct Tally {
  int asked = 0;
  int there = 0;
  int atOrigin = 0;
  int instances = 0;
  int instancesAtOrigin = 0;
};

std::map<std::string, Tally> TalliesOf(const std::vector<AskedComponent>& asked,
                                       const std::vector<WipComponent>& components,
                                       const std::vector<MatrixInstance>& instances) {
  std::map<std::string, Tally> tallies;
  for (const auto& component : asked) ++tallies[component.partNumber].asked;
  for (const auto& component : components) {
    ++tallies[component.partNumber].there;
    if (component.position == kIdentityPosition) ++tallies[component.partNumber].atOrigin;
  }
  for (const auto& instance : instances) {
    ++tallies[instance.partNumber].instances;
    if (instance.position == kIdentityPosition) ++tallies[instance.partNumber].instancesAtOrigin;
  }
  return tallies;
}

std::string MissingText(const std::string& partNumber, int wanted, int there) {
  if (wanted == 1) return "'" + partNumber + "' is missing";
  return std::to_string(wanted - there) + " of " + std::to_string(wanted) + " '" + partNumber + "' are missing";
}

// Why a component doesn't belong at the origin; empty where it may.
std::string WhyNotThere(const Tally& tally) {
  if (tally.instances == 0) return tally.asked == 0 ? "" : "since the matrix has no place for it";
  return tally.atOrigin > tally.instancesAtOrigin ? "though the matrix places it elsewhere" : "";
}

}  // namespace

SoughtInstances SoughtFor(const std::vector<AskedComponent>& asked, const std::vector<WipComponent>& components) {
  SoughtInstances sought;
  for (const auto& component : components) sought.components.insert(component.partNumber);
  sought.partNumbers = sought.components;
  for (const auto& component : asked) sought.partNumbers.insert(component.partNumber);
  return sought;
}

std::vector<std::string> Shortcomings(const std::vector<AskedComponent>& asked, bool allInstances,
                                      const std::vector<WipComponent>& components,
                                      const std::optional<std::vector<MatrixInstance>>& instances) {
  std::vector<std::string> lines;
  const auto tallies = TalliesOf(asked, components, instances.value_or(std::vector<MatrixInstance>()));
  for (const auto& [partNumber, tally] : tallies) {
    if (tally.asked == 0) continue;
    const int wanted = allInstances ? std::max(tally.instances, 1) : tally.asked;
    if (tally.there < wanted) lines.push_back(MissingText(partNumber, wanted, tally.there));
  }
  for (const auto& component : components) {
    if (!instances || component.position != kIdentityPosition) continue;
    const auto why = WhyNotThere(tallies.at(component.partNumber));
    if (!why.empty()) {
      lines.push_back("'" + component.partNumber + "' (" + component.name + ") is still at the origin, " + why);
    }
  }
  return lines;
}

}  // namespace quintara
