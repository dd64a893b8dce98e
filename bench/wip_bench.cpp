// Stands for what a user of the review panel waits for: its coming up with the whole structure of a large product, a
// right click on the root, which changes every node, and a search. The loading is held against the same questions
// asked of the bare database by prepared statements, one for the children and one for the row of each node; all
// three against themselves on a smaller product, whose nodes fit nearer to the processor.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "hosts/native/native_platform.h"
#include "raw_vault.h"
#include "silent_view.h"
#include "vault_structure.h"
#include "vault_world.h"
#include "verdicts.h"
#include "wip/MainPanel.h"

namespace quintara::bench {
namespace {

constexpr int kMany = 32000;
constexpr int kFew = 4000;

// A product in a vault, and the panel for it, shown to nobody.
class Review {
 public:
  explicit Review(int links) : root_(MakeStructure(world_.Vault(), links)) {
    auto& globals = Process();
    globals.gSession = world_.Session();
    globals.gClassProducts = "ZORVA Product";
    globals.gClassParts = "ZORVA Part";
    globals.gTreeView = "NM_CN_PART_NUMBER,REVISION";
    globals.gTreeViewAttributes = {"NM_CN_PART_NUMBER", "REVISION"};
    globals.gTreeViewSeparator = " - ";
    globals.CAD_REF_FILE_NAME = "CAD_REF_FILE_NAME";
    auto platform = std::make_shared<NativePlatform>(std::make_shared<Gate>(), nullptr);
    platform->SetViewMaker([this](const dialog::Layout& layout, dialog::Events& events) {
      const bool isPanel = layout.name == "MainPanel";
      auto view = std::make_shared<SilentView>(layout, events, isPanel ? SilentView::User() : inSearch);
      if (isPanel) panelView = view.get();
      return view;
    });
    InstallPlatform(platform);
  }
  ~Review() { ResetProcess(); }
  Review(const Review&) = delete;
  Review& operator=(const Review&) = delete;

  std::shared_ptr<MainPanel> NewPanel() const {
    auto panel = std::make_shared<MainPanel>();
    panel->SetData(root_);
    return panel;
  }
  std::int32_t RootId() const { return root_->ObjectId(); }
  std::string DatabasePath() const { return world_.DatabasePath(); }
  const std::string& PictureOf(int node) const { return panelView->tree->Picture(node); }

  SilentView* panelView = nullptr;
  SilentView::User inSearch;

 private:
  World world_;
  Ref<veldora::VdObject> root_;
};

void LoadTree(benchmark::State& state) {
  const int links = static_cast<int>(state.range(0));
  Review review(links);
  for (auto _ : state) {
    const auto panel = review.NewPanel();
    const auto start = Clock::now();
    panel->Load();
    Measure(state, start);
    Demand(review.panelView->tree->Count() == links + 1, "nodes are missing");
    panel->Unload();
  }
  state.SetItemsProcessed(state.iterations() * links);
}

void LoadTreeByHand(benchmark::State& state) {
  const int links = static_cast<int>(state.range(0));
  const Review review(links);
  const RawDatabase database(review.DatabasePath());
  RawDatabase::Question children(
      database,
      "SELECT l.OBJECT_ID, o.class_id, l.to_object, l.QUANTITY FROM vd_link l JOIN vd_object "
      "o ON o.object_id = l.to_object WHERE l.from_object = ? AND l.CLASS_ID = (SELECT "
      "class_id FROM vd_class WHERE name = 'Structure Link') ORDER BY l.place");
  RawDatabase::Question row(database, "SELECT * FROM ZORVA_PRODUCT WHERE OBJECT_ID = ?");
  for (auto _ : state) {
    const auto start = Clock::now();
    int nodes = 0;
    std::vector<std::int64_t> open = {review.RootId()};
    while (!open.empty()) {
      const auto object = open.back();
      open.pop_back();
      ++nodes;
      Demand(!row.Ask({object}).empty(), "a row is missing");
      for (const auto child : children.Numbers({object}, 2)) open.push_back(child);
    }
    Measure(state, start);
    Demand(nodes == links + 1, "nodes are missing");
  }
  state.SetItemsProcessed(state.iterations() * links);
}

void CycleRoot(benchmark::State& state) {
  const int links = static_cast<int>(state.range(0));
  Review review(links);
  const auto panel = review.NewPanel();
  panel->Load();
  int cycles = 0;
  for (auto _ : state) {
    const auto start = Clock::now();
    panel->OnMouseDown("Tree1", dialog::button::kRight, 0, 0, 0);
    Measure(state, start);
    static const std::string kPictures[] = {"product none", "product lwt", "product doc"};
    Demand(review.PictureOf(links + 1) == kPictures[++cycles % 3], "the last node is in another state");
  }
  panel->Unload();
  state.SetItemsProcessed(state.iterations() * links);
}

void Find(benchmark::State& state) {
  const int links = static_cast<int>(state.range(0));
  Review review(links);
  const auto panel = review.NewPanel();
  panel->Load();
  review.inSearch = [&](SilentView& view, dialog::Events& events) {
    const auto last = "n" + std::to_string(links);
    view.SetText("txtInput", last);
    for (auto _ : state) {
      review.panelView->selected = 0;
      const auto start = Clock::now();
      events.OnClick("cmdFind");
      Measure(state, start);
      Demand(review.panelView->selected != 0, last + " wasn't found");
    }
    view.Unload();
  };
  panel->OnClick("cmdFind");
  panel->Unload();
  state.SetItemsProcessed(state.iterations() * links);
}

void Register(const std::string& name, void (*function)(benchmark::State&)) {
  for (const auto& [size, links] : {std::pair{"many", kMany}, {"few", kFew}}) {
    benchmark::RegisterBenchmark((name + "/" + size).c_str(), function)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Arg(links);
  }
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  Register("LoadTree", LoadTree);
  Register("LoadTreeByHand", LoadTreeByHand);
  Register("CycleRoot", CycleRoot);
  Register("Find", Find);
  return RunAndJudge(
      argc, argv,
      {{"Review tree of 32,000 nodes, over the bare statements", {"LoadTree/many"}, {"LoadTreeByHand/many"}, 3.0},
       {"Review tree, time for a node, 32,000 over 4,000", {"LoadTree/many", "LoadTree/few"}, {}, 1.3},
       {"Right click on the root, time for a node, 32,000 over 4,000", {"CycleRoot/many", "CycleRoot/few"}, {}, 2.0},
       {"Search, time for a node, 32,000 over 4,000", {"Find/many", "Find/few"}, {}, 2.0}});
}
