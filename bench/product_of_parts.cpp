#include "product_of_parts.h"

#include <cstdio>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>

#include "access/session/the_platform.h"
#include "base/glb.h"
#include "hosts/integration/embedded_engine.h"
#include "hosts/vault/assembly_import.h"
#include "nls/embedded_texts.h"

namespace quintara::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLightSize = 16384;
const char* const kNumberNames[] = {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

std::map<std::string, std::string> Texts() {
  std::map<std::string, std::string> texts;
  for (const auto& [path, bytes] : EmbeddedTexts()) texts[std::string(path)] = bytes;
  return texts;
}

std::string LittleEndian(std::size_t number) {
  std::string bytes;
  for (unsigned i = 0; i < 4; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

// As large as that of a small part; nobody here looks into the mesh.
std::string LightFile(const std::string& partNumber) {
  auto bytes = GlbWithoutMeshes(partNumber);
  const auto mesh = (kLightSize - bytes.size()) / 4 * 4 - 8;
  bytes += LittleEndian(mesh) + std::string("BIN\0", 4);
  while (bytes.size() < kLightSize / 4 * 4) bytes += partNumber;
  bytes.resize(kLightSize / 4 * 4);
  return bytes.replace(8, 4, LittleEndian(bytes.size()));
}

std::string PartFile(const std::string& partNumber) {
  return "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n#1=PRODUCT('id','" + partNumber +
         "','',(#2));\nENDSEC;\nEND-ISO-10303-21;\n";
}

void Write(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::array<double, 12> At(double x, double y) {
  return {1, 0, 0, 0, 1, 0, 0, 0, 1, x, y, 0};
}

std::array<double, 12> InModule(int part) {
  return At(0, 1 + part % ProductOfParts::kPartsOfAModule);
}

std::array<double, 12> InRoot(int module) {
  return At(1 + module, 0);
}

std::string ModuleName(int module) {
  return "MODULE-" + std::to_string(module);
}

pugi::xml_node Append(pugi::xml_node parent, const char* tag, const std::string& partNumber,
                      const std::array<double, 12>& position) {
  const std::string above = parent.attribute("FULL_INSTANCE_NAME").value();
  auto element = parent.append_child(tag);
  const auto name = partNumber + ".1";
  element.append_attribute("PART_NUMBER") = partNumber.c_str();
  element.append_attribute("INSTANCE_NAME") = name.c_str();
  element.append_attribute("FULL_INSTANCE_NAME") = (above.empty() ? name : above + "\\" + name).c_str();
  for (std::size_t i = 0; i < position.size(); ++i) element.append_attribute(kNumberNames[i]) = position[i];
  return element;
}

std::string Matrix(int parts) {
  pugi::xml_document document;
  auto instruction = document.append_child(pugi::node_pi);
  instruction.set_name("xml");
  instruction.set_value("version='1.0' encoding='UTF-8'");
  auto root = Append(document, "PRODUCT", "ROOT", At(0, 0));
  pugi::xml_node module;
  for (int part = 0; part < parts; ++part) {
    const int number = part / ProductOfParts::kPartsOfAModule;
    if (part % ProductOfParts::kPartsOfAModule == 0) {
      module = Append(root, "PRODUCT", ModuleName(number), InRoot(number));
    }
    Append(module, "PART", ProductOfParts::PartNumber(part), InModule(part));
  }
  std::ostringstream text;
  document.save(text, "", pugi::format_raw | pugi::format_no_declaration);
  return text.str();
}

// The files of the assemblies don't matter here: nobody opens them.
AssemblyPlan PlanOf(int parts, const Folder& source) {
  AssemblyPlan plan;
  const auto add = [&](const std::string& partNumber, bool isAssembly) -> AssemblyPlan::Definition& {
    const auto file = source.PathOf(partNumber + (isAssembly ? ".ZVAProduct" : ".stp"));
    Write(file, isAssembly ? partNumber : PartFile(partNumber));
    return plan.definitions.emplace_back(AssemblyPlan::Definition{partNumber, isAssembly, {}, file, {}, {}});
  };
  for (int part = 0; part < parts; ++part) {
    const auto partNumber = ProductOfParts::PartNumber(part);
    auto& definition = add(partNumber, false);
    definition.lightFile = source.PathOf(partNumber + ".lwt");
    Write(definition.lightFile, LightFile(partNumber));
  }
  std::vector<AssemblyPlan::Child> modules;
  for (int first = 0; first < parts; first += ProductOfParts::kPartsOfAModule) {
    auto& module = add(ModuleName(first / ProductOfParts::kPartsOfAModule), true);
    for (int i = 0; i < ProductOfParts::kPartsOfAModule; ++i)
      module.children.push_back({static_cast<std::size_t>(first + i)});
    modules.push_back({plan.definitions.size() - 1});
  }
  add("ROOT", true).children = modules;
  return plan;
}

}  // namespace

ProductOfParts::ProductOfParts(int parts, std::shared_ptr<NativeContents> files)
    : world_(std::move(files), Texts()), parts_(static_cast<std::size_t>(parts)) {
  platform_ = std::make_shared<NativePlatform>(gate_, [](const std::string& text, int style, const std::string&) {
    if (style != box::kInformationModal) std::fprintf(stderr, "%s\n", text.c_str());
    return answer::kOk;
  });
  auto& vault = world_.Vault();
  platform_->Register("Veldora.VdApplication", vault.Application());
  platform_->RegisterMaker("Veldora.VdClientContext", [&vault] { return vault.NewClientContext(); });
  platform_->RegisterMaker("Veldora.VdTranslator", [&vault] { return vault.NewTranslator(); });
  platform_->Register("ZORVA.Application", zorva_);
  host_.RegisterItem("HIXEngine", MakeRef<EmbeddedEngine>(EmbeddedEngine::Surroundings{gate_, world_.Session(), zorva_,
                                                                                       &vault.Integration(), nullptr}));
  Store();
}

void ProductOfParts::Store() {
  const auto plan = PlanOf(Size(), source_);
  AssemblyImportOptions options;
  options.beforeCheckIn = [&](const Ref<veldora::VdObject>& assembly, std::size_t definition) {
    if (definition + 1 == plan.definitions.size()) AddMatrix(assembly);
  };
  const auto stored = world_.Vault().ImportAssembly(plan, options);
  for (std::size_t i = 0; i < parts_.size(); ++i) parts_[i] = stored[i].identity.objectId;
  classOfParts_ = stored.front().identity.classId;
  const auto& root = stored.back().identity;
  root_ = world_.Session()->ObjectStore()->ObjectById(root.classId, root.objectId);
}

void ProductOfParts::AddMatrix(const Ref<veldora::VdObject>& root) {
  const auto session = world_.Session();
  const auto file = source_.PathOf("ROOT Matrix.xml");
  Write(file, Matrix(Size()));
  const auto matrix = world_.Vault().AddObject(
      "Document", {{"CN_DESCRIPTION", "ROOT Matrix"}, {"FILE_TYPE", std::to_string(world_.Vault().FileTypeId("xml"))}},
      file);
  root->AddLink(session->MetaInfo()->ClassByName("Document Link")->ClassId(), matrix, nullptr,
                session->ObjectStore()->DefaultBehavior());
  matrixId_ = matrix->ObjectId();
}

std::array<double, 12> ProductOfParts::PositionOf(int part) {
  auto position = InModule(part);
  const auto module = InRoot(part / kPartsOfAModule);
  for (std::size_t i = 9; i < position.size(); ++i) position[i] += module[i];
  return position;
}

Ref<veldora::VdRecList> ProductOfParts::Selection() {
  const auto objects = world_.Session()->ObjectStore()->NewObjects();
  objects->Add(root_);
  return objects->Records();
}

// Set aside, not removed: a file system takes its time to make files where many have just gone.
void ProductOfParts::Activate() {
  InstallPlatform(platform_);
  const auto work = fs::path(world_.WorkPath("")).parent_path();
  fs::rename(work, source_.PathOf("work-" + std::to_string(++workFolders_)));
  fs::create_directory(work);
}

}  // namespace quintara::bench
