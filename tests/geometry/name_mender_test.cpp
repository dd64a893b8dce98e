#include "geometry/name_mender.h"

#include "base/text.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

AssemblyStructure Parts(const std::vector<std::string>& names) {
  AssemblyStructure structure{};
  for (const auto& name : names) structure.definitions.push_back({name, false, {}});
  return structure;
}

std::vector<std::string> Mended(const std::vector<std::string>& names) {
  auto structure = Parts(names);
  MendNames(structure);
  std::vector<std::string> mended;
  for (const auto& definition : structure.definitions) mended.push_back(definition.partNumber);
  return mended;
}

AssemblyStructure Holding(const std::vector<std::string>& instanceNames) {
  auto structure = Parts({"BOLT"});
  structure.definitions.push_back({"ASM", true, {}});
  for (const auto& name : instanceNames) structure.definitions[1].children.push_back({name, 0, kIdentityPosition});
  structure.root = 1;
  return structure;
}

std::vector<std::string> MendedInstances(const std::vector<std::string>& names) {
  auto structure = Holding(names);
  MendNames(structure);
  std::vector<std::string> mended;
  for (const auto& child : structure.definitions[1].children) mended.push_back(child.name);
  return mended;
}

TEST(AsFileName, LeavesAGoodNameAlone) {
  for (const std::string name :
       {"PLATE", "l-bracket assembly", "Gehäuse (2)", " x", "ねじ", "a.b", "COMMON", "COM10"}) {
    EXPECT_EQ(AsFileName(name), name);
  }
}

TEST(AsFileName, ReplacesEachCharacterThatWindowsRefuses) {
  EXPECT_EQ(AsFileName("a<b>c:d\"e/f\\g|h?i*j"), "a_b_c_d_e_f_g_h_i_j");
}

TEST(AsFileName, ReplacesControlCharacters) {
  EXPECT_EQ(AsFileName(std::string("a\tb\nc\x01"
                                   "d\x7F"
                                   "e\0f",
                                   11)),
            "a_b_c_d_e_f");
}

TEST(AsFileName, ReplacesBlanksAndPointsAtTheEnd) {
  EXPECT_EQ(AsFileName("PLATE. ."), "PLATE___");
  EXPECT_EQ(AsFileName(".."), "__");
}

TEST(AsFileName, IsEmptyForBlanksAlone) {
  EXPECT_EQ(AsFileName(""), "");
  EXPECT_EQ(AsFileName(" \t "), "");
}

TEST(AsFileName, KeepsDevicesFromBeingOpened) {
  EXPECT_EQ(AsFileName("CON"), "CON_");
  EXPECT_EQ(AsFileName("nul"), "nul_");
  EXPECT_EQ(AsFileName("Com1"), "Com1_");
  EXPECT_EQ(AsFileName("LPT²"), "LPT²_");
  EXPECT_EQ(AsFileName("NUL.v2"), "NUL_.v2");
  EXPECT_EQ(AsFileName("aux .x"), "aux _.x");
}

TEST(AsFileName, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(AsFileName("a\xE4"
                       "b\xED\xA0\x80"),
            "a_b___");
  EXPECT_EQ(AsFileName("a\xEF\xBF\xBE"), "a___");
}

TEST(AsFileName, CutsALongNameBetweenCharacters) {
  std::string longName = "x";
  for (int i = 0; i < 200; ++i) longName += "ä";

  const auto name = AsFileName(longName);

  EXPECT_LE(name.size(), 180U);
  EXPECT_GT(name.size(), 170U);
  EXPECT_TRUE(IsUtf8(name));
}

TEST(AsFileName, HasNoBlankAtTheEndOfACutName) {
  EXPECT_EQ(AsFileName(std::string(179, 'x') + " and more").back(), '_');
}

TEST(MendNames, ChangesNothingThatIsGood) {
  auto structure = Holding({"BOLT.1", "BOLT.2"});

  MendNames(structure);

  EXPECT_THAT(structure.changes, IsEmpty());
}

TEST(MendNames, NumbersDoublesWithoutRegardToCase) {
  EXPECT_THAT(Mended({"Nut", "nut", "NUT", "Äß", "äß"}), ElementsAre("Nut", "nut_2", "NUT_3", "Äß", "äß_2"));
}

TEST(MendNames, NumbersAssembliesAndPartsTogether) {
  auto structure = Parts({"ROD", "ROD"});
  structure.definitions[1].isAssembly = true;

  MendNames(structure);

  EXPECT_EQ(structure.definitions[1].partNumber, "ROD_2");
}

TEST(MendNames, NeverGivesAMendedNameThatAnotherOneHas) {
  EXPECT_THAT(Mended({"A/B", "A_B", "A_B_2"}), ElementsAre("A_B_3", "A_B", "A_B_2"));
  EXPECT_THAT(Mended({"a:b", "A?B", "A_b"}), ElementsAre("a_b_2", "A_B_3", "A_b"));
  EXPECT_THAT(Mended({"", "PART_1"}), ElementsAre("PART_1_2", "PART_1"));
}

TEST(MendNames, NamesNamelessDefinitionsAfterTheirPlace) {
  auto structure = Parts({"X", " ", ""});
  structure.definitions[2].isAssembly = true;

  MendNames(structure);

  EXPECT_EQ(structure.definitions[1].partNumber, "PART_2");
  EXPECT_EQ(structure.definitions[2].partNumber, "ASSEMBLY_3");
}

TEST(MendNames, KeepsInstanceNamesApartUnderOneParent) {
  EXPECT_THAT(MendedInstances({"NUT", "NUT", "NUT_2", "NUT"}), ElementsAre("NUT", "NUT_3", "NUT_2", "NUT_4"));
}

TEST(MendNames, LeavesInstanceNamesThatDifferInCase) {
  EXPECT_THAT(MendedInstances({"nut", "NUT"}), ElementsAre("nut", "NUT"));
}

TEST(MendNames, TakesBackslashesOutOfInstanceNames) {
  EXPECT_THAT(MendedInstances({"a\\b", "a_b", "c/d"}), ElementsAre("a_b_2", "a_b", "c/d"));
}

TEST(MendNames, NamesNamelessInstancesAfterTheirPart) {
  EXPECT_THAT(MendedInstances({"", "BOLT.2", ""}), ElementsAre("BOLT.1", "BOLT.2", "BOLT.3"));
}

TEST(MendNames, NamesInstancesAfterTheMendedPartNumber) {
  auto structure = Holding({""});
  structure.definitions[0].partNumber = "M6/20";

  MendNames(structure);

  EXPECT_EQ(structure.definitions[1].children[0].name, "M6_20.1");
}

TEST(MendNames, ListsWhatItChangedAndWhy) {
  auto structure = Holding({"a\\b"});
  structure.definitions[0].partNumber = "*";

  MendNames(structure);

  ASSERT_EQ(structure.changes.size(), 2U);
  EXPECT_EQ(structure.changes[0].kind, "part number");
  EXPECT_EQ(structure.changes[0].from, "*");
  EXPECT_EQ(structure.changes[0].to, "_");
  EXPECT_EQ(structure.changes[0].reason, "the name cannot be used as it is");
  EXPECT_EQ(structure.changes[1].kind, "instance name");
  EXPECT_EQ(structure.changes[1].to, "a_b");
}

TEST(MendNames, MakesTenThousandEqualNamesUniqueQuickly) {
  const auto mended = Mended(std::vector<std::string>(10'000, "X"));

  EXPECT_EQ(mended.back(), "X_10000");
}

}  // namespace
}  // namespace quintara::test
