// Stands for the check-in of an assembly too large to be loaded whole: its matrix is put together from those of
// its sub-assemblies, each of which is looked up in the vault, brought to the work directory and grafted. Held
// against the same rows read by prepared statements, the same files copied out of the store by hand, each
// parsed once, and the result saved, all as durably.

#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "durable_copy.h"
#include "hosts/cad/cad_host.h"
#include "hosts/integration/embedded_engine.h"
#include "hosts/native/native_platform.h"
#include "matrix/Cls_Matrice.h"
#include "raw_vault.h"
#include "vault_world.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kAssemblies = 1000;
constexpr int kElementsOfEach = 30;
const char* const kNumberNames[] = {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

std::string PartNumberOf(int assembly) {
  return "SUB-" + std::to_string(assembly);
}

// Positions are whole numbers, so that their texts are told apart at a glance.
void AppendElement(pugi::xml_node parent, const char* tag, const std::string& name, const std::string& above,
                   int number) {
  auto element = parent.append_child(tag);
  element.append_attribute("PART_NUMBER") = name.c_str();
  element.append_attribute("INSTANCE_NAME") = (name + ".1").c_str();
  element.append_attribute("FULL_INSTANCE_NAME") = (above + name + ".1").c_str();
  for (int i = 0; i < 12; ++i) element.append_attribute(kNumberNames[i]) = number + i;
}

// The matrix of one sub-assembly, which holds its parts directly.
std::string MatrixOf(int assembly) {
  pugi::xml_document document;
  auto instruction = document.append_child(pugi::node_pi);
  instruction.set_name("xml");
  instruction.set_value("version='1.0' encoding='UTF-8'");
  const auto name = PartNumberOf(assembly);
  AppendElement(document, "PRODUCT", name, "", assembly);
  for (int part = 1; part < kElementsOfEach; ++part) {
    const auto partName = "P-" + std::to_string(assembly) + "-" + std::to_string(part);
    AppendElement(document.document_element(), "PART", partName, name + ".1\\", assembly + part);
  }
  std::ostringstream text;
  document.save(text, "", pugi::format_raw | pugi::format_no_declaration);
  return text.str();
}

/// A vault with a product of so many sub-assemblies, their matrices beside them, and the CAD host that has the
/// product open.
class Assembly {
 public:
  explicit Assembly(int assemblies) : assemblies_(assemblies) {
    platform_->Register("Veldora.VdApplication", world_.Vault().Application());
    WriteFiles();
    FillProcess();
    auto& globals = Process();
    world_.Vault().InTransaction([&] {
      FillVault();
      globals.gSessionUtil->RunOperation(root_, globals.gSession->MetaInfo()->OperationByName("CopyFile"), true,
                                         nullptr, nullptr);
    });
    document_ = host_.Application()->Documents()->Open(WorkPath("ROOT.ZVAProduct"))->AsProductDocument();
    engine_ = MakeRef<EmbeddedEngine>(EmbeddedEngine::Surroundings{gate_, globals.gSession, host_.Application(),
                                                                   &world_.Vault().Integration(), nullptr});
    Activate();
  }
  Assembly(const Assembly&) = delete;
  Assembly& operator=(const Assembly&) = delete;

  /// Makes it the one of the process.
  void Activate() {
    InstallPlatform(platform_);
    FillProcess();
    Process().gHIX = engine_;
  }
  World& TheWorld() { return world_; }
  Ref<zorva::Product> Root() const { return document_->Product(); }
  int Size() const { return assemblies_; }
  std::string WorkPath(const std::string& name) const { return Process().gWorkDirectory + "/" + name; }
  std::string SourcePath(const std::string& name) const { return source_.PathOf(name); }

  // The result is as if it had been written by whoever knows the sub-assemblies.
  void Check(const std::string& path) const {
    pugi::xml_document merged;
    Demand(static_cast<bool>(merged.load_file(path.c_str())), "the merged matrix can't be read");
    const auto root = merged.document_element();
    const std::string above = root.attribute("FULL_INSTANCE_NAME").value() + std::string("\\");
    int assembly = 0;
    for (const auto product : root.children()) {
      pugi::xml_document own;
      own.load_string(MatrixOf(assembly++).c_str());
      CheckElement(product, own.document_element(), above);
      auto part = product.first_child();
      for (const auto wanted : own.document_element().children()) {
        CheckElement(part, wanted, above);
        part = part.next_sibling();
      }
      Demand(!part, "an element is too many");
    }
    Demand(assembly == assemblies_, "sub-assemblies are missing");
  }

 private:
  static void CheckElement(pugi::xml_node found, pugi::xml_node wanted, const std::string& above) {
    for (const auto attribute : wanted.attributes()) {
      const bool isName = attribute.name() == std::string("FULL_INSTANCE_NAME");
      const auto text = (isName ? above : std::string()) + attribute.value();
      Demand(found.attribute(attribute.name()).value() == text, "an element is wrong: " + text);
    }
  }

  void FillProcess() {
    auto& globals = Process();
    globals.gSession = world_.Session();
    globals.gSessionUtil = globals.gSession->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil();
    const auto paths = globals.gSession->GetService("VeldoraClientContextService.VdClientContextService")
                           ->AsVdClientContextService()
                           ->Context()
                           ->Paths();
    globals.gWorkDirectory = paths->WorkDirectoryOf(paths->CurrentKey());
    globals.gZorva = host_.Application();
    globals.gMatrixType = MatrixType::XML;
    globals.gAttrPartNumber = "NM_CN_PART_NUMBER";
    globals.gAttrId = "CN_ID";
    globals.gAttrDescription = "CN_DESCRIPTION";
    globals.gClassDocuments = "Document";
    globals.gClassDocLink = "Document Link";
    globals.OBJECT_ID = "OBJECT_ID";
    globals.FILE_TYPE = "FILE_TYPE";
    globals.CAD_REF_FILE_NAME = "CAD_REF_FILE_NAME";
    globals.OPERATION_ID = "OPERATION_ID";
  }
  void WriteFiles() {
    AssemblyStructure structure;
    AssemblyStructure::Definition root{"ROOT", true, {}};
    for (int i = 0; i < assemblies_; ++i) {
      structure.definitions.push_back({PartNumberOf(i), true, {}});
      root.children.push_back({PartNumberOf(i) + ".1", static_cast<std::size_t>(i), kIdentityPosition});
      std::ofstream(SourcePath(PartNumberOf(i) + " Matrix.xml"), std::ios::binary) << MatrixOf(i);
    }
    structure.root = structure.definitions.size();
    structure.definitions.push_back(root);
    UnsyncedContents files(gate_);
    WriteProductFiles(structure, source_.PathOf(""), files);
  }
  void FillVault() {
    auto& vault = world_.Vault();
    const auto session = world_.Session();
    const auto xml = std::to_string(vault.FileTypeId("xml"));
    const auto link = session->MetaInfo()->ClassByName("Document Link")->ClassId();
    std::vector<EmbeddedVault::Component> components;
    for (int i = 0; i < assemblies_; ++i) {
      const auto name = PartNumberOf(i);
      components.push_back({AddProduct(name), 1});
      const auto matrix = vault.AddObject("Document", {{"CN_DESCRIPTION", name + " Matrix"}, {"FILE_TYPE", xml}},
                                          SourcePath(name + " Matrix.xml"));
      components.back().object->AddLink(link, matrix, nullptr, session->ObjectStore()->DefaultBehavior());
    }
    root_ = AddProduct("ROOT");
    vault.SetStructure(root_, components);
  }
  Ref<veldora::VdObject> AddProduct(const std::string& name) {
    return world_.Vault().AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", name}}, SourcePath(name + ".ZVAProduct"));
  }

  int assemblies_;
  Folder source_;
  World world_;
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  std::shared_ptr<NativePlatform> platform_ =
      std::make_shared<NativePlatform>(gate_, [](const std::string& text, int, const std::string&) {
        std::fprintf(stderr, "%s\n", text.c_str());
        return answer::kOk;
      });
  CadHost host_{{gate_, std::make_shared<NativeContents>(gate_), {}}};
  Ref<veldora::VdObject> root_;
  Ref<zorva::ProductDocument> document_;
  Ref<EmbeddedEngine> engine_;
};

// Made once for each size, since that takes longer than what is measured.
Assembly& AssemblyOf(benchmark::State& state) {
  static std::map<std::int64_t, Assembly> assemblies;
  auto& assembly = assemblies.try_emplace(state.range(0), static_cast<int>(state.range(0))).first->second;
  assembly.Activate();
  return assembly;
}

// Each matrix is new in the work directory, as at a first check-in.
void RemoveCopies(const Assembly& assembly) {
  for (int i = 0; i < assembly.Size(); ++i) fs::remove(assembly.WorkPath(PartNumberOf(i) + " Matrix.xml"));
}

void Merge(benchmark::State& state) {
  auto& assembly = AssemblyOf(state);
  const auto path = assembly.WorkPath("ROOT Matrix.xml");
  for (auto _ : state) {
    RemoveCopies(assembly);
    const auto before = assembly.TheWorld().Vault().StatementCount();
    const auto start = Clock::now();
    Demand(Cls_Matrice().MergeXMLMatrix(assembly.Root(), path), "not merged");
    Measure(state, start);
    state.counters["statements"] = static_cast<double>(assembly.TheWorld().Vault().StatementCount() - before);
    assembly.Check(path);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * kElementsOfEach);
}

/// The same rows, each by its own prepared statement.
class RowsByHand {
 public:
  explicit RowsByHand(const RawDatabase& database)
      : noted_(database, "SELECT object_id FROM vd_working_copy WHERE user_id = ? AND path = ?"),
        object_(database,
                "SELECT class_id, identity, version, owner_id, deposit_id FROM vd_object WHERE object_id = ?"),
        product_(database, "SELECT * FROM ZORVA_PRODUCT WHERE OBJECT_ID = ?"),
        fileType_(database, "SELECT OBJECT_ID FROM FILE_TYPE WHERE TDM_NAME = ?"),
        matrix_(database,
                "SELECT S.OBJECT_ID FROM ZORVA_PRODUCT F JOIN vd_link L ON L.from_object = F.OBJECT_ID JOIN DOCUMENT S "
                "ON S.OBJECT_ID = L.to_object WHERE F.OBJECT_ID = ? AND S.CN_DESCRIPTION GLOB '*Matrix' AND "
                "S.FILE_TYPE = ? ORDER BY S.OBJECT_ID"),
        newest_(database,
                "SELECT object_id FROM vd_object WHERE class_id = ? AND identity = ? ORDER BY version DESC LIMIT 1"),
        document_(database, "SELECT CAD_REF_FILE_NAME, * FROM DOCUMENT WHERE OBJECT_ID = ?"),
        deposit_(database, "SELECT sha256, size FROM vd_deposit WHERE deposit_id = ?"),
        user_(database.Number("SELECT user_id FROM vd_user LIMIT 1")) {}

  struct Stored {
    std::string name;
    std::string sha256;
  };
  Stored MatrixOf(const std::string& path) {
    const auto product = Number(noted_.Ask({user_, path})[0]);
    Demand(!object_.Ask({product}).empty() && !product_.Ask({product}).empty(), "a row is missing");
    const auto type = Number(fileType_.Ask({std::string("xml")})[0]);
    const auto linked = Number(matrix_.Ask({product, type})[0]);
    const auto row = object_.Ask({linked});
    const auto newest = Number(newest_.Ask({Number(row[0]), row[1]})[0]);
    const auto deposit = Number(object_.Ask({newest})[4]);
    return {document_.Ask({newest})[0], deposit_.Ask({deposit})[0]};
  }

 private:
  static std::int64_t Number(const std::string& text) { return std::stoll(text); }

  RawDatabase::Question noted_, object_, product_, fileType_, matrix_, newest_, document_, deposit_;
  std::int64_t user_;
};

void Graft(pugi::xml_node root, const std::string& path, const std::string& above) {
  pugi::xml_document own;
  Demand(static_cast<bool>(own.load_file(path.c_str())), "a matrix can't be read");
  auto product = root.append_copy(own.document_element());
  const auto prefix = [&](pugi::xml_node element) {
    auto name = element.attribute("FULL_INSTANCE_NAME");
    name.set_value((above + name.value()).c_str());
  };
  prefix(product);
  for (const auto part : product.children()) prefix(part);
}

void SaveByHand(const pugi::xml_document& document, const std::string& path) {
  std::ofstream beside(path + ".new", std::ios::binary);
  document.save(beside, "", pugi::format_raw);
  beside.close();
  Sync(path + ".new");
  fs::rename(path + ".new", path);
  Sync(fs::path(path).parent_path().string());
}

void MergeByHand(benchmark::State& state, void (*copyFile)(const std::string& from, const std::string& to)) {
  auto& assembly = AssemblyOf(state);
  const auto path = assembly.WorkPath("ROOT by hand.xml");
  const RawDatabase database(assembly.TheWorld().DatabasePath());
  for (auto _ : state) {
    RemoveCopies(assembly);
    const auto start = Clock::now();
    RowsByHand rows(database);
    pugi::xml_document merged;
    AppendElement(merged, "PRODUCT", "ROOT", "", 0);
    auto root = merged.document_element();
    for (int i = 0; i < assembly.Size(); ++i) {
      const auto stored = rows.MatrixOf(assembly.WorkPath(PartNumberOf(i) + ".ZVAProduct"));
      const auto copy = assembly.WorkPath(stored.name);
      copyFile(assembly.TheWorld().StorePath("objects/" + stored.sha256.substr(0, 2) + "/" + stored.sha256), copy);
      Graft(root, copy, "ROOT.1\\");
    }
    SaveByHand(merged, path);
    Measure(state, start);
    assembly.Check(path);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * kElementsOfEach);
}

template <class Function>
void Register(const std::string& name, Function function, int assemblies) {
  benchmark::RegisterBenchmark(name.c_str(), function)
      ->Arg(assemblies)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(1)
      ->Repetitions(3);
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  Register("Merge", Merge, kAssemblies);
  Register(
      "MergeByHand", [](benchmark::State& state) { MergeByHand(state, CopyDurably); }, kAssemblies);
  // Without a bound: what the copies cost that needn't survive the machine.
  Register(
      "MergeByHand/copies not synced", [](benchmark::State& state) { MergeByHand(state, CopyOnly); }, kAssemblies);
  Register("Merge/four times", Merge, 4 * kAssemblies);
  Register("Merge/a quarter", Merge, kAssemblies / 4);
  return RunAndJudge(
      argc, argv,
      {{"Merge of 1,000 sub-assemblies, over bare rows and files", {"Merge"}, {"MergeByHand"}, 2.0},
       {"Merge, time for an element, 4,000 over 250", {"Merge/four times", "Merge/a quarter"}, {}, 1.3}});
}
