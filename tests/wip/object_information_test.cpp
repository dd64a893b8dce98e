#include <algorithm>

#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ObjectInformation : public PanelTest {
 protected:
  ObjectInformation() : bolt(AddPart("BOLT")) {
    GivenPanel(AddProduct("PLANT", {bolt, AddPart("PLATE")}));
    dialogAnswer = 0;
  }

  // Logs a user on who may do much, but view nothing.
  void GivenUserWithoutRights() {
    vault->AddUser("guest", "guest", false);
    for (const auto* operation : {"CHECKIN", "CHECKOUT", "NEWRELEASE", "CopyFile"}) {
      vault->Grant("guest", operation, "");
    }
    auto options = Options();
    options.login = "guest";
    options.password = "guest";
    Open(options);
    RunVault();
    RunZorva();
    EXPECT_TRUE(Init());
    GivenPanel(Again(GivenRoot()));
  }

  Ref<veldora::VdObject> GivenRoot() { return Inside().RootObject(); }

  Ref<veldora::VdObject> bolt;
};

TEST_F(ObjectInformation, IsShownForTheSelectedNode) {
  ShowPanel([&](ScriptedView& view) {
    view.LeftClick("Tree1", "BOLT - A");
    view.Press("cmdShow");
  });

  ASSERT_THAT(dialogs, SizeIs(1));
  EXPECT_EQ(dialogs[0].kind, 8);
  EXPECT_EQ(dialogs[0].title, Says("QD.FRMMAINPANEL.INFORMATION"));
  ASSERT_THAT(dialogs[0].objects, SizeIs(1));
  EXPECT_EQ(dialogs[0].objects[0]->ObjectId(), bolt->ObjectId());
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(ObjectInformation, AsksTheVaultInThisOrder) {
  ShowPanel([&](ScriptedView& view) {
    view.LeftClick("Tree1", "BOLT - A");
    gate->StartRecording();
    view.Press("cmdShow");
    gate->StopRecording();
  });

  EXPECT_THAT(gate->Record(), testing::Contains("VdDialogWindow.WindowOptionA=(1)"));
  std::vector<std::string> vaultCalls;
  for (const auto& call : CallsOf(gate->Record(), "Vd")) vaultCalls.push_back(call.substr(0, call.find('(')));
  EXPECT_THAT(vaultCalls,
              ElementsAre("VdSession.ObjectStore", "VdObjectStore.ObjectById", "VdObject.Retrieve",
                          "VdSession.UserMetaInfo", "VdUserInfo.UserId", "VdSession.MetaInfo", "VdMetaInfo.Operations",
                          "VdOperations.Find", "VdOperation.OperationId", "VdSession.Authorizations",
                          "VdAuthorizations.IsAllowed", "VdSession.GetService", "VdGUIServices.New", "VdDialog.Window",
                          "VdDialogWindow.Title=", "VdDialogWindow.WindowOptionA=", "VdSession.ObjectStore",
                          "VdObjectStore.NewObjects", "VdObjects.Add", "VdDialog.Input",
                          "VdDialogInput.Objects=", "VdDialogWindow.Show"));
}

TEST_F(ObjectInformation, FailsWithoutASelectedNode) {
  desk.WhenShown("MainPanel", [](ScriptedView& view) { view.Press("cmdShow"); });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kObjectNotSet));
  EXPECT_FALSE(panel->IsLoaded());
}

TEST_F(ObjectInformation, FailsForAnObjectThatIsGone) {
  GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", {PaperOf(987654, "GHOST")})));
  desk.WhenShown("MainPanel", [](ScriptedView& view) {
    view.LeftClick("Tree1", "GHOST - A");
    view.Press("cmdShow");
  });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kObjectNotSet));
}

TEST_F(ObjectInformation, FailsWhereTheVaultHasNoWindows) {
  gate->FailOperation("VdSession.GetService");
  desk.WhenShown("MainPanel", [](ScriptedView& view) {
    view.LeftClick("Tree1", "BOLT - A");
    view.Press("cmdShow");
  });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kDeviceError));

  gate->Reset();
  EXPECT_THAT(dialogs, IsEmpty());
}

TEST_F(ObjectInformation, HasTheSameTitleEachTime) {
  ShowPanel([&](ScriptedView& view) {
    for (const auto* node : {"BOLT - A", "PLANT - A"}) {
      view.GoTo("Tree1", node);
      view.Press("cmdShow");
    }
  });

  ASSERT_THAT(dialogs, SizeIs(2));
  EXPECT_EQ(dialogs[1].title, dialogs[0].title);
  EXPECT_EQ(dialogs[1].objects[0]->ObjectId(), GivenRoot()->ObjectId());
}

TEST_F(ObjectInformation, IsRefusedToAUserWithoutTheRight) {
  GivenUserWithoutRights();
  NewBoxes();

  ShowPanel([&](ScriptedView& view) {
    view.GoTo("Tree1", "BOLT - A");
    gate->StartRecording();
    view.Press("cmdShow");
    gate->StopRecording();
  });

  std::vector<std::string> calls;
  for (const auto& call : CallsOf(gate->Record(), "Vd")) calls.push_back(call.substr(0, call.find('(')));
  calls.erase(calls.begin(), std::ranges::find(calls, "VdAuthorizations.IsAllowed"));
  EXPECT_THAT(calls, ElementsAre("VdAuthorizations.IsAllowed", "VdSession.UserMetaInfo", "VdUserInfo.Login",
                                 "VdObject.ClassInfo", "VdClass.ClassName"));
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NOT_ALLOWED_TO_VIEW_OBJECT", kCriticalModal,
                                              {"guest", "ZORVA Part"})));
  EXPECT_THAT(dialogs, IsEmpty());
}

}  // namespace
}  // namespace quintara::test
