// Stands for what a user waits for who swaps what a work in progress shows: 500 selected components, each between its
// document and its light representation. The object is found, its file brought to the work directory and loaded in
// place of the component, and, if light, stamped. What the CAD host takes of that is measured by its calls alone on the
// same files; the rest is the vault's and the commands'. Held against itself on 125 components of the same product.

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "commands/Cls_SwitchToLWT.h"
#include "commands/Cls_SwitchToProduct.h"
#include "product_of_parts.h"
#include "services/Cls_Init.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

constexpr int kMany = 500;
constexpr int kFew = 125;

// Made once, since that takes longer than what is measured. Without waiting for the disk, whose time hides all else.
ProductOfParts& TheProduct() {
  static ProductOfParts product(kMany, std::make_shared<UnsyncedContents>(std::make_shared<Gate>()));
  return product;
}

// A work in progress of the first so many parts, as documents.
class SwitchedWip {
 public:
  explicit SwitchedWip(int size) : product_(TheProduct()) {
    product_.Activate();
    Demand(StartCommand(), "no session starts");
    document_ = product_.Zorva()->Documents()->Add("ZVAProduct")->AsProductDocument();
    root_ = document_->Product();
    components_ = root_->Products();
    root_->SetPartNumber("WIP~~ROOT");
    Utils().WriteStringProperty(root_, "WIP", "TRUE");
    for (int part = 0; part < size; ++part) {
      const auto object =
          product_.TheWorld().Session()->ObjectStore()->ObjectById(product_.ClassOfParts(), product_.ObjectIdOf(part));
      components_->AddComponentsFromFiles({Utils().CopyVeldoraObjectToWork(object)}, "All");
    }
  }
  ~SwitchedWip() {
    document_->Close();
    ResetProcess();
  }
  SwitchedWip(const SwitchedWip&) = delete;
  SwitchedWip& operator=(const SwitchedWip&) = delete;

  void SelectAll() {
    const auto selection = document_->Selection();
    selection->Clear();
    for (int i = 1; i <= Size(); ++i) selection->Add(components_->Item(i));
  }
  void Check(const char* ending) const {
    for (int part = 0; part < Size(); ++part) {
      const auto component = components_->Item(part + 1);
      const bool isLight = Utils().ReadStringProperty(component, "TYPE") == "LWT";
      const auto file = component->Reference()->Parent()->AsDocument()->FullName();
      Demand(file == PathOf(part, ending) && isLight == (std::string(ending) == ".lwt"), "not switched: " + file);
    }
  }

  // What the CAD host does for the commands, the files being there.
  void ToLwtInHost() const {
    IsWip();
    const auto selection = document_->Selection();
    for (int i = 1, count = selection->Count(); i <= count; ++i) {
      const auto component = selection->Item(i)->Value()->AsProduct();
      Utils().ReadStringProperty(component, "TYPE", "String");
      for (int time = 0; time < 2; ++time) component->Reference()->Parent()->AsDocument()->FullName();
      const auto light = components_->ReplaceWithFile(component, PathOf(i - 1, ".lwt"), false)->Reference();
      Utils().WriteStringProperty(light, "TYPE", "LWT");
      Utils().WriteStringProperty(light, "OBJECT_ID", std::to_string(product_.ObjectIdOf(i - 1)));
      Utils().WriteStringProperty(light, "CLASS_ID", std::to_string(product_.ClassOfParts()));
    }
  }
  void ToProductInHost() const {
    IsWip();
    const auto selection = document_->Selection();
    for (int i = 1, count = selection->Count(); i <= count; ++i) {
      const auto component = selection->Item(i)->Value()->AsProduct();
      for (const auto* name : {"TYPE", "CLASS_ID", "OBJECT_ID"}) Utils().ReadStringProperty(component, name, "String");
      const auto path = PathOf(i - 1, ".stp");
      root_->Products()->Application()->Documents()->Read(path);
      components_->ReplaceWithFile(component, path, false);
    }
  }

 private:
  int Size() const { return components_->Count(); }
  std::string PathOf(int part, const char* ending) const {
    return product_.TheWorld().WorkPath(ProductOfParts::PartNumber(part) + ending);
  }
  static void IsWip() { Demand(Utils().IsAWIP(), "no work in progress"); }

  ProductOfParts& product_;
  Ref<zorva::ProductDocument> document_;
  Ref<zorva::Product> root_;
  Ref<zorva::Products> components_;
};

template <class Work>
double SecondsOf(SwitchedWip& wip, const char* ending, Work&& work) {
  wip.SelectAll();
  const auto start = Clock::now();
  work();
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  wip.Check(ending);
  return seconds;
}

// Both ways in turn, once by the commands and once in the host alone.
void Switch(benchmark::State& state, bool toLight) {
  SwitchedWip wip(static_cast<int>(state.range(0)));
  double whole = 0;
  double host = 0;
  for (auto _ : state) {
    const auto light = SecondsOf(wip, ".lwt", [] { Cls_SwitchToLWT().Run(); });
    const auto full = SecondsOf(wip, ".stp", [] { Cls_SwitchToProduct().Run(); });
    const auto lightInHost = SecondsOf(wip, ".lwt", [&] { wip.ToLwtInHost(); });
    const auto fullInHost = SecondsOf(wip, ".stp", [&] { wip.ToProductInHost(); });
    state.SetIterationTime(toLight ? light : full);
    whole += toLight ? light : full;
    host += toLight ? lightInHost : fullInHost;
  }
  state.counters["CAD host (ms)"] = benchmark::Counter(host * 1e3, benchmark::Counter::kAvgIterations);
  state.counters["ours (ms)"] = benchmark::Counter((whole - host) * 1e3, benchmark::Counter::kAvgIterations);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Register(const std::string& name, bool toLight) {
  for (const auto& [size, components] : {std::pair{"many", kMany}, {"few", kFew}}) {
    benchmark::RegisterBenchmark((name + "/" + size).c_str(), [=](benchmark::State& state) { Switch(state, toLight); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Arg(components);
  }
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara::bench;
  Register("SwitchToLwt", true);
  Register("SwitchToProduct", false);
  return RunAndJudge(
      argc, argv,
      {{"Switch to light, time for a component, 500 over 125", {"SwitchToLwt/many", "SwitchToLwt/few"}, {}, 1.4},
       {"Switch to document, time for a component, 500 over 125",
        {"SwitchToProduct/many", "SwitchToProduct/few"},
        {},
        1.4}});
}
