#include "support/scripted_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "services/sample_form.h"
#include "services/tree_model.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;

class AScriptedView : public testing::Test {
 protected:
  // Shows the dialog to a user who closes it in the end.
  void Show(const UserScript& script) {
    dialogs.WhenShown("Sample", [&](ScriptedView& user) {
      script(user);
      if (user.IsShown()) user.Close();
    });
    form->ShowModal();
  }
  void ShowAndFail(const UserScript& script) {
    try {
      Show(script);
    } catch (const Failure&) {
    }
  }
  void GivenTree() {
    nodes.Add(0, "1", "root");
    nodes.Add(1, "2", "a");
    nodes.Add(2, "3", "below a");
    nodes.Add(1, "4", "b");
    nodes.SetExpanded(1, true);
    form->View().SetTree("Tree1", &nodes);
  }

  TestPlatform platform;
  ScriptedDialogs dialogs{platform};
  std::shared_ptr<SampleForm> form = NewSample();
  TreeModel nodes{{}};
};

TEST_F(AScriptedView, FailsTheTestWhereNobodyEndsItsLoop) {
  dialogs.WhenShown("Sample", [](ScriptedView&) {});

  EXPECT_NONFATAL_FAILURE(EXPECT_THROW(form->ShowModal(), Failure), "nobody ends the loop");

  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(AScriptedView, FailsTheTestWhereItHasNoScript) {
  EXPECT_NONFATAL_FAILURE(EXPECT_THROW(form->ShowModal(), Failure), "nobody ends the loop");
}

TEST_F(AScriptedView, FailsTheTestWhereAScriptIsLeftOver) {
  auto others = std::make_unique<ScriptedDialogs>(platform);
  others->WhenShown("Never", [](ScriptedView&) {});

  EXPECT_NONFATAL_FAILURE(others.reset(), "Never was not shown");
}

TEST_F(AScriptedView, FailsTheTestWhereTheUserCantDoThat) {
  form->View().SetEnabled("cmd", false);

  EXPECT_NONFATAL_FAILURE(ShowAndFail([](ScriptedView& user) { user.Press("cmd"); }), "disabled");
  EXPECT_NONFATAL_FAILURE(ShowAndFail([](ScriptedView& user) { user.Press("lbl"); }), "no \"lbl\"");
  EXPECT_NONFATAL_FAILURE(ShowAndFail([](ScriptedView& user) { user.Type("nowhere", ""); }), "no \"nowhere\"");
  EXPECT_NONFATAL_FAILURE(ShowAndFail([](ScriptedView& user) {
                            user.Close();
                            user.Press("cmd");
                          }),
                          "isn't shown");
}

TEST_F(AScriptedView, FailsTheTestWhereANodeIsOutOfReach) {
  GivenTree();

  EXPECT_NONFATAL_FAILURE(ShowAndFail([](ScriptedView& user) { user.RightClick("Tree1", "below a"); }), "closed");
  form->View().SetTree("Tree1", &nodes);
  EXPECT_NONFATAL_FAILURE(ShowAndFail([](ScriptedView& user) { user.RightClick("Tree1", "c"); }), "no node \"c\"");
}

TEST_F(AScriptedView, FindsTheNodeUnderAPoint) {
  GivenTree();
  auto& view = form->View();

  EXPECT_EQ(view.NodeAt("Tree1", 10, 0), 1);
  EXPECT_EQ(view.NodeAt("Tree1", 10, 240), 2);
  EXPECT_EQ(view.NodeAt("Tree1", 10, 480), 4);
  EXPECT_EQ(view.NodeAt("Tree1", 10, 720), 0);
  EXPECT_EQ(view.NodeAt("Tree1", 3000, 0), 0);
  view.EnsureVisible("Tree1", 3);
  EXPECT_EQ(view.NodeAt("Tree1", 10, 0), 3);
  EXPECT_EQ(view.NodeAt("Tree1", 10, 240), 4);
}

TEST_F(AScriptedView, ChoosesOneOfTheRadioButtonsOfAFrame) {
  std::vector<std::string> clicked;
  form->onClick = [&](const std::string& control) { clicked.push_back(control); };

  Show([](ScriptedView& user) { user.Press("Option1(0)"); });

  EXPECT_TRUE(dialogs.Last("Sample").Of("Option1(0)").isChecked);
  EXPECT_FALSE(dialogs.Last("Sample").Of("Option1(1)").isChecked);
  EXPECT_THAT(clicked, ElementsAre("Option1(0)"));
}

TEST_F(AScriptedView, KeepsTheOtherEdgesWhereOneIsDragged) {
  int resizes = 0;
  form->onResize = [&] { ++resizes; };
  form->View().SetBox("", {100, 200, 5000, 4000});
  dialog::Box dragged;

  Show([&](ScriptedView& user) {
    user.DragLeft(-50);
    user.DragTop(10);
    user.DragRight(7);
    user.DragBottom(-9);
    user.Move(1, 2);
    dragged = user.Of("").box;
  });

  EXPECT_EQ(dragged, (dialog::Box{51, 212, 5057, 3981}));
  EXPECT_EQ(resizes, 5);
}

TEST_F(AScriptedView, RefusesWhatItHasNot) {
  form->Load();
  auto& view = form->View();

  EXPECT_THROW(view.SetText("nowhere", ""), Failure);
  EXPECT_THROW(view.SetText("Tree1", ""), Failure);
  EXPECT_THROW(view.SetFont("img", {}), Failure);
  EXPECT_THROW(view.IsChecked("cmd"), Failure);
  EXPECT_THROW(view.SelectNode("Tree1", 1), Failure);
}

}  // namespace
}  // namespace quintara::test
