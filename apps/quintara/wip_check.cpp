#include "quintara/wip_check.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "base/failure.h"
#include "base/xml.h"
#include "matrix/position_arithmetic.h"
#include "matrix/xml_element.h"

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

XMLElement ElementOf(XmlNode node) {
  XMLElement element;
  for (auto attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    const auto field = FieldOf(attribute.name());
    if (field != kNoField && !StoreField(element, field, attribute.value())) {
      throw Failure(failure::kTypeMismatch, "'" + std::string(attribute.value()) + "' in a matrix is no number");
    }
  }
  return element;
}

PositionMatrix PositionOf(const XMLElement& element) {
  PositionMatrix position{};
  std::ranges::transform(kXMLElementNumbers, position.begin(), [&](auto number) { return element.*number; });
  return position;
}

// The chains are composed upward, as positioning does: sums in another order would give other bits.
PositionMatrix Composed(XmlNode node) {
  auto position = PositionOf(ElementOf(node));
  for (auto above = node.parent(); above.type() == pugi::node_element; above = above.parent()) {
    position = Compose(position, PositionOf(ElementOf(above)));
  }
  return position;
}

// The element behind `node`, with what is below it or without.
XmlNode Behind(XmlNode node, bool withBelow) {
  const auto element = [](XmlNode at) {
    while (at && at.type() != pugi::node_element) at = at.next_sibling();
    return at;
  };
  if (withBelow) {
    if (const auto child = element(node.first_child())) return child;
  }
  for (; node.type() == pugi::node_element; node = node.parent()) {
    if (const auto sibling = element(node.next_sibling())) return sibling;
  }
  return {};
}

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

}  // namespace

std::vector<MatrixInstance> InstancesFor(const std::vector<std::string>& partNumbers, const std::string& matrix) {
  XmlDocument document;
  if (!document.Parse(matrix)) throw Failure(failure::kInvalidFormat, "the matrix: " + document.ParseError().reason);
  const std::set<std::string, std::less<>> wanted(partNumbers.begin(), partNumbers.end());
  std::vector<MatrixInstance> instances;
  bool isFound = false;
  for (auto node = document.Root(); node; node = Behind(node, !isFound)) {
    const auto partNumber = ElementOf(node).PartNumber;
    isFound = wanted.contains(partNumber);
    if (isFound) instances.push_back({std::string(partNumber), Composed(node)});
  }
  return instances;
}

std::vector<std::string> Shortcomings(const std::vector<AskedComponent>& asked, bool allInstances,
                                      const std::vector<WipComponent>& components,
                                      const std::vector<MatrixInstance>& instances) {
  std::vector<std::string> lines;
  const auto tallies = TalliesOf(asked, components, instances);
  for (const auto& [partNumber, tally] : tallies) {
    if (tally.asked == 0) continue;
    const int wanted = allInstances ? std::max(tally.instances, 1) : tally.asked;
    if (tally.there < wanted) lines.push_back(MissingText(partNumber, wanted, tally.there));
  }
  for (const auto& component : components) {
    if (component.position != kIdentityPosition) continue;
    const auto& tally = tallies.at(component.partNumber);
    if (tally.instances == 0 || tally.atOrigin <= tally.instancesAtOrigin) continue;
    lines.push_back("'" + component.partNumber + "' (" + component.name +
                    ") is still at the origin, though the matrix places it elsewhere");
  }
  return lines;
}

}  // namespace quintara
