#include "quintara/tick_desk.h"

#include <algorithm>
#include <utility>

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "base/failure.h"
#include "quintara/pattern.h"
#include "services/tree_model.h"
#include "views/console/plain_view.h"

namespace quintara {
namespace {

constexpr auto kDialog = "formSelectLWT";
constexpr auto kTree = "Tree1";
constexpr int kRoot = 1;

// A node that can be ticked, and what a user knows it by.
struct Offer {
  int node;
  std::string partNumber;
  std::string name;
  std::string path;
  bool isProduct;
};

std::string PartNumberOf(const std::string& key) {
  const auto& candidates = Process().ReplaceCandidates;
  const auto found = std::ranges::find(candidates, key, &ReplaceCandidate::Key);
  return found == candidates.end() ? std::string() : Utils().GetThePartNumber(found->Product);
}

std::vector<Offer> OffersIn(const TreeModel& tree) {
  std::vector<Offer> offers;
  for (int node = kRoot; node <= tree.Count(); ++node) {
    if (!tree.Picture(node).ends_with(" no")) continue;
    const auto partNumber = PartNumberOf(tree.Key(node));
    offers.push_back({node, partNumber, tree.Text(node), tree.Text(kRoot) + "/" + partNumber,
                      tree.Picture(node).starts_with("product ")});
  }
  return offers;
}

bool Matches(const std::string& given, const Offer& offer) {
  const Pattern pattern(given);
  const auto lastPiece = offer.name.substr(offer.name.find_last_of('\\') + 1);
  return pattern.TakesKind(offer.isProduct) && (pattern.Matches(offer.partNumber) || pattern.Matches(offer.name) ||
                                                pattern.Matches(lastPiece) || pattern.Matches(offer.path));
}

}  // namespace

class TickDesk::Dialog final : public PlainView {
 public:
  Dialog(TickDesk& desk, const dialog::Layout& layout, dialog::Events& events)
      : PlainView(layout, events), desk_(desk) {}

 private:
  void Wait() override {
    const auto offers = OffersIn(TheTree());
    for (const auto& pattern : desk_.patterns_) {
      const bool isMatched = std::ranges::any_of(offers, [&](const Offer& offer) { return Matches(pattern, offer); });
      if (!isMatched && !desk_.unmatched_) desk_.unmatched_ = pattern;
    }
    if (!desk_.unmatched_) Tick(offers);
    Sink().OnClick(desk_.unmatched_ ? "cmdCancel" : "cmdOK");
    if (IsShown()) Unload();
  }

  // Each once: a second click would take it back.
  void Tick(const std::vector<Offer>& offers) {
    for (const auto& offer : offers) {
      const bool isMeant =
          std::ranges::any_of(desk_.patterns_, [&](const std::string& pattern) { return Matches(pattern, offer); });
      if (isMeant) Sink().OnNodeClick(kTree, offer.node);
    }
  }

  const TreeModel& TheTree() const {
    const auto* tree = dynamic_cast<const TreeModel*>(Tree(kTree));
    if (tree == nullptr) throw Failure(failure::kObjectNotSet, "the dialog has no tree");
    return *tree;
  }

  TickDesk& desk_;
};

TickDesk::TickDesk(std::vector<std::string> patterns, ConsoleDialogs& dialogs)
    : patterns_(std::move(patterns)), dialogs_(dialogs) {
  if (patterns_.empty()) return;
  dialogs_.SetMaker(kDialog, [this](const dialog::Layout& layout, dialog::Events& events) {
    return std::make_shared<Dialog>(*this, layout, events);
  });
}

TickDesk::~TickDesk() {
  dialogs_.SetMaker(kDialog, {});
}

}  // namespace quintara
