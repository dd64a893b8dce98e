#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/cad/cad_host.h"
#include "hosts/cad/contract/fixture.h"
#include "hosts/native/native_files.h"

namespace quintara::test {

/// A session of the embedded host on a folder of its own. Questions about files are recorded and
/// answered with `answer`.
class EmbeddedCad : public testing::Test {
 protected:
  Ref<zorva::Documents> Documents() { return host->Application()->Documents(); }
  Ref<zorva::ProductDocument> NewDocument() { return Documents()->Add("ZVAProduct")->AsProductDocument(); }
  Ref<zorva::ProductDocument> Opened(const std::string& name) {
    return Documents()->Open(folder.Path(name))->AsProductDocument();
  }
  void WritePart(const std::string& partNumber) { folder.Write(partNumber + ".stp", TinyStep(partNumber)); }
  Ref<zorva::Product> Added(const Ref<zorva::Product>& parent, const std::string& file) {
    parent->Products()->AddComponentsFromFiles({folder.Path(file)}, "All");
    return parent->Products()->Item(parent->Products()->Count());
  }
  /// A file with components in it: "PLATE.1 PLATE.stp" and so on, at the identity.
  void WriteProduct(const std::string& partNumber, const std::vector<std::pair<std::string, std::string>>& components) {
    std::string text = "<ZVAProduct partNumber=\"" + partNumber + "\">";
    for (const auto& [name, file] : components) {
      text += "<Component name=\"" + name + "\" file=\"" + file + "\" position=\"1 0 0 0 1 0 0 0 1 0 0 0\"/>";
    }
    folder.Write(partNumber + ".ZVAProduct", text + "</ZVAProduct>");
  }
  void StartHost() {
    host = std::make_unique<CadHost>(
        CadHost::Surroundings{gate, std::make_shared<NativeContents>(gate), [this](const std::string& question) {
                                questions.push_back(question);
                                return answer;
                              }});
  }

  EmbeddedCad() { StartHost(); }

  TemporaryFolder folder;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::vector<std::string> questions;
  bool answer = true;
  std::unique_ptr<CadHost> host;
};

/// A chain of assemblies, each holding the next, `depth` levels below the root; the last holds a part.
inline AssemblyStructure Chain(std::size_t depth) {
  AssemblyStructure structure{{{"PART", false, {}}}, depth, {}, 0};
  for (std::size_t i = 0; i < depth; ++i) {
    structure.definitions.push_back({"A" + std::to_string(i), true, {{"I" + std::to_string(i), i, At(1)}}});
  }
  return structure;
}

/// A root with `count` instances of one part.
inline AssemblyStructure Flat(int count) {
  AssemblyStructure structure{{{"PLATE", false, {}}, {"ROOT", true, {}}}, 1, {}, 0};
  for (int i = 1; i <= count; ++i)
    structure.definitions[1].children.push_back({"PLATE." + std::to_string(i), 0, At(i)});
  return structure;
}

}  // namespace quintara::test
