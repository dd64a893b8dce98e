#include "bench_tree.h"

#include <cmath>
#include <random>
#include <set>
#include <unordered_map>

namespace quintara::bench {
namespace {

constexpr int kAssemblyLevels = 7;
constexpr int kSharedLeaves = 30'000;

class Maker {
 public:
  Maker(int elements, int branches, LeafParts parts, unsigned seed)
      : branches_(branches), parts_(parts), random_(seed) {
    int assemblies = 0;
    for (int level = 0, width = 1; level < kAssemblyLevels; ++level, width *= branches) {
      assemblies += width;
      lowest_ = width;
    }
    leaves_ = elements - assemblies;
    leafParts_ = std::max(1, static_cast<int>(elements / 6.5535) - assemblies);
  }

  BenchTree Make() {
    AddAssembly(-1, 0);
    FillStructure();
    return std::move(tree_);
  }

 private:
  int Add(int parent, const std::string& partNumber, bool isLeaf) {
    const auto number = static_cast<int>(tree_.nodes.size());
    tree_.nodes.push_back({parent, partNumber, partNumber + "." + std::to_string(number), RandomPosition(), isLeaf});
    return number;
  }

  void AddAssembly(int parent, int level) {
    const int self = Add(parent, "ASM-" + std::to_string(++assemblies_), false);
    if (level + 1 < kAssemblyLevels) {
      for (int i = 0; i < branches_; ++i) AddAssembly(self, level + 1);
      return;
    }
    const int share = leaves_ / lowest_ + (done_++ < leaves_ % lowest_ ? 1 : 0);
    for (int i = 0; i < share; ++i) Add(self, LeafPartNumber(), true);
  }

  std::string LeafPartNumber() {
    const int leaf = leafCount_++;
    if (parts_ == LeafParts::kNearlyAllTheSame && leaf < kSharedLeaves) return "PRT-COMMON";
    // Every part number occurs, the rest are drawn.
    const int part = leaf < leafParts_ ? leaf : std::uniform_int_distribution<int>(0, leafParts_ - 1)(random_);
    return "PRT-" + std::to_string(10'000 + part);
  }

  PositionMatrix RandomPosition() {
    std::uniform_real_distribution<double> angles(-3.14159, 3.14159);
    std::uniform_real_distribution<double> places(-500, 500);
    const double a = angles(random_);
    const double b = angles(random_);
    return {std::cos(a) * std::cos(b),
            std::sin(a) * std::cos(b),
            -std::sin(b),
            -std::sin(a),
            std::cos(a),
            0,
            std::cos(a) * std::sin(b),
            std::sin(a) * std::sin(b),
            std::cos(b),
            places(random_),
            places(random_),
            places(random_)};
  }

  // Leaves of one part number share a definition; each assembly has its own.
  void FillStructure() {
    auto& definitions = tree_.structure.definitions;
    std::vector<std::size_t> definitionOf(tree_.nodes.size());
    std::unordered_map<std::string, std::size_t> byPartNumber;
    for (std::size_t i = tree_.nodes.size(); i-- > 0;) {
      const auto& node = tree_.nodes[i];
      const auto [at, isNew] = byPartNumber.try_emplace(node.partNumber, definitions.size());
      if (isNew) definitions.push_back({node.partNumber, !node.isLeaf, {}});
      definitionOf[i] = at->second;
    }
    for (std::size_t i = 1; i < tree_.nodes.size(); ++i) {
      const auto& node = tree_.nodes[i];
      definitions[definitionOf[static_cast<std::size_t>(node.parent)]].children.push_back(
          {node.name, definitionOf[i], node.position});
    }
    tree_.structure.root = definitionOf[0];
  }

  int branches_;
  LeafParts parts_;
  std::mt19937 random_;
  BenchTree tree_;
  int leaves_ = 0;
  int leafParts_ = 0;
  int lowest_ = 0;
  int assemblies_ = 0;
  int leafCount_ = 0;
  int done_ = 0;
};

}  // namespace

std::vector<std::string> BenchTree::LeafInstances() const {
  std::vector<std::string> partNumbers;
  for (const auto& node : nodes) {
    if (node.isLeaf) partNumbers.push_back(node.partNumber);
  }
  return partNumbers;
}

std::vector<std::string> BenchTree::LeafPartNumbers() const {
  const auto all = LeafInstances();
  const std::set<std::string> once(all.begin(), all.end());
  return {once.begin(), once.end()};
}

BenchTree MakeTree(int elements, int branches, LeafParts parts, unsigned seed) {
  return Maker(elements, branches, parts, seed).Make();
}

AssemblyStructure FlatProduct(const std::vector<std::string>& partNumbers) {
  AssemblyStructure structure{};
  std::unordered_map<std::string, std::size_t> byPartNumber;
  AssemblyStructure::Definition root{"WIP~~BENCH", true, {}};
  for (const auto& partNumber : partNumbers) {
    const auto [at, isNew] = byPartNumber.try_emplace(partNumber, structure.definitions.size());
    if (isNew) structure.definitions.push_back({partNumber, false, {}});
    root.children.push_back({partNumber + "." + std::to_string(root.children.size()), at->second, kIdentityPosition});
  }
  structure.root = structure.definitions.size();
  structure.definitions.push_back(std::move(root));
  return structure;
}

}  // namespace quintara::bench
