#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "access/session/the_platform.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "hosts/native/native_platform.h"
#include "matrix/Cls_Matrice.h"

// Places a small flat product from any bytes: whatever they are, the readers end with True or with
// a box, and give every component finite numbers.
namespace quintara {
namespace {

class BytesAsDocument : public MatrixDocument {
 public:
  explicit BytesAsDocument(const std::string& bytes) : bytes_(bytes) {}
  bool Load(const std::string&) override { return LoadBytes(bytes_); }

 private:
  const std::string& bytes_;
};

struct Surroundings {
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  int boxes = 0;

  Surroundings() {
    InstallPlatform(std::make_shared<NativePlatform>(gate, [this](const auto&, int, const auto&) {
      ++boxes;
      return answer::kOk;
    }));
  }
};

Ref<zorva::ProductDocument> FlatProduct(CadHost& host) {
  AssemblyStructure structure{};
  AssemblyStructure::Definition root{"WIP~~FUZZ", true, {}};
  for (const char* partNumber : {"BOLT", "NUT", "GROUP", "BOLT"}) {
    root.children.push_back({partNumber, structure.definitions.size(), kIdentityPosition});
    structure.definitions.push_back({partNumber, false, {}});
  }
  structure.root = structure.definitions.size();
  structure.definitions.push_back(root);
  return host.Build(structure);
}

void Place(const std::string& bytes) {
  static Surroundings surroundings;
  CadHost host({surroundings.gate, std::make_shared<NativeContents>(surroundings.gate), {}});
  const auto document = FlatProduct(host);
  Cls_Matrice matrice([&] { return std::make_unique<BytesAsDocument>(bytes); });
  surroundings.boxes = 0;
  const bool processed = matrice.ProcessXMLFile(document->Product(), "fuzz.xml");
  if (processed == (surroundings.boxes > 0)) __builtin_trap();
  surroundings.boxes = 0;
  const bool positioned = matrice.PositionAllInstances(document->Product(), "fuzz.xml", true, document->Selection());
  if (positioned == (surroundings.boxes > 0)) __builtin_trap();
}

}  // namespace
}  // namespace quintara

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quintara::Place(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
