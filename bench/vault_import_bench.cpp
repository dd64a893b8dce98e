#include "vault_import_bench.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "hosts/vault/assembly_import.h"
#include "hosts/vault/sha256.h"
#include "raw_vault.h"
#include "vault_world.h"

namespace quintara::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kObjects = 10000;
constexpr std::size_t kFan = 16;
constexpr std::size_t kFileSize = 4096;
constexpr std::size_t kLightSize = 1024;

std::string Bytes(const std::string& seed, std::size_t size) {
  std::string bytes;
  while (bytes.size() < size) bytes += seed + '\n';
  bytes.resize(size);
  return bytes;
}

// An assembly of parts and sub-assemblies, `kFan` children each, with its files on the disk.
class SplitAssembly {
 public:
  SplitAssembly() {
    std::vector<std::size_t> level;
    while (level.size() < kObjects - kObjects / kFan) level.push_back(Add("P", ".stp", false, {}));
    while (level.size() > 1) {
      std::vector<std::size_t> above;
      for (std::size_t first = 0; first < level.size(); first += kFan) {
        std::vector<AssemblyPlan::Child> children;
        for (auto at = first; at < std::min(first + kFan, level.size()); ++at) children.push_back({level[at], 1});
        above.push_back(Add("A", ".ZVAProduct", true, std::move(children)));
      }
      level = std::move(above);
    }
  }

  struct Content {
    std::string name;
    std::string bytes;
    std::string sha256;
  };
  const AssemblyPlan& Plan() const { return plan_; }
  const Content& FileOf(std::size_t definition) const { return contents_[2 * definition]; }
  const Content& LightFileOf(std::size_t definition) const { return contents_[2 * definition + 1]; }
  const std::vector<Content>& Contents() const { return contents_; }

 private:
  std::string Write(const std::string& name, std::size_t size) {
    auto bytes = Bytes(name, size);
    std::ofstream(folder_.PathOf(name), std::ios::binary) << bytes;
    contents_.push_back({name, bytes, vault::Sha256Text(bytes)});
    return folder_.PathOf(name);
  }
  std::size_t Add(const std::string& letter, const std::string& extension, bool isAssembly,
                  std::vector<AssemblyPlan::Child> children) {
    const auto place = plan_.definitions.size();
    const auto number = letter + std::to_string(place);
    const auto file = Write(number + extension, kFileSize);
    const auto light = Write(number + ".lwt", kLightSize);
    plan_.definitions.push_back({number, isAssembly, {}, file, light, std::move(children)});
    return place;
  }

  Folder folder_;
  AssemblyPlan plan_;
  std::vector<Content> contents_;
};

const SplitAssembly& TheAssembly() {
  static const SplitAssembly assembly;
  return assembly;
}

// Nothing is wrong in the vault, and the whole assembly stands in it.
void DemandAssembly(World& world) {
  auto& vault = world.Vault();
  const auto& plan = TheAssembly().Plan();
  Demand(vault.Check().empty(), "the vault isn't sound");
  for (const auto& object : vault.PreviewImport(plan, {})) {
    Demand(object.outcome == ImportedObject::Outcome::kUnchanged, "the vault doesn't hold the assembly");
  }
}

}  // namespace

void Import(benchmark::State& state) {
  const auto& plan = TheAssembly().Plan();
  for (auto _ : state) {
    World world;
    world.Vault();
    const auto start = Clock::now();
    const auto objects = world.Vault().ImportAssembly(plan, {});
    Measure(state, start);
    Demand(objects.size() == plan.definitions.size(), "objects are missing");
    DemandAssembly(world);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(plan.definitions.size()));
}

namespace {

void WriteSynced(const std::string& path, const std::string& bytes) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  Demand(file >= 0 && ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()) &&
             ::fsync(file) == 0 && ::close(file) == 0,
         "a file can't be written: " + path);
}

void WriteFilesByHand(const World& world) {
  constexpr auto* kDigits = "0123456789abcdef";
  for (int i = 0; i < 256; ++i)
    fs::create_directories(world.StorePath(std::string("objects/") + kDigits[i / 16] + kDigits[i % 16]));
  for (const auto& content : TheAssembly().Contents()) {
    const auto incoming = world.StorePath("incoming/" + content.sha256);
    WriteSynced(incoming, content.bytes);
    fs::rename(incoming, world.StorePath("objects/" + content.sha256.substr(0, 2) + "/" + content.sha256));
  }
}

/// The rows of an import, written by hand.
class RowsByHand {
 public:
  explicit RowsByHand(const RawDatabase& database)
      : database_(database),
        deposit_(database, "vd_deposit", "deposit_id, name, sha256, size, light_sha256, light_size"),
        object_(database, "vd_object", "object_id, class_id, identity, version, owner_id, deposit_id"),
        part_(database, "ZORVA_PART", kColumns),
        product_(database, "ZORVA_PRODUCT", kColumns),
        link_(database, "vd_link", "OBJECT_ID, CLASS_ID, from_object, to_object, place, QUANTITY") {}

  void Write() {
    database_.Execute("BEGIN IMMEDIATE");
    for (std::size_t i = 0; i < TheAssembly().Plan().definitions.size(); ++i) WriteObject(i);
    const auto count = std::to_string(TheAssembly().Plan().definitions.size());
    for (const auto* name : {"object", "deposit", "identity"}) {
      database_.Execute("UPDATE vd_sequence SET next_value = next_value + " + count + " WHERE name = '" + name + "'");
    }
    database_.Execute("UPDATE vd_sequence SET next_value = " + std::to_string(nextLink_) + " WHERE name = 'link'");
    database_.Execute("COMMIT");
  }

 private:
  using Value = RawDatabase::Value;
  static constexpr auto* kColumns =
      "OBJECT_ID, CLASS_ID, STATE, CN_ID, NM_CN_PART_NUMBER, REVISION, CN_DESCRIPTION, FILE_NAME, DIRECTORY, "
      "CAD_REF_FILE_NAME, FILE_TYPE, VAULT_OBJECT_ID, TDM_FILE_ID, CREATION_DATE, USER_OBJECT_ID, "
      "MODIFICATION_DATE, USER_ID_MOD";

  std::int64_t ClassOf(const std::string& table) const {
    return database_.Number("SELECT class_id FROM vd_class WHERE table_name = '" + table + "'");
  }
  std::int64_t FileType(const std::string& name) const {
    return database_.Number("SELECT OBJECT_ID FROM FILE_TYPE WHERE TDM_NAME = '" + name + "'");
  }

  void WriteObject(std::size_t index) {
    const auto& definition = TheAssembly().Plan().definitions[index];
    const auto& file = TheAssembly().FileOf(index);
    const auto& light = TheAssembly().LightFileOf(index);
    const auto id = firstObject_ + static_cast<std::int64_t>(index);
    const auto deposit = 1 + static_cast<std::int64_t>(index);
    const auto classId = definition.isAssembly ? productClass_ : partClass_;
    auto identity = std::to_string(index + 1);
    identity.insert(0, 8 - identity.size(), '0');
    const auto size = [](const SplitAssembly::Content& content) {
      return Value(static_cast<std::int64_t>(content.bytes.size()));
    };
    deposit_.Run({deposit, file.name, file.sha256, size(file), light.sha256, size(light)});
    object_.Run({id, classId, identity, std::int64_t{1}, Value(), deposit});
    (definition.isAssembly ? product_ : part_)
        .Run({id, classId, std::int64_t{1}, identity, definition.partNumber, std::string("A"), Value(), file.name,
              "store:/" + std::to_string(deposit), file.name, definition.isAssembly ? productType_ : partType_,
              std::int64_t{1}, deposit, now_, std::int64_t{1}, now_, std::int64_t{1}});
    std::int64_t place = 0;
    for (const auto& child : definition.children) {
      link_.Run({nextLink_++, linkClass_, id, firstObject_ + static_cast<std::int64_t>(child.definition), ++place,
                 std::int64_t{child.quantity}});
    }
  }

  const RawDatabase& database_;
  RawDatabase::Insertion deposit_;
  RawDatabase::Insertion object_;
  RawDatabase::Insertion part_;
  RawDatabase::Insertion product_;
  RawDatabase::Insertion link_;
  const std::int64_t productClass_ = ClassOf("ZORVA_PRODUCT");
  const std::int64_t partClass_ = ClassOf("ZORVA_PART");
  const std::int64_t linkClass_ = database_.Number("SELECT class_id FROM vd_class WHERE kind = 3");
  const std::int64_t productType_ = FileType("ZVAProduct");
  const std::int64_t partType_ = FileType("ZVAPart");
  const std::int64_t firstObject_ = database_.Number("SELECT next_value FROM vd_sequence WHERE name = 'object'");
  const std::string now_ = "2024-05-31T13:45:00Z";
  std::int64_t nextLink_ = 1;
};

}  // namespace

void ImportByHand(benchmark::State& state) {
  for (auto _ : state) {
    World world;
    TheAssembly();
    const auto start = Clock::now();
    {
      const RawDatabase database(world.DatabasePath());
      WriteFilesByHand(world);
      RowsByHand(database).Write();
    }
    Measure(state, start);
    DemandAssembly(world);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(TheAssembly().Plan().definitions.size()));
}

}  // namespace quintara::bench
