// Stands for the check-in of a large assembly (its matrix is written) and for the placing of its
// flat product (the matrix is read, every component is put in place).

#include <benchmark/benchmark.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <pugixml.hpp>
#include <stdexcept>

#include "access/session/the_platform.h"
#include "base/numbers.h"
#include "bench_tree.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "hosts/native/native_platform.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/position_arithmetic.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

constexpr int kLarge = 32'767;
constexpr int kSmall = 4'096;
const char* const kNumberNames[] = {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

// A folder of its own, the platform, and one CAD host.
class World {
 public:
  World() {
    std::filesystem::create_directories(folder_);
    InstallPlatform(std::make_shared<NativePlatform>(gate_, [](const std::string& text, int, const std::string&) {
      throw std::runtime_error(text);
      return 0;
    }));
  }
  ~World() { std::filesystem::remove_all(folder_); }

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  std::shared_ptr<CadHost> NewHost() const {
    return std::make_shared<CadHost>(CadHost::Surroundings{gate_, std::make_shared<NativeContents>(gate_), {}});
  }

 private:
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() /
      ("quintara-bench-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
};

World& TheWorld() {
  static World world;
  return world;
}

// One tree with its matrix file.
struct Case {
  std::string name;
  BenchTree tree;
  std::string matrix;
  std::shared_ptr<CadHost> host = TheWorld().NewHost();
  Ref<zorva::ProductDocument> document;

  Case(std::string caseName, int elements, int branches, LeafParts parts)
      : name(std::move(caseName)),
        tree(MakeTree(elements, branches, parts, 20'26)),
        matrix(TheWorld().Path(name + " Matrix.xml")) {
    document = host->Build(tree.structure);
    if (!Cls_Matrice().CreateXMLFile(document->Product(), matrix)) throw std::runtime_error("no matrix was written");
  }
};

Case& Many() {
  static Case it("many", kLarge, 3, LeafParts::kMany);
  return it;
}
Case& Common() {
  static Case it("common", kLarge, 3, LeafParts::kNearlyAllTheSame);
  return it;
}
Case& Small() {
  static Case it("small", kSmall, 2, LeafParts::kMany);
  return it;
}

template <class Work>
void Measure(benchmark::State& state, const Case& each, Work&& work) {
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(each.tree.nodes.size()));
}

void CreateXMLFile(benchmark::State& state, Case& each) {
  const auto path = TheWorld().Path("out.xml");
  const auto root = each.document->Product();
  Measure(state, each, [&] {
    if (!Cls_Matrice().CreateXMLFile(root, path)) throw std::runtime_error("no matrix was written");
  });
}

void CheckWrittenAlike(const Case& each) {
  const auto read = [](const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  if (read(each.matrix) != read(TheWorld().Path("hand.xml"))) throw std::runtime_error("the two writers differ");
}

// The same document from the bare nodes, saved as durably: beside, synced, renamed.
void WriteByHand(benchmark::State& state, const Case& each) {
  const auto path = TheWorld().Path("hand.xml");
  NativeContents files(std::make_shared<Gate>());
  Measure(state, each, [&] {
    pugi::xml_document document;
    auto instruction = document.append_child(pugi::node_pi);
    instruction.set_name("xml");
    instruction.set_value("version='1.0' encoding='UTF-8'");
    std::vector<pugi::xml_node> elements(each.tree.nodes.size());
    std::vector<std::string> fullNames(each.tree.nodes.size());
    for (std::size_t i = 0; i < each.tree.nodes.size(); ++i) {
      const auto& node = each.tree.nodes[i];
      const auto parent = static_cast<std::size_t>(node.parent);
      auto above = node.parent < 0 ? static_cast<pugi::xml_node>(document) : elements[parent];
      const auto& name = node.parent < 0 ? node.partNumber : node.name;
      fullNames[i] = node.parent < 0 ? name : fullNames[parent] + "\\" + name;
      elements[i] = above.append_child(node.isLeaf ? "PART" : "PRODUCT");
      elements[i].append_attribute("PART_NUMBER") = node.partNumber.c_str();
      elements[i].append_attribute("INSTANCE_NAME") = name.c_str();
      elements[i].append_attribute("FULL_INSTANCE_NAME") = fullNames[i].c_str();
      const auto& position = node.parent < 0 ? kIdentityPosition : node.position;
      for (std::size_t k = 0; k < 12; ++k) {
        elements[i].append_attribute(kNumberNames[k]) = NumberText(position[k]).c_str();
      }
    }
    struct Writer : pugi::xml_writer {
      std::string text;
      void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
    } writer;
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    files.Write(path + ".new", writer.text);
    files.Rename(path + ".new", path);
  });
  CheckWrittenAlike(each);
}

// What every reader must do at least: load, read all numbers, compose the chain of each leaf.
std::vector<PositionMatrix> ReadByHand(const std::string& path) {
  pugi::xml_document document;
  if (!document.load_file(path.c_str())) throw std::runtime_error("the matrix can't be read");
  std::vector<PositionMatrix> positions;
  std::vector<int> parents;
  std::vector<PositionMatrix> leaves;
  int parent = -1;
  for (auto node = document.document_element(); node;) {
    auto attribute = node.first_attribute().next_attribute().next_attribute();
    PositionMatrix position;
    for (auto& number : position) {
      attribute = attribute.next_attribute();
      const char* const text = attribute.value();
      std::from_chars(text, text + std::char_traits<char>::length(text), number);
    }
    positions.push_back(position);
    parents.push_back(parent);
    if (node.first_child()) {
      parent = static_cast<int>(positions.size()) - 1;
      node = node.first_child();
      continue;
    }
    PositionMatrix placed = position;
    for (int above = parent; above >= 0; above = parents[static_cast<std::size_t>(above)]) {
      placed = Compose(placed, positions[static_cast<std::size_t>(above)]);
    }
    leaves.push_back(placed);
    while (node && !node.next_sibling()) {
      node = node.parent();
      if (parent >= 0) parent = parents[static_cast<std::size_t>(parent)];
    }
    node = node.next_sibling();
  }
  return leaves;
}

void ReadBaseline(benchmark::State& state, const Case& each) {
  Measure(state, each, [&] { benchmark::DoNotOptimize(ReadByHand(each.matrix)); });
}

void CheckPlaced(const Ref<zorva::Product>& root, const Case& each) {
  const auto byHand = ReadByHand(each.matrix);
  const auto partNumbers = each.tree.LeafInstances();
  std::map<std::string, std::vector<PositionMatrix>> wanted;
  for (std::size_t i = 0; i < byHand.size(); ++i) wanted[partNumbers[i]].push_back(byHand[i]);
  std::map<std::string, std::size_t> next;
  const auto children = root->Products();
  if (static_cast<std::size_t>(children->Count()) != byHand.size()) throw std::runtime_error("components are missing");
  for (int i = 1; i <= children->Count(); ++i) {
    const auto child = children->Item(i);
    PositionMatrix position;
    child->Position()->GetComponents(position);
    const auto partNumber = child->PartNumber();
    if (wanted.at(partNumber).at(next[partNumber]++) != position)
      throw std::runtime_error("a component is out of place");
  }
}

void ProcessXMLFile(benchmark::State& state, Case& each) {
  const auto host = TheWorld().NewHost();
  const auto document = host->Build(FlatProduct(each.tree.LeafInstances()));
  const auto root = document->Product();
  Measure(state, each, [&] {
    if (!Cls_Matrice().ProcessXMLFile(root, each.matrix)) throw std::runtime_error("not placed");
  });
  CheckPlaced(root, each);
}

void PositionAllInstances(benchmark::State& state, Case& each) {
  const auto partNumbers = each.tree.LeafPartNumbers();
  Ref<zorva::Product> root;
  for (auto _ : state) {
    const auto host = TheWorld().NewHost();
    const auto document = host->Build(FlatProduct(partNumbers));
    root = document->Product();
    const auto selection = document->Selection();
    const auto start = std::chrono::steady_clock::now();
    if (!Cls_Matrice().PositionAllInstances(root, each.matrix, true, selection)) throw std::runtime_error("not placed");
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    CheckPlaced(root, each);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(each.tree.nodes.size()));
}

template <class Function, class Each>
void Register(const std::string& name, Function function, Each each) {
  benchmark::RegisterBenchmark(name.c_str(), [function, each](benchmark::State& state) { function(state, each()); })
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  for (const auto& [suffix, each] : {std::pair{"many", &Many}, {"common", &Common}, {"small", &Small}}) {
    const std::string of = std::string("/") + suffix;
    Register("CreateXMLFile" + of, CreateXMLFile, each);
    Register("WriteByHand" + of, WriteByHand, each);
    Register("ProcessXMLFile" + of, ProcessXMLFile, each);
    Register("PositionAllInstances" + of, PositionAllInstances, each);
    Register("ReadByHand" + of, ReadBaseline, each);
  }
  const auto scale = [](const std::string& work, const std::string& baseline) {
    return Promise{work + ", time for an element, 32,767 over 4,096",
                   {work + "/many", work + "/small"},
                   {baseline + "/many", baseline + "/small"},
                   1.3};
  };
  const int result = RunAndJudge(
      argc, argv,
      {{"CreateXMLFile, 32,767 elements", {"CreateXMLFile/many"}, {"WriteByHand/many"}, 2.0},
       {"ProcessXMLFile, 5,000 part numbers", {"ProcessXMLFile/many"}, {"ReadByHand/many"}, 3.0},
       {"PositionAllInstances, 5,000 part numbers", {"PositionAllInstances/many"}, {"ReadByHand/many"}, 4.0},
       {"ProcessXMLFile, one part 30,000 times", {"ProcessXMLFile/common"}, {"ReadByHand/common"}, 3.0},
       {"PositionAllInstances, one part 30,000 times", {"PositionAllInstances/common"}, {"ReadByHand/common"}, 4.0},
       scale("CreateXMLFile", "WriteByHand"),
       scale("ProcessXMLFile", "ReadByHand"),
       scale("PositionAllInstances", "ReadByHand")});
  return result;
}
