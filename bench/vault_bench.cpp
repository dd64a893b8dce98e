// Stands for what a user waits for: the import of a large assembly, the review of its structure, and
// the search for a product's matrix. Each is held against the same rows, written and read by
// statements alone, on the same database.

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>

#include "hosts/native/native_files.h"
#include "hosts/vault/database.h"
#include "hosts/vault/embedded_vault.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

constexpr int kMany = 4096;
constexpr int kFew = 512;
constexpr int kFan = 16;

using Clock = std::chrono::steady_clock;

// A vault of its own, removed at the end.
class World {
 public:
  World() {
    VaultPlan plan;
    plan.folder = (folder_ / "quintara.vault").string();
    std::filesystem::create_directories(folder_ / "work");
    InitVault(plan, *files_);
    EmbeddedVault::Options options;
    options.files = files_;
    options.workDirectory = (folder_ / "work").string();
    vault_ = std::make_unique<EmbeddedVault>(plan.folder, options);
  }
  ~World() {
    vault_.reset();
    std::filesystem::remove_all(folder_);
  }
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  EmbeddedVault& Vault() { return *vault_; }
  Ref<veldora::VdSession> Session() { return vault_->Application()->Engine()->Sessions(0); }
  std::string NewDatabase() {
    return "sqlite:" + (folder_ / ("by-hand-" + std::to_string(++databases_) + ".sqlite")).string();
  }

 private:
  std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                  ("quintara-bench-" + std::to_string(Clock::now().time_since_epoch().count()));
  std::shared_ptr<NativeContents> files_ = std::make_shared<NativeContents>(std::make_shared<Gate>());
  std::unique_ptr<EmbeddedVault> vault_;
  int databases_ = 0;
};

void Measure(benchmark::State& state, Clock::time_point start) {
  state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
}

// A tree of assemblies and parts, `count` objects, each assembly with `kFan` children; gives its root.
Ref<veldora::VdObject> Import(EmbeddedVault& vault, int count) {
  std::vector<Ref<veldora::VdObject>> level;
  vault.InTransaction([&] {
    int made = 0;
    const auto leaves = count - count / kFan;
    while (made < leaves)
      level.push_back(vault.AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", "P" + std::to_string(made++)}}, {}));
    while (level.size() > 1) {
      std::vector<Ref<veldora::VdObject>> above;
      for (std::size_t i = 0; i < level.size(); i += kFan) {
        std::vector<EmbeddedVault::Component> components;
        for (auto at = i; at < std::min(i + kFan, level.size()); ++at) components.push_back({level[at], 1});
        above.push_back(vault.AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "A" + std::to_string(made++)}}, {}));
        vault.SetStructure(above.back(), components);
      }
      level = above;
    }
  });
  return level.front();
}

// Children, copy and reading of every node, as the review tree asks for them.
int Review(const Ref<veldora::VdObject>& object) {
  int nodes = 1;
  const auto children = object->Children(nullptr);
  for (int i = 0; i < children->Count(); ++i) {
    const auto child = children->Item(i)->Clone();
    child->Retrieve();
    nodes += Review(child);
  }
  return nodes;
}

void ImportStructure(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    World world;
    const auto start = Clock::now();
    Import(world.Vault(), count);
    Measure(state, start);
    if (world.Vault().FindNewest("P0").size() != 1) throw std::runtime_error("nothing was imported");
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void MakeTablesByHand(vault::Database& database) {
  database.ExecuteOnce("CREATE TABLE object (id INTEGER PRIMARY KEY, class INTEGER, identity TEXT, version INTEGER)");
  database.ExecuteOnce("CREATE UNIQUE INDEX identity ON object (class, identity, version)");
  database.ExecuteOnce(
      "CREATE TABLE attribute (id INTEGER PRIMARY KEY, number TEXT, revision TEXT, state INTEGER, identity TEXT)");
  database.ExecuteOnce("CREATE INDEX number ON attribute (number)");
  database.ExecuteOnce("CREATE TABLE link (id INTEGER PRIMARY KEY, parent INTEGER, child INTEGER, place INTEGER)");
  database.ExecuteOnce("CREATE UNIQUE INDEX parent ON link (parent, place)");
  database.ExecuteOnce("CREATE INDEX child ON link (child)");
}

void FillByHand(vault::Database& database, std::int64_t count) {
  database.Begin(true);
  for (std::int64_t id = 1; id <= count; ++id) {
    const auto text = std::to_string(id);
    database.Execute("INSERT INTO object VALUES (?, 3, ?, 1)", {id, text});
    database.Execute("INSERT INTO attribute VALUES (?, ?, 'A', 0, ?)", {id, text, text});
    if (id > 1)
      database.Execute("INSERT INTO link VALUES (?, ?, ?, ?)", {id, (id - 2) / kFan + 1, id, (id - 2) % kFan});
  }
  database.Commit();
}

void ImportByHand(benchmark::State& state) {
  for (auto _ : state) {
    World world;
    vault::Database database(world.NewDatabase());
    MakeTablesByHand(database);
    const auto start = Clock::now();
    FillByHand(database, state.range(0));
    Measure(state, start);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ReviewStructure(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  World world;
  const auto root = Import(world.Vault(), count);
  for (auto _ : state) {
    const auto start = Clock::now();
    const int nodes = Review(root);
    Measure(state, start);
    if (nodes < count) throw std::runtime_error("nodes are missing");
  }
  state.SetItemsProcessed(state.iterations() * count);
}

int ReviewRows(vault::Database& database, std::int64_t id) {
  int nodes = 1;
  for (const auto& row : database.Query(
           "ii",
           "SELECT l.child, o.class FROM link l JOIN object o ON o.id = l.child WHERE l.parent = ? ORDER BY place",
           {id})) {
    database.Query("ittit", "SELECT id, number, revision, state, identity FROM attribute WHERE id = ?", {row[0]});
    nodes += ReviewRows(database, vault::IntegerOf(row[0]));
  }
  return nodes;
}

void ReviewByHand(benchmark::State& state) {
  World world;
  vault::Database database(world.NewDatabase());
  MakeTablesByHand(database);
  FillByHand(database, state.range(0));
  for (auto _ : state) {
    const auto start = Clock::now();
    const int nodes = ReviewRows(database, 1);
    Measure(state, start);
    if (nodes != state.range(0)) throw std::runtime_error("nodes are missing");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The search among as many documents as there are objects, one to a product.
void FindMatrices(benchmark::State& state) {
  World world;
  auto& vault = world.Vault();
  const auto session = world.Session();
  const auto classId = [&](const char* name) { return session->MetaInfo()->ClassByName(name)->ClassId(); };
  const auto product = classId("ZORVA Product");
  const auto link = classId("Document Link");
  const auto document = classId("Document");
  std::vector<std::int32_t> products;
  vault.InTransaction([&] {
    for (int i = 0; i < state.range(0); ++i) {
      const auto made = vault.AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "A" + std::to_string(i)}}, {});
      made->AddLink(link, vault.AddObject("Document", {{"CN_DESCRIPTION", "A Matrix"}}, {}), nullptr,
                    session->ObjectStore()->DefaultBehavior());
      products.push_back(made->ObjectId());
    }
  });
  for (auto _ : state) {
    const auto start = Clock::now();
    for (const auto id : products) {
      const auto query = session->ObjectStore()->NewQuery();
      const auto definition = query->Definition();
      definition->From()->Add(product, "F");
      definition->From()->Add(link, "L");
      definition->From()->Add(document, "S");
      definition->Select()->Add("CN_DESCRIPTION", "S", false);
      definition->Where()->Add("", "OBJECT_ID", "=", Variant(id), 0, "F");
      definition->Where()->Add("", "CN_DESCRIPTION", "=", Variant("*Matrix"), 0, "S");
      query->RunLinkQuery();
      if (query->RecordCount() != 1) throw std::runtime_error("a matrix is missing");
    }
    Measure(state, start);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Register(const std::string& name, void (*function)(benchmark::State&), const std::string& suffix, int count) {
  benchmark::RegisterBenchmark((name + "/" + suffix).c_str(), function)
      ->Arg(count)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  for (const auto& [suffix, count] : {std::pair<std::string, int>{"many", kMany}, {"few", kFew}}) {
    Register("Import", ImportStructure, suffix, count);
    Register("ImportByHand", ImportByHand, suffix, count);
    Register("Review", ReviewStructure, suffix, count);
    Register("ReviewByHand", ReviewByHand, suffix, count);
    Register("FindMatrices", FindMatrices, suffix, count);
  }
  const auto many = [](const std::string& name) { return name + "/many"; };
  const auto few = [](const std::string& name) { return name + "/few"; };
  return RunAndJudge(
      argc, argv,
      {{"Import of 4,096 objects, over the statements alone", {many("Import")}, {many("ImportByHand")}, 12.0},
       {"Review of 4,096 objects, over the statements alone", {many("Review")}, {many("ReviewByHand")}, 4.0},
       {"Import, time for an object, 4,096 over 512",
        {many("Import"), few("Import")},
        {many("ImportByHand"), few("ImportByHand")},
        2.0},
       {"Review, time for an object, 4,096 over 512",
        {many("Review"), few("Review")},
        {many("ReviewByHand"), few("ReviewByHand")},
        2.0},
       {"Matrix of one product among 4,096, over 512",
        {many("FindMatrices"), few("FindMatrices")},
        {many("ReviewByHand"), few("ReviewByHand")},
        2.0}});
}
