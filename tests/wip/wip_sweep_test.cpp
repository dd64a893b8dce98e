#include <algorithm>
#include <optional>

#include "wip/plant_in_vault.h"

namespace quintara::test {
namespace {

struct Outcome {
  std::string failed;
  std::vector<Box> boxes;

  bool Told(const std::string& key) const {
    return std::ranges::any_of(boxes, [&](const auto& box) { return box.text.starts_with("EN " + key); });
  }
};

// Fails each call of a whole command once, one call a command.
class FailedCallsOfAWip : public PlantTest {
 protected:
  FailedCallsOfAWip() { GivenMatrix(plant, "PLANT"); }

  // Nothing if the command has fewer calls.
  std::optional<Outcome> CreateWithFailedCall(int n) {
    if (wip) wip->Close();
    wip = nullptr;
    EXPECT_TRUE(Init());
    const auto objects = Store()->NewObjects();
    objects->Add(plant);
    const auto selection = objects->Records();
    NewBoxes();
    // A panel that is never shown leaves no user behind.
    desk.Desktop().scripts["MainPanel"] = {[](ScriptedView& view) {
      Mark(view, kBolt, 1);
      Mark(view, kPlate, 2);
      view.Press("GetAllInstances(0)");
      view.Press("cmdCreateWIP");
      if (view.IsShown()) view.Press("cmdCancel");
    }};
    gate->StartRecording();
    gate->FailCall(n);
    EXPECT_NO_THROW(Cls_Application().Run(selection));
    const bool failed = gate->HasFailed();
    gate->Reset();
    desk.Desktop().scripts.clear();
    wip = OrElse(Ref<zorva::Document>(), [&] { return host.Application()->ActiveDocument()->AsDocument(); });
    if (!failed) return std::nullopt;
    return Outcome{gate->Record()[static_cast<std::size_t>(n) - 1], NewBoxes()};
  }

  // What couldn't be read isn't there to be marked.
  static void Mark(ScriptedView& view, int node, int clicks) {
    if (view.Of("Tree1").tree->Count() < node) return;
    for (int i = 0; i < clicks; ++i) view.Click("Tree1", dialog::button::kRight, node);
  }

  bool IsOpen(const std::string& dialog) { return desk.Made(dialog) > 0 && desk.Last(dialog).IsLoaded(); }

  Ref<zorva::Document> wip;

  void ExpectOneOfTheKnownEnds(const Outcome& outcome) {
    const bool succeeded = outcome.Told("QD.APPLICATION.WIP_CREATION_SUCCESSFUL");
    EXPECT_FALSE(IsOpen("MainPanel"));
    EXPECT_EQ(IsOpen("frmProgressBar"), outcome.Told("QD.FRMMAINPANEL.CANT_RETRIEVE_OBJECT"));
    EXPECT_FALSE(Process().gSkipPositioning);
    if (succeeded) {
      EXPECT_FALSE(Process().gWIPCancelled);
      EXPECT_EQ(Root()->PartNumber().substr(0, 5), "WIP~~");
      EXPECT_FALSE(Process().gClsInit);
    } else {
      EXPECT_FALSE(outcome.boxes.empty());
    }
    for (const auto& dialog : Process().gLoadedDialogs) dialog.view->Unload();
  }
};

TEST_F(FailedCallsOfAWip, EndItInOneOfTheKnownWays) {
  int calls = 0;
  int successes = 0;
  for (int n = 1;; ++n) {
    const auto outcome = CreateWithFailedCall(n);
    if (!outcome) break;
    SCOPED_TRACE("call " + std::to_string(n) + ", " + outcome->failed);
    ExpectOneOfTheKnownEnds(*outcome);
    ++calls;
    successes += outcome->Told("QD.APPLICATION.WIP_CREATION_SUCCESSFUL") ? 1 : 0;
  }

  EXPECT_GT(calls, 300);
  EXPECT_GT(successes, 10);
  EXPECT_GT(calls - successes, 100);
}

}  // namespace
}  // namespace quintara::test
