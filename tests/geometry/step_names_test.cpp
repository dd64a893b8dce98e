#include <cctype>
#include <set>

#include "geometry/geometry_fixture.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// Real assemblies with names put in that real ones have too, just not these.
class StepNames : public GeometryTest {
 protected:
  std::string As1() { return BytesOf(DataFile("as1-oc-214.stp")); }

  std::unique_ptr<SplitAssembly> ReadWithNut(const std::string& name) {
    return ReadText(Replaced(As1(), "PRODUCT('nut','nut'", "PRODUCT('nut','" + name + "'"));
  }
};

std::vector<std::string> InstanceNames(const SplitAssembly& assembly, const std::string& parent) {
  const auto& structure = assembly.Structure();
  std::vector<std::string> names;
  for (const auto& child : structure.definitions[IndexOf(structure, parent)].children) names.push_back(child.name);
  return names;
}

// Both files' data in one, with two roots; the second's entities get numbers of their own.
std::string Together(const std::string& first, const std::string& second) {
  auto data = second.substr(second.find("DATA;") + 5);
  for (auto at = data.find('#'); at != std::string::npos; at = data.find('#', at + 1)) {
    if (std::isdigit(static_cast<unsigned char>(data[at + 1])) != 0) data.insert(at + 1, "9000");
  }
  return first.substr(0, first.rfind("ENDSEC;")) + data;
}

TEST_F(StepNames, AreMadeUsableAsFileNames) {
  const auto assembly = ReadWithNut("M8/20 <x>. ");

  ASSERT_THAT(assembly->Structure().changes, SizeIs(1));
  EXPECT_EQ(assembly->Structure().changes[0].from, "M8/20 <x>. ");
  EXPECT_EQ(assembly->Structure().changes[0].to, "M8_20 _x___");
  EXPECT_EQ(IndexOf(assembly->Structure(), "M8_20 _x___"), 0U);
}

TEST_F(StepNames, AreNumberedWhenDoubled) {
  const auto assembly = ReadWithNut("PLATE");

  ASSERT_THAT(assembly->Structure().changes, SizeIs(1));
  EXPECT_EQ(assembly->Structure().changes[0].from, "plate");
  EXPECT_EQ(assembly->Structure().changes[0].to, "plate_2");
}

TEST_F(StepNames, AreReadAsUtf8) {
  const auto assembly = ReadWithNut("Mutter äß ねじ");

  EXPECT_NO_THROW(IndexOf(assembly->Structure(), "Mutter äß ねじ"));
}

TEST_F(StepNames, AreReadAsTheEightBitPageWhenTheyAreNoUtf8) {
  const auto assembly = ReadWithNut("M\xFCtter \x80");

  EXPECT_NO_THROW(IndexOf(assembly->Structure(), "Mütter €"));
}

TEST_F(StepNames, AreReadWithTheirEscapes) {
  const auto assembly = ReadWithNut("M\\X2\\00FC\\X0\\tter ''a''");

  EXPECT_NO_THROW(IndexOf(assembly->Structure(), "Mütter 'a'"));
}

TEST_F(StepNames, ArePlacesForNamelessParts) {
  const auto assembly = ReadText(Replaced(As1(), "PRODUCT('nut','nut'", "PRODUCT('',''"));

  ASSERT_THAT(assembly->Structure().changes, SizeIs(1));
  EXPECT_EQ(assembly->Structure().changes[0].from, "");
  EXPECT_EQ(assembly->Structure().changes[0].to, "PART_1");
  EXPECT_EQ(assembly->Structure().definitions.size(), 9U);
}

TEST_F(StepNames, OfInstancesLoseTheirBackslashes) {
  const auto assembly = ReadText(Replaced(As1(), "'nut_1'", "'a\\\\b'"));

  EXPECT_THAT(InstanceNames(*assembly, "rod-assembly"), ElementsAre("a_b", "nut_2", "rod_1"));
}

TEST_F(StepNames, OfNamelessInstancesAreTheirIdentifiers) {
  const auto assembly = ReadText(Replaced(As1(), "'1','nut_1'", "'1',''"));

  EXPECT_THAT(InstanceNames(*assembly, "rod-assembly"), ElementsAre("1", "nut_2", "rod_1"));
}

TEST_F(StepNames, OfInstancesWithNothingAtAllComeFromTheirParts) {
  const auto assembly = ReadText(Replaced(As1(), "'1','nut_1'", "'',''"));

  EXPECT_THAT(InstanceNames(*assembly, "rod-assembly"), ElementsAre("nut.1", "nut_2", "rod_1"));
}

TEST_F(StepNames, OfSeveralRootsGetOneAboveThem) {
  const auto bracket = BytesOf(DataFile("sg1-c5-214.stp"));

  const auto assembly = ReadText(Together(As1(), bracket));

  const auto& structure = assembly->Structure();
  const auto& root = structure.definitions[structure.root];
  EXPECT_EQ(root.partNumber, "given");
  EXPECT_TRUE(root.isAssembly);
  EXPECT_THAT(InstanceNames(*assembly, "given"), ElementsAre("as1.1", "SG1.1"));
  EXPECT_EQ(assembly->Occurrences().size(), 29U);
}

TEST_F(StepNames, StayWithPartsThatHaveNoGeometry) {
  const auto empty =
      Replaced(As1(), "ADVANCED_BREP_SHAPE_REPRESENTATION('',(#11,#63)", "SHAPE_REPRESENTATION('',(#11)");

  const auto assembly = ReadText(empty);

  EXPECT_THAT(assembly->Structure().changes, IsEmpty());
  const auto nut = IndexOf(assembly->Structure(), "nut");
  EXPECT_FALSE(assembly->Structure().definitions[nut].isAssembly);
  EXPECT_EQ(assembly->Occurrences().size(), 27U);
}

}  // namespace
}  // namespace quintara::test
