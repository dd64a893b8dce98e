#include "wip/plant_in_vault.h"

#include <array>

#include "access/session/process.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

AssemblyStructure Structure() {
  enum : std::size_t { kBolt, kPlate, kGroup, kPlant };
  AssemblyStructure plant{};
  plant.definitions = {
      {"BOLT", false, {}},
      {"PLATE", false, {}},
      {"GROUP", true, {{"BOLT.1", kBolt, At(2)}, {"BOLT.2", kBolt, At(3)}}},
      {"PLANT", true, {{"BOLT.1", kBolt, At(1)}, {"GROUP.1", kGroup, At(0, 100)}, {"PLATE.1", kPlate, At(0, 0, 5)}}}};
  plant.root = kPlant;
  return plant;
}

}  // namespace

Node PlantInVault::Plant() {
  return {"PLANT",
          "PLANT",
          At(0),
          {{"BOLT", "BOLT.1", At(1), {}},
           {"GROUP", "GROUP.1", At(0, 100), {{"BOLT", "BOLT.1", At(2), {}}, {"BOLT", "BOLT.2", At(3), {}}}},
           {"PLATE", "PLATE.1", At(0, 0, 5), {}}}};
}

PlantInVault::PlantInVault() {
  WriteProductFiles(Structure(), folder.Path("source"), *files);
  vault->InTransaction([this] { AddAll(); });
  platform.Native().OnSleep([this] { host.NoteSleep(); });
}

void PlantInVault::AddAll() {
  bolt = Add("ZORVA Part", "BOLT", ".stp");
  plate = Add("ZORVA Part", "PLATE", ".stp");
  group = Add("ZORVA Product", "GROUP", ".ZVAProduct");
  plant = Add("ZORVA Product", "PLANT", ".ZVAProduct");
  vault->SetStructure(group, {{bolt, 2}});
  vault->SetStructure(plant, {{bolt, 1}, {group, 1}, {plate, 1}});
  for (const auto& object : {bolt, plate, group, plant}) CheckIn(object);
}

Ref<veldora::VdObject> PlantInVault::Add(const std::string& className, const std::string& partNumber,
                                         const std::string& ending) {
  const bool isPart = ending == ".stp";
  const auto file = "source/" + partNumber + ending;
  if (isPart) folder.Write(file, TinyStep(partNumber));
  folder.Write(file + ".lwt", TinyLight(partNumber));
  return vault->AddObject(className,
                          {{"NM_CN_PART_NUMBER", partNumber},
                           {"FILE_TYPE", std::to_string(vault->FileTypeId(isPart ? "ZVAPart" : "ZVAProduct"))}},
                          folder.Path(file));
}

Ref<veldora::VdObject> PlantInVault::GivenMatrix(const Ref<veldora::VdObject>& product, const std::string& partNumber,
                                                 MatrixType type) {
  const bool isXml = type == MatrixType::XML;
  const auto file = "source/" + partNumber + " Matrix" + (isXml ? ".xml" : ".xls");
  folder.Write(file, isXml ? MatrixText(Plant()) : "a workbook");
  const auto fileType = std::to_string(vault->FileTypeId(isXml ? "xml" : "Microsoft Excel"));
  auto matrix = vault->AddObject("Document",
                                 {{"CN_DESCRIPTION", partNumber + " Matrix"},
                                  {"NM_CN_PART_NUMBER", partNumber + " Matrix"},
                                  {"FILE_TYPE", fileType}},
                                 folder.Path(file));
  const bool isCheckedIn = StateOf(product) == veldora::state::kCheckedIn;
  if (isCheckedIn) CheckOut(product);
  Link(product, matrix, "Document Link");
  if (isCheckedIn) CheckIn(product);
  return matrix;
}

void PlantInVault::RunWith(const UserScript& user) {
  desk.WhenShown("MainPanel", user);
  RunOn({plant});
}

void PlantInVault::CreateWith(const UserScript& user) {
  RunWith([&](ScriptedView& view) {
    if (user) user(view);
    view.Press("cmdCreateWIP");
  });
}

void PlantInVault::Open(const std::string& partNumber) {
  host.Build(StructureOf({partNumber, partNumber, kIdentityPosition, {}}));
}

Ref<zorva::Product> PlantInVault::Root() {
  return host.Application()->ActiveDocument()->AsProductDocument()->Product();
}

std::vector<Component> PlantInVault::Components() {
  std::vector<Component> components;
  const auto children = Root()->Products();
  for (int i = 1; i <= children->Count(); ++i) {
    const auto child = children->Item(i);
    Component component{child->PartNumber(), child->Name(), {}};
    child->Position()->GetComponents(component.position);
    components.push_back(std::move(component));
  }
  return components;
}

std::vector<std::string> PlantInVault::Marks() {
  std::vector<std::string> marks;
  const auto parameters = Root()->Parameters();
  for (const auto* name : {"WIP", "From", "DocXMLCID", "DocXMLOID", "DocExcelCID", "DocExcelOID"}) {
    const auto text = Utils().ReadStringProperty(Root(), name, "String");
    if (!text.empty()) marks.push_back(name + ("=" + text));
  }
  return marks;
}

std::vector<std::string> PlantInVault::Progress() const {
  const std::string beginning = "frmProgressBar.SetText(lbl, ";
  std::vector<std::string> lines;
  for (const auto& call : desk.Record()) {
    if (call.starts_with(beginning)) lines.push_back(call.substr(beginning.size(), call.size() - beginning.size() - 1));
  }
  return lines;
}

}  // namespace quintara::test
