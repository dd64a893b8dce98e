#include "matrix/vault_stage.h"

#include <algorithm>

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

Node Frame() {
  return {"FRAME", "F own", At(7), {{"BOLT", "BOLT.1", At(1), {}}, {"BOLT", "BOLT.2", At(2), {}}}};
}

Node Axle() {
  return {"AXLE", "AXLE.1", At(8), {{"NUT", "NUT.1", At(5), {}}}};
}

}  // namespace

AssemblyStructure CarInVault::Car() {
  enum : std::size_t { kBolt, kNut, kFrame, kAxle, kCar };
  AssemblyStructure car{};
  car.definitions = {
      {"BOLT", false, {}},
      {"NUT", false, {}},
      {"FRAME", true, {{"BOLT.1", kBolt, At(1)}, {"BOLT.2", kBolt, At(2)}}},
      {"AXLE", true, {{"NUT.1", kNut, At(5)}}},
      {"CAR", true, {{"FRAME.1", kFrame, At(100)}, {"NUT.7", kNut, At(200)}, {"AXLE.1", kAxle, At(300)}}}};
  car.root = kCar;
  return car;
}

CarInVault::CarInVault() {
  RunVault();
  RunZorva();
  StoreCar(Car());
  Util()->RunOperation(Of("CAR"), Operation("CopyFile"), true, nullptr, nullptr);
  OpenCar([](const std::string&) { return ComponentForm::kDesign; });
  EXPECT_TRUE(Init());
}

// As one transaction, which is written through to the disk once.
void CarInVault::StoreCar(const AssemblyStructure& car) {
  WriteProductFiles(car, folder.Path("source"), *files);
  vault->InTransaction([&] {
    for (const auto& definition : car.definitions) {
      const auto file = definition.partNumber + (definition.isAssembly ? ".ZVAProduct" : ".stp");
      if (!definition.isAssembly) folder.Write("source/" + file, TinyStep(definition.partNumber));
      objects[definition.partNumber] =
          vault->AddObject(definition.isAssembly ? "ZORVA Product" : "ZORVA Part",
                           {{"NM_CN_PART_NUMBER", definition.partNumber}}, folder.Path("source/" + file));
    }
    vault->SetStructure(Of("FRAME"), {{Of("BOLT"), 2}});
    vault->SetStructure(Of("AXLE"), {{Of("NUT"), 1}});
    vault->SetStructure(Of("CAR"), {{Of("FRAME"), 1}, {Of("NUT"), 1}, {Of("AXLE"), 1}});
  });
}

void CarInVault::Take(const Ref<zorva::Document>& opened) {
  document = opened->AsProductDocument();
  root = document->Product();
}

void CarInVault::OpenCar(const FormChoice& form) {
  if (document) document->Close();
  Take(host.Open(WorkPath("CAR.ZVAProduct"), form));
}

void CarInVault::OpenCarInPart() {
  OpenCar([](const std::string& path) {
    return path.find('\\') == path.npos ? ComponentForm::kDesign : ComponentForm::kUnloaded;
  });
}

void CarInVault::OpenCarWithout(const std::string& child) {
  OpenCar([&](const std::string& path) { return path == child ? ComponentForm::kUnloaded : ComponentForm::kDesign; });
}

void CarInVault::OpenAlone(const std::string& partNumber) {
  document->Close();
  Take(host.Application()->Documents()->Open(WorkPath(partNumber + ".ZVAProduct")));
}

Ref<zorva::Product> CarInVault::Crowd(std::size_t children) {
  AssemblyStructure crowd{};
  crowd.definitions = {{"B", false, {}}, {"R", true, {}}};
  crowd.definitions[1].children.assign(children, {"B", 0, At(0)});
  crowd.root = 1;
  return host.Build(crowd)->Product();
}

Ref<VdObject> CarInVault::GivenMatrix(const std::string& partNumber, const std::string& text,
                                      const std::string& fileType) {
  const auto name = partNumber + " Matrix" + (fileType == "xml" ? ".xml" : ".xls");
  folder.Write("source/" + name, text);
  auto matrix = vault->AddObject("Document",
                                 {{"CN_DESCRIPTION", partNumber + " Matrix"},
                                  {"NM_CN_PART_NUMBER", partNumber + " Matrix"},
                                  {"FILE_TYPE", std::to_string(vault->FileTypeId(fileType))}},
                                 folder.Path("source/" + name));
  Link(Of(partNumber), matrix, "Document Link");
  return matrix;
}

std::string CarInVault::FrameMatrix() {
  return MatrixText(Frame());
}

std::string CarInVault::AxleMatrix() {
  return MatrixText(Axle());
}

void CarInVault::GivenMatrices() {
  GivenMatrix("FRAME", FrameMatrix());
  GivenMatrix("AXLE", AxleMatrix());
}

std::vector<Ref<VdObject>> CarInVault::MatricesOf(const std::string& partNumber) const {
  std::vector<Ref<VdObject>> matrices;
  for (const auto& linked : vault->Links(Of(partNumber))) {
    if (linked.isStructure || !linked.goesOut) continue;
    matrices.push_back(Store()->ObjectById(linked.object.identity.classId, linked.object.identity.objectId));
  }
  std::ranges::sort(matrices, {}, [](const auto& matrix) { return matrix->ObjectId(); });
  return matrices;
}

std::vector<std::string> ElementsOf(const std::string& matrix) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse(matrix)) << document.ParseError().reason;
  struct Lister : pugi::xml_tree_walker {
    std::vector<std::string> lines;
    bool for_each(XmlNode& node) override {
      if (node.type() != pugi::node_element) return true;
      std::string line = node.name();
      for (const auto* name : {"FULL_INSTANCE_NAME", "PART_NUMBER", "INSTANCE_NAME", "XO"}) {
        line += std::string(" ") + node.attribute(name).value();
      }
      lines.push_back(line);
      return true;
    }
  } lister;
  document.Node().traverse(lister);
  return lister.lines;
}

std::vector<std::string> StepsOf(const std::vector<std::string>& record, const TemporaryFolder& folder) {
  static const std::vector<std::string> kTelling = {"VdBehavior.",
                                                    "VdObjectStore.DefaultBehavior",
                                                    "VdObjectStore.NewObject(",
                                                    "VdObject.InitData",
                                                    "VdObject.Refresh",
                                                    "VdObject.Retrieve",
                                                    "VdObject.GetVersion",
                                                    "VdObject.Parents",
                                                    "VdObject.Update",
                                                    "VdObject.AddToVault",
                                                    "VdObject.AddLink",
                                                    "VdRecord.ValueAs",
                                                    "VdRecord.Valuate",
                                                    "VdMetaInfo.OperationByName",
                                                    "VdSessionUtil.",
                                                    "VdQuery.Run",
                                                    "VdMask.",
                                                    "Application.ActiveDocument",
                                                    "HIXEngine.DocumentInfo",
                                                    "Position.GetComponents",
                                                    "FileSystem.F",
                                                    "FileSystem.DeleteFile",
                                                    "Files.Write(",
                                                    "Files.Rename"};
  auto prefix = folder.Path();
  std::ranges::replace(prefix, '\\', '/');
  prefix += '/';
  std::vector<std::string> steps;
  for (auto call : record) {
    const auto isBeginning = [&](const std::string& beginning) { return call.starts_with(beginning); };
    if (std::ranges::none_of(kTelling, isBeginning)) continue;
    std::ranges::replace(call, '\\', '/');
    for (auto at = call.find(prefix); at != call.npos; at = call.find(prefix)) call.erase(at, prefix.size());
    steps.push_back(call);
  }
  return steps;
}

Box ToldText(const std::string& key, int style, const std::vector<Variant>& values) {
  const TextKey withTokens{Catalogue::kMessages, key, std::vector<std::string_view>(values.size())};
  return {Cls_Utils().GetMessage(CatalogueTextOf("EN", withTokens), values), style, "Quintara"};
}

Box RunReport(const std::string& description) {
  return ToldText("COMMON.UNEXPECTED_ERROR", kCritical, {"Cls_GetMatrix.Run", description});
}

}  // namespace quintara::test
