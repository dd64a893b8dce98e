#include "base/glb.h"

#include <gmock/gmock.h>

#include "base/failure.h"

namespace quintara {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string LittleEndian(std::size_t number) {
  std::string bytes;
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

std::string GlbOf(const std::string& json, const std::string& rest = {}) {
  return "glTF" + LittleEndian(2) + LittleEndian(20 + json.size() + rest.size()) + LittleEndian(json.size()) + "JSON" +
         json + rest;
}

template <class Body>
std::string FaultOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), failure::kInvalidFormat);
    return failure.Description();
  }
  return "no failure";
}

std::string FaultOfHead(const std::string& bytes) {
  return FaultOf([&] { CheckGlb(bytes, bytes.size()); });
}

TEST(CheckGlb, TakesTheBeginningOfAWholeFile) {
  const auto whole = GlbOf("{}  ", "chunks");

  EXPECT_NO_THROW(CheckGlb(whole.substr(0, kGlbHead), whole.size()));
}

TEST(CheckGlb, RefusesWhatIsNoBinaryGltf) {
  const auto whole = GlbOf("{}");

  EXPECT_EQ(FaultOfHead(""), "it is no binary glTF file");
  EXPECT_EQ(FaultOfHead(whole.substr(0, 19)), "it is no binary glTF file");
  EXPECT_EQ(FaultOfHead("gltf" + whole.substr(4)), "it is no binary glTF file");
  EXPECT_EQ(FaultOfHead("glTF" + LittleEndian(1) + whole.substr(8)), "it is not of version 2 of binary glTF");
}

TEST(CheckGlb, RefusesAnotherLengthThanTheOneNamed) {
  const auto whole = GlbOf("{}", "chunks");

  EXPECT_EQ(FaultOfHead(whole.substr(0, whole.size() - 1)), "its length isn't the one that it names");
  EXPECT_EQ(FaultOfHead(whole + " "), "its length isn't the one that it names");
}

TEST(CheckGlb, RefusesAFirstChunkThatIsTooLongOrNoJson) {
  const auto whole = GlbOf("{}");

  EXPECT_EQ(FaultOfHead(whole.substr(0, 12) + LittleEndian(3) + whole.substr(16)), "its first chunk is damaged");
  EXPECT_EQ(FaultOfHead(whole.substr(0, 16) + "BIN " + whole.substr(20)), "its first chunk is damaged");
}

TEST(PartNumberInGlb, StandsInTheExtrasOfTheAsset) {
  const auto glb = GlbOf(R"({"nodes":[{"extras":{"PartNumber":"A"}}],"asset":{"extras":{"PartNumber":"Träger"}}})");

  EXPECT_EQ(PartNumberInGlb(glb), "Träger");
}

TEST(PartNumberInGlb, FailsWithoutOne) {
  for (const auto* json : {"[]", "{}", R"({"asset":7})", R"({"asset":{"extras":{"PartNumber":7}}})"}) {
    EXPECT_EQ(FaultOf([&] { PartNumberInGlb(GlbOf(json)); }), "it names no part number in asset.extras") << json;
  }
  EXPECT_EQ(FaultOf([] { PartNumberInGlb(GlbOf(R"({"asset":{"extras":{"PartNumber":""}}})")); }),
            "its part number is empty");
}

TEST(PartNumberInGlb, FailsForDamagedJson) {
  EXPECT_EQ(FaultOf([] { PartNumberInGlb(GlbOf("{")); }), "its JSON is damaged");
  EXPECT_EQ(FaultOf([] { PartNumberInGlb(GlbOf("{\"asset\":\"\xFF\"}")); }), "its JSON is damaged");
}

TEST(HasMeshes, IsFalseWithoutOrWithAnEmptyList) {
  EXPECT_TRUE(HasMeshes(GlbOf(R"({"meshes":[{}]})")));
  EXPECT_FALSE(HasMeshes(GlbOf(R"({"meshes":[]})")));
  EXPECT_FALSE(HasMeshes(GlbOf("[]")));
}

TEST(GlbWithPartNumbers, NumbersEachNodeAndKeepsAllElse) {
  const auto glb = GlbOf(R"({"z":1,"scenes":[{"nodes":[1]}],"nodes":[{"name":"b"},{"children":[0]}],"a":2})", "chunks");

  const auto numbered = GlbWithPartNumbers(glb, {"ROOT", {{"BOLT", {}}}});

  EXPECT_THAT(numbered, HasSubstr(R"({"z":1,"scenes":[{"nodes":[1]}],"nodes":[{"name":"b","extras":)"
                                  R"({"PartNumber":"BOLT"}},{"children":[0],"extras":{"PartNumber":"ROOT"}}],"a":2})"));
  EXPECT_TRUE(numbered.ends_with("chunks"));
  EXPECT_NO_THROW(CheckGlb(numbered, numbered.size()));
}

TEST(GlbWithPartNumbers, PassesOverNodesThatTheFileDoesNotHave) {
  const auto glb = GlbOf(R"({"scenes":[{"nodes":[0]}],"nodes":[{}]})");

  const auto numbered = GlbWithPartNumbers(glb, {"ROOT", {{"BOLT", {}}}});

  EXPECT_THAT(numbered, Not(HasSubstr("BOLT")));
}

TEST(GlbWithPartNumbers, FailsForATreeThatIsDamaged) {
  for (const auto* json :
       {"{}", R"({"scenes":[{"nodes":[1]}],"nodes":[{}]})", R"({"scenes":[{"nodes":["x"]}],"nodes":[{}]})",
        R"({"scenes":[{"nodes":[0]}],"nodes":[{"extras":7}]})"}) {
    EXPECT_EQ(FaultOf([&] { GlbWithPartNumbers(GlbOf(json), {"ROOT", {}}); }), "its tree of nodes is damaged") << json;
  }
}

TEST(GlbWithPartNumbers, FailsForAPartNumberThatIsNoUtf8) {
  const auto glb = GlbOf(R"({"scenes":[{"nodes":[0]}],"nodes":[{}]})");

  EXPECT_EQ(FaultOf([&] { GlbWithPartNumbers(glb, {"\xFF", {}}); }), "one of its texts is not UTF-8");
}

TEST(GlbWithoutMeshes, HoldsItsPartNumberAlone) {
  const auto glb = GlbWithoutMeshes("PLATE 7");

  EXPECT_EQ(PartNumberInGlb(glb), "PLATE 7");
  EXPECT_FALSE(HasMeshes(glb));
  EXPECT_EQ(glb.size() % 4, 0U);
}

}  // namespace
}  // namespace quintara
