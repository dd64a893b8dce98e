#include <gmock/gmock.h>

#include "views/win32/sample_dialog.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ATreeToTick : public testing::Test {
 protected:
  ATreeToTick() {
    dialog.nodes.Add(0, "WIP");
    dialog.nodes.Add(1, "BOLT");
    dialog.view->SetTree("Tree1", &dialog.nodes);
    dialog.view->SelectNode("Tree1", 1);
  }

  SampleDialog dialog{"Ticks", [](dialog::Layout& layout) {
                        for (auto& control : layout.controls) control.clicksTick = control.name == "Tree1";
                      }};
};

TEST_F(ATreeToTick, GoesFromNodeToNodeWithoutAClick) {
  SendMessageW(dialog.Window("Tree1"), WM_KEYDOWN, VK_DOWN, 0);

  EXPECT_EQ(dialog.view->SelectedNode("Tree1"), 2);
  EXPECT_THAT(dialog.events.calls, IsEmpty());
}

TEST_F(ATreeToTick, TakesTheSpaceBarForAClick) {
  SendMessageW(dialog.Window("Tree1"), WM_KEYDOWN, VK_SPACE, 0);
  SendMessageW(dialog.Window("Tree1"), WM_CHAR, ' ', 0);

  EXPECT_THAT(dialog.events.calls, ElementsAre("OnNodeClick(Tree1, 1)"));
  EXPECT_EQ(dialog.view->SelectedNode("Tree1"), 1);
}

TEST_F(ATreeToTick, TakesTheSpaceBarForNothingWithoutANode) {
  dialog.view->SelectNode("Tree1", 0);

  SendMessageW(dialog.Window("Tree1"), WM_KEYDOWN, VK_SPACE, 0);

  EXPECT_THAT(dialog.events.calls, IsEmpty());
}

TEST_F(ATreeToTick, TellsOfBothClicksOfTwoQuickOnes) {
  const auto at = MiddleOf(PlaceOfRow(dialog.Window("Tree1"), RowOf(dialog.Window("Tree1"), "BOLT")));

  Click(dialog.Window("Tree1"), at);
  SendMessageW(dialog.Window("Tree1"), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(at.x, at.y));

  EXPECT_THAT(dialog.events.calls,
              ElementsAre("OnMouseDown(Tree1, 1, 0)", "OnNodeClick(Tree1, 2)", "OnMouseUp(Tree1, 1)",
                          "OnMouseDown(Tree1, 1, 0)", "OnNodeClick(Tree1, 2)"));
}

}  // namespace
}  // namespace quintara::test
