#include "views/console/console_dialogs.h"

#include "base/failure.h"
#include "views/console/test_dialog.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TheDialogsOfAConsole : public ::testing::Test {
 protected:
  std::unique_ptr<ConsoleDialogs> Make(bool canAsk) {
    return std::make_unique<ConsoleDialogs>(ConsoleDialogs::Surroundings{
        canAsk,
        {[]() -> std::unique_ptr<Screen> { throw Failure(failure::kDeviceError, "opened"); }, true, {}},
        {[this](std::optional<double>, const std::string& what) { shown.push_back(what); }, [] {}}});
  }

  TestDialog owner;
  std::vector<std::string> shown;
};

TEST_F(TheDialogsOfAConsole, AreCancelledWhereNobodyCanAnswer) {
  const auto dialogs = Make(false);
  owner.view = dialogs->Make(PanelLayout(), owner);
  owner.answer = [&](const std::string& event) {
    if (event == "click cmdCancel") owner.view->Unload();
  };

  owner.view->ShowModal();

  EXPECT_THAT(owner.events, ElementsAre("click cmdCancel", "unloaded"));
}

TEST_F(TheDialogsOfAConsole, AreUnloadedWhereTheirCancellingDoesNothing) {
  auto layout = PanelLayout();
  std::erase_if(layout.controls, [](const dialog::Control& control) { return control.name == "cmdCancel"; });

  Make(false)->Make(layout, owner)->ShowModal();

  EXPECT_THAT(owner.events, ElementsAre("unloaded"));
}

TEST_F(TheDialogsOfAConsole, TakeTheFullScreenWhereSomeoneCanAnswer) {
  const auto view = Make(true)->Make(SearchLayout(), owner);

  EXPECT_THROW(view->ShowModal(), Failure);
}

TEST_F(TheDialogsOfAConsole, AreALineWhereThereIsNothingToAnswer) {
  dialog::Layout layout{.name = "frmWaiting"};
  layout.controls = {dialog::Control{.name = "Label1", .text = "Wait..."}};
  const auto view = Make(true)->Make(layout, owner);

  view->ShowOnTop(0, 0, 100, 100);

  EXPECT_THAT(shown, ElementsAre("Wait..."));
}

TEST_F(TheDialogsOfAConsole, AreMadeByWhoeverIsNamedForThem) {
  const auto dialogs = Make(false);
  dialogs->SetMaker("Panel", [&](const dialog::Layout& layout, dialog::Events& events) {
    auto view = dialogs->MakeOwn(layout, events);
    view->SetText("txtName", "preset");
    return view;
  });

  EXPECT_EQ(dialogs->Make(PanelLayout(), owner)->Text("txtName"), "preset");
  EXPECT_THAT(dialogs->Make(SearchLayout(), owner)->Text("txtInput"), IsEmpty());
}

}  // namespace
}  // namespace quintara::test
