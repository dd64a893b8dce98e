#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "geometry/geometry_fixture.h"
#include "geometry/measures.h"
#include "geometry/occ_geometry.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAre;

nlohmann::json JsonOf(const std::string& glb) {
  std::uint32_t length = 0;
  std::memcpy(&length, glb.data() + 12, sizeof length);
  return nlohmann::json::parse(glb.substr(20, length));
}

double Extent(const FileMeasures& measures) {
  const auto& b = measures.box;
  return std::hypot(b[3] - b[0], b[4] - b[1], b[5] - b[2]);
}

class PartFiles : public GeometryTest {
 protected:
  // The sum over all occurrences of what their part files measure.
  double SumOfParts(const SplitAssembly& assembly, double FileMeasures::*measure) const {
    std::map<std::string, double> known;
    double sum = 0;
    for (const auto& occurrence : assembly.Occurrences()) {
      if (occurrence.isAssembly) continue;
      const auto [entry, added] = known.try_emplace(occurrence.partNumber);
      if (added) entry->second = MeasureFile(Path(occurrence.partNumber + ".stp")).*measure;
      sum += entry->second;
    }
    return sum;
  }

  std::unique_ptr<SplitAssembly> ReadAs1() { return Read(DataFile("as1-oc-214.stp")); }

  std::unique_ptr<SplitAssembly> ReadAs1WithNutWithoutGeometry() {
    return ReadText(Replaced(BytesOf(DataFile("as1-oc-214.stp")), "ADVANCED_BREP_SHAPE_REPRESENTATION('',(#11,#63)",
                             "SHAPE_REPRESENTATION('',(#11)"));
  }

  void WriteNut(const SplitAssembly& assembly, const std::string& path) {
    assembly.WritePart(IndexOf(assembly.Structure(), "nut"), path);
  }
};

class PartFilesOfAssembly : public PartFiles, public testing::WithParamInterface<std::string> {};
class PartFilesOfPart : public PartFiles, public testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Real, PartFilesOfAssembly, testing::ValuesIn(AssemblyFiles()), NameOfFile);
INSTANTIATE_TEST_SUITE_P(Real, PartFilesOfPart, testing::ValuesIn(SinglePartFiles()), NameOfFile);

TEST_P(PartFilesOfAssembly, HoldTheGeometryOfTheWholeTogether) {
  const auto whole = MeasureFile(DataFile(GetParam()));
  const auto assembly = Read(DataFile(GetParam()));

  Split(*assembly);

  // Integrals over curved faces depend on where the part stands.
  EXPECT_NEAR(SumOfParts(*assembly, &FileMeasures::volume), whole.volume, 5e-3 * whole.volume);
  EXPECT_NEAR(SumOfParts(*assembly, &FileMeasures::area), whole.area, 1e-6 * whole.area);
}

TEST_P(PartFilesOfAssembly, AreReadBackAsThePartsTheyAre) {
  const auto assembly = Read(DataFile(GetParam()));
  Split(*assembly);

  for (const auto& definition : assembly->Structure().definitions) {
    if (definition.isAssembly) continue;
    const auto part = Read(Path(definition.partNumber + ".stp"));

    ASSERT_EQ(part->Structure().definitions.size(), 1U) << definition.partNumber;
    EXPECT_EQ(part->Structure().definitions[0].partNumber, definition.partNumber);
    EXPECT_FALSE(part->Structure().definitions[0].isAssembly);
  }
}

TEST_P(PartFilesOfAssembly, HaveLightFilesOfTheSameExtent) {
  const auto assembly = Read(DataFile(GetParam()));
  Split(*assembly);

  for (const auto& definition : assembly->Structure().definitions) {
    if (definition.isAssembly) continue;
    const auto exact = MeasureFile(Path(definition.partNumber + ".stp"));
    const auto light = MeasureFile(Path(definition.partNumber + ".lwt"));

    EXPECT_GT(light.triangles, 0U);
    // Boxes of exact faces may reach a little past their trimmed edges.
    for (std::size_t i = 0; i < 6; ++i) {
      EXPECT_NEAR(light.box[i], exact.box[i], 0.03 * Extent(exact)) << definition.partNumber;
    }
  }
}

TEST_P(PartFilesOfAssembly, AreTheSameBytesEachTime) {
  const auto first = Read(DataFile(GetParam()));
  Split(*first);
  std::map<std::string, std::string> bytes;
  for (const auto& name : folder_.Names()) bytes[name] = folder_.Read(name);

  const auto second = Read(DataFile(GetParam()));
  Split(*second);

  for (const auto& [name, content] : bytes) EXPECT_TRUE(folder_.Read(name) == content) << name;
}

TEST_P(PartFilesOfPart, HoldAllOfThePart) {
  const auto whole = MeasureFile(DataFile(GetParam()));
  const auto assembly = Read(DataFile(GetParam()));

  assembly->WritePart(0, Path("a.stp"));
  assembly->WriteLight(0, Path("a.lwt"));

  const auto exact = MeasureFile(Path("a.stp"));
  EXPECT_EQ(exact.faces, whole.faces);
  EXPECT_NEAR(exact.area, whole.area, 1e-6 * whole.area);
  EXPECT_GE(MeasureFile(Path("a.lwt")).triangles, whole.faces);
}

TEST_F(PartFiles, NameThePartAsTheirProduct) {
  const auto assembly = ReadAs1();

  WriteNut(*assembly, Path("any name.stp"));

  EXPECT_THAT(folder_.Read("any name.stp"), HasSubstr("PRODUCT('nut','nut'"));
}

TEST_F(PartFiles, KeepNamesOutsideAscii) {
  const auto text =
      Replaced(BytesOf(DataFile("as1-oc-214.stp")), "PRODUCT('nut','nut'", "PRODUCT('nut','Größe ''ねじ'''");
  const auto assembly = ReadText(text);

  assembly->WritePart(0, Path("a.stp"));
  assembly->WriteLight(0, Path("a.lwt"));

  EXPECT_EQ(Read(Path("a.stp"))->Structure().definitions[0].partNumber, "Größe 'ねじ'");
  EXPECT_EQ(JsonOf(folder_.Read("a.lwt"))["asset"]["extras"]["PartNumber"], "Größe 'ねじ'");
}

TEST_F(PartFiles, KeepTheColourOfThePart) {
  const auto assembly = ReadAs1();

  WriteNut(*assembly, Path("nut.stp"));
  assembly->WriteLight(IndexOf(assembly->Structure(), "nut"), Path("nut.lwt"));

  EXPECT_THAT(folder_.Read("nut.stp"), HasSubstr("COLOUR"));
  const auto light = JsonOf(folder_.Read("nut.lwt"));
  EXPECT_EQ(light["materials"][0]["pbrMetallicRoughness"]["baseColorFactor"], nlohmann::json({1.0, 0.0, 0.0, 1.0}));
}

TEST_F(PartFiles, AreTheSameBytesWhereverThePartComesFrom) {
  const auto whole = ReadAs1();
  WriteNut(*whole, Path("nut.stp"));

  const auto other = ReadText(Replaced(BytesOf(DataFile("as1-oc-214.stp")), "PRODUCT('rod','rod'", "PRODUCT('x','y'"));
  WriteNut(*other, Path("nut2.stp"));

  EXPECT_EQ(folder_.Read("nut.stp"), folder_.Read("nut2.stp"));
}

TEST_F(PartFiles, OfAssembliesAreLightOnesOnly) {
  const auto assembly = ReadAs1();
  const auto root = assembly->Structure().root;

  EXPECT_EQ(FailureOf([&] { assembly->WritePart(root, Path("a.stp")); }), "as1: is an assembly, not a part");
  EXPECT_FALSE(folder_.Has("a.stp"));
}

TEST_F(PartFiles, OfAssembliesHoldTheWholeAssembly) {
  const auto assembly = ReadAs1();

  assembly->WriteLight(assembly->Structure().root, Path("as1.lwt"));

  const auto light = MeasureFile(Path("as1.lwt"));
  EXPECT_NEAR(Extent(light), assembly->Structure().size, 1);
}

TEST_F(PartFiles, NumberEveryNodeOfALightAssembly) {
  const auto assembly = ReadAs1();

  assembly->WriteLight(IndexOf(assembly->Structure(), "rod-assembly"), Path("a.lwt"));

  const auto light = JsonOf(folder_.Read("a.lwt"));
  EXPECT_EQ(light["asset"]["extras"]["PartNumber"], "rod-assembly");
  std::vector<std::pair<std::string, std::string>> nodes;
  for (const auto& node : light["nodes"]) nodes.emplace_back(node["name"], node["extras"]["PartNumber"]);
  EXPECT_THAT(nodes, UnorderedElementsAre(std::pair("rod-assembly", "rod-assembly"), std::pair("nut_1", "nut"),
                                          std::pair("nut_2", "nut"), std::pair("rod_1", "rod")));
}

TEST_F(PartFiles, AreWrittenForPartsWithoutGeometryToo) {
  const auto assembly = ReadAs1WithNutWithoutGeometry();
  const auto nut = IndexOf(assembly->Structure(), "nut");

  assembly->WritePart(nut, Path("nut.stp"));
  assembly->WriteLight(nut, Path("nut.lwt"));

  EXPECT_THAT(folder_.Read("nut.stp"), HasSubstr("PRODUCT('nut','nut'"));
  EXPECT_EQ(MeasureFile(Path("nut.stp")).faces, 0U);
  EXPECT_EQ(JsonOf(folder_.Read("nut.lwt"))["asset"]["extras"]["PartNumber"], "nut");
  EXPECT_EQ(MeasureFile(Path("nut.lwt")).faces, 0U);
}

TEST_F(PartFiles, OfAnUnknownDefinitionAreNone) {
  const auto assembly = ReadAs1();

  EXPECT_THROW(assembly->WritePart(99, Path("a.stp")), Failure);
  EXPECT_THROW(assembly->WriteLight(99, Path("a.lwt")), Failure);
}

TEST_F(PartFiles, FailWhereTheFolderIsMissing) {
  const auto assembly = ReadAs1();

  const auto path = Path("no/nut.stp");
  EXPECT_EQ(FailureOf([&] { WriteNut(*assembly, path); }), path + ": could not be written (No such file or directory)");
}

// A file as large as a disk may be full after.
class NoRoom {
 public:
  explicit NoRoom(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit small = {bytes, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    oldHandler_ = signal(SIGXFSZ, SIG_IGN);
  }
  ~NoRoom() {
    setrlimit(RLIMIT_FSIZE, &old_);
    signal(SIGXFSZ, oldHandler_);
  }
  NoRoom(const NoRoom&) = delete;
  NoRoom& operator=(const NoRoom&) = delete;

 private:
  rlimit old_{};
  sighandler_t oldHandler_;
};

TEST_F(PartFiles, KeepTheOldOneWhenThereIsNoRoom) {
  const auto assembly = ReadAs1();
  folder_.Write("nut.stp", "old");
  folder_.Write("nut.lwt", "old");
  std::string exact;
  std::string light;

  {
    const NoRoom noRoom(3000);
    exact = FailureOf([&] { WriteNut(*assembly, Path("nut.stp")); });
    light = FailureOf([&] { assembly->WriteLight(0, Path("nut.lwt")); });
  }

  EXPECT_THAT(exact, HasSubstr(Path("nut.stp") + ": "));
  EXPECT_THAT(light, HasSubstr(Path("nut.lwt") + ": "));
  EXPECT_EQ(folder_.Read("nut.stp"), "old");
  EXPECT_EQ(folder_.Read("nut.lwt"), "old");
  EXPECT_EQ(folder_.Names().size(), 2U);
}

TEST_F(PartFiles, AreLoadedForMeasuring) {
  const auto assembly = ReadAs1();
  WriteNut(*assembly, Path("nut.stp"));
  assembly->WriteLight(0, Path("nut.lwt"));

  EXPECT_EQ(CountFaces(Path("nut.stp")), 8U);
  EXPECT_EQ(CountFaces(Path("nut.lwt")), 8U);
}

}  // namespace
}  // namespace quintara::test
