#include "geometry/geometry_fixture.h"

#include <cctype>
#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/failure.h"
#include "base/text.h"
#include "geometry/occ_geometry.h"

namespace quintara::test {
namespace {

// Written out here once more, so that the kernel's composition is compared with another one.
PositionMatrix Composed(const PositionMatrix& c, const PositionMatrix& p) {
  PositionMatrix r{};
  for (std::size_t i = 0; i < 4; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      r[3 * i + j] = c[3 * i] * p[j] + c[3 * i + 1] * p[3 + j] + c[3 * i + 2] * p[6 + j] + (i == 3 ? p[9 + j] : 0);
    }
  }
  return r;
}

using Chain = std::vector<PositionMatrix>;

void Compose(const AssemblyStructure& structure, std::size_t parent, const std::string& path, const Chain& chain,
             std::vector<PlacedOccurrence>& found) {
  for (const auto& child : structure.definitions[parent].children) {
    const auto& definition = structure.definitions[child.definition];
    auto position = child.position;
    for (auto above = chain.rbegin(); above != chain.rend(); ++above) position = Composed(position, *above);
    auto below = chain;
    below.push_back(child.position);
    found.push_back({path + "\\" + child.name, definition.partNumber, definition.isAssembly, position});
    Compose(structure, child.definition, path + "\\" + child.name, below, found);
  }
}

}  // namespace

std::string DataFile(const std::string& name) {
  const auto path = std::string(QUINTARA_TEST_DATA) + "/" + name;
  if (!std::filesystem::exists(ToPath(path))) {
    throw std::runtime_error(path + " is missing: start the tests with ./run test, which fetches it");
  }
  return path;
}

std::string BytesOf(const std::string& path) {
  std::ifstream stream(ToPath(path), std::ios::binary);
  if (!stream) throw std::runtime_error("can't read " + path);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  if (at == std::string::npos) throw std::runtime_error("there is no " + from);
  return text.replace(at, from.size(), to);
}

std::string FailureOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Description();
  }
  ADD_FAILURE() << "nothing failed";
  return {};
}

GeometryTest::GeometryTest() : geometry_(MakeOccGeometry()) {}

std::unique_ptr<SplitAssembly> GeometryTest::Read(const std::string& path) {
  return geometry_->ReadAssembly(path, {});
}

std::unique_ptr<SplitAssembly> GeometryTest::ReadText(const std::string& text) {
  folder_.Write("given.stp", text);
  return Read(Path("given.stp"));
}

std::string GeometryTest::FailureOfText(const std::string& text) {
  return FailureOf([&] { ReadText(text); });
}

void GeometryTest::Split(const SplitAssembly& assembly) {
  const auto& definitions = assembly.Structure().definitions;
  for (std::size_t i = 0; i < definitions.size(); ++i) {
    if (!definitions[i].isAssembly) assembly.WritePart(i, Path(definitions[i].partNumber + ".stp"));
    assembly.WriteLight(i, Path(definitions[i].partNumber + ".lwt"));
  }
}

SceneNode GeometryTest::SceneOf(const SplitAssembly& assembly, const std::string& extension) const {
  return NodeOf(assembly.Structure(), assembly.Structure().root, extension);
}

SceneNode GeometryTest::NodeOf(const AssemblyStructure& structure, std::size_t definition,
                               const std::string& extension) const {
  const auto& given = structure.definitions[definition];
  SceneNode node;
  node.partNumber = given.partNumber;
  if (!given.isAssembly) node.file = Path(given.partNumber + extension);
  for (const auto& child : given.children) {
    node.children.push_back(NodeOf(structure, child.definition, extension));
    node.children.back().name = child.name;
    node.children.back().position = child.position;
  }
  return node;
}

std::size_t IndexOf(const AssemblyStructure& structure, const std::string& partNumber) {
  const auto found = std::ranges::find(structure.definitions, partNumber, &AssemblyStructure::Definition::partNumber);
  if (found == structure.definitions.end()) throw std::runtime_error("there is no " + partNumber);
  return static_cast<std::size_t>(found - structure.definitions.begin());
}

std::vector<PlacedOccurrence> ComposedOccurrences(const AssemblyStructure& structure) {
  std::vector<PlacedOccurrence> found;
  Compose(structure, structure.root, structure.definitions[structure.root].partNumber, {}, found);
  return found;
}

testing::AssertionResult Near(const PositionMatrix& a, const PositionMatrix& b, double tolerance, double size) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    const double difference = std::abs(a[i] - b[i]);
    if (difference <= tolerance * (i < 9 ? 1 : size)) continue;
    return testing::AssertionFailure() << "number " << i << " differs by " << difference;
  }
  return testing::AssertionSuccess();
}

std::vector<std::string> AssemblyFiles() {
  return {"as1-oc-214.stp",          "as1-tu-203.stp",          "as1_pe_203.stp",
          "dm1-id-214.stp",          "dm1-oc-214.stp",          "dm1-pe-214.stp",
          "s1-c5-214/s1-c5-214.stp", "s1-tu-203/s1-tu-203.stp", "s1_pe_214/s1_pe_214.stp"};
}

std::vector<std::string> SinglePartFiles() {
  return {"SOD_323.stp", "SOT23.stp", "TSM_104_01_L_DV_A.stp", "io1-cm-214.stp", "sg1-c5-214.stp"};
}

std::string NameOfFile(const testing::TestParamInfo<std::string>& file) {
  std::string name = file.param;
  std::ranges::replace_if(
      name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

}  // namespace quintara::test
