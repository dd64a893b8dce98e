// Stands for what a user waits for: the import of a large assembly, the loading of its structure, the
// list of all that stands below it, and the search for a product's matrix. The import is held against
// the same rows in the same tables, written by hand on the bare database, and the same bytes in as many
// files; the others against themselves on a smaller vault.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "access/utils/Cls_Utils.h"
#include "hosts/vault/embedded_vault.h"
#include "raw_vault.h"
#include "vault_import_bench.h"
#include "vault_structure.h"
#include "vault_world.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

constexpr int kManyLinks = 32000;
constexpr int kFewLinks = 4000;
constexpr int kManyDocuments = 100000;
constexpr int kFewDocuments = 10000;
constexpr int kDocumentsOfAProduct = 10;
constexpr int kQueries = 1000;

// Children, copy and reading of every node, as the review tree asks for them; gives the number of nodes.
int Load(const Ref<veldora::VdObject>& root) {
  int nodes = 0;
  std::vector<Ref<veldora::VdObject>> open = {root};
  while (!open.empty()) {
    const auto object = open.back();
    open.pop_back();
    ++nodes;
    const auto children = object->Children(nullptr);
    for (int i = 0; i < children->Count(); ++i) {
      open.push_back(children->Item(i)->Clone());
      open.back()->Retrieve();
    }
  }
  return nodes;
}

void LoadStructure(benchmark::State& state) {
  const int links = static_cast<int>(state.range(0));
  World world;
  const auto root = MakeStructure(world.Vault(), links);
  std::int64_t statements = 0;
  for (auto _ : state) {
    const auto before = world.Vault().StatementCount();
    const auto start = Clock::now();
    const int nodes = Load(root);
    Measure(state, start);
    statements = world.Vault().StatementCount() - before;
    Demand(nodes == links + 1, "nodes are missing");
  }
  // The same for every node, whatever the size: its row, its links, and its own attributes.
  constexpr int kStatementsOfANode = 3;
  Demand(statements == std::int64_t{kStatementsOfANode} * (links + 1) - 1,
         std::to_string(statements) + " statements for " + std::to_string(links + 1) + " nodes");
  state.counters["statements"] = static_cast<double>(statements);
  state.SetItemsProcessed(state.iterations() * links);
}

void ListStructure(benchmark::State& state) {
  const int links = static_cast<int>(state.range(0));
  World world;
  const auto root = MakeStructure(world.Vault(), links);
  Cls_Utils utils;
  for (auto _ : state) {
    Ref<veldora::VdObjects> all;
    const auto start = Clock::now();
    utils.GetAllChildren(world.Session(), root, all, nullptr, "STATE");
    Measure(state, start);
    Demand(all->Count() == links, "objects are missing");
  }
  state.SetItemsProcessed(state.iterations() * links);
}

// Products with `kDocumentsOfAProduct` documents each, of which one is a matrix; gives the products' ids.
std::vector<std::int32_t> FillWithDocuments(const World& world, int documents) {
  const RawDatabase database(world.DatabasePath());
  const auto number = [&](const std::string& sql) { return database.Number(sql); };
  const auto product = number("SELECT class_id FROM vd_class WHERE table_name = 'ZORVA_PRODUCT'");
  const auto document = number("SELECT class_id FROM vd_class WHERE table_name = 'DOCUMENT'");
  const auto link = number("SELECT class_id FROM vd_class WHERE kind = 2");
  const auto xml = number("SELECT OBJECT_ID FROM FILE_TYPE WHERE TDM_NAME = 'xml'");
  auto next = number("SELECT next_value FROM vd_sequence WHERE name = 'object'");
  constexpr auto* kColumns =
      "OBJECT_ID, CLASS_ID, STATE, CN_ID, NM_CN_PART_NUMBER, REVISION, CN_DESCRIPTION, FILE_TYPE";
  RawDatabase::Insertion object(database, "vd_object", "object_id, class_id, identity, version");
  RawDatabase::Insertion inProducts(database, "ZORVA_PRODUCT", kColumns);
  RawDatabase::Insertion inDocuments(database, "DOCUMENT", kColumns);
  RawDatabase::Insertion links(database, "vd_link", "OBJECT_ID, CLASS_ID, from_object, to_object, place, QUANTITY");
  const auto add = [&](RawDatabase::Insertion& table, std::int64_t classId, const std::string& description) {
    const auto identity = std::to_string(next);
    object.Run({next, classId, identity, std::int64_t{1}});
    table.Run({next, classId, std::int64_t{1}, identity, "N" + identity, std::string("A"), description, xml});
    return next++;
  };
  std::vector<std::int32_t> products;
  std::int64_t nextLink = 1;
  database.Execute("BEGIN");
  for (int i = 0; i < documents / kDocumentsOfAProduct; ++i) {
    const auto id = add(inProducts, product, "a product");
    products.push_back(static_cast<std::int32_t>(id));
    for (std::int64_t k = 1; k <= kDocumentsOfAProduct; ++k) {
      const auto text = "N" + std::to_string(id) + (k == kDocumentsOfAProduct ? " Matrix" : " Drawing");
      links.Run({nextLink++, link, id, add(inDocuments, document, text), k, std::int64_t{1}});
    }
  }
  database.Execute("UPDATE vd_sequence SET next_value = " + std::to_string(next) + " WHERE name = 'object'");
  database.Execute("UPDATE vd_sequence SET next_value = " + std::to_string(nextLink) + " WHERE name = 'link'");
  database.Execute("COMMIT");
  return products;
}

class MatrixQuery {
 public:
  explicit MatrixQuery(World& world)
      : world_(world), store_(world.Session()->ObjectStore()), fileType_(world.Vault().FileTypeId("xml")) {
    const auto info = world.Session()->MetaInfo();
    product_ = info->ClassByName("ZORVA Product")->ClassId();
    link_ = info->ClassByName("Document Link")->ClassId();
    document_ = info->ClassByName("Document")->ClassId();
  }

  Ref<veldora::VdQuery> Of(std::int32_t product) const {
    const auto query = store_->NewQuery();
    const auto definition = query->Definition();
    definition->From()->Add(product_, "F");
    definition->From()->Add(link_, "L");
    definition->From()->Add(document_, "S");
    definition->Select()->Add("CN_DESCRIPTION", "S", false);
    definition->Select()->Add("FILE_TYPE", "S", false);
    definition->Select()->Add("CN_ID", "F", false);
    definition->Select()->Add("OBJECT_ID", "F", false);
    definition->Where()->Add("", "CN_ID", "=", Variant(std::to_string(product)), 0, "F");
    definition->Where()->Add("", "OBJECT_ID", "=", Variant(product), 0, "F");
    definition->Where()->Add("", "CN_DESCRIPTION", "=", Variant("*Matrix"), 0, "S");
    definition->Where()->Add("", "FILE_TYPE", "=", Variant(fileType_), 0, "S");
    return query;
  }
  void DemandIndexes(std::int32_t product) const {
    const auto steps = world_.Vault().ExplainQuery(Of(product)->Definition());
    Demand(steps.size() >= 3, "the query wasn't explained");
    for (const auto& step : steps) Demand(!step.starts_with("SCAN"), "the query reads a whole table: " + step);
  }

 private:
  World& world_;
  Ref<veldora::VdObjectStore> store_;
  int fileType_;
  std::int16_t product_;
  std::int16_t link_;
  std::int16_t document_;
};

void FindMatrices(benchmark::State& state) {
  World world;
  const auto products = FillWithDocuments(world, static_cast<int>(state.range(0)));
  const MatrixQuery matrices(world);
  matrices.DemandIndexes(products.front());
  // Spread over the whole vault.
  const auto step = products.size() / kQueries;
  for (auto _ : state) {
    const auto start = Clock::now();
    for (std::size_t i = 0; i < kQueries; ++i) {
      const auto query = matrices.Of(products[i * step]);
      query->RunLinkQuery();
      Demand(query->RecordCount() == 1, "a matrix is missing");
    }
    Measure(state, start);
  }
  state.SetItemsProcessed(state.iterations() * kQueries);
}

benchmark::internal::Benchmark* Register(const std::string& name, void (*function)(benchmark::State&)) {
  return benchmark::RegisterBenchmark(name.c_str(), function)->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  // Most of an import is the disk's time, of which a few measurements are enough.
  Register("Import", Import)->Iterations(1)->Repetitions(3);
  Register("ImportByHand", ImportByHand)->Iterations(1)->Repetitions(3);
  Register("LoadStructure/many", LoadStructure)->Arg(kManyLinks);
  Register("LoadStructure/few", LoadStructure)->Arg(kFewLinks);
  Register("ListStructure/many", ListStructure)->Arg(kManyLinks);
  Register("ListStructure/few", ListStructure)->Arg(kFewLinks);
  Register("FindMatrices/many", FindMatrices)->Arg(kManyDocuments);
  Register("FindMatrices/few", FindMatrices)->Arg(kFewDocuments);
  return RunAndJudge(
      argc, argv,
      {{"Import of 10,000 objects, over bare rows and files", {"Import"}, {"ImportByHand"}, 2.5},
       {"Structure, time for a link, 32,000 over 4,000", {"LoadStructure/many", "LoadStructure/few"}, {}, 1.3},
       {"All below a product, time for an object, 32,000 over 4,000",
        {"ListStructure/many", "ListStructure/few"},
        {},
        1.3},
       {"Matrix of a product, 100,000 documents over 10,000", {"FindMatrices/many"}, {"FindMatrices/few"}, 1.3}});
}
