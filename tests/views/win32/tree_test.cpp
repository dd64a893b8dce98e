// Before the toolkit's.
#include "views/win32/sample_dialog.h"

#include <commctrl.h>

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ATree : public OnDesktop {
 protected:
  ATree() {
    nodes.Add(0, "PLANT");
    nodes.Add(1, "BOLT");
    nodes.Add(1, "GROUP");
    nodes.Add(3, "PIN");
    nodes.Add(1, "PLATE");
    View().SetTree("Tree1", &nodes);
    View().SelectedNode("Tree1");  // has the tree look
  }
  enum : int { kPlant = 1, kBolt, kGroup, kPin, kPlate };

  HWND Tree() const { return sample.Window("Tree1"); }
  // What shows if there is room, from the top.
  std::vector<std::string> Rows() {
    View().SelectedNode("Tree1");
    std::vector<std::string> rows;
    for (auto row = TreeView_GetRoot(Tree()); row != nullptr; row = TreeView_GetNextVisible(Tree(), row)) {
      rows.push_back(TextOfRow(Tree(), row));
    }
    return rows;
  }
  int PictureOf(const std::string& text) {
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.hItem = RowOf(Tree(), text);
    SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(item.iImage, item.iSelectedImage);
    return item.iImage;
  }
  // The node of a row at its middle, in twips as an event has them.
  int NodeIn(const RECT& row, int fromLeft) {
    return View().NodeAt("Tree1", 15 * 96 * fromLeft / sample.Place(1440),
                         15 * 96 * MiddleOf(row).y / sample.Place(1440));
  }

  SampleNodes& nodes = sample.nodes;
};

TEST_F(ATree, HasARowForEachNodeThatIsNotHidden) {
  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "GROUP", "PIN", "PLATE"));
}

TEST_F(ATree, HasNoRowBelowAClosedNode) {
  nodes.SetExpanded(kGroup, false);
  View().TreeChanged("Tree1");

  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "GROUP", "PLATE"));
}

TEST_F(ATree, OpensANodeAgain) {
  nodes.SetExpanded(kPlant, false);
  View().TreeChanged("Tree1");
  EXPECT_THAT(Rows(), ElementsAre("PLANT"));
  nodes.SetExpanded(kPlant, true);
  View().TreeChanged("Tree1");

  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "GROUP", "PIN", "PLATE"));
}

TEST_F(ATree, ShowsNodesThatWereAdded) {
  nodes.Add(kBolt, "NUT");
  nodes.SetExpanded(kBolt, true);
  nodes.Add(0, "OTHER ROOT");
  View().TreeChanged("Tree1");

  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "NUT", "GROUP", "PIN", "PLATE", "OTHER ROOT"));
}

TEST_F(ATree, LooksAtItsContentOnlyWhenTheUserInterfaceCatchesUp) {
  nodes.Add(kPlant, "NEW");
  View().TreeChanged("Tree1");
  EXPECT_EQ(TreeView_GetCount(Tree()), 5U);

  win32::CatchUp();

  EXPECT_EQ(TreeView_GetCount(Tree()), 6U);
}

TEST_F(ATree, ShowsTheTextAndPictureThatANodeHasNow) {
  nodes.SetText(kBolt, "Schraube – großß");
  nodes.SetPicture(kBolt, "part doc");
  View().TreeChanged("Tree1");

  EXPECT_EQ(Rows()[1], "Schraube – großß");
  EXPECT_EQ(PictureOf("Schraube – großß"), 2);
  EXPECT_EQ(PictureOf("PLANT"), 0);
}

TEST_F(ATree, ShowsNoPictureForANodeWithoutOne) {
  nodes.SetPicture(kBolt, "");
  View().TreeChanged("Tree1");

  EXPECT_LT(PictureOf("BOLT"), 0);
}

TEST_F(ATree, HasNoRowsWithoutContent) {
  View().SetTree("Tree1", nullptr);

  EXPECT_THAT(Rows(), IsEmpty());
  EXPECT_EQ(View().NodeAt("Tree1", 300, 100), 0);
}

TEST_F(ATree, StartsAnewWithAnotherContent) {
  View().SelectNode("Tree1", kBolt);
  SampleNodes others;
  others.Add(0, "OTHER");

  View().SetTree("Tree1", &others);

  EXPECT_THAT(Rows(), ElementsAre("OTHER"));
  EXPECT_EQ(View().SelectedNode("Tree1"), 0);
  View().SetTree("Tree1", nullptr);
}

TEST_F(ATree, StartsAnewWhenItsContentHasFewerNodes) {
  nodes.Clear();
  View().TreeChanged("Tree1");

  EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(ATree, SelectsANodeWithoutAnEvent) {
  View().SelectNode("Tree1", kGroup);

  EXPECT_EQ(View().SelectedNode("Tree1"), kGroup);
  EXPECT_THAT(Events().calls, IsEmpty());
}

TEST_F(ATree, ShowsTheSelectedNodeInFullWhileTheKeyboardIsElsewhere) {
  View().ShowOnTop(0, 0, 400, 400);
  SetFocus(sample.Window("txt"));

  View().SelectNode("Tree1", kGroup);
  View().Redraw("Tree1");

  const auto row = PlaceOfRow(Tree(), RowOf(Tree(), "GROUP"));
  const auto context = GetDC(Tree());
  EXPECT_EQ(GetPixel(context, row.left + 1, row.top + 1), GetSysColor(COLOR_HIGHLIGHT));
  ReleaseDC(Tree(), context);
}

TEST_F(ATree, SelectsNoNodeAnyMore) {
  View().SelectNode("Tree1", kGroup);

  View().SelectNode("Tree1", 0);

  EXPECT_EQ(View().SelectedNode("Tree1"), 0);
}

TEST_F(ATree, SelectsANodeThatWasJustAdded) {
  const int node = nodes.Add(kPlant, "NEW");
  View().TreeChanged("Tree1");

  View().SelectNode("Tree1", node);

  EXPECT_EQ(View().SelectedNode("Tree1"), node);
}

TEST_F(ATree, RefusesANodeThatIsNotThere) {
  EXPECT_EQ(NumberOf([&] { View().SelectNode("Tree1", 6); }), 9);
  EXPECT_EQ(NumberOf([&] { View().SelectNode("Tree1", -1); }), 9);
  EXPECT_EQ(NumberOf([&] { View().EnsureVisible("Tree1", 6); }), 9);
  EXPECT_EQ(NumberOf([&] { View().EnsureVisible("Tree1", 0); }), 9);
}

TEST_F(ATree, OpensWhatIsAboveANodeThatIsToBeSeen) {
  nodes.SetExpanded(kPlant, false);
  nodes.SetExpanded(kGroup, false);
  View().TreeChanged("Tree1");

  View().EnsureVisible("Tree1", kPin);

  EXPECT_TRUE(nodes.IsExpanded(kPlant));
  EXPECT_TRUE(nodes.IsExpanded(kGroup));
  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "GROUP", "PIN", "PLATE"));
}

TEST_F(ATree, ScrollsToANodeThatIsToBeSeen) {
  for (int i = 0; i < 200; ++i) nodes.Add(kPlant, "N" + std::to_string(i));
  View().TreeChanged("Tree1");

  View().EnsureVisible("Tree1", nodes.Count());

  RECT all{};
  GetClientRect(Tree(), &all);
  const auto row = PlaceOfRow(Tree(), RowOf(Tree(), "N199"));
  EXPECT_GE(row.top, 0);
  EXPECT_LE(row.bottom, all.bottom);
}

TEST_F(ATree, KnowsTheNodeOfAPointAnywhereInItsRow) {
  const auto row = PlaceOfRow(Tree(), RowOf(Tree(), "GROUP"));

  EXPECT_EQ(NodeIn(row, static_cast<int>(row.left) + 2), kGroup);
  EXPECT_EQ(NodeIn(row, 2), kGroup);
  EXPECT_EQ(NodeIn(row, static_cast<int>(row.right) + 40), kGroup);
}

TEST_F(ATree, KnowsNoNodeBelowTheLastRow) {
  RECT below = PlaceOfRow(Tree(), RowOf(Tree(), "PLATE"));
  OffsetRect(&below, 0, 30);

  EXPECT_EQ(NodeIn(below, 30), 0);
  EXPECT_EQ(View().NodeAt("Tree1", 100, -100), 0);
}

TEST_F(ATree, TellsItsContentWhatTheUserOpensAndCloses) {
  const auto row = RowOf(Tree(), "GROUP");
  SendMessageW(Tree(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(row));

  SendMessageW(Tree(), WM_KEYDOWN, VK_LEFT, 0);
  EXPECT_FALSE(nodes.IsExpanded(kGroup));
  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "GROUP", "PLATE"));

  SendMessageW(Tree(), WM_KEYDOWN, VK_RIGHT, 0);
  EXPECT_TRUE(nodes.IsExpanded(kGroup));
  EXPECT_THAT(Rows(), ElementsAre("PLANT", "BOLT", "GROUP", "PIN", "PLATE"));
}

TEST_F(ATree, LeavesItsContentAsItIsWhileItFollowsIt) {
  nodes.SetExpanded(kGroup, false);
  nodes.SetExpanded(kPlant, false);
  View().TreeChanged("Tree1");
  Rows();

  EXPECT_FALSE(nodes.IsExpanded(kGroup));
  EXPECT_FALSE(nodes.IsExpanded(kPlant));
}

TEST_F(ATree, HoldsAsManyNodesAsThereMayBe) {
  SampleNodes many;
  many.Add(0, "ROOT");
  for (int i = 2; i <= 32767; ++i) many.Add((i - 2) / 8 + 1, "N" + std::to_string(i));

  View().SetTree("Tree1", &many);

  EXPECT_EQ(View().SelectedNode("Tree1"), 0);
  EXPECT_EQ(TreeView_GetCount(Tree()), 32767U);
  View().EnsureVisible("Tree1", 32767);
  View().SelectNode("Tree1", 32767);
  EXPECT_EQ(View().SelectedNode("Tree1"), 32767);
  for (int i = 2; i <= 32767; ++i) many.SetExpanded(i, false);
  View().TreeChanged("Tree1");
  EXPECT_THAT(Rows(), testing::SizeIs(9));
  View().SetTree("Tree1", nullptr);
}

constexpr int kDepth = 5000;  // open ones cost the toolkit a lot

TEST_F(ATree, HoldsNodesOfAnyDepth) {
  SampleNodes deep;
  for (int i = 0; i < kDepth; ++i) deep.Add(i, "N" + std::to_string(i + 1));

  View().SetTree("Tree1", &deep);
  View().EnsureVisible("Tree1", kDepth);

  EXPECT_EQ(TreeView_GetCount(Tree()), UINT{kDepth});
  View().SetTree("Tree1", nullptr);
  EXPECT_EQ(TreeView_GetCount(Tree()), 0U);
}

TEST_F(ATree, IsTakenAwayWithNodesOfAnyDepth) {
  SampleNodes deep;
  for (int i = 0; i < 32767; ++i) deep.Add(i, "N", false);
  View().SetTree("Tree1", &deep);
  View().SelectedNode("Tree1");

  View().Unload();

  EXPECT_TRUE(sample.IsGone());
}

// The pointer.

TEST_F(ATree, TellsOfTheRightButtonWhereItWentDownAndSelectsNothing) {
  View().SelectNode("Tree1", kPlate);
  const auto row = PlaceOfRow(Tree(), RowOf(Tree(), "GROUP"));
  int node = 0;
  Events().mouseDown = [&] { node = View().NodeAt("Tree1", Events().pressedAt.x, Events().pressedAt.y); };

  Click(Tree(), MiddleOf(row), true);

  EXPECT_EQ(node, kGroup);
  EXPECT_THAT(Events().calls, ElementsAre("OnMouseDown(Tree1, 2, 0)", "OnMouseUp(Tree1, 2)"));
  EXPECT_EQ(View().SelectedNode("Tree1"), kPlate);
}

TEST_F(ATree, TellsOfEachOfTwoQuickClicksOfTheRightButton) {
  const auto at = MiddleOf(PlaceOfRow(Tree(), RowOf(Tree(), "GROUP")));

  Click(Tree(), at, true);
  SendMessageW(Tree(), WM_RBUTTONDBLCLK, MK_RBUTTON, MAKELPARAM(at.x, at.y));

  EXPECT_THAT(Events().calls,
              ElementsAre("OnMouseDown(Tree1, 2, 0)", "OnMouseUp(Tree1, 2)", "OnMouseDown(Tree1, 2, 0)"));
  EXPECT_TRUE(nodes.IsExpanded(kGroup));
}

TEST_F(ATree, TellsOfTheKeysThatAreHeld) {
  Click(Tree(), {10, 10}, true, MK_SHIFT | MK_CONTROL);

  EXPECT_EQ(Events().calls.front(), "OnMouseDown(Tree1, 2, 3)");
}

TEST_F(ATree, TellsOfANodeThatTheLeftButtonChooses) {
  ClickRow(Tree(), "GROUP");

  EXPECT_THAT(Events().calls, ElementsAre("OnMouseDown(Tree1, 1, 0)", "OnNodeClick(Tree1, 3)", "OnMouseUp(Tree1, 1)"));
  EXPECT_EQ(View().SelectedNode("Tree1"), kGroup);
}

TEST_F(ATree, TellsOfANodeThatIsChosenAgain) {
  ClickRow(Tree(), "GROUP");
  Events().calls.clear();

  ClickRow(Tree(), "GROUP");

  EXPECT_EQ(Events().calls[1], "OnNodeClick(Tree1, 3)");
}

TEST_F(ATree, TellsOfNoNodeForAClickBesideItsText) {
  auto row = PlaceOfRow(Tree(), RowOf(Tree(), "GROUP"));
  OffsetRect(&row, row.right - row.left + 30, 0);

  Click(Tree(), MiddleOf(row));

  EXPECT_THAT(Events().calls, ElementsAre("OnMouseDown(Tree1, 1, 0)", "OnMouseUp(Tree1, 1)"));
}

TEST_F(ATree, OnlyClosesANodeByTheSignBeforeIt) {
  const auto place = PlaceOfRow(Tree(), RowOf(Tree(), "GROUP"));
  POINT at{0, MiddleOf(place).y};
  TVHITTESTINFO hit{};
  for (hit.pt = at; hit.pt.x < place.left && (hit.flags & TVHT_ONITEMBUTTON) == 0; ++hit.pt.x) {
    SendMessageW(Tree(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  }
  ASSERT_NE(hit.flags & TVHT_ONITEMBUTTON, 0U);

  Click(Tree(), {hit.pt.x + 1, at.y});

  EXPECT_FALSE(nodes.IsExpanded(kGroup));
  EXPECT_THAT(Events().calls, ElementsAre("OnMouseDown(Tree1, 1, 0)", "OnMouseUp(Tree1, 1)"));
}

// The keyboard.

TEST_F(ATree, TellsOfANodeThatAKeyGoesTo) {
  View().SelectNode("Tree1", kPlant);

  SendMessageW(Tree(), WM_KEYDOWN, VK_DOWN, 0);

  EXPECT_THAT(Events().calls, ElementsAre("OnNodeClick(Tree1, 2)"));
}

TEST_F(ATree, TellsNothingOfTheSpaceBar) {
  View().SelectNode("Tree1", kBolt);

  SendMessageW(Tree(), WM_KEYDOWN, VK_SPACE, 0);
  SendMessageW(Tree(), WM_CHAR, ' ', 0);

  EXPECT_THAT(Events().calls, IsEmpty());
}

}  // namespace
}  // namespace quintara::test
