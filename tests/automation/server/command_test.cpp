#include <gmock/gmock.h>

#include <functional>

#include "access/session/process.h"
#include "automation/server/client.h"
#include "automation/server/module.h"
#include "automation/server/running_command.h"
#include "hosts/native/native_platform.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<std::string> kCommands = {
    "Cls_Application",     "Cls_GetMatrix",          "Cls_RetrieveMatrix", "Cls_AllInstances", "Cls_SwitchToLWT",
    "Cls_SwitchToProduct", "Cls_ReplaceByLatestLWT", "Cls_InsertLWT",      "Cls_InsertFromVD", "Cls_GlobalRefreshVD"};

/// Calls a command with nothing for what it takes.
Outcome RunCommand(const std::string& command) {
  const Client client(command);
  if (command == "Cls_InsertLWT") return client.Call("Run", nullptr, "LWT");
  if (command == "Cls_GetMatrix") return client.Call("Run", "CheckIn", nullptr);
  auto plain = client.Call("Run");
  return plain.result == DISP_E_PARAMNOTOPTIONAL ? client.Call("Run", nullptr) : std::move(plain);
}

class ACommand : public testing::TestWithParam<std::string> {
 protected:
  TestPlatform platform;
};

TEST_P(ACommand, IsRefusedWhileAnotherOneRuns) {
  const automation::RunningCommand running("Quintara.Cls_Application");

  const auto outcome = RunCommand(GetParam());

  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.code, static_cast<HRESULT>(0x80040201U));
  EXPECT_THAT(outcome.description, AllOf(HasSubstr("Quintara." + GetParam()), HasSubstr("Quintara.Cls_Application")));
  EXPECT_EQ(outcome.source, "Quintara." + GetParam());
}

TEST_P(ACommand, TouchesNothingWhenItIsRefused) {
  const automation::RunningCommand running("Quintara.Cls_Application");
  platform.TheGate()->StartRecording();

  RunCommand(GetParam());

  EXPECT_EQ(platform.TheGate()->Calls(), 0);
  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_FALSE(Process().gClsInit);
}

TEST_P(ACommand, RunsAgainAfterwards) {
  EXPECT_EQ(RunCommand(GetParam()).result, S_OK);
  EXPECT_EQ(RunCommand(GetParam()).result, S_OK);
}

INSTANTIATE_TEST_SUITE_P(Each, ACommand, testing::ValuesIn(kCommands), [](const auto& named) { return named.param; });

/// A box that lets calls in while it is shown.
class APanelThatLetsCallsIn : public testing::Test {
 protected:
  APanelThatLetsCallsIn()
      : before_(InstallPlatform(std::make_shared<NativePlatform>(std::make_shared<Gate>(),
                                                                 [this](const std::string&, int, const std::string&) {
                                                                   meanwhile();
                                                                   return answer::kOk;
                                                                 }))) {}
  ~APanelThatLetsCallsIn() override { InstallPlatform(before_); }

  TestPlatform platform;
  std::function<void()> meanwhile;

 private:
  std::shared_ptr<Platform> before_;
};

TEST_F(APanelThatLetsCallsIn, RefusesACommandAndLetsTheFirstOneEnd) {
  HRESULT inner = S_OK;
  meanwhile = [&] { inner = RunCommand("Cls_InsertLWT").code; };

  const auto outer = RunCommand("Cls_SwitchToLWT");

  EXPECT_EQ(inner, static_cast<HRESULT>(0x80040201U));
  EXPECT_EQ(outer.result, S_OK);
}

TEST_F(APanelThatLetsCallsIn, LetsTheServicesBeCalled) {
  Variant inner;
  meanwhile = [&] { inner = Client("Cls_Utils").Call("StripFileExtension", "a.b").Given(); };

  RunCommand("Cls_SwitchToLWT");

  EXPECT_EQ(inner, Variant("a"));
}

TEST_F(APanelThatLetsCallsIn, MayLetTheObjectGoThatShowsIt) {
  auto utils = Client("Cls_Utils").As<::_Cls_Utils>();
  bool isGone = true;
  meanwhile = [&] {
    utils.Reset();
    isGone = automation::CanUnload();
  };
  auto* const object = utils.Get();
  auto* message = SysAllocString(L"told");
  auto parameters = Array();

  EXPECT_EQ(object->ShowMessage(&message, nullptr, &parameters.Raw().parray, nullptr), S_OK);

  EXPECT_FALSE(isGone);
  EXPECT_TRUE(automation::CanUnload());
  SysFreeString(message);
}

}  // namespace
}  // namespace quintara::test
