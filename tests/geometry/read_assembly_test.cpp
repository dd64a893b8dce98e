#include <set>

#include "base/text.h"
#include "geometry/geometry_fixture.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

std::size_t DepthOf(const AssemblyStructure& structure, std::size_t definition) {
  std::size_t depth = 0;
  for (const auto& child : structure.definitions[definition].children) {
    depth = std::max(depth, 1 + DepthOf(structure, child.definition));
  }
  return depth;
}

std::vector<std::string> PartNumbers(const AssemblyStructure& structure) {
  std::vector<std::string> names;
  for (const auto& definition : structure.definitions) names.push_back(definition.partNumber);
  return names;
}

bool operator==(const AssemblyStructure::Instance& a, const AssemblyStructure::Instance& b) {
  return a.name == b.name && a.definition == b.definition && a.position == b.position;
}

void ExpectEqual(const AssemblyStructure& a, const AssemblyStructure& b) {
  ASSERT_EQ(a.definitions.size(), b.definitions.size());
  for (std::size_t i = 0; i < a.definitions.size(); ++i) {
    EXPECT_EQ(a.definitions[i].partNumber, b.definitions[i].partNumber);
    EXPECT_EQ(a.definitions[i].isAssembly, b.definitions[i].isAssembly);
    EXPECT_TRUE(std::ranges::equal(a.definitions[i].children, b.definitions[i].children,
                                   [](const auto& x, const auto& y) { return x == y; }));
  }
  EXPECT_EQ(a.root, b.root);
  EXPECT_EQ(a.size, b.size);
  EXPECT_EQ(a.changes.size(), b.changes.size());
}

class ReadAssembly : public GeometryTest {};
class ReadEachAssembly : public GeometryTest, public testing::WithParamInterface<std::string> {};
class ReadEachPart : public GeometryTest, public testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Real, ReadEachAssembly, testing::ValuesIn(AssemblyFiles()), NameOfFile);
INSTANTIATE_TEST_SUITE_P(Real, ReadEachPart, testing::ValuesIn(SinglePartFiles()), NameOfFile);

TEST_P(ReadEachAssembly, HasPartNumbersUniqueWithoutRegardToCase) {
  const auto assembly = Read(DataFile(GetParam()));

  std::set<std::string> capitals;
  for (const auto& name : PartNumbers(assembly->Structure()))
    EXPECT_TRUE(capitals.insert(Capitals(name)).second) << name;
}

TEST_P(ReadEachAssembly, HasInstanceNamesUniqueUnderTheirParent) {
  const auto assembly = Read(DataFile(GetParam()));

  for (const auto& definition : assembly->Structure().definitions) {
    std::set<std::string> names;
    for (const auto& child : definition.children) EXPECT_TRUE(names.insert(child.name).second) << child.name;
  }
}

TEST_P(ReadEachAssembly, ListsChildrenBeforeWhatHoldsThem) {
  const auto assembly = Read(DataFile(GetParam()));

  const auto& definitions = assembly->Structure().definitions;
  for (std::size_t i = 0; i < definitions.size(); ++i) {
    EXPECT_NE(definitions[i].isAssembly, definitions[i].children.empty());
    for (const auto& child : definitions[i].children) EXPECT_LT(child.definition, i);
  }
}

TEST_P(ReadEachAssembly, GivesTheSameTwice) {
  const auto first = Read(DataFile(GetParam()));
  const auto second = Read(DataFile(GetParam()));

  ExpectEqual(first->Structure(), second->Structure());
}

TEST_P(ReadEachAssembly, PlacesOccurrencesWhereTheComposedPositionsSay) {
  const auto assembly = Read(DataFile(GetParam()));

  const auto placed = assembly->Occurrences();

  const auto composed = ComposedOccurrences(assembly->Structure());
  ASSERT_EQ(placed.size(), composed.size());
  for (std::size_t i = 0; i < placed.size(); ++i) {
    EXPECT_EQ(placed[i].path, composed[i].path);
    EXPECT_EQ(placed[i].partNumber, composed[i].partNumber);
    EXPECT_EQ(placed[i].isAssembly, composed[i].isAssembly);
    EXPECT_TRUE(Near(placed[i].position, composed[i].position, 1e-9, assembly->Structure().size)) << placed[i].path;
  }
}

TEST_P(ReadEachPart, IsOnePartAndNoAssembly) {
  const auto assembly = Read(DataFile(GetParam()));

  const auto& structure = assembly->Structure();
  ASSERT_THAT(structure.definitions, SizeIs(1));
  EXPECT_EQ(structure.root, 0U);
  EXPECT_FALSE(structure.definitions[0].isAssembly);
  EXPECT_THAT(assembly->Occurrences(), IsEmpty());
}

TEST_F(ReadAssembly, CountsTheNodesOfTheExchangeForumsFirstAssembly) {
  const auto assembly = Read(DataFile("as1-oc-214.stp"));

  const auto& structure = assembly->Structure();
  const auto occurrences = assembly->Occurrences();
  EXPECT_EQ(occurrences.size() + 1, 28U);
  EXPECT_EQ(std::ranges::count(occurrences, false, &PlacedOccurrence::isAssembly), 18);
  EXPECT_EQ(DepthOf(structure, structure.root), 3U);
  EXPECT_THAT(PartNumbers(structure), UnorderedElementsAre("as1", "rod-assembly", "nut", "rod", "l-bracket-assembly",
                                                           "nut-bolt-assembly", "bolt", "l-bracket", "plate"));
  EXPECT_THAT(structure.changes, IsEmpty());
}

TEST_F(ReadAssembly, GivesTheThreeFormsOfOneAssemblyTheSameTree) {
  for (const auto* name : {"as1-oc-214.stp", "as1-tu-203.stp", "as1_pe_203.stp"}) {
    const auto assembly = Read(DataFile(name));

    EXPECT_EQ(assembly->Structure().definitions.size(), 9U) << name;
    EXPECT_EQ(assembly->Occurrences().size(), 27U) << name;
  }
}

TEST_F(ReadAssembly, TakesBodiesWithoutNamesForOnePart) {
  const auto assembly = Read(DataFile("as1_pe_203.stp"));

  const auto& structure = assembly->Structure();
  EXPECT_FALSE(structure.definitions[IndexOf(structure, "PLATE")].isAssembly);
  EXPECT_TRUE(structure.definitions[IndexOf(structure, "ROD_ASM")].isAssembly);
}

TEST_F(ReadAssembly, MakesDoubledInstanceNamesUniqueAndSaysSo) {
  const auto assembly = Read(DataFile("dm1-pe-214.stp"));

  const auto& structure = assembly->Structure();
  std::vector<std::string> names;
  for (const auto& child : structure.definitions[structure.root].children) names.push_back(child.name);
  EXPECT_THAT(names, ElementsAre("L-BRACKET", "NBA", "NBA_2", "NBA_3"));
  ASSERT_THAT(structure.changes, SizeIs(2));
  EXPECT_EQ(structure.changes[0].from, "NBA");
  EXPECT_EQ(structure.changes[0].to, "NBA_2");
}

TEST_F(ReadAssembly, TakesAnIdentifierWhereThereIsNoName) {
  const auto assembly = Read(DataFile("dm1-id-214.stp"));

  EXPECT_THAT(PartNumbers(assembly->Structure()), UnorderedElementsAre("dm1", "l-bracket", "bolt", "nut"));
}

TEST_F(ReadAssembly, FollowsAnAssemblyThroughItsFiles) {
  for (const auto* name : {"s1-c5-214/s1-c5-214.stp", "s1-tu-203/s1-tu-203.stp", "s1_pe_214/s1_pe_214.stp"}) {
    const auto assembly = Read(DataFile(name));

    EXPECT_EQ(assembly->Structure().definitions.size(), 13U) << name;
    EXPECT_NEAR(assembly->Structure().size, 527, 11) << name;
  }
}

TEST_F(ReadAssembly, FindsTheFilesOfAnAssemblyFromAnyFolder) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(DataFile("s1_pe_214"));

  const auto assembly = Read("s1_pe_214.stp");

  std::filesystem::current_path(before);
  EXPECT_NEAR(assembly->Structure().size, 532, 1);
}

TEST_F(ReadAssembly, MeasuresInMillimetresWhateverTheFileDoes) {
  const auto millimetres = BytesOf(DataFile("as1-oc-214.stp"));
  auto metres = millimetres;
  for (auto at = metres.find(".MILLI."); at != std::string::npos; at = metres.find(".MILLI."))
    metres.replace(at, 7, "$");

  const auto first = ReadText(millimetres);
  const auto second = ReadText(metres);

  EXPECT_NEAR(second->Structure().size, 1000 * first->Structure().size, 1e-3 * second->Structure().size);
  EXPECT_NEAR(second->Structure().definitions.back().children.front().position[10],
              1000 * first->Structure().definitions.back().children.front().position[10], 1e-6);
}

TEST_F(ReadAssembly, TellsItsProgress) {
  std::vector<double> told;

  geometry_->ReadAssembly(DataFile("as1-oc-214.stp"), [&](double fraction, const std::string& what) {
    EXPECT_NE(what, "");
    told.push_back(fraction);
  });

  EXPECT_GT(told.size(), 3U);
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_GE(told.front(), 0);
  EXPECT_LE(told.back(), 1);
}

TEST_F(ReadAssembly, LeavesNoTemporaryFile) {
  const auto filesOfOurs = [] {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
      const auto name = FromPath(entry.path().filename());
      if (name.starts_with("quintara-") && entry.is_regular_file()) names.insert(name);
    }
    return names;
  };
  const auto before = filesOfOurs();

  Read(DataFile("as1-oc-214.stp"));
  FailureOfText("ISO-10303-21;");

  EXPECT_EQ(filesOfOurs(), before);
}

TEST_F(ReadAssembly, MayBeCancelledByItsListener) {
  struct Cancelled {};
  const auto cancel = [](double, const std::string&) { throw Cancelled(); };

  EXPECT_THROW(geometry_->ReadAssembly(DataFile("as1-oc-214.stp"), cancel), Cancelled);
}

}  // namespace
}  // namespace quintara::test
