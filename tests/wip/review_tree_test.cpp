#include <algorithm>

#include "base/text.h"
#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::SizeIs;

class ReviewTree : public PanelTest {
 protected:
  std::vector<std::string> TreeOfPaper(const Paper& paper) { return TreeOf(MakeRef<PaperObject>(paper)); }

  // What loading the panel of this object fails with.
  Failure FailureOfLoading(const Paper& paper) {
    return FailureOf([&] { GivenPanel(MakeRef<PaperObject>(paper)).Load(); });
  }

  // So many parts below a product.
  Paper Wide(int count) {
    auto root = PaperOf(1, "ROOT", std::vector<Paper>{});
    root.calls = nullptr;
    auto leaf = PaperOf(0, "LEAF");
    leaf.calls = nullptr;
    root.children = [count, leaf] {
      return MakeRef<PaperList>(count, [leaf](int index) {
        auto paper = leaf;
        paper.objectId = index + 2;
        return MakeRef<PaperObject>(paper);
      });
    };
    return root;
  }

  // A product that holds the next one, and so on, down to so many levels below it.
  Paper Deep(int levels) {
    auto paper = PaperOf(levels + 1, "LEVEL", std::vector<Paper>{});
    paper.calls = nullptr;
    if (levels > 0) {
      paper.children = [this, levels] {
        return MakeRef<PaperList>(1, [this, levels](int) { return MakeRef<PaperObject>(Deep(levels - 1)); });
      };
    }
    return paper;
  }
};

TEST_F(ReviewTree, HasANodeForEachLinkInTheOrderOfTheVault) {
  const auto bolt = AddPart("BOLT");
  const auto plate = AddPart("PLATE");
  const auto group = AddProduct("GROUP", {bolt, plate});
  const auto plant = AddProduct("PLANT", {plate, group, bolt});

  EXPECT_THAT(TreeOf(plant),
              ElementsAre("PLANT - A: product none", "  PLATE - A: part none", "  GROUP - A: product none",
                          "    BOLT - A: part none", "    PLATE - A: part none", "  BOLT - A: part none"));
}

TEST_F(ReviewTree, IsOpenEverywhere) {
  GivenPanel(AddProduct("PLANT", {AddProduct("GROUP", {AddPart("BOLT")}), AddPart("PLATE")})).Load();

  for (int node = 1; node <= 4; ++node) EXPECT_TRUE(Nodes().IsExpanded(node)) << node;
}

TEST_F(ReviewTree, TakesTheRootForAProductWhateverItIs) {
  EXPECT_THAT(TreeOf(AddPart("BOLT")), ElementsAre("BOLT - A: product none"));
}

TEST_F(ReviewTree, KeysANodeByItsPath) {
  const auto bolt = AddPart("BOLT");
  const auto group = AddProduct("GROUP", {bolt});
  const auto plant = AddProduct("PLANT", {group});
  GivenPanel(plant).Load();
  const auto part = [](const Ref<veldora::VdObject>& object) {
    return std::to_string(object->ObjectId()) + "_" + std::to_string(object->ClassId());
  };

  EXPECT_EQ(Nodes().Key(1), part(plant));
  EXPECT_EQ(Nodes().Key(2), part(plant) + "xxx" + part(group));
  EXPECT_EQ(Nodes().Key(3), part(plant) + "xxx" + part(group) + "xxx" + part(bolt));
}

TEST_F(ReviewTree, SplitsTheLastPieceOfAKey) {
  const auto paper = PaperOf(47, "PLANT", {PaperOf(-48, "BOLT")});
  GivenPanel(MakeRef<PaperObject>(paper)).Load();
  std::string objectId;
  std::string classId;

  Inside().SplitNodeKey(2, objectId, classId);

  EXPECT_EQ(objectId, "-48");
  EXPECT_EQ(classId, std::to_string(ClassId("ZORVA Part")));
}

TEST_F(ReviewTree, LetsOneObjectStandInSeveralPlaces) {
  const auto bolt = AddPart("BOLT");
  const auto plant = AddProduct("PLANT", {AddProduct("LEFT", {bolt}), AddProduct("RIGHT", {bolt}), bolt});

  EXPECT_THAT(TreeOf(plant), SizeIs(6));
}

TEST_F(ReviewTree, FailsForTwoLinksToOneObjectUnderOneParent) {
  const auto twin = PaperOf(2, "BOLT");

  EXPECT_THAT(FailureOfLoading(PaperOf(1, "PLANT", {twin, twin})), FailsWith(failure::kDuplicateKey));
  EXPECT_FALSE(panel->IsLoaded());
}

TEST_F(ReviewTree, LeavesAChildOfAnotherClassOutWithAllBelowIt) {
  auto plant = PaperOf(1, "PLANT", std::vector<Paper>{});
  plant.children = [this] {
    auto note = PaperOf(2, "NOTE", {PaperOf(4, "BELOW")});
    note.info = Session()->MetaInfo()->ClassByName("Document");
    note.classId = note.info->ClassId();
    return ListOf({note, PaperOf(3, "BOLT")});
  };

  EXPECT_THAT(TreeOfPaper(plant), ElementsAre("PLANT - A: product none", "  BOLT - A: part none"));
  EXPECT_THAT(*paperCalls, testing::Not(testing::Contains("2'.Children(nothing)")));
}

TEST_F(ReviewTree, TakesAClassInBothListsForAProduct) {
  Process().gClassParts = "ZORVA Product,ZORVA Part";

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "GROUP", std::vector<Paper>{})})),
              ElementsAre("PLANT - A: product none", "  GROUP - A: product none"));
}

TEST_F(ReviewTree, FindsAClassWhoseNameIsAPieceOfAnotherOne) {
  Process().gClassProducts = "Old ZORVA Partition";
  Process().gClassParts = "ZORVA Part";

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "BOLT")})),
              ElementsAre("PLANT - A: product none", "  BOLT - A: product none"));
}

TEST_F(ReviewTree, FindsClassesWhateverTheirCapitals) {
  Process().gClassProducts = "zorva product";
  Process().gClassParts = "Screw,zorva PART";

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "GROUP", std::vector<Paper>{}), PaperOf(3, "BOLT")})),
              ElementsAre("PLANT - A: product none", "  GROUP - A: product none", "  BOLT - A: part none"));
}

TEST_F(ReviewTree, DoesntFindAClassThatIsLongerThanWhatIsListed) {
  Process().gClassProducts = "ZORVA";
  Process().gClassParts = "Part";

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "BOLT")})), SizeIs(1));
}

TEST_F(ReviewTree, GivesAPartWithAChildBothOfThem) {
  auto bolt = PaperOf(2, "BOLT");
  bolt.children = [this] { return ListOf({PaperOf(3, "THREAD")}); };

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {bolt})),
              ElementsAre("PLANT - A: product none", "  BOLT - A: part none", "    THREAD - A: part none"));
}

TEST_F(ReviewTree, TakesAnObjectWhoseChildrenCantBeHadForALeaf) {
  auto group = PaperOf(2, "GROUP", std::vector<Paper>{});
  group.children = []() -> Ref<veldora::VdObjects> { throw Failure(failure::kDeviceError); };

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {group, PaperOf(3, "BOLT")})), SizeIs(3));
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(ReviewTree, ReadsEachObjectAfreshAndThenWhatItHolds) {
  TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "GROUP", {PaperOf(3, "BOLT")}), PaperOf(4, "PLATE")}));

  EXPECT_THAT(*paperCalls, ElementsAre("1.Children(nothing)", "2'.Retrieve", "2'.Children(nothing)", "3'.Retrieve",
                                       "3'.Children(nothing)", "4'.Retrieve", "4'.Children(nothing)"));
}

// The key, the text, the class, and only then what is below; also of a child that gets no node.
TEST_F(ReviewTree, AsksTheVaultInThisOrder) {
  const auto plant = AddProduct("PLANT", {AddPart("BOLT")});
  Process().gTreeViewAttributes = {"NM_CN_PART_NUMBER"};
  const std::vector<std::string> ofAChild = {
      "VdObjects.Item",     "VdObject.Clone",     "VdObject.Retrieve",    "VdObject.ObjectId", "VdObject.ClassId",
      "VdObject.ClassInfo", "VdClass.Attributes", "VdAttributes.Find",    "VdObject.Record",   "VdRecord.ValueAsString",
      "VdSession.MetaInfo", "VdObject.ClassId",   "VdMetaInfo.ClassById", "VdClass.ClassName"};
  for (const auto* parts : {"ZORVA Part", ""}) {
    Process().gClassParts = parts;
    GivenPanel(plant);
    gate->StartRecording();

    panel->Load();

    gate->StopRecording();
    std::vector<std::string> calls;
    for (const auto& call : CallsOf(gate->Record(), "Vd")) calls.push_back(call.substr(0, call.find('(')));
    auto expected = ofAChild;
    expected.insert(expected.begin(), {"VdObject.Children", "VdObjects.Count"});
    if (*parts != '\0') expected.insert(expected.end(), {"VdObject.Children", "VdObjects.Count"});
    calls.erase(calls.begin(), std::ranges::find(calls, "VdObject.Children"));
    EXPECT_EQ(calls, expected) << parts;
    panel->Unload();
  }
}

TEST_F(ReviewTree, FailsForAClassThatTheVaultDoesntKnow) {
  auto bolt = PaperOf(2, "BOLT");
  bolt.classId = 32000;

  EXPECT_THAT(FailureOfLoading(PaperOf(1, "PLANT", {bolt})), FailsWith(failure::kInvalidCall));
}

TEST_F(ReviewTree, FailsWhereAChildCantBeRead) {
  auto plant = PaperOf(1, "PLANT", std::vector<Paper>{});
  plant.children = [] {
    return MakeRef<PaperList>(1, [](int) -> Ref<veldora::VdObject> { throw Failure(failure::kDeviceError); });
  };

  EXPECT_THAT(FailureOfLoading(plant), FailsWith(failure::kDeviceError));
}

TEST_F(ReviewTree, FailsWhereTheChildrenCantBeCounted) {
  const auto plant = AddProduct("PLANT", {AddPart("BOLT")});
  GivenPanel(plant);
  gate->FailOperation("VdObjects.Count");

  EXPECT_THAT(FailureOf([&] { panel->Load(); }), FailsWith(failure::kDeviceError));

  gate->Reset();
}

TEST_F(ReviewTree, FailsForAChildThatIsNothing) {
  auto plant = PaperOf(1, "PLANT", std::vector<Paper>{});
  plant.children = [] { return MakeRef<PaperList>(1, [](int) { return Ref<veldora::VdObject>(); }); };

  EXPECT_THAT(FailureOfLoading(plant), FailsWith(failure::kObjectNotSet));
}

TEST_F(ReviewTree, IsReadAnewEachTimeThePanelIsLoaded) {
  GivenPanel(AddProduct("PLANT", {AddPart("BOLT")})).Load();
  panel->Unload();

  panel->Load();

  EXPECT_THAT(LinesOf(Nodes()), SizeIs(2));
}

TEST_F(ReviewTree, HoldsAsManyNodesAsA16BitNumberCounts) {
  GivenPanel(MakeRef<PaperObject>(Wide(32766))).Load();

  EXPECT_EQ(Nodes().Count(), 32767);
  EXPECT_EQ(Nodes().ChildCount(1), 32766);
}

TEST_F(ReviewTree, FailsForOneNodeMore) {
  EXPECT_THAT(FailureOfLoading(Wide(32767)), FailsWith(failure::kOverflow));
}

TEST_F(ReviewTree, FailsForMoreChildrenThanItCanCountBeforeItReadsOne) {
  int read = 0;
  auto root = PaperOf(1, "ROOT", std::vector<Paper>{});
  root.children = [&read] {
    return MakeRef<PaperList>(32769, [&read](int) -> Ref<veldora::VdObject> {
      ++read;
      throw Failure(failure::kDeviceError);
    });
  };

  EXPECT_THAT(FailureOfLoading(root), FailsWith(failure::kOverflow));
  EXPECT_EQ(read, 0);
}

TEST_F(ReviewTree, PassesOverAsManyChildrenAsA16BitNumberCounts) {
  Process().gClassParts = "";
  GivenPanel(MakeRef<PaperObject>(Wide(32768))).Load();

  EXPECT_EQ(Nodes().Count(), 1);
}

TEST_F(ReviewTree, IsAsDeepAsTheVault) {
  GivenPanel(MakeRef<PaperObject>(Deep(32766))).Load();

  ASSERT_EQ(Nodes().Count(), 32767);
  EXPECT_EQ(Nodes().Parent(32767), 32766);
  EXPECT_EQ(Nodes().Piece(32767), "1_" + std::to_string(ClassId("ZORVA Product")));
}

TEST_F(ReviewTree, OfAnyDepthTakesTheStateOfItsRoot) {
  GivenPanel(MakeRef<PaperObject>(Deep(32766))).Load();

  Inside().CycleNodeState(1);

  EXPECT_EQ(Nodes().Tag(32767), "product lwt");
}

class NodeText : public ReviewTree {
 protected:
  std::string TextOf(const Paper& paper) { return MainPanelInternals::GetNodeText(MakeRef<PaperObject>(paper)); }
  static void GivenTreeView(const std::string& attributes, const std::string& separator) {
    auto& globals = Process();
    globals.gTreeView = attributes;
    globals.gTreeViewAttributes = Split(attributes, ',');
    globals.gTreeViewSeparator = separator;
  }
};

TEST_F(NodeText, JoinsTheValuesOfItsAttributes) {
  GivenTreeView("REVISION,NM_CN_PART_NUMBER", "~");

  EXPECT_EQ(TextOf(PaperOf(1, "BOLT")), "A~BOLT");
}

TEST_F(NodeText, SaysWhereThereIsNoObject) {
  EXPECT_EQ(MainPanelInternals::GetNodeText(nullptr), "<OBJECT NOT FOUND>");
}

TEST_F(NodeText, SaysWhereAClassHasntAnAttribute) {
  GivenTreeView("NM_CN_PART_NUMBER,COLOUR,REVISION", "|");

  EXPECT_EQ(TextOf(PaperOf(1, "BOLT")), "BOLT|<EMPTY>|A");
}

TEST_F(NodeText, IsEmptyWithoutAttributes) {
  GivenTreeView("", " - ");

  EXPECT_EQ(TextOf(PaperOf(1, "BOLT")), "");
}

TEST_F(NodeText, IsEmptyWithoutAttributesInTheSettings) {
  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "BOLT")})), SizeIs(2));
  GivenTreeView("", "");

  EXPECT_THAT(TreeOfPaper(PaperOf(1, "PLANT", {PaperOf(2, "BOLT")})), ElementsAre(": product none", "  : part none"));
}

TEST_F(NodeText, BeginsWithoutASeparatorWhereTheFirstValueIsEmpty) {
  GivenTreeView("NM_CN_PART_NUMBER,REVISION", " - ");

  EXPECT_EQ(TextOf(PaperOf(1, "")), "A");
}

TEST_F(NodeText, BeginsWithTheFirstValueThatIsThere) {
  GivenTreeView("NM_CN_PART_NUMBER,CAD_REF_FILE_NAME,REVISION,NM_CN_PART_NUMBER", "/");

  EXPECT_EQ(TextOf(PaperOf(1, "")), "A/");
}

TEST_F(NodeText, EndsInASeparatorWhereTheLastValueIsEmpty) {
  GivenTreeView("NM_CN_PART_NUMBER,REVISION", " - ");
  auto bolt = PaperOf(1, "BOLT");
  bolt.values["REVISION"] = "";

  EXPECT_EQ(TextOf(bolt), "BOLT - ");
}

TEST_F(NodeText, FailsWhereAValueCantBeRead) {
  auto bolt = PaperOf(1, "BOLT");
  bolt.values.erase("REVISION");

  EXPECT_THAT(FailureOf([&] { TextOf(bolt); }), FailsWith(failure::kInvalidCall));
}

class TreeButtons : public ReviewTree {
 protected:
  TreeButtons() { GivenPanel(AddProduct("PLANT", {AddProduct("GROUP", {AddPart("BOLT")}), AddPart("PLATE")})); }

  std::vector<bool> Expanded() {
    std::vector<bool> expanded;
    for (int node = 1; node <= Nodes().Count(); ++node) expanded.push_back(Nodes().IsExpanded(node));
    return expanded;
  }
};

TEST_F(TreeButtons, CollapseAllButTheRoot) {
  ShowPanel([&](ScriptedView& view) { view.Press("cmdCollapse"); });

  EXPECT_THAT(Expanded(), ElementsAre(true, false, false, false));
}

TEST_F(TreeButtons, OpenARootThatTheUserHasClosed) {
  ShowPanel([&](ScriptedView& view) {
    view.Expand("Tree1", "PLANT - A", false);
    view.Press("cmdCollapse");
  });

  EXPECT_TRUE(Nodes().IsExpanded(1));
}

TEST_F(TreeButtons, ExpandAll) {
  ShowPanel([&](ScriptedView& view) {
    view.Press("cmdCollapse");
    view.Press("cmdExpand");
  });

  EXPECT_THAT(Expanded(), ElementsAre(true, true, true, true));
}

TEST_F(TreeButtons, TellTheViewOnceForAllNodes) {
  ShowPanel([&](ScriptedView& view) {
    const int before = view.Of("Tree1").treeChanges;

    view.Press("cmdCollapse");

    EXPECT_EQ(view.Of("Tree1").treeChanges, before + 1);
  });
}

}  // namespace
}  // namespace quintara::test
