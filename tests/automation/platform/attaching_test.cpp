#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/text16.h"
#include "automation/platform/child_process.h"
#include "automation/platform/platform_fixture.h"

namespace quintara::test {
namespace {

using automation::ComPtr;
using automation::Outgoing;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class Thing : public AnyObject {
 public:
  std::string Name() override { return "thing"; }
};

class Attaching : public PlatformTest {
 protected:
  ProgramName name{OwnName("Application")};
};

TEST_F(Attaching, GivesTheRunningObjectOfANameInWhateverCapitals) {
  const Ref<AnyObject> thing = MakeRef<Thing>();
  const Running running(name, Outgoing(thing).Get());

  auto capitals = name.Name();
  for (char& letter : capitals) letter = static_cast<char>(std::toupper(letter));

  EXPECT_EQ(platform.Attach(name.Name()), thing);
  EXPECT_EQ(platform.Attach(capitals), thing);
}

TEST_F(Attaching, GivesAnObjectOfAnotherProcessAsWhatItIs) {
  const ChildProcess host(name);

  const auto attached = platform.Attach(name.Name());

  ASSERT_TRUE(attached->AsApplication());
  EXPECT_EQ(attached->AsApplication()->Name(), "mortal");
  EXPECT_TRUE(attached->AsApplication()->DisplayFileAlerts());
  EXPECT_FALSE(attached->AsProduct());
  EXPECT_FALSE(attached->AsVdApplication());
}

TEST_F(Attaching, GivesTheSameObjectOfAnotherProcessOnceAsAKind) {
  const ChildProcess host(name);

  const auto application = platform.Attach(name.Name())->AsApplication();

  EXPECT_EQ(application->GetItem("itself")->AsApplication(), application);
}

TEST_F(Attaching, FailsForANameThatNobodyRegistered) {
  const auto unknown = OwnName("Unknown");

  EXPECT_THAT(FailureOf([&] { platform.Attach(unknown); }), FailsNaming("\"" + unknown + "\" is not known"));
}

TEST_F(Attaching, FailsForAProgramThatDoesNotRun) {
  EXPECT_THAT(FailureOf([&] { platform.Attach(name.Name()); }), FailsNaming("\"" + name.Name() + "\" is not running"));
}

TEST_F(Attaching, NeverStartsAProgram) {
  const Factory factory(name.Class(), Making(MakeRef<Thing>()));

  EXPECT_THAT(FailureOf([&] { platform.Attach(name.Name()); }), FailsNaming("is not running"));
  EXPECT_EQ(factory.Made(), 0);
}

TEST_F(Attaching, FailsForAProgramThatHasEnded) {
  ChildProcess host(name);
  platform.Attach(name.Name());

  host.Kill();

  EXPECT_THAT(FailureOf([&] { platform.Attach(name.Name()); }), FailsNaming("\"" + name.Name() + "\" is not running"));
}

TEST_F(Attaching, FailsForAProgramThatHasEndedAndIsStillListedAsRunning) {
  Mute gone(HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE));
  const Running running(name, &gone);

  EXPECT_THAT(FailureOf([&] { platform.Attach(name.Name()); }), FailsNaming("\"" + name.Name() + "\" is not running"));
}

TEST_F(Attaching, KeepsTheResultOfAnObjectThatRefusesAutomation) {
  Mute mute;
  const Running running(name, &mute);

  const auto refused = FailureOf([&] { platform.Attach(name.Name()); });

  EXPECT_EQ(refused.Number(), static_cast<int>(E_NOINTERFACE));
  EXPECT_THAT(refused.Description(), HasSubstr(name.Name()));
}

TEST_F(Attaching, FindsTheProgramThatWasStartedAgain) {
  { const ChildProcess first(name); }
  const ChildProcess second(name);

  EXPECT_EQ(platform.Attach(name.Name())->AsApplication()->Name(), "mortal");
}

/// A host in another process, attached to.
class AHostThatEnds : public PlatformTest {
 protected:
  AHostThatEnds() : attached(platform.Attach(name.Name())->AsApplication()) {}

  HRESULT RawResultOf(const char* member, const char* argument) {
    const auto& object = dynamic_cast<automation::Adapter&>(*attached).Behind().Object();
    auto wide = Wide(member);
    auto* text = wide.data();
    DISPID id = DISPID_UNKNOWN;
    if (const auto result = object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id); FAILED(result)) {
      return result;
    }
    automation::Value given{std::string(argument)};
    DISPPARAMS parameters{&given.Raw(), nullptr, 1, 0};
    automation::Value result;
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result.Raw(), nullptr,
                          nullptr);
  }

  ProgramName name{OwnName("Application")};
  ChildProcess host{name};
  Ref<zorva::Application> attached;
};

MATCHER_P(IsGoneAt, member, "") {
  *result_listener << arg.Number() << ": " << arg.Description();
  return arg.Number() == failure::kServerGone && arg.Description().find(member) == 0;
}

TEST_F(AHostThatEnds, InTheMidstOfACallIsAFailureOfThatMemberAndOfEachOneAfterIt) {
  EXPECT_THAT(FailureOf([&] { attached->GetItem("kill"); }), IsGoneAt("Application.GetItem: "));
  EXPECT_THAT(FailureOf([&] { attached->GetItem("itself"); }), IsGoneAt("Application.GetItem: "));
  EXPECT_THAT(FailureOf([&] { attached->Documents(); }), IsGoneAt("Application.Documents: "));
  EXPECT_THAT(FailureOf([&] { attached->SetDisplayFileAlerts(true); }), IsGoneAt("Application.DisplayFileAlerts: "));
}

TEST_F(AHostThatEnds, OfItsOwnWillInTheMidstOfACallIsTheSameFailure) {
  EXPECT_THAT(FailureOf([&] { attached->GetItem("exit"); }), IsGoneAt("Application.GetItem: "));
  EXPECT_THAT(FailureOf([&] { attached->GetItem("itself"); }), IsGoneAt("Application.GetItem: "));
}

TEST_F(AHostThatEnds, GivesTheResultOfAnInterruptedCallAndThenThatOfAMissingServer) {
  EXPECT_EQ(RawResultOf("GetItem", "itself"), S_OK);
  EXPECT_EQ(RawResultOf("GetItem", "kill"), HRESULT_FROM_WIN32(RPC_S_CALL_FAILED));
  host.AwaitEnd();
  EXPECT_EQ(RawResultOf("GetItem", "itself"), HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE));
}

TEST_F(AHostThatEnds, BetweenTwoCallsIsTheSameFailure) {
  attached->GetItem("itself");

  host.Kill();

  EXPECT_THAT(FailureOf([&] { attached->GetItem("itself"); }), IsGoneAt("Application.GetItem: "));
}

TEST_F(AHostThatEnds, TellsNothingAnyMoreOfWhatItsObjectsAre) {
  const auto item = attached->GetItem("itself");

  host.Kill();

  EXPECT_FALSE(item->AsProduct());
  EXPECT_FALSE(item->AsVdApplication());
}

TEST_F(AHostThatEnds, LetsAnotherBeAttachedToInItsPlace) {
  FailureOf([&] { attached->GetItem("kill"); });
  host.AwaitEnd();
  const ChildProcess next(name);

  EXPECT_EQ(platform.Attach(name.Name())->AsApplication()->Name(), "mortal");
  EXPECT_THAT(FailureOf([&] { attached->GetItem("itself"); }), IsGoneAt("Application.GetItem: "));
}

TEST_F(AHostThatEnds, IsNoneThatOnlyFaultsInACall) {
  const auto fault = FailureOf([&] { attached->GetItem("fault"); });

  EXPECT_NE(fault.Number(), 0);
  EXPECT_THAT(fault.Description(), HasSubstr("Application.GetItem: "));
}

TEST_F(AHostThatEnds, IsNoneThatRefusesAndItsResultStaysTheNumber) {
  const auto refusal = FailureOf([&] { attached->GetItem("refuse"); });

  EXPECT_EQ(refusal.Number(), static_cast<int>(E_ACCESSDENIED));
  EXPECT_EQ(refusal.Description(), "Application.GetItem: not for you");
}

}  // namespace
}  // namespace quintara::test
