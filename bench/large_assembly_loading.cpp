#include "large_assembly_loading.h"

#include <STEPCAFControl_Reader.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopLoc_Location.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>
#include <map>
#include <memory>

#include "geometry/kernel.h"
#include "geometry/scene_model.h"
#include "hosts/cad/cad_host.h"
#include "large_assembly.h"
#include "vault_world.h"

namespace quintara::bench {
namespace {

// Kept until the process ends: giving a large assembly back takes its time too, which nobody waits for.
const Document& Kept(std::unique_ptr<Document> document) {
  return *document.release();
}

void DemandWhole(const Document& document) {
  int parts = 0;
  int instances = 0;
  std::map<int, bool> isPart;
  for (const auto& label : document.Shapes()) {
    isPart[label.Tag()] = !XCAFDoc_ShapeTool::IsAssembly(label) && !XCAFDoc_ShapeTool::GetShape(label).IsNull();
    if (isPart[label.Tag()]) ++parts;
  }
  for (const auto& label : document.Shapes()) {
    TDF_LabelSequence components;
    XCAFDoc_ShapeTool::GetComponents(label, components);
    for (const auto& component : components) {
      TDF_Label referred;
      if (XCAFDoc_ShapeTool::GetReferredShape(component, referred) && isPart[referred.Tag()]) ++instances;
    }
  }
  // Each group stands in one module, and each module once.
  Demand(parts == LargeAssembly::kParts && instances == LargeAssembly::kInstances,
         "the assembly isn't whole: " + std::to_string(parts) + " parts, " + std::to_string(instances) + " instances");
}

struct Wip {
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  CadHost host{{gate, std::make_shared<NativeContents>(gate), {}}};
  Ref<zorva::Product> root;

  Wip(const std::string& path, int components)
      : root(host.Application()->Documents()->Open(path)->AsProductDocument()->Product()) {
    Demand(root->Products()->Count() == components, "components of the WIP are missing");
  }
};

SceneNode SceneOf(const Ref<zorva::Product>& root) {
  SceneNode scene;
  scene.partNumber = root->PartNumber();
  const auto components = root->Products();
  for (int i = 1, count = components->Count(); i <= count; ++i) {
    const auto component = components->Item(i);
    SceneNode node{component->Name(), component->PartNumber(), {}, {}, {}};
    component->Position()->GetComponents(node.position);
    node.file = component->Reference()->Parent()->AsDocument()->FullName();
    Demand(node.file.ends_with(".lwt"), node.name + " isn't light");
    scene.children.push_back(std::move(node));
  }
  return scene;
}

// The places of all instances, by part number of the root and instance names, parted by backslashes.
void Collect(const TDF_Label& assembly, const std::string& path, const TopLoc_Location& location,
             std::map<std::string, PositionMatrix>& places) {
  TDF_LabelSequence components;
  XCAFDoc_ShapeTool::GetComponents(assembly, components);
  for (const auto& component : components) {
    TDF_Label referred;
    XCAFDoc_ShapeTool::GetReferredShape(component, referred);
    const auto place = location * XCAFDoc_ShapeTool::GetLocation(component);
    const auto own = path + "\\" + NameOf(component);
    places[own] = ToPosition(place.Transformation());
    Collect(referred, own, place, places);
  }
}

}  // namespace

void LoadWholeFromStep(const std::string& path) {
  const auto& document = Kept(std::make_unique<Document>());
  auto& reader = *new STEPCAFControl_Reader;  // kept too
  reader.SetNameMode(Standard_True);
  reader.SetColorMode(Standard_True);
  reader.SetLayerMode(Standard_False);
  reader.SetPropsMode(Standard_False);
  reader.SetSHUOMode(Standard_False);
  reader.SetGDTMode(Standard_False);
  reader.SetMatMode(Standard_False);
  reader.SetViewMode(Standard_False);
  auto target = document.Get();
  Demand(reader.ReadFile(path.c_str()) == IFSelect_RetDone && reader.Transfer(target), path + " can't be read");
  DemandWhole(document);
}

void LoadWholeFromBinary(const std::string& path) {
  DemandWhole(Kept(std::make_unique<Document>(path, path)));
}

void LoadWipWithMeshes(const std::string& path, int components) {
  const Wip wip(path, components);
  const auto& document = Kept(std::make_unique<Document>());
  SceneModel model(document, Detail::kMesh, {});
  const auto whole = model.Add(SceneOf(wip.root));
  model.Finish();
  Demand(!whole.IsNull() && model.Lines().empty(), "a mesh of the WIP is missing");
}

void CheckPlaces(const std::string& wip, const std::string& binary, int components) {
  const Document document(binary, binary);
  const auto whole = document.FreeShapes().front();
  std::map<std::string, PositionMatrix> places;
  Collect(whole, NameOf(whole), {}, places);
  for (const auto& component : SceneOf(Wip(wip, components).root).children) {
    const auto place = places.find(component.name);
    Demand(place != places.end(), component.name + " is no instance of the assembly");
    for (std::size_t i = 0; i < component.position.size(); ++i) {
      constexpr double kRounding = 1e-6;  // that of the STEP file, over three levels
      Demand(std::abs(component.position[i] - place->second[i]) < kRounding, component.name + " is out of place");
    }
  }
}

}  // namespace quintara::bench
