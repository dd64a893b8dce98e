#include <cstdio>
#include <memory>

#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "matrix/Cls_Matrice.h"
#include "windows/counter_item.h"
#include "windows/figures.h"
#include "windows/other_process.h"
#include "windows/served_product.h"

namespace quintara::bench {
namespace {

// Beside one call for each operation there is one for each name, once.
constexpr double kBound = 1.01;

PositionMatrix PositionOf(const Ref<zorva::Product>& component) {
  PositionMatrix position{};
  component->Position()->GetComponents(position);
  return position;
}

// The same product in this process: what the logic asks for with nothing in between.
class Direct {
 public:
  std::string WriteMatrix(const std::string& path) {
    Demand(Cls_Matrice().CreateXMLFile(host_.Build(PositioningTree().structure)->Product(), path),
           "no matrix was written");
    return path;
  }
  int OperationsOfPositioning(const std::string& matrix) {
    root = host_.Build(FlatProduct(PositioningTree().LeafInstances()))->Product();
    gate_->StartRecording();
    Demand(Cls_Matrice().ProcessXMLFile(root, matrix), "nothing was placed");
    gate_->StopRecording();
    return static_cast<int>(gate_->Record().size());
  }

  Ref<zorva::Product> root;

 private:
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  CadHost host_{{gate_, std::make_shared<NativeContents>(gate_), {}}};
};

void DemandSamePositions(const Ref<zorva::Product>& placed, const Ref<zorva::Product>& expected) {
  const auto children = placed->Products();
  const int count = expected->Products()->Count();
  Demand(children->Count() == count, "a component is missing");
  for (int i = 1; i <= count; ++i) {
    Demand(PositionOf(children->Item(i)) == PositionOf(expected->Products()->Item(i)),
           "a component isn't in its place");
  }
}

}  // namespace

bool PositioningFigure() {
  const Folder folder;
  Direct direct;
  const auto matrix = direct.WriteMatrix(folder.PathOf("matrix.xml"));
  const int operations = direct.OperationsOfPositioning(matrix);
  const int components = direct.root->Products()->Count();

  const OtherProcess process(kServeProduct);
  const auto application = process.Attach()->AsApplication();
  const auto root = application->ActiveDocument()->AsProductDocument()->Product();
  double seconds = 0;
  const auto requests = RequestsOf(application->GetItem(kCounter), [&] {
    const auto start = Clock::now();
    Demand(Cls_Matrice().ProcessXMLFile(root, matrix), "nothing was placed");
    seconds = SecondsSince(start);
  });
  DemandSamePositions(root, direct.root);

  const auto each = [&](int count) { return static_cast<double>(count) / components; };
  std::printf(
      "positioning %d components of another process: %d invocations, %d ids of names, %d requests of the system\n"
      "itself, that is %.3f, %.3f and %.3f a component, of %.3f operations; %.0f ms, %.2f ms a component\n",
      components, requests.invocations, requests.names, requests.others, each(requests.invocations),
      each(requests.names), each(requests.others), each(operations), seconds * 1000, seconds * 1000 / components);
  return PrintFigure("cross-process calls a component against the operations asked",
                     static_cast<double>(requests.invocations + requests.names) / operations, kBound);
}

}  // namespace quintara::bench
