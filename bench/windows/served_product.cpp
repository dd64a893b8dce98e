#include "windows/served_product.h"

#include <memory>

#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "windows/counter_item.h"
#include "windows/other_process.h"

namespace quintara::bench {
namespace {

constexpr int kElements = 1'127;  // a thousand of them are leaves
constexpr int kBranches = 2;
constexpr unsigned kSeed = 20'26;

}  // namespace

const BenchTree& PositioningTree() {
  static const auto tree = MakeTree(kElements, kBranches, LeafParts::kMany, kSeed);
  return tree;
}

int ServeProduct(const std::string& classText) {
  const auto gate = std::make_shared<Gate>();
  CadHost host({gate, std::make_shared<NativeContents>(gate), {}});
  host.Build(FlatProduct(PositioningTree().LeafInstances()));
  host.RegisterItem(kCounter, MakeRef<CounterItem>());
  return ServeUntilTheEnd(host.Application(), classText);
}

}  // namespace quintara::bench
