// Stands for what a user waits for after "Create": a work in progress of 2,000 light components, from the press of
// the button to the message of success. Each component's object is fetched from the vault, its light file copied to
// the work directory, loaded into the CAD host and stamped; then all are put in place from the matrix. Held against
// the same rows read by prepared statements, one for each table, the same files copied as durably, the same
// loading, stamping and placing in the CAD host, and one pass over the matrix; and against itself at a quarter of
// the size.
//
// As the user sees it nearly all is the disk's time, two waits for each file on both sides: the ratio was 1.0 to 1.2,
// and its bound of 1.5 is what a third wait would break. What the disk hides is measured once more without it, in the
// program's own time (0.13 ms for a component, 0.03 by hand): nine statements instead of three, a digest of each file
// and a copy through memory where the baseline leaves that to the kernel make 4.1 to 5.4 of it, bound 7. Each component
// costs the same however many there are (0.8 to 1.1; the processor's time is told in ticks of some milliseconds).

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <map>
#include <pugixml.hpp>

#include "access/session/process.h"
#include "durable_copy.h"
#include "product_of_parts.h"
#include "raw_vault.h"
#include "silent_view.h"
#include "verdicts.h"
#include "wip/Cls_Application.h"

namespace quintara::bench {
namespace {

constexpr int kMany = 2000;
constexpr int kFew = 500;
const char* const kNumberNames[] = {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};

// Whether the files of the work directory are brought to the disk, as the vault always does.
enum class Disk { kSynced, kUnsynced };

// With the disk, time as the user sees it; without it the program's own, since the time of a file system to make many
// files depends on what else goes on there.
double SecondsNow(Disk disk) {
  if (disk == Disk::kSynced) return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec) + 1e-6 * static_cast<double>(usage.ru_utime.tv_usec);
}

// Made once of each kind, since that takes longer than what is measured.
ProductOfParts& ProductOf(int parts, Disk disk) {
  static std::map<std::pair<int, Disk>, ProductOfParts> products;
  const auto known = products.find({parts, disk});
  if (known != products.end()) return known->second;
  const auto gate = std::make_shared<Gate>();
  const auto files =
      disk == Disk::kSynced ? std::make_shared<NativeContents>(gate) : std::make_shared<UnsyncedContents>(gate);
  return products
      .emplace(std::piecewise_construct, std::forward_as_tuple(parts, disk), std::forward_as_tuple(parts, files))
      .first->second;
}

void Check(const ProductOfParts& product, const Ref<zorva::Products>& components) {
  Demand(components->Count() == product.Size(), "components are missing");
  for (int part = 0; part < product.Size(); ++part) {
    const auto component = components->Item(part + 1);
    PositionMatrix position{};
    component->Position()->GetComponents(position);
    Demand(component->PartNumber() == ProductOfParts::PartNumber(part) &&
               position == ProductOfParts::PositionOf(part) && component->Name().starts_with("ROOT.1\\MODULE-") &&
               component->Parameters()->Item("OBJECT_ID")->ValueAsString() == std::to_string(product.ObjectIdOf(part)),
           "a component is wrong: " + ProductOfParts::PartNumber(part));
  }
}

void CloseWip(const ProductOfParts& product) {
  const auto document = product.Zorva()->ActiveDocument()->AsProductDocument();
  Check(product, document->Product()->Products());
  document->Close();
}

void MarkParts(SilentView& view, dialog::Events& events) {
  for (int node = 1; node <= view.tree->Count(); ++node) {
    if (view.tree->Picture(node) != "part none") continue;
    view.under = node;
    events.OnMouseDown("Tree1", dialog::button::kRight, 0, 0, 0);
  }
}

void Create(benchmark::State& state, int parts, Disk disk) {
  auto& product = ProductOf(parts, disk);
  for (auto _ : state) {
    product.Activate();
    double start = 0;
    std::int64_t statements = 0;
    const auto user = [&](SilentView& view, dialog::Events& events) {
      MarkParts(view, events);
      statements = product.TheWorld().Vault().StatementCount();
      start = SecondsNow(disk);
      events.OnClick("cmdCreateWIP");
    };
    product.Platform().SetViewMaker([&](const dialog::Layout& layout, dialog::Events& events) {
      return std::make_shared<SilentView>(layout, events, layout.name == "MainPanel" ? user : SilentView::User());
    });
    Cls_Application().Run(product.Selection());
    state.SetIterationTime(SecondsNow(disk) - start);
    statements = product.TheWorld().Vault().StatementCount() - statements;
    state.counters["statements"] = static_cast<double>(statements);
    CloseWip(product);
  }
  ResetProcess();
  state.SetItemsProcessed(state.iterations() * product.Size());
}

/// The same work without the commands: what no way of doing it can leave out.
class CreationByHand {
 public:
  explicit CreationByHand(ProductOfParts& product)
      : product_(product),
        database_(product.TheWorld().DatabasePath()),
        object_(database_,
                "SELECT class_id, identity, version, owner_id, deposit_id FROM vd_object WHERE object_id = ?"),
        part_(database_, "SELECT * FROM ZORVA_PART WHERE OBJECT_ID = ?"),
        deposit_(database_, "SELECT name, sha256, light_sha256 FROM vd_deposit WHERE deposit_id = ?") {}

  void Create(void (*copyFile)(const std::string& from, const std::string& to)) {
    const auto root = product_.Zorva()->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
    root->SetPartNumber("WIP~~ROOT");
    components_ = root->Products();
    for (int part = 0; part < product_.Size(); ++part) Insert(part, copyFile);
    const auto matrix = product_.TheWorld().WorkPath("ROOT Matrix.xml");
    copyFile(StoredFile(product_.MatrixId(), 1), matrix);
    Place(matrix);
  }

 private:
  std::string StoredFile(std::int32_t objectId, std::size_t digest) {
    const auto deposit = std::stoll(object_.Ask({std::int64_t{objectId}})[4]);
    const auto sha256 = deposit_.Ask({deposit})[digest];
    return product_.TheWorld().StorePath("objects/" + sha256.substr(0, 2) + "/" + sha256);
  }
  void Insert(int part, void (*copyFile)(const std::string& from, const std::string& to)) {
    const auto id = product_.ObjectIdOf(part);
    Demand(!part_.Ask({std::int64_t{id}}).empty(), "a row is missing");
    const auto copy = product_.TheWorld().WorkPath(ProductOfParts::PartNumber(part) + ".lwt");
    copyFile(StoredFile(id, 2), copy);
    product_.Zorva()->Documents()->Read(copy);
    components_->AddComponentsFromFiles({copy}, "All");
    const auto properties = components_->Item(part + 1)->UserProperties();
    properties->CreateString("TYPE", "LWT");
    properties->CreateString("OBJECT_ID", std::to_string(id));
    properties->CreateString("CLASS_ID", std::to_string(product_.ClassOfParts()));
  }
  // The chains are two long, and the outer one only shifts.
  void Place(const std::string& path) {
    pugi::xml_document matrix;
    Demand(static_cast<bool>(matrix.load_file(path.c_str())), "the matrix can't be read");
    int component = 0;
    for (const auto module : matrix.document_element().children()) {
      const auto outer = PositionIn(module);
      for (const auto part : module.children()) {
        auto position = PositionIn(part);
        for (std::size_t i = 9; i < position.size(); ++i) position[i] += outer[i];
        const auto placed = components_->Item(++component);
        placed->SetName(part.attribute("FULL_INSTANCE_NAME").value());
        placed->Position()->SetComponents(position);
      }
    }
  }
  static PositionMatrix PositionIn(pugi::xml_node element) {
    PositionMatrix position{};
    for (std::size_t i = 0; i < position.size(); ++i) position[i] = element.attribute(kNumberNames[i]).as_double();
    return position;
  }

  ProductOfParts& product_;
  RawDatabase database_;
  RawDatabase::Question object_, part_, deposit_;
  Ref<zorva::Products> components_;
};

void CreateByHand(benchmark::State& state, int parts, Disk disk) {
  auto& product = ProductOf(parts, disk);
  for (auto _ : state) {
    product.Activate();
    const double start = SecondsNow(disk);
    CreationByHand(product).Create(disk == Disk::kSynced ? CopyDurably : CopyOnly);
    state.SetIterationTime(SecondsNow(disk) - start);
    CloseWip(product);
  }
  state.SetItemsProcessed(state.iterations() * product.Size());
}

void Register(const std::string& name, void (*function)(benchmark::State&, int, Disk), int parts, Disk disk) {
  // Of the disk's time, which is most of it, a few measurements are enough.
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { function(state, parts, disk); })
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(1)
      ->Repetitions(disk == Disk::kSynced ? 3 : 9);
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  Register("CreateWip", Create, kMany, Disk::kSynced);
  Register("CreateWipByHand", CreateByHand, kMany, Disk::kSynced);
  Register("CreateWip, not synced", Create, kMany, Disk::kUnsynced);
  Register("CreateWip, not synced, a quarter", Create, kFew, Disk::kUnsynced);
  Register("CreateWipByHand, not synced", CreateByHand, kMany, Disk::kUnsynced);
  return RunAndJudge(
      argc, argv,
      {{"WIP of 2,000 light components, over bare rows and files", {"CreateWip"}, {"CreateWipByHand"}, 1.5},
       {"The same, the program's own time", {"CreateWip, not synced"}, {"CreateWipByHand, not synced"}, 7.0},
       {"WIP, own time for a component, 2,000 over 500",
        {"CreateWip, not synced", "CreateWip, not synced, a quarter"},
        {},
        1.3}});
}
