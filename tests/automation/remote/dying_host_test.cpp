#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "automation/remote/remote_hosts.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::Ge;

constexpr int kEndedInCall = 3;

/// The number of the failure that `body` ends in, 0 without one.
int Number(const std::function<void()>& body) {
  ErrorState state;
  Attempt(state, body);
  return state.number;
}

/// Hosts whose process ends while it is called.
class AHostThatDies : public testing::Test {
 protected:
  AHostThatDies() {
    RemoteHosts::StartCad();
    product = Cad()->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
  }

  static Ref<zorva::Application> Cad() { return HostsProcess::Attach<zorva::Application>("ZORVA.Application"); }
  static Ref<veldora::VdApplication> Vault() {
    return HostsProcess::Attach<veldora::VdApplication>("Veldora.VdApplication");
  }
  static Ref<excel::Application> Spreadsheet() { return HostsProcess::Create<excel::Application>("Excel.Application"); }

  /// Lets the process end in the n-th call of `member`.
  static void EndIn(const std::string& member, int n = 1) { RemoteHosts::Control()->EndInMidCall(member, n); }
  /// That it has ended, so and not otherwise.
  static void ExpectEnded(HostsProcess& process) { EXPECT_EQ(process.WaitForEnd(), kEndedInCall); }

  HostsProcess& process = RemoteHosts::Process();
  Ref<zorva::Product> product;
};

TEST_F(AHostThatDies, FailsACallThatGivesAText) {
  EndIn("Product.PartNumber");

  EXPECT_EQ(Number([&] { product->PartNumber(); }), failure::kServerGone);

  ExpectEnded(process);
}

TEST_F(AHostThatDies, FailsACallThatTellsSomething) {
  EndIn("Product.Name");

  EXPECT_EQ(Number([&] { product->SetName("x"); }), failure::kServerGone);

  ExpectEnded(process);
}

TEST_F(AHostThatDies, FailsACallThatGivesAnObject) {
  const auto children = product->Products();
  EndIn("Products.Item");

  EXPECT_EQ(Number([&] { children->Item(1); }), failure::kServerGone);

  ExpectEnded(process);
}

TEST_F(AHostThatDies, FailsACallThatFillsAnArray) {
  const auto position = product->Position();
  PositionMatrix numbers{};
  EndIn("Position.GetComponents");

  EXPECT_EQ(Number([&] { position->GetComponents(numbers); }), failure::kServerGone);

  ExpectEnded(process);
}

TEST_F(AHostThatDies, FailsACallOfTheVault) {
  const auto session = Vault()->Engine()->Sessions(0);
  EndIn("VdObjectStore.NewObjects");

  EXPECT_EQ(Number([&] { session->ObjectStore()->NewObjects(); }), failure::kServerGone);

  ExpectEnded(process);
}

TEST_F(AHostThatDies, FailsACallOfAWorkbook) {
  const auto sheet = Spreadsheet()->Workbooks()->Add()->Worksheets()->Item(1);
  EndIn("Range.Value", 2);

  sheet->Range("A1")->SetValue(1.0);
  EXPECT_EQ(Number([&] { sheet->Range("A2")->SetValue(2.0); }), failure::kServerGone);

  ExpectEnded(process);
}

TEST_F(AHostThatDies, IsGoneForAllThatIsHeldOfIt) {
  const auto documents = Cad()->Documents();
  const auto sheet = Spreadsheet();
  const auto vault = Vault();
  EndIn("Product.PartNumber");
  Number([&] { product->PartNumber(); });

  EXPECT_EQ(Number([&] { documents->Count(); }), failure::kServerGone);
  EXPECT_EQ(Number([&] { product->Products(); }), failure::kServerGone);
  EXPECT_EQ(Number([&] { sheet->Workbooks(); }), failure::kServerGone);
  EXPECT_EQ(Number([&] { vault->Engine(); }), failure::kServerGone);
}

TEST_F(AHostThatDies, IsFoundNoMore) {
  EndIn("Product.PartNumber");
  Number([&] { product->PartNumber(); });
  ExpectEnded(process);

  EXPECT_NE(Number([&] { Cad()->Documents(); }), 0);
  EXPECT_NE(Number([&] { Vault()->Engine(); }), 0);
}

TEST_F(AHostThatDies, MayHaveAnotherInItsPlace) {
  const auto id = process.Id();
  EndIn("Product.PartNumber");
  Number([&] { product->PartNumber(); });
  ExpectEnded(process);

  RemoteHosts::StartCad();

  EXPECT_NE(RemoteHosts::Process().Id(), id);
  EXPECT_EQ(Cad()->Documents()->Count(), 0);
  EXPECT_EQ(Number([&] { product->PartNumber(); }), failure::kServerGone);
}

// One walk, cut off at each of its calls in turn.
TEST_F(AHostThatDies, FailsWhateverCallItDiesIn) {
  const auto walk = [] {
    const auto root = Cad()->ActiveDocument()->AsProductDocument()->Product();
    root->Parameters()->Count();
    root->UserProperties()->CreateString("A", "B");
    root->Parameters()->Item("A")->ValueAsString();
    PositionMatrix numbers{};
    root->Position()->GetComponents(numbers);
    root->Position()->SetComponents(numbers);
    const auto sheet = Spreadsheet()->Workbooks()->Add()->Worksheets()->Item(1);
    sheet->Range("A1")->SetValue("x");
    sheet->Range("A1")->Copy(sheet->Cells(2, 2));
    Vault()->Engine()->Sessions(0)->ObjectStore()->NewObjects()->Count();
  };
  int deaths = 0;

  for (int n = 1;; ++n) {
    RemoteHosts::StartCad();
    Cad()->Documents()->Add("ZVAProduct");
    auto& running = RemoteHosts::Process();
    EndIn("", n);
    const int number = Number(walk);
    if (running.IsRunning()) {
      EXPECT_EQ(number, 0);
      EndIn("", 0);
      break;
    }
    EXPECT_EQ(number, failure::kServerGone) << n;
    ++deaths;
  }

  EXPECT_THAT(deaths, Ge(20));
}

TEST_F(AHostThatDies, IsAProcessOfItsOwn) {
  EXPECT_EQ(RemoteHosts::Control()->ProcessId(), static_cast<std::int32_t>(process.Id()));
  EXPECT_NE(process.Id(), GetCurrentProcessId());
}

}  // namespace
}  // namespace quintara::test
