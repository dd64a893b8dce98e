#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/ailing_hosts.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;

constexpr auto kNoIntegration =
    "Veldora - unable to retrieve ZORVA Integration. Please check your Veldora-ZORVA Integration installation or "
    "contact your administrator.";
constexpr auto kNotConnected =
    "Veldora - ZORVA Integration is not connected. Please connect to Veldora-ZORVA Integration.";
constexpr auto kNoZorva = "ZORVA Application is not accessible!";

class StartWithoutZorva : public testing::Test, public AilingHosts {
 protected:
  StartWithoutZorva() { platform.Native().Register("ZORVA.Application", nullptr); }
};

TEST_F(StartWithoutZorva, SaysSoAlwaysWithTheLiteral) {
  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoZorva)));

  LoadCatalogue();
  platform.Native().Register("ZORVA.Application", nullptr);
  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoZorva)));
}

TEST_F(StartWithoutZorva, StartsOneAndLosesIt) {
  bool started = false;
  platform.Native().RegisterMaker("ZORVA.Application", [&] {
    started = true;
    return Ref<AnyObject>(host.Application());
  });

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoZorva)));

  EXPECT_TRUE(started);
  EXPECT_FALSE(Process().gZorva);
}

TEST_F(StartWithoutZorva, FindsTheStartedOneAtTheNextCommand) {
  platform.Native().RegisterMaker("ZORVA.Application", [&] {
    RunZorva();
    return Ref<AnyObject>(host.Application());
  });
  Init();

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gZorva, host.Application());
}

TEST_F(StartWithoutZorva, AsksForItBeforeItStartsOne) {
  gate->StartRecording();

  Init();

  const auto calls = gate->Record();
  ASSERT_GE(calls.size(), 2U);
  EXPECT_EQ(calls[calls.size() - 2], "Platform.Attach(ZORVA.Application)");
  EXPECT_EQ(calls.back(), "Platform.Create(ZORVA.Application)");
}

TEST_F(StartWithoutZorva, TakesNothingElseForIt) {
  platform.Native().Register("ZORVA.Application", vault->Application());

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoZorva)));
}

class StartWithoutIntegration : public testing::Test, public AilingHosts {
 protected:
  void TakeAway() { host.RegisterItem("HIXEngine", nullptr); }
  static const std::string& Global() { return Process().texts.QD_INIT_ZORVA_INTEGRATION_NOT_CONNECTED.text; }
};

TEST_F(StartWithoutIntegration, SaysSoWithTheLiteral) {
  TakeAway();

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoIntegration)));
}

TEST_F(StartWithoutIntegration, OverwritesTheTextOfTheCatalogue) {
  LoadCatalogue();
  TakeAway();

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoIntegration)));

  EXPECT_EQ(Global(), kNoIntegration);
}

TEST_F(StartWithoutIntegration, SaysThatItIsNotConnectedWithALiteralFirst) {
  engine->Disconnect();

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNotConnected)));
  EXPECT_EQ(Global(), kNotConnected);
}

TEST_F(StartWithoutIntegration, SaysThatItIsNotConnectedWithTheCatalogueLater) {
  LoadCatalogue();
  engine->Disconnect();

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN QD.INIT.ZORVA_INTEGRATION_NOT_CONNECTED")));
}

TEST_F(StartWithoutIntegration, IsCalledMissingEvenWhenItIsOnlyNotConnectedUntilTheCatalogueIsLoadedAgain) {
  LoadCatalogue();
  TakeAway();
  Init();
  RunZorva();
  engine->Disconnect();

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(kNoIntegration)));

  LoadCatalogue();
  engine->Disconnect();
  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN QD.INIT.ZORVA_INTEGRATION_NOT_CONNECTED")));
}

}  // namespace
}  // namespace quintara::test
