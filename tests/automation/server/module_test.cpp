#include "automation/server/module.h"

#include <gmock/gmock.h>

#include <functional>

#include "automation/dispatch/com.h"
#include "automation/server/client.h"
#include "services/running_hosts.h"

namespace quintara::test {
namespace {

using automation::CanUnload;

/// What of the globals of a process holds an object of a host.
struct Holding {
  std::string name;
  std::function<void(RunningHosts&)> hold;
};

const std::vector<Holding> kHoldings = {
    {"Session", [](RunningHosts& hosts) { Process().gSession = hosts.Session(); }},
    {"Zorva", [](RunningHosts& hosts) { Process().gZorva = hosts.host.Application(); }},
    {"HIX",
     [](RunningHosts& hosts) {
       hosts.RunVault();
       hosts.RunZorva();
       Process().gHIX = hosts.engine;
     }},
    {"SessionUtil", [](RunningHosts& hosts) { Process().gSessionUtil = hosts.Util(); }},
    {"FileSystem", [](RunningHosts& hosts) { Process().gFileSystem = hosts.platform.Native().FileSystem(); }},
    {"Configuration",
     [](RunningHosts&) {
       Process().gClsInit = std::make_shared<Cls_Init>();
       Process().gClsInit->Xml = MakeRef<Cls_XML>();
     }},
    {"Dialog", [](RunningHosts&) { Process().gLoadedDialogs.emplace_back(); }},
    {"Candidate",
     [](RunningHosts& hosts) {
       const auto product = hosts.host.Application()->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
       Process().ReplaceCandidates.push_back({"A", product, false});
     }},
};

class TheModule : public testing::TestWithParam<Holding> {};

TEST_P(TheModule, StaysAsLongAsAGlobalHoldsSomethingOfAHost) {
  RunningHosts hosts;
  EXPECT_TRUE(CanUnload());

  GetParam().hold(hosts);
  EXPECT_FALSE(CanUnload());

  if (!Process().gLoadedDialogs.empty()) Process().gLoadedDialogs.clear();
  ResetProcess();
  EXPECT_TRUE(CanUnload());
}

INSTANTIATE_TEST_SUITE_P(Each, TheModule, testing::ValuesIn(kHoldings),
                         [](const auto& named) { return named.param.name; });

TEST(TheModuleAfterAStart, StaysUntilTheSessionsAreLetGo) {
  RunningHosts hosts;
  hosts.RunVault();
  hosts.RunZorva();
  {
    const Client init("Cls_Init");
    ASSERT_EQ(init.Call("Init").Given(), Variant(true));
  }

  // The end of the object puts the globals back.
  EXPECT_TRUE(CanUnload());
}

int platformsMade = 0;
std::weak_ptr<Platform> platformMade;

/// The platform that the server makes for itself.
class ThePlatformOfTheServer : public testing::Test {
 protected:
  ThePlatformOfTheServer() {
    platformsMade = 0;
    automation::UsePlatform([] {
      ++platformsMade;
      auto made = std::make_shared<NativePlatform>(std::make_shared<Gate>(), nullptr);
      platformMade = made;
      return std::shared_ptr<Platform>(made);
    });
  }
  ~ThePlatformOfTheServer() override {
    ResetProcess();
    automation::UsePlatform(nullptr);
  }
};

TEST_F(ThePlatformOfTheServer, IsMadeForTheFirstObject) {
  const Client first("Cls_Utils");
  const Client second("Cls_Utils");

  EXPECT_EQ(platformsMade, 1);
}

TEST_F(ThePlatformOfTheServer, GoesWithTheLastObject) {
  {
    const Client first("Cls_Utils");
    EXPECT_FALSE(platformMade.expired());
  }

  EXPECT_TRUE(platformMade.expired());
}

TEST_F(ThePlatformOfTheServer, IsMadeAgainForTheNextOne) {
  { const Client first("Cls_Utils"); }

  const Client second("Cls_Utils");

  EXPECT_EQ(platformsMade, 2);
}

TEST_F(ThePlatformOfTheServer, StaysWhereAGlobalHoldsSomethingOfAHost) {
  {
    const Client first("Cls_Utils");
    Process().gFileSystem = ThePlatform().FileSystem();
  }
  EXPECT_FALSE(platformMade.expired());

  const Client second("Cls_Utils");
  EXPECT_EQ(platformsMade, 1);

  Process().gFileSystem = nullptr;
}

TEST_F(ThePlatformOfTheServer, ThatCannotBeMadeLeavesNoObject) {
  automation::UsePlatform([]() -> std::shared_ptr<Platform> { throw Failure(429, "no screen"); });
  const auto& known = automation::PublicClasses().front();
  ComPtr<IClassFactory> factory;
  ComPtr<IDispatch> object;
  automation::GetClassObject(known.classId, IID_PPV_ARGS(&factory));

  EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), RunTimeError(429));

  EXPECT_FALSE(object);
  factory.Reset();
  EXPECT_TRUE(CanUnload());
}

}  // namespace
}  // namespace quintara::test
