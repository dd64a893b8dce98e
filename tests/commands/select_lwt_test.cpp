#include <algorithm>

#include "commands/formSelectLWT.h"
#include "commands/replacement_bench.h"
#include "commands/zorva_mocks.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;

constexpr auto kElementNotFound = "Element not found";

class SelectLwt : public testing::Test, protected ReplacementBench {
 protected:
  // What the dialog shows when it comes up; it is cancelled then.
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    RunWith([&](ScriptedView& dialog) {
      lines = LinesOf(dialog);
      dialog.Press("cmdCancel");
    });
    return lines;
  }
  // What a user finds after doing something to BOLT, which has a newer revision, PLATE, which hasn't, and the root.
  std::vector<std::string> StatesAfter(const UserScript& user) {
    const auto bolt = Add("BOLT");
    NewRevision(bolt);
    AddLight(bolt);
    AddLight(Add("PLATE"));
    std::vector<std::string> states;
    RunWith([&](ScriptedView& dialog) {
      dialog.Expand("Tree1", "BOLT.1", true);
      user(dialog);
      const auto& nodes = NodesOf(dialog);
      for (int node = 1; node <= nodes.Count(); ++node) {
        EXPECT_EQ(nodes.Picture(node), nodes.Tag(node));
        states.push_back(nodes.Tag(node));
      }
      dialog.Press("cmdCancel");
    });
    return states;
  }
};

TEST_F(SelectLwt, ComesUpWithItsTexts) {
  RunWith([](ScriptedView& dialog) {
    EXPECT_EQ(dialog.Of("").text, "EN QD.SELECTLWT_CAPTION");
    EXPECT_EQ(dialog.Of("FrameReview").text, "EN QD.SELECTLWT_FRAMEREVIEW_CAPTION");
    EXPECT_EQ(dialog.Of("cmdOK").text, "EN QD.SELECTLWT_CMDREPLACE");
    EXPECT_EQ(dialog.Of("cmdCancel").text, "EN QD.SELECTLWT_CMDCANCEL");
  });
}

TEST_F(SelectLwt, HasItsPicturesInTheirOrder) {
  RunWith([](ScriptedView& dialog) {
    EXPECT_THAT(dialog.MadeFrom().pictures, ElementsAre("part doc", "part lwt no", "part lwt yes", "product lwt no",
                                                        "product doc", "product lwt", "product lwt yes", "part lwt"));
  });
}

TEST_F(SelectLwt, IsShownInTheFontOfTheSettings) {
  Process().gFontName = "Verdana";

  RunWith([](ScriptedView& dialog) {
    for (const auto* control : {"", "FrameReview", "Tree1", "cmdOK", "cmdCancel"}) {
      EXPECT_EQ(dialog.Of(control).font.name, "Verdana") << control;
    }
  });
}

TEST_F(SelectLwt, HasRoomForEachControl) {
  RunWith([](ScriptedView& dialog) {
    const auto frame = dialog.Of("FrameReview").box;
    const auto tree = dialog.Of("Tree1").box;
    const auto ok = dialog.Of("cmdOK").box;
    const auto cancel = dialog.Of("cmdCancel").box;
    const auto whole = dialog.Of("").box;

    EXPECT_EQ(dialog.Of("Tree1").made.container, "FrameReview");
    EXPECT_LT(tree.left + tree.width, frame.width);
    EXPECT_LT(tree.top + tree.height, frame.height);
    EXPECT_LT(frame.top + frame.height, ok.top);
    EXPECT_LT(ok.left + ok.width, cancel.left);
    EXPECT_EQ(ok.top, cancel.top);
    EXPECT_LT(cancel.left + cancel.width, whole.width);
    EXPECT_LT(cancel.top + cancel.height, whole.height);
  });
}

TEST_F(SelectLwt, ShowsTheRootAloneWithoutLightComponents) {
  AddDocumentOf(Add("BOLT"));

  RunWith([](ScriptedView& dialog) {
    EXPECT_THAT(LinesOf(dialog), ElementsAre("WIP~~TEST, WIP~~TEST: product doc"));
    EXPECT_TRUE(NodesOf(dialog).IsExpanded(1));
  });

  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST"));
}

TEST_F(SelectLwt, NamesTheRootByItsNameAndPartNumber) {
  root->SetName("ROOT");

  EXPECT_THAT(Lines(), ElementsAre("ROOT, WIP~~TEST: product doc"));
  EXPECT_THAT(Candidates(), ElementsAre("ROOT"));
}

TEST_F(SelectLwt, ShowsALightComponentByItsFullNameAndName) {
  const auto bolt = AddLight(Add("BOLT"));
  bolt->SetName("A bolt");

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  A bolt\\WIP~~TEST, A bolt: part lwt"));
  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST", "A bolt\\WIP~~TEST"));
}

TEST_F(SelectLwt, ShowsANewerRevisionBelowItsComponent) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt);
  AddLight(bolt);

  RunWith([](ScriptedView& dialog) {
    EXPECT_THAT(LinesOf(dialog),
                ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt no",
                            "    BOLT.1\\WIP~~TEST|B, -->Revision: B: "));
    EXPECT_FALSE(NodesOf(dialog).IsExpanded(2));
  });
}

TEST_F(SelectLwt, ShowsNothingBelowAComponentAtItsNewestRevision) {
  const auto bolt = Add("BOLT");
  AddLight(NewRevision(bolt));

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt"));
}

TEST_F(SelectLwt, TellsProductsFromParts) {
  const auto frame = Add("FRAME", "ZORVA Product");
  AddLight(frame);
  NewRevision(frame);
  AddLight(Add("GRID", "ZORVA Product"));
  AddLight(Add("BOLT"));

  EXPECT_THAT(Lines(),
              ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  FRAME.1\\WIP~~TEST, FRAME.1: product lwt no",
                          "    FRAME.1\\WIP~~TEST|B, -->Revision: B: ", "  GRID.1\\WIP~~TEST, GRID.1: product lwt",
                          "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt"));
}

TEST_F(SelectLwt, FindsAClassByAnyPieceOfTheListOfProducts) {
  AddLight(Add("BOLT"));
  Process().gClassProducts = "ZORVA Product,Old zorva partition";

  EXPECT_THAT(Lines().back(), "  BOLT.1\\WIP~~TEST, BOLT.1: product lwt");
}

TEST_F(SelectLwt, ReadsTheListsOfClassesWhateverTheirCapitals) {
  AddLight(Add("BOLT"));
  AddLight(Add("FRAME", "ZORVA Product"));
  Process().gClassProducts = "zorva product";
  Process().gClassParts = "zOrVa pArT";

  EXPECT_THAT(Lines(), ElementsAre(testing::_, "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt",
                                   "  FRAME.1\\WIP~~TEST, FRAME.1: product lwt"));
}

TEST_F(SelectLwt, EndsTheLoadingAtAnUnclassifiedComponent) {
  const auto bolt = Add("BOLT");
  const auto frame = Add("FRAME", "ZORVA Product");
  NewRevision(frame);
  AddLight(bolt);
  AddLight(frame);
  AddLight(bolt);
  Process().gClassProducts = "Assembly";

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt",
                                   "  FRAME.1\\WIP~~TEST, FRAME.1: ", "    FRAME.1\\WIP~~TEST|B, -->Revision: B: "));
  EXPECT_THAT(NewBoxes(), ElementsAre(LoadingFailed(kElementNotFound)));
  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST"));
}

TEST_F(SelectLwt, TakesNoTickOnAnUnclassifiedComponent) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt);
  AddLight(bolt);
  Process().gClassParts = "Piece";

  RunWith([](ScriptedView& dialog) {
    dialog.LeftClick("Tree1", "BOLT.1");

    EXPECT_EQ(NodesOf(dialog).Tag(2), "");
    EXPECT_EQ(NodesOf(dialog).Picture(2), "");
  });
}

TEST_F(SelectLwt, PassesOverAnUnclassifiedDocument) {
  AddDocumentOf(Add("BOLT"));
  AddLight(Add("FRAME", "ZORVA Product"));
  Process().gClassParts = "Piece";

  EXPECT_THAT(Lines().back(), "  FRAME.1\\WIP~~TEST, FRAME.1: product lwt");
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(SelectLwt, EndsTheLoadingAtADocumentThatTheVaultDoesntKnow) {
  GivenWip({{"PLATE", "PLATE.1", kIdentityPosition, {}}});
  AddLight(Add("BOLT"));

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc"));
  EXPECT_THAT(NewBoxes(), ElementsAre(LoadingFailed("Object variable or With block variable not set")));
  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST"));
}

TEST_F(SelectLwt, TellsWhyTheVaultObjectOfADocumentCantBeFound) {
  AddDocumentOf(Add("BOLT"));
  gate->FailOperation("HIXEngine.DocumentClassId");

  Lines();

  EXPECT_THAT(NewBoxes(), ElementsAre(Report("Cls_Utils.RetrieveVDObject", kCritical, "Injected failure"),
                                      LoadingFailed("Object variable or With block variable not set")));
}

TEST_F(SelectLwt, EndsTheLoadingAtStampsThatLeadNowhere) {
  GivenWip({{"PLATE", "PLATE.1", kIdentityPosition, {}}});
  Utils().WriteStringProperty(Child(1), "TYPE", "LWT");
  AddLight(Add("BOLT"));

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc"));
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_EMPTY", box::kWarning, {"PLATE.1"}),
                                      LoadingFailed("Object variable or With block variable not set")));
}

TEST_F(SelectLwt, EndsTheLoadingAtASecondComponentOfOneName) {
  AddLight(Add("BOLT"));
  AddLight(Add("NUT"))->SetName("BOLT.1");
  AddLight(Add("PLATE"));

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt"));
  EXPECT_THAT(NewBoxes(), ElementsAre(LoadingFailed(Failure(failure::kDuplicateKey).Description())));
}

TEST_F(SelectLwt, EndsTheLoadingAtAComponentOfTheRootsName) {
  AddLight(Add("BOLT"))->SetName("WIP~~TEST");

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc"));
  EXPECT_THAT(NewBoxes(), ElementsAre(LoadingFailed(Failure(failure::kDuplicateKey).Description())));
}

TEST_F(SelectLwt, EndsTheLoadingWhereTheRootsFullNameIsntItsKey) {
  AddLight(Add("BOLT"));
  gate->FailOperation("Product.Name", 3);  // behind the root's own node and entry

  const auto lines = Lines();

  gate->Reset();
  const auto unnamed = Report("Cls_Utils.BuildFullName", kCritical, "Injected failure");
  EXPECT_THAT(lines, ElementsAre("WIP~~TEST, WIP~~TEST: product doc"));
  EXPECT_THAT(NewBoxes(), ElementsAre(unnamed, unnamed, LoadingFailed(kElementNotFound)));
}

// Both full names are asked for, even of a component that isn't shown.
TEST_F(SelectLwt, AsksForEachComponentInThisOrder) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt);
  AddLight(bolt);
  AddDocumentOf(Add("NUT"));
  desk.WhenShown("formSelectLWT", [](ScriptedView& dialog) { dialog.Press("cmdCancel"); });
  gate->StartRecording();

  RunAlone();

  std::vector<std::string> calls;
  for (const auto& call : gate->Record()) {
    const auto name = call.substr(0, call.find('('));
    if (name == "Product.Name" && !calls.empty()) {
      calls.back() += '+';
    } else if (name == "Products.Item" || name == "VdObjectStore.ObjectById" || name == "VdMetaInfo.ClassById" ||
               name == "Product.Parent" || name == "VdObject.LinkedVersion" || name.starts_with("View.")) {
      calls.push_back(name);
    }
  }
  gate->Reset();
  // A plus for each name that is read: the component's own on the way up, and the root's.
  const auto first = std::ranges::find(calls, "Products.Item");
  const auto shown = std::ranges::find(calls, "View.ShowModal");
  EXPECT_THAT(
      std::vector(first, shown),
      ElementsAre("Products.Item", "VdObjectStore.ObjectById", "VdMetaInfo.ClassById+++", "Product.Parent+++++++",
                  "VdObjectStore.ObjectById", "VdObject.LinkedVersion", "Products.Item", "Product.Parent",
                  "VdObjectStore.ObjectById", "VdMetaInfo.ClassById+++", "Product.Parent++++++", "View.TreeChanged",
                  "View.SetText", "View.SetText", "View.SetText", "View.SetText"));
}

TEST_F(SelectLwt, ShowsTheSameWhenItIsLoadedAgain) {
  AddLight(Add("BOLT"));
  const auto dialog = std::make_shared<formSelectLWT>(root);
  std::vector<std::vector<std::string>> shown;
  for (int i = 0; i < 2; ++i) {
    desk.WhenShown("formSelectLWT", [&](ScriptedView& view) {
      shown.push_back(LinesOf(view));
      view.Press("cmdCancel");
    });

    dialog->ShowModal();
  }

  const auto once = ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt");
  EXPECT_THAT(shown, ElementsAre(once, once));
  EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST"));
}

TEST_F(SelectLwt, TakesAnyTypeButThatOfADocumentForLight) {
  const auto bolt = Add("BOLT");
  for (const auto* type : {"LWT", "lwt", "PRODUCT", "3d", " "}) {
    GivenWip();
    Utils().WriteStringProperty(AddLight(bolt), "TYPE", type);

    EXPECT_EQ(Lines().size(), 2U) << type;
  }
}

TEST_F(SelectLwt, ShowsNoComponentOfTheTypeOfADocument) {
  const auto bolt = AddDocumentOf(Add("BOLT"));
  for (const auto* type : {"3D", ""}) {
    Utils().WriteStringProperty(bolt, "TYPE", type);

    EXPECT_EQ(Lines().size(), 1U) << type;
    EXPECT_THAT(NewBoxes(), IsEmpty()) << type;
  }
}

TEST_F(SelectLwt, LooksAtDirectChildrenOnly) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt);
  GivenWip({{"GROUP", "GROUP.1", kIdentityPosition, {{"BOLT", "BOLT.1", kIdentityPosition, {}}}}});
  Stamp(Child(1), Add("GROUP", "ZORVA Product"));
  Stamp(Child(1)->Products()->Item(1), bolt);

  EXPECT_THAT(Lines(), ElementsAre("WIP~~TEST, WIP~~TEST: product doc", "  GROUP.1\\WIP~~TEST, GROUP.1: product lwt"));
}

TEST_F(SelectLwt, TakesARevisionOfOtherCapitalsForANewOne) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt, "a");
  AddLight(bolt);

  EXPECT_THAT(Lines().back(), "    BOLT.1\\WIP~~TEST|a, -->Revision: a: ");
}

TEST_F(SelectLwt, TakesALowerRevisionForANewOne) {
  const auto bolt = Add("BOLT");
  SetRevision(bolt, "C");
  NewRevision(bolt, "B");
  AddLight(bolt);

  EXPECT_THAT(Lines().back(), "    BOLT.1\\WIP~~TEST|B, -->Revision: B: ");
}

TEST_F(SelectLwt, TakesALaterRevisionOfTheSameNameForNoNewOne) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt, "A");
  AddLight(bolt);

  EXPECT_THAT(Lines().back(), "  BOLT.1\\WIP~~TEST, BOLT.1: part lwt");
}

TEST_F(SelectLwt, TicksByAClickAndTakesItBackByAnother) {
  EXPECT_THAT(StatesAfter([](ScriptedView& dialog) { dialog.LeftClick("Tree1", "BOLT.1"); }),
              ElementsAre("product doc", "part lwt yes", "", "part lwt"));
  GivenWip();
  EXPECT_THAT(StatesAfter([](ScriptedView& dialog) {
                dialog.LeftClick("Tree1", "BOLT.1");
                dialog.LeftClick("Tree1", "BOLT.1");
              }),
              ElementsAre("product doc", "part lwt no", "", "part lwt"));
}

TEST_F(SelectLwt, TicksNothingElse) {
  EXPECT_THAT(StatesAfter([](ScriptedView& dialog) {
                dialog.LeftClick("Tree1", "WIP~~TEST");
                dialog.LeftClick("Tree1", "-->Revision: B");
                dialog.LeftClick("Tree1", "PLATE.1");
              }),
              ElementsAre("product doc", "part lwt no", "", "part lwt"));
}

TEST_F(SelectLwt, TicksNothingByTheRightButtonOrOnTheWayThere) {
  EXPECT_THAT(StatesAfter([](ScriptedView& dialog) {
                dialog.RightClick("Tree1", "BOLT.1");
                dialog.GoTo("Tree1", "BOLT.1");
              }),
              ElementsAre("product doc", "part lwt no", "", "part lwt"));
}

TEST_F(SelectLwt, LetsTheViewDrawATick) {
  StatesAfter([](ScriptedView& dialog) {
    const int before = dialog.Of("Tree1").treeChanges;

    dialog.LeftClick("Tree1", "BOLT.1");

    EXPECT_EQ(dialog.Of("Tree1").treeChanges, before + 1);
  });
}

// Three components, the user's ticks on the first and the last.
class TickedComponents : public SelectLwt {
 protected:
  TickedComponents() {
    for (const auto* name : {"BOLT", "NUT", "PLATE"}) {
      const auto object = Add(name);
      NewRevision(object);
      AddLight(object);
    }
  }

  // The replacements that are asked for then fail, and nothing is seen of them.
  std::vector<std::string> MarkedBy(const UserScript& user) {
    gate->FailOperation("Products.ReplaceWithFile");
    OrElse(0, [&] {
      RunWith([&](ScriptedView& dialog) {
        dialog.LeftClick("Tree1", "PLATE.1");
        dialog.LeftClick("Tree1", "BOLT.1");
        user(dialog);
      });
      return 0;
    });
    gate->Reset();
    return Candidates();
  }
};

TEST_F(TickedComponents, AreMarkedByOK) {
  EXPECT_THAT(MarkedBy([](ScriptedView& dialog) { dialog.Press("cmdOK"); }),
              ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST!", "NUT.1\\WIP~~TEST", "PLATE.1\\WIP~~TEST!"));
}

TEST_F(TickedComponents, ArentMarkedByCancel) {
  EXPECT_THAT(MarkedBy([](ScriptedView& dialog) { dialog.Press("cmdCancel"); }),
              ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST", "NUT.1\\WIP~~TEST", "PLATE.1\\WIP~~TEST"));
}

TEST_F(TickedComponents, ArentMarkedByTheCloseBox) {
  EXPECT_THAT(MarkedBy([](ScriptedView& dialog) { dialog.Close(); }),
              ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST", "NUT.1\\WIP~~TEST", "PLATE.1\\WIP~~TEST"));
}

TEST_F(TickedComponents, AreMarkedAtTheFirstEntryOfTheirKey) {
  const auto marked = MarkedBy([](ScriptedView& dialog) {
    auto& globals = Process();
    globals.ReplaceCandidates.push_back(globals.ReplaceCandidates[1]);
    globals.ReplaceCandidateCount = 5;
    dialog.Press("cmdOK");
  });

  EXPECT_THAT(marked, ElementsAre("WIP~~TEST", "BOLT.1\\WIP~~TEST!", "NUT.1\\WIP~~TEST", "PLATE.1\\WIP~~TEST!",
                                  "BOLT.1\\WIP~~TEST"));
}

TEST_F(TickedComponents, AreForgottenWhenTheDialogOpensAgain) {
  MarkedBy([](ScriptedView& dialog) { dialog.Press("cmdOK"); });
  GivenWip();

  RunWith([](ScriptedView&) { EXPECT_THAT(Candidates(), ElementsAre("WIP~~TEST")); });
}

TEST_F(TickedComponents, LeaveWithTheDialog) {
  MarkedBy([](ScriptedView& dialog) { dialog.Press("cmdOK"); });

  EXPECT_FALSE(desk.Last("formSelectLWT").IsLoaded());
  EXPECT_THAT(Process().gLoadedDialogs, IsEmpty());
}

TEST_F(TickedComponents, OfAProcessThatBeginsAnewAreNone) {
  MarkedBy([](ScriptedView& dialog) { dialog.Press("cmdOK"); });

  ResetProcess();

  EXPECT_THAT(Candidates(), IsEmpty());
}

TEST_F(SelectLwt, KeepsTheRootAndTheComponentsInItsList) {
  AddLight(Add("BOLT"));

  Lines();

  const auto& candidates = Process().ReplaceCandidates;
  ASSERT_EQ(candidates.size(), 2U);
  EXPECT_EQ(candidates[0].Product->PartNumber(), "WIP~~TEST");
  EXPECT_EQ(candidates[1].Product->PartNumber(), "BOLT");
}

TEST_F(SelectLwt, LetsAFailureInAClickOutAndIsGone) {
  const auto bolt = Add("BOLT");
  NewRevision(bolt);
  AddLight(bolt);
  desk.WhenShown("formSelectLWT", [&](ScriptedView& dialog) {
    gate->FailOperation("View.TreeChanged");
    dialog.LeftClick("Tree1", "BOLT.1");
  });

  EXPECT_THAT(FailureOf([&] { RunAlone(); }), FailsWith(failure::kDeviceError));
  EXPECT_FALSE(desk.Last("formSelectLWT").IsLoaded());
}

// A root with as many children as a test says, none of which is ever there.
TEST_F(SelectLwt, CantCountMoreChildrenThanSixteenBitsHold) {
  const auto product = std::make_shared<NiceMock<MockProduct>>();
  const auto children = std::make_shared<NiceMock<MockProducts>>();
  ON_CALL(*product, Products).WillByDefault(Return(Ref<zorva::Products>(children)));
  ON_CALL(*children, Count).WillByDefault(Return(32'768));
  EXPECT_CALL(*children, Item).Times(0);
  desk.WhenShown("formSelectLWT", [](ScriptedView& dialog) { dialog.Press("cmdOK"); });

  std::make_shared<formSelectLWT>(Ref<zorva::Product>(product))->ShowModal();

  EXPECT_THAT(NewBoxes(), ElementsAre(LoadingFailed("Overflow")));
}

}  // namespace
}  // namespace quintara::test
