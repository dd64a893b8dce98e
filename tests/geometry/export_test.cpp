#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "geometry/geometry_fixture.h"
#include "geometry/measures.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

SceneNode Leaf(const std::string& name, const std::string& partNumber, const std::string& file,
               const PositionMatrix& position = kIdentityPosition) {
  return {name, partNumber, position, file, {}};
}

PositionMatrix At(double x, double y, double z) {
  return {1, 0, 0, 0, 1, 0, 0, 0, 1, x, y, z};
}

constexpr PositionMatrix kMirrorInX = {-1, 0, 0, 0, 1, 0, 0, 0, 1, 100, 0, 0};
constexpr PositionMatrix kFlat = {1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0};

nlohmann::json JsonOf(const std::string& glb) {
  std::uint32_t length = 0;
  std::memcpy(&length, glb.data() + 12, sizeof length);
  return nlohmann::json::parse(glb.substr(20, length));
}

class Export : public GeometryTest {
 protected:
  Export() : as1_(Read(DataFile("as1-oc-214.stp"))) { Split(*as1_); }

  SceneNode Scene(const std::vector<SceneNode>& children) { return {"", "ROOT", kIdentityPosition, "", children}; }

  std::vector<std::string> WriteStep(const SceneNode& scene) {
    return geometry_->WriteStep(scene, Path("out.stp"), {});
  }

  std::unique_ptr<SplitAssembly> as1_;
};

class ExportOfAssembly : public GeometryTest, public testing::WithParamInterface<std::string> {};
class ExportOfLightAssembly : public GeometryTest, public testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Real, ExportOfAssembly, testing::ValuesIn(AssemblyFiles()), NameOfFile);
// Facets are many: the smaller files show as much as all.
INSTANTIATE_TEST_SUITE_P(Real, ExportOfLightAssembly, testing::Values("as1-oc-214.stp", "dm1-pe-214.stp"), NameOfFile);

void ExpectSameTree(const SplitAssembly& read, const SplitAssembly& original) {
  const auto expected = original.Occurrences();
  const auto given = read.Occurrences();
  ASSERT_EQ(given.size(), expected.size());
  for (std::size_t i = 0; i < given.size(); ++i) {
    EXPECT_EQ(given[i].path, expected[i].path);
    EXPECT_EQ(given[i].partNumber, expected[i].partNumber);
    EXPECT_EQ(given[i].isAssembly, expected[i].isAssembly);
    EXPECT_TRUE(Near(given[i].position, expected[i].position, 1e-9, original.Structure().size)) << given[i].path;
  }
}

TEST_P(ExportOfAssembly, AsStepIsReadBackAsTheSameTree) {
  const auto original = Read(DataFile(GetParam()));
  Split(*original);

  const auto lines = geometry_->WriteStep(SceneOf(*original, ".stp"), Path("out.stp"), {});

  EXPECT_THAT(lines, IsEmpty());
  const auto read = Read(Path("out.stp"));
  ExpectSameTree(*read, *original);
  EXPECT_EQ(read->Structure().definitions.size(), original->Structure().definitions.size());
  const auto before = MeasureFile(DataFile(GetParam()));
  EXPECT_NEAR(MeasureFile(Path("out.stp")).area, before.area, 1e-6 * before.area);
}

TEST_P(ExportOfLightAssembly, AsStepTakesLightComponentsAsFacets) {
  const auto original = Read(DataFile(GetParam()));
  Split(*original);

  const auto lines = geometry_->WriteStep(SceneOf(*original, ".lwt"), Path("out.stp"), {});

  EXPECT_THAT(lines, IsEmpty());
  ExpectSameTree(*Read(Path("out.stp")), *original);
  const auto exact = MeasureFile(DataFile(GetParam()));
  EXPECT_NEAR(MeasureFile(Path("out.stp")).area, exact.area, 0.05 * exact.area);
}

TEST_P(ExportOfAssembly, AsGltfHoldsEveryNodeWithItsNames) {
  const auto original = Read(DataFile(GetParam()));
  Split(*original);

  const auto lines = geometry_->WriteGltf(SceneOf(*original, ".lwt"), Path("out.glb"), {});

  EXPECT_THAT(lines, IsEmpty());
  const auto json = JsonOf(folder_.Read("out.glb"));
  std::vector<std::string> given;
  for (const auto& node : json["nodes"]) given.push_back(node["extras"]["PartNumber"]);
  std::vector<std::string> expected = {original->Structure().definitions[original->Structure().root].partNumber};
  for (const auto& occurrence : original->Occurrences()) expected.push_back(occurrence.partNumber);
  EXPECT_THAT(given, testing::UnorderedElementsAreArray(expected));
}

TEST_F(Export, MixesExactAndLightComponents) {
  const auto scene = Scene({Leaf("a", "nut", Path("nut.stp")), Leaf("b", "bolt", Path("bolt.lwt"), At(50, 0, 0))});

  EXPECT_THAT(WriteStep(scene), IsEmpty());

  const auto read = Read(Path("out.stp"));
  EXPECT_EQ(read->Occurrences()[1].path, "ROOT\\b");
  EXPECT_EQ(read->Occurrences()[1].position, At(50, 0, 0));
}

TEST_F(Export, SharesWhatIsEqual) {
  const SceneNode pair = {"p",
                          "PAIR",
                          kIdentityPosition,
                          "",
                          {Leaf("a", "nut", Path("nut.stp")), Leaf("b", "nut", Path("nut.stp"), At(30, 0, 0))}};
  auto other = pair;
  other.name = "q";
  other.position = At(0, 80, 0);

  WriteStep(Scene({pair, other}));

  const auto read = Read(Path("out.stp"));
  EXPECT_THAT(read->Structure().definitions, SizeIs(3));
  EXPECT_THAT(read->Structure().changes, IsEmpty());
  EXPECT_THAT(read->Occurrences(), SizeIs(6));
}

TEST_F(Export, KeepsApartWhatHasOneNumberButOtherChildren) {
  const SceneNode one = {"p", "PAIR", kIdentityPosition, "", {Leaf("a", "nut", Path("nut.stp"))}};
  const SceneNode two = {"q", "PAIR", kIdentityPosition, "", {Leaf("a", "nut", Path("nut.stp"), At(1, 0, 0))}};

  WriteStep(Scene({one, two}));

  EXPECT_EQ(Read(Path("out.stp"))->Occurrences()[3].position, At(1, 0, 0));
}

TEST_F(Export, TakesOneFileUnderSeveralNumbers) {
  WriteStep(Scene({Leaf("a", "N1", Path("nut.stp")), Leaf("b", "N2", Path("nut.stp"))}));

  const auto read = Read(Path("out.stp"));
  EXPECT_EQ(read->Occurrences()[0].partNumber, "N1");
  EXPECT_EQ(read->Occurrences()[1].partNumber, "N2");
}

TEST_F(Export, KeepsOriginsExactUnderRotation) {
  const double c = std::cos(0.3);
  const double s = std::sin(0.3);
  const PositionMatrix turned = {c, s, 0, -s, c, 0, 0, 0, 1, 1.0 / 3, -1e3 / 7, 12345.678901234567};

  WriteStep(Scene({Leaf("a", "nut", Path("nut.stp"), turned)}));

  const auto read = Read(Path("out.stp"))->Occurrences()[0].position;
  EXPECT_TRUE(Near(read, turned, 1e-12, 1e3));
}

TEST_F(Export, WritesAPartAlone) {
  EXPECT_THAT(WriteStep(Leaf("", "NUT 5", Path("nut.stp"))), IsEmpty());

  const auto read = Read(Path("out.stp"));
  EXPECT_THAT(read->Structure().definitions, SizeIs(1));
  EXPECT_EQ(read->Structure().definitions[0].partNumber, "NUT 5");
}

TEST_F(Export, HoldsARootThatDoesNotStandAtTheIdentity) {
  WriteStep(Leaf("n", "NUT", Path("nut.stp"), At(7, 0, 0)));

  const auto box = MeasureFile(Path("out.stp")).box;
  EXPECT_NEAR(box[0] - MeasureFile(Path("nut.stp")).box[0], 7, 1e-6);
}

TEST_F(Export, BakesAMirroredPartIntoOneOfItsOwnAndSaysSo) {
  const auto straight = MeasureFile(Path("l-bracket.stp"));

  const auto lines = WriteStep(Scene({Leaf("a", "X", Path("l-bracket.stp"), kMirrorInX)}));

  EXPECT_THAT(lines, ElementsAre("ROOT\\a: mirrored position, its geometry was mirrored into a part of its own"));
  const auto mirrored = MeasureFile(Path("out.stp"));
  EXPECT_NEAR(mirrored.volume, straight.volume, 1e-6 * straight.volume);
  EXPECT_NEAR(mirrored.box[0], 100 - straight.box[3], 1e-6);
  EXPECT_NEAR(mirrored.box[3], 100 - straight.box[0], 1e-6);
  EXPECT_NEAR(mirrored.box[1], straight.box[1], 1e-6);
}

TEST_F(Export, KeepsTheUnmirroredPartBesideTheMirroredOne) {
  WriteStep(Scene({Leaf("a", "X", Path("l-bracket.stp")), Leaf("b", "X", Path("l-bracket.stp"), kMirrorInX)}));

  EXPECT_THAT(Read(Path("out.stp"))->Structure().definitions, SizeIs(3));
}

TEST_F(Export, MirrorsAWholeAssemblyWithItsTree) {
  auto scene = SceneOf(*as1_, ".stp");
  scene.name = "mirrored";
  scene.position = kMirrorInX;

  const auto lines = WriteStep(Scene({scene}));

  EXPECT_THAT(lines, SizeIs(1));
  const auto read = Read(Path("out.stp"));
  EXPECT_THAT(read->Occurrences(), SizeIs(28));
  const auto straight = MeasureFile(DataFile("as1-oc-214.stp"));
  const auto mirrored = MeasureFile(Path("out.stp"));
  EXPECT_NEAR(mirrored.volume, straight.volume, 1e-6 * straight.volume);
  EXPECT_NEAR(mirrored.box[0], 100 - straight.box[3], 1e-5);
  EXPECT_NEAR(mirrored.box[4], straight.box[4], 1e-5);
}

TEST_F(Export, SharesPartsThatAreMirroredTwice) {
  SceneNode inner = Leaf("b", "X", Path("l-bracket.stp"), kMirrorInX);
  const SceneNode outer = {"a", "M", kMirrorInX, "", {inner}};

  WriteStep(Scene({outer, Leaf("c", "X", Path("l-bracket.stp"))}));

  const auto read = Read(Path("out.stp"));
  EXPECT_THAT(read->Structure().definitions, SizeIs(3));
  const auto straight = MeasureFile(Path("l-bracket.stp"));
  EXPECT_NEAR(MeasureFile(Path("out.stp")).box[0], straight.box[0], 1e-6);
}

TEST_F(Export, StretchesWhatStandsInAStretchedPosition) {
  const PositionMatrix twice = {2, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  const auto straight = MeasureFile(Path("nut.stp"));

  const auto lines = WriteStep(Scene({Leaf("a", "X", Path("nut.stp"), twice)}));

  EXPECT_THAT(lines, ElementsAre("ROOT\\a: stretched position, its geometry was stretched into a part of its own"));
  EXPECT_NEAR(MeasureFile(Path("out.stp")).volume, 2 * straight.volume, 1e-4 * straight.volume);
}

TEST_F(Export, MirrorsAndStretchesLightComponentsToo) {
  const PositionMatrix both = {-2, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};
  const auto straight = MeasureFile(Path("l-bracket.lwt")).box;

  const auto lines = geometry_->WriteGltf(Scene({Leaf("a", "X", Path("l-bracket.lwt"), both)}), Path("out.lwt"), {});
  WriteStep(Scene({Leaf("a", "X", Path("l-bracket.lwt"), both)}));

  EXPECT_THAT(lines, SizeIs(1));
  for (const auto* file : {"out.lwt", "out.stp"}) {
    const auto box = MeasureFile(Path(file)).box;
    EXPECT_NEAR(box[0], -2 * straight[3], 1e-3) << file;
    EXPECT_NEAR(box[3], -2 * straight[0], 1e-3) << file;
    EXPECT_NEAR(box[4], straight[4], 1e-3) << file;
  }
}

TEST_F(Export, LeavesOutWhatIsSingularAndSaysSo) {
  const auto lines = WriteStep(Scene({Leaf("a", "X", Path("nut.stp"), kFlat), Leaf("b", "X", Path("nut.stp"))}));

  EXPECT_THAT(lines, ElementsAre("ROOT\\a: singular position, left out"));
  EXPECT_THAT(Read(Path("out.stp"))->Occurrences(), SizeIs(1));
}

TEST_F(Export, LeavesOutNodesWithoutGeometryAndSaysSo) {
  const SceneNode hollow = {"h", "HOLLOW", kIdentityPosition, "", {}};

  const auto lines = WriteStep(Scene({hollow, Leaf("b", "X", Path("nut.stp"))}));

  EXPECT_THAT(lines, ElementsAre("ROOT\\h: holds no geometry, left out"));
}

TEST_F(Export, FailsWithoutAnyGeometry) {
  EXPECT_EQ(FailureOf([&] { WriteStep(Scene({})); }), Path("out.stp") + ": there is no geometry to write");
  EXPECT_FALSE(folder_.Has("out.stp"));
}

TEST_F(Export, NamesTheFileThatIsMissing) {
  const auto scene = Scene({Leaf("a", "X", Path("no.stp"))});

  EXPECT_THAT(FailureOf([&] { WriteStep(scene); }), StartsWith(Path("no.stp") + ": could not be opened"));
}

TEST_F(Export, NamesTheLightFileThatIsDamaged) {
  folder_.Write("cut.lwt", folder_.Read("nut.lwt").substr(0, 3000));
  folder_.Write("no.lwt", "glTF or not");

  EXPECT_EQ(FailureOf([&] { WriteStep(Scene({Leaf("a", "X", Path("cut.lwt"))})); }),
            Path("cut.lwt") + ": is not a good light file: its length isn't the one that it names");
  EXPECT_EQ(FailureOf([&] { WriteStep(Scene({Leaf("a", "X", Path("no.lwt"))})); }),
            Path("no.lwt") + ": is not a good light file: it is no binary glTF file");
}

TEST_F(Export, NeverEndsThisProcessWhateverIsInALightFile) {
  const auto whole = folder_.Read("nut.lwt");
  std::mt19937 chance(5);

  for (int i = 0; i < 40; ++i) {
    auto bytes = whole;
    for (int n = 0; n < 8; ++n) bytes[20 + chance() % (bytes.size() - 20)] = static_cast<char>(chance());
    folder_.Write("bad.lwt", bytes);
    try {
      geometry_->WriteGltf(Scene({Leaf("a", "X", Path("bad.lwt"))}), Path("out.glb"), {});
    } catch (const Failure& failure) {
      EXPECT_THAT(failure.Description(), HasSubstr(folder_.Path("")));
    }
  }
}

TEST_F(Export, RefusesOtherFiles) {
  folder_.Write("a.txt", "text");

  EXPECT_EQ(FailureOf([&] { WriteStep(Scene({Leaf("a", "X", Path("a.txt"))})); }),
            Path("a.txt") + ": is neither a STEP file nor a light file");
}

TEST_F(Export, KeepsTheOldFileWhenItFails) {
  folder_.Write("out.stp", "old");

  FailureOf([&] { WriteStep(Scene({Leaf("a", "X", Path("no.stp"))})); });

  EXPECT_EQ(folder_.Read("out.stp"), "old");
}

TEST_F(Export, TellsItsProgress) {
  std::vector<double> told;
  const auto note = [&](double fraction, const std::string&) { told.push_back(fraction); };

  geometry_->WriteStep(SceneOf(*as1_, ".stp"), Path("out.stp"), note);

  EXPECT_GT(told.size(), 5U);
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_LE(told.back(), 1);
}

}  // namespace
}  // namespace quintara::test
