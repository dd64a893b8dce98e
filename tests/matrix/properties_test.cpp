#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <string>

#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

// Any finite double, of any size, and now and then one of those that go wrong first.
double AnyFinite(std::mt19937_64& random) {
  static const double kSpecial[] = {0.0, -0.0, 1.0,          -1.0, 5e-324, -5e-324, 1.7976931348623157e308,
                                    0.1, 1e15, 123456789.123};
  if (random() % 4 == 0) return kSpecial[random() % std::size(kSpecial)];
  for (;;) {
    const auto bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    if (std::isfinite(value)) return value;
  }
}

double Moderate(std::mt19937_64& random) {
  return std::uniform_real_distribution<double>(-1.5, 1.5)(random);
}

class TreeMaker {
 public:
  TreeMaker(unsigned seed, double (*number)(std::mt19937_64&)) : random_(seed), number_(number) {}

  Node Make(int depth = 0) {
    Node node{"P" + std::to_string(random_() % 9), "n" + std::to_string(++names_), {}, {}};
    for (auto& each : node.position) each = number_(random_);
    const auto children = depth < 5 ? random_() % (depth == 0 ? 9 : 4) : 0;
    for (std::uint64_t i = 0; i < children; ++i) node.children.push_back(Make(depth + 1));
    return node;
  }

 private:
  std::mt19937_64 random_;
  double (*number_)(std::mt19937_64&);
  int names_ = 0;
};

using Positions = std::vector<PositionMatrix>;

// Every instance with the position of its chain, in tree order, by part number.
void Collect(const Node& node, std::vector<const Node*>& chain, std::map<std::string, Positions>& placed) {
  chain.push_back(&node);
  PositionMatrix c = node.position;
  for (auto above = chain.rbegin() + 1; above != chain.rend(); ++above) {
    const auto& p = (*above)->position;
    PositionMatrix r;
    for (std::size_t i = 0; i < 9; i += 3) {
      for (std::size_t k = 0; k < 3; ++k) r[i + k] = c[i] * p[k] + c[i + 1] * p[k + 3] + c[i + 2] * p[k + 6];
    }
    for (std::size_t k = 0; k < 3; ++k) r[9 + k] = p[9 + k] + c[9] * p[k] + c[10] * p[k + 3] + c[11] * p[k + 6];
    c = r;
  }
  if (node.children.empty()) placed[node.partNumber].push_back(c);
  for (const auto& child : node.children) Collect(child, chain, placed);
  chain.pop_back();
}

// Part numbers of assemblies differ from those of parts, so that no part is hidden in one.
void NameAssembliesApart(Node& node) {
  if (!node.children.empty()) node.partNumber = "ASM " + node.name;
  for (auto& child : node.children) NameAssembliesApart(child);
}

void ExpectElementOf(const Node& node, XmlNode element, const std::string& above) {
  const auto fullName = above.empty() ? node.name : above + "\\" + node.name;
  ASSERT_STREQ(element.attribute("PART_NUMBER").value(), node.partNumber.c_str());
  ASSERT_EQ(element.attribute("FULL_INSTANCE_NAME").value(), fullName);
  static const char* const kNames[] = {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};
  PositionMatrix read;
  for (std::size_t i = 0; i < 12; ++i) read[i] = std::strtod(element.attribute(kNames[i]).value(), nullptr);
  ASSERT_THAT(read, HasBitsOf(node.position));
  auto at = element.first_child();
  for (const auto& child : node.children) {
    ASSERT_NO_FATAL_FAILURE(ExpectElementOf(child, at, fullName));
    at = at.next_sibling();
  }
  ASSERT_FALSE(at);
}

TEST(MatrixFile, HoldsTheTreeBitForBit) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    MatrixBench bench;
    auto tree = TreeMaker(seed, AnyFinite).Make();
    tree.position = kIdentityPosition;
    tree.name = tree.partNumber;
    bench.GivenProduct(tree);

    ASSERT_TRUE(bench.Create());

    XmlDocument document;
    ASSERT_TRUE(document.Parse(bench.folder.Read("matrix.xml"))) << document.ParseError().reason;
    ASSERT_NO_FATAL_FAILURE(ExpectElementOf(tree, document.Root(), ""));
  }
}

TEST(MatrixFile, GivesBackToTheReaderWhatTheWriterWrote) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    MatrixBench bench;
    Node tree{"ROOT", "ROOT", kIdentityPosition, {TreeMaker(seed, AnyFinite).Make()}};
    tree.children[0].partNumber = "X";
    bench.GivenProduct(tree);
    ASSERT_TRUE(bench.Create());
    bench.GivenFlat({"X"});

    ASSERT_TRUE(bench.Process());

    EXPECT_EQ(bench.Positions()[0], tree.children[0].position) << "under the identity nothing is added but zeros";
  }
}

TEST(MatrixFile, PlacesAFlatProductWhereTheChainsLead) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    MatrixBench bench;
    Node tree{"ROOT", "ROOT", kIdentityPosition, {TreeMaker(seed, Moderate).Make()}};
    NameAssembliesApart(tree);
    std::map<std::string, Positions> placed;
    std::vector<const Node*> chain;
    Collect(tree, chain, placed);
    std::vector<std::string> partNumbers;
    for (const auto& [partNumber, positions] : placed) partNumbers.push_back(partNumber);
    bench.GivenProduct(tree);
    ASSERT_TRUE(bench.Create());
    bench.GivenFlat(partNumbers);

    ASSERT_TRUE(bench.PositionAll(true));
    const auto made = bench.Components();
    for (int i = 1; i <= static_cast<int>(made.size()); ++i) bench.Child(i)->Position()->SetComponents(At(i, -i, 0));
    ASSERT_TRUE(bench.Process());
    const auto again = bench.Components();

    std::map<std::string, Positions> found;
    for (const auto& component : made) found[component.partNumber].push_back(component.position);
    ASSERT_EQ(found.size(), placed.size());
    for (const auto& [partNumber, positions] : placed) {
      ASSERT_EQ(found[partNumber].size(), positions.size()) << partNumber;
      for (std::size_t i = 0; i < positions.size(); ++i) ASSERT_THAT(found[partNumber][i], HasBitsOf(positions[i]));
    }
    ASSERT_EQ(again, made);
  }
}

}  // namespace
}  // namespace quintara::test
