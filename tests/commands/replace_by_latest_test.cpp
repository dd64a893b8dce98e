#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

#include "access/utils/Cls_Utils.h"
#include "base/text.h"
#include "commands/replacement_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using veldora::VdObject;

constexpr auto kObjectNotSet = "Object variable or With block variable not set";

Box CantBeCopied(const std::string& name) {
  return TextBox("QD.REPLACELWT.CANT_BE_COPIED_FROM_VAULT", kCriticalModal, {name});
}

// BOLT, NUT and PLATE as light components, each with a newer revision in the vault.
class ReplaceByLatest : public testing::Test, protected ReplacementBench {
 protected:
  ReplaceByLatest() {
    vault->InTransaction([this] {
      for (const auto* name : {"BOLT", "NUT", "PLATE"}) {
        before.push_back(Add(name));
        after.push_back(NewRevision(before.back()));
      }
    });
    for (const auto& object : before) AddLight(object);
    untouched = Stamps();
  }

  static void TickAll(ScriptedView& dialog) {
    for (const auto* name : {"BOLT.1", "NUT.1", "PLATE.1"}) dialog.LeftClick("Tree1", name);
  }
  std::vector<std::string> Stamps() {
    std::vector<std::string> stamps;
    for (int i = 1; i <= root->Products()->Count(); ++i) stamps.push_back(StampsOf(Child(i)));
    return stamps;
  }
  // The calls behind the dialog.
  std::vector<std::string> CallsBehindOK(const UserScript& user) {
    RunWith([&](ScriptedView& dialog) {
      user(dialog);
      gate->StartRecording();
    });
    const auto record = gate->Record();
    gate->Reset();
    return {std::ranges::find(record, "View.Unload(formSelectLWT)") + 1, record.end()};
  }
  // What comes out of a run in which all are ticked and the n-th such call behind the dialog fails.
  Failure FailureOfRun(const std::string& call, int n = 1) {
    return FailureOf([&] {
      RunWith([&](ScriptedView& dialog) {
        TickAll(dialog);
        gate->FailOperation(call, n, Failure(failure::kRefused, "cable"));
      });
    });
  }

  std::vector<Ref<VdObject>> before, after;  // the revisions
  std::vector<std::string> untouched;
};

TEST_F(ReplaceByLatest, ReplacesWhatIsTicked) {
  RunWith([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "NUT.1"); });

  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(Stamps(), ElementsAre(untouched[0], IdOf(after[1]), untouched[2]));
  EXPECT_EQ(FileOf(Child(2)), "NUT.stp.lwt");
  EXPECT_EQ(FileOf(Child(1)), "BOLT.lwt");
}

TEST_F(ReplaceByLatest, TakesTheLightFileOfTheLatestRevision) {
  RunWith(TickAll);

  EXPECT_EQ(ReadWork("BOLT.stp.lwt"), TinyLight("BOLT", "next"));
}

TEST_F(ReplaceByLatest, LeavesNamesOrderAndPositions) {
  PositionMatrix place = At(10, 20, 30);
  Child(2)->Position()->SetComponents(place);
  Child(2)->SetName("The nut");

  RunWith([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "The nut"); });

  EXPECT_EQ(StampsOf(Child(2)), IdOf(after[1]));
  EXPECT_THAT(Names(), ElementsAre("BOLT.1", "The nut", "PLATE.1"));
  PositionMatrix found{};
  Child(2)->Position()->GetComponents(found);
  EXPECT_EQ(found, place);
}

TEST_F(ReplaceByLatest, StampsTheReferenceAndNotTheComponent) {
  RunWith(TickAll);

  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(Child(i)->UserProperties()->Count(), 0);
    EXPECT_EQ(Child(i)->Reference()->UserProperties()->Count(), 3);
  }
}

TEST_F(ReplaceByLatest, FindsTheStampsOfAComponentItselfToo) {
  GivenWip({{"BOLT", "BOLT.1", kIdentityPosition, {}}});
  Stamp(Child(1), before[0]);

  RunWith([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "BOLT.1"); });

  EXPECT_EQ(StampsOf(Child(1)), IdOf(after[0]));
}

TEST_F(ReplaceByLatest, CallsTheHostInThisOrder) {
  auto calls = CallsBehindOK([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "NUT.1"); });

  std::erase_if(calls, [](const auto& call) {
    return call.starts_with("File") || call.find("(OPERATION_ID") != call.npos || call.find(".As") != call.npos;
  });
  const auto id = std::to_string(before[1]->ObjectId());
  const auto next = std::to_string(after[1]->ObjectId());
  const auto classId = std::to_string(after[1]->ClassId());
  const auto from = std::ranges::find(calls, "Products.ReplaceWithFile(" + WorkPath("NUT.stp.lwt") + ")");
  EXPECT_THAT(std::vector(from, calls.end()),
              ElementsAre("Products.ReplaceWithFile(" + WorkPath("NUT.stp.lwt") + ")", "Product.ApplyUpdate",
                          "Product.Reference", "Product.Parameters", "Parameters.Count", "Product.UserProperties",
                          "Parameters.CreateString(TYPE, LWT)", "VdObject.ObjectId", "Product.Parameters",
                          "Parameters.Count", "Parameters.Item(OBJECT_ID)", "Product.UserProperties",
                          "Parameters.CreateString(OBJECT_ID, " + next + ")", "VdObject.ClassId", "Product.Parameters",
                          "Parameters.Count", "Parameters.Item(CLASS_ID)", "Product.UserProperties",
                          "Parameters.CreateString(CLASS_ID, " + classId + ")"));
  EXPECT_THAT(calls, Contains(StartsWith("VdObject.LinkedVersion(3")));
}

TEST_F(ReplaceByLatest, ReadsTheRevisionsAnewBehindTheDialog) {
  const auto calls = CallsBehindOK([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "NUT.1"); });

  std::vector<std::string> ofTheChain;
  for (const auto& call : calls) {
    if (call.starts_with("VdObjectStore.ObjectById") || call.starts_with("VdObject.Clone") ||
        call.starts_with("VdObject.Retrieve") || call.starts_with("VdObject.LinkedVersion") ||
        call == "VdRecord.ValueAsString(REVISION)") {
      ofTheChain.push_back(call.substr(0, call.find('(')));
    }
  }
  EXPECT_THAT(ofTheChain,
              ElementsAre("VdObjectStore.ObjectById", "VdObject.Clone", "VdObject.Retrieve", "VdRecord.ValueAsString",
                          "VdObject.LinkedVersion", "VdObject.Clone", "VdObject.Retrieve", "VdRecord.ValueAsString"));
}

TEST_F(ReplaceByLatest, EndsWithoutAWordWhenTheStartFails) {
  gate->FailOperation("Application.GetItem");

  RunAlone();

  gate->Reset();
  // The start's own.
  EXPECT_THAT(NewBoxes(), ElementsAre(Report("Cls_Init.Init", kCritical, "Injected failure")));
  EXPECT_EQ(desk.Made("formSelectLWT"), 0);
}

TEST_F(ReplaceByLatest, NeedsAWip) {
  Utils().WriteStringProperty(root, "WIP", "True");

  RunAlone();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.IS_NOT_WIP", kCriticalModal)));
  EXPECT_EQ(desk.Made("formSelectLWT"), 0);
}

TEST_F(ReplaceByLatest, NeedsADocument) {
  GivenNoDocument();

  RunAlone();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.IS_NOT_WIP", kCriticalModal)));
}

TEST_F(ReplaceByLatest, NeedsAProductDocument) {
  folder.Write("work/NUT.stp", TinyStep("NUT"));
  host.Application()->Documents()->Open(WorkPath("NUT.stp"));

  RunAlone();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.IS_NOT_WIP", kCriticalModal)));
}

TEST_F(ReplaceByLatest, OfNothingTickedReplacesNothing) {
  EXPECT_THAT(CallsBehindOK([](ScriptedView&) {}), IsEmpty());

  EXPECT_EQ(Stamps(), untouched);
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(ReplaceByLatest, InAnEmptyWipReplacesNothing) {
  GivenWip();

  EXPECT_THAT(CallsBehindOK([](ScriptedView& dialog) { EXPECT_THAT(LinesOf(dialog), SizeIs(1)); }), IsEmpty());
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(ReplaceByLatest, ThatIsCancelledLeavesTheComponentsAlone) {
  for (const bool byButton : {true, false}) {
    RunWith([&](ScriptedView& dialog) {
      TickAll(dialog);
      byButton ? dialog.Press("cmdCancel") : dialog.Close();
    });

    EXPECT_EQ(Stamps(), untouched);
    EXPECT_EQ(FileOf(Child(1)), "BOLT.lwt");
    EXPECT_THAT(NewBoxes(), IsEmpty());
  }
}

TEST_F(ReplaceByLatest, EndsAtAComponentThatIsLightNoMore) {
  for (const auto* type : {"3D", ""}) {
    GivenWip();
    for (const auto& object : before) AddLight(object);
    Child(2)->SetName(std::string("NUT") + type);

    RunWith([&](ScriptedView& dialog) {
      dialog.LeftClick("Tree1", "BOLT.1");
      dialog.LeftClick("Tree1", std::string("NUT") + type);
      dialog.LeftClick("Tree1", "PLATE.1");
      Utils().WriteStringProperty(Child(2)->Reference(), "TYPE", type);
    });

    // The second showing of a text repeats the first one's name.
    EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.LOADED_AS_DOCUMENT", kCriticalModal, {"NUT3D"})));
    EXPECT_EQ(StampsOf(Child(1)), IdOf(after[0]));
    EXPECT_EQ(FileOf(Child(2)), "NUT.lwt");
    EXPECT_EQ(StampsOf(Child(3)), untouched[2]);
  }
}

TEST_F(ReplaceByLatest, LooksAtTheRootFirst) {
  RunWith([](ScriptedView& dialog) {
    TickAll(dialog);
    Process().ReplaceCandidates[0].Replace = true;
  });

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.LOADED_AS_DOCUMENT", kCriticalModal, {"WIP~~TEST"})));
  EXPECT_EQ(Stamps(), untouched);
}

TEST_F(ReplaceByLatest, PassesOverWhatHasNothingNewAnyMore) {
  Child(2)->SetName("The nut");

  RunWith([&](ScriptedView& dialog) {
    for (const auto* name : {"BOLT.1", "The nut", "PLATE.1"}) dialog.LeftClick("Tree1", name);
    SetRevision(after[1], "A");
  });

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.NO_REVISION", kCriticalModal, {"NUT"})));
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(after[0]), untouched[1], IdOf(after[2])));
}

TEST_F(ReplaceByLatest, TakesALowerRevisionAndOneOfOtherCapitals) {
  SetRevision(before[0], "C");
  SetRevision(after[1], "a");

  RunWith(TickAll);

  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(after[0]), IdOf(after[1]), IdOf(after[2])));
}

TEST_F(ReplaceByLatest, PassesOverWhatCantBeCopied) {
  Child(2)->SetName("The nut");
  std::filesystem::create_directories(ToPath(WorkPath("NUT.stp")));  // which no file can replace

  RunWith([&](ScriptedView& dialog) {
    for (const auto* name : {"BOLT.1", "The nut", "PLATE.1"}) dialog.LeftClick("Tree1", name);
  });

  EXPECT_THAT(NewBoxes(), ElementsAre(CantBeCopied("The nut")));
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(after[0]), untouched[1], IdOf(after[2])));
}

TEST_F(ReplaceByLatest, PassesOverARevisionWithoutALightFile) {
  const auto bare = Add("BARE", "ZORVA Part", false);
  vault->NewRevision(bare);
  GivenWip({{"BARE", "BARE.1", kIdentityPosition, {}}});
  Stamp(Child(1)->Reference(), bare);

  RunWith([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "BARE.1"); });

  EXPECT_THAT(NewBoxes(), ElementsAre(CantBeCopied("BARE.1")));
  EXPECT_EQ(StampsOf(Child(1)), IdOf(bare));
  EXPECT_TRUE(WorkHas("BARE.stp"));
}

TEST_F(ReplaceByLatest, ReplacesEachOfSeveralInstances) {
  AddLight(before[0]);

  RunWith([](ScriptedView& dialog) {
    dialog.LeftClick("Tree1", "BOLT.1");
    dialog.LeftClick("Tree1", "BOLT.2");
  });

  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(after[0]), untouched[1], untouched[2], IdOf(after[0])));
  EXPECT_EQ(StampsOf(Child(4)->Reference()), IdOf(after[0]));
}

// The host gives one reference to a file that it has loaded, and the stamps are on that.
TEST_F(ReplaceByLatest, StampsAllInstancesOfAnUnchangedLightFileWithTheFirst) {
  AddLight(before[0]);
  const auto tickBoth = [](ScriptedView& dialog) {
    dialog.LeftClick("Tree1", "BOLT.1");
    dialog.LeftClick("Tree1", "BOLT.2");
  };
  RunWith(tickBoth);
  CheckIn(after[0]);
  const auto next = vault->NewRevision(after[0]);

  RunWith(tickBoth);

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.REPLACELWT.NO_REVISION", kCriticalModal, {"BOLT"})));
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(next), untouched[1], untouched[2], IdOf(next)));
}

TEST_F(ReplaceByLatest, OffersNothingASecondTime) {
  RunWith(TickAll);

  RunWith([](ScriptedView& dialog) {
    EXPECT_THAT(LinesOf(dialog),
                ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt",
                            "  NUT.1\\WIP~~TEST, NUT.1: part lwt", "  PLATE.1\\WIP~~TEST, PLATE.1: part lwt"));
  });

  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST", "NUT.1\\WIP~~TEST", "PLATE.1\\WIP~~TEST"));
}

TEST_F(ReplaceByLatest, StartsFromTheRootAgainInASmallerWip) {
  RunWith([](ScriptedView& dialog) {
    TickAll(dialog);
    dialog.Press("cmdCancel");
  });
  GivenWip();
  const auto newest = Add("FRAME");
  AddLight(newest);

  RunWith();

  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST", "FRAME.1\\WIP~~TEST"));
}

TEST_F(ReplaceByLatest, GoesOnWithWhatWasLoadedBeforeAFailure) {
  desk.WhenShown("formSelectLWT", [](ScriptedView& dialog) {
    dialog.LeftClick("Tree1", "BOLT.1");
    dialog.Press("cmdOK");
  });
  // The start and the dialog's opening ask for none before.
  gate->FailOperation("Products.Item", 2);

  RunAlone();

  gate->Reset();
  EXPECT_THAT(NewBoxes(), ElementsAre(LoadingFailed("Injected failure")));
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(after[0]), untouched[1], untouched[2]));
}

TEST_F(ReplaceByLatest, LetsFailuresOutWithoutAWord) {
  for (const auto* call : {"VdObject.LinkedVersion", "VdObject.Clone", "VdRecord.ValueAsString", "VdObject.Retrieve",
                           "Products.ReplaceWithFile"}) {
    // The first clone is made where a failure is told.
    const auto failure = FailureOfRun(call, std::string(call) == "VdObject.Clone" ? 2 : 1);

    gate->Reset();
    EXPECT_THAT(failure, FailsWith(failure::kRefused)) << call;
    EXPECT_EQ(failure.Description(), "cable") << call;
    EXPECT_THAT(NewBoxes(), IsEmpty()) << call;
    EXPECT_EQ(Stamps(), untouched) << call;
  }
}

TEST_F(ReplaceByLatest, LeavesWhatIsReplacedWhenALaterOneFails) {
  const auto failure = FailureOfRun("Products.ReplaceWithFile", 2);

  EXPECT_EQ(failure.Description(), "cable");
  EXPECT_THAT(Stamps(), ElementsAre(IdOf(after[0]), untouched[1], untouched[2]));
}

TEST_F(ReplaceByLatest, LeavesAReplacedComponentWithoutStampsWhenItsUpdateFails) {
  for (const auto* call : {"Product.ApplyUpdate", "Product.Reference"}) {
    GivenWip();
    AddLight(before[0]);
    const auto failure = FailureOf([&] {
      RunWith([&](ScriptedView& dialog) {
        dialog.LeftClick("Tree1", "BOLT.1");
        gate->FailOperation(call, 1, Failure(failure::kRefused, "cable"));
      });
    });

    gate->Reset();
    EXPECT_EQ(failure.Description(), "cable") << call;
    EXPECT_EQ(FileOf(Child(1)), "BOLT.stp.lwt") << call;
    EXPECT_EQ(StampsOf(Child(1)), " :") << call;
  }
}

TEST_F(ReplaceByLatest, StampsAsFarAsTheObjectAnswers) {
  EXPECT_EQ(FailureOfRun("VdObject.ClassId").Description(), "cable");

  EXPECT_EQ(StampsOf(Child(1)), "LWT :" + std::to_string(after[0]->ObjectId()));
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(ReplaceByLatest, LetsAFailureBeforeTheDialogOut) {
  for (const auto* call : {"ProductDocument.Product", "Product.Products", "Product.Name", "Product.PartNumber",
                           "Platform.NewView", "View.SetTree", "View.SetText", "View.ShowModal"}) {
    // Whether it is a work in progress is asked first, and a failure there is a No.
    const int n = std::string(call) == "ProductDocument.Product" ? 2 : 1;
    gate->FailOperation(call, n, Failure(failure::kRefused, "cable"));

    const auto failure = FailureOf([&] { RunAlone(); });

    gate->Reset();
    EXPECT_EQ(failure.Description(), "cable") << call;
    EXPECT_THAT(NewBoxes(), IsEmpty()) << call;
    EXPECT_THAT(Process().gLoadedDialogs, IsEmpty()) << call;
  }
}

TEST_F(ReplaceByLatest, LetsOutThatAnObjectIsGone) {
  const auto failure = FailureOf([&] {
    RunWith([&](ScriptedView& dialog) {
      TickAll(dialog);
      Utils().WriteStringProperty(Child(1)->Reference(), "OBJECT_ID", "99999");
    });
  });

  EXPECT_THAT(failure, FailsWith(failure::kObjectNotSet));
  EXPECT_THAT(NewBoxes(),
              ElementsAre(TextBox("QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_NOT_EXIST", box::kWarning, {"BOLT.1"})));
}

// Fails each call of a run once, one in a run on a work in progress of its own, in which BOLT and NUT are ticked.
class FailedCallsOfAReplacement : public ReplaceByLatest {
 protected:
  struct Outcome {
    std::string call;
    std::vector<Box> boxes;
    bool wasShown = false;
    int ticked = 0;
    std::optional<std::string> out;  // the failure that came out
    std::vector<std::string> stamps;
  };

  // A type that can't be read is that of a document.
  static bool IsOfReplacing(const Box& box) {
    return std::ranges::any_of(std::array{"BOLT.1", "NUT.1"}, [&](const char* name) {
      return box == CantBeCopied(name) || box == TextBox("QD.REPLACELWT.LOADED_AS_DOCUMENT", kCriticalModal, {name});
    });
  }

  std::optional<Outcome> RunWithFailedCall(int n) {
    Process().texts = texts;
    // A reference that anything holds keeps its stamps.
    Process().ReplaceCandidates.clear();
    root = nullptr;
    GivenNoDocument();
    GivenWip();
    for (const auto& object : before) AddLight(object);
    NewBoxes();  // so far
    Outcome outcome;
    desk.Desktop().scripts["formSelectLWT"] = {[&](ScriptedView& dialog) {
      outcome.wasShown = true;
      // What couldn't be loaded isn't there to be ticked.
      const auto& nodes = NodesOf(dialog);
      for (int node = 2; node <= nodes.Count(); ++node) {
        const auto text = nodes.Text(node);
        if (text == "BOLT.1" || text == "NUT.1") dialog.Click("Tree1", dialog::button::kLeft, node);
        outcome.ticked += nodes.Tag(node).ends_with("yes") ? 1 : 0;
      }
      dialog.Press("cmdOK");
    }};
    gate->StartRecording();
    gate->FailCall(n);
    try {
      RunAlone();
    } catch (const Failure& failure) {
      outcome.out = failure.Description();
    }
    const bool hasFailed = gate->HasFailed();
    const auto record = gate->Record();
    gate->Reset();
    desk.Desktop().scripts.clear();
    if (!hasFailed) return std::nullopt;
    outcome.call = record[static_cast<std::size_t>(n) - 1];
    outcome.boxes = NewBoxes();
    outcome.stamps = Stamps();
    return outcome;
  }

  const Texts texts = Process().texts;
};

TEST_F(FailedCallsOfAReplacement, EndAsTheyShould) {
  // The stamps of each component when all goes well.
  const std::vector replaced = {IdOf(after[0]), IdOf(after[1]), untouched[2]};
  int shown = 0;
  int out = 0;
  int n = 1;
  for (; auto outcome = RunWithFailedCall(n); ++n) {
    SCOPED_TRACE("call " + std::to_string(n) + ", " + outcome->call);

    EXPECT_EQ(outcome->stamps.size(), 3U);
    EXPECT_EQ(outcome->stamps[2], untouched[2]);
    EXPECT_THAT(Process().gLoadedDialogs, IsEmpty());
    for (const auto& box : outcome->boxes) EXPECT_THAT(box.text, Not(testing::HasSubstr("Cls_ReplaceByLatestLWT")));
    if (outcome->out) {
      ++out;
      EXPECT_NE(outcome->stamps, replaced);
    } else if (outcome->wasShown && !outcome->boxes.empty()) {
      const auto& last = outcome->boxes.back();
      const bool isOfLoading = !IsOfReplacing(last);
      // One without a full name has the empty one for its key, on its node and in the list alike.
      EXPECT_TRUE(!isOfLoading || last == LoadingFailed("Injected failure") || last == LoadingFailed(kObjectNotSet) ||
                  last == LoadingFailed("Element not found") ||
                  last == Report("Cls_Utils.BuildFullName", kCritical, "Injected failure"))
          << last.text;
      EXPECT_EQ(outcome->stamps == replaced, isOfLoading && outcome->ticked == 2);
    } else if (outcome->boxes.empty()) {
      // What was swallowed in silence kept nothing from being replaced.
      EXPECT_TRUE(outcome->wasShown);
      EXPECT_NE(outcome->stamps[0], untouched[0]);
      EXPECT_NE(outcome->stamps[1], untouched[1]);
    }
    if (!outcome->wasShown) {
      EXPECT_EQ(outcome->stamps, untouched);
      EXPECT_EQ(outcome->boxes.size(), outcome->out ? 0U : 1U);
    }
    shown += outcome->wasShown ? 1 : 0;
  }

  EXPECT_EQ(Stamps(), replaced);
  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_GT(shown, 100);
  EXPECT_GT(out, 20);
}

}  // namespace
}  // namespace quintara::test
