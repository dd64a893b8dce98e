#include "hosts/call_counter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

#include "automation/host_thread.h"
#include "base/failure.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "support/test_platform.h"
#include "support/tiny_files.h"

namespace quintara::hosts {
namespace {

using test::HostThread;

constexpr int kLooks = 6000;
constexpr DWORD kBetweenLooks = 10;

template <class Body>
int NumberOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

// A CAD host on a thread of its own, which asks its user about files, as a box does: all messages come in meanwhile.
class CallsOfOthers : public testing::Test {
 protected:
  CallsOfOthers() {
    folder.Write("MENDED.ZVAProduct",
                 "<ZVAProduct partNumber=\"MENDED\"><Component name=\"\" file=\"A.stp\" "
                 "position=\"1 0 0 0 1 0 0 0 1 0 0 0\"/></ZVAProduct>");
    folder.Write("A.stp", test::TinyStep("A"));
    thread.Run([this] {
      calls = std::make_unique<CallCounter>(gate);
      host = std::make_unique<CadHost>(
          CadHost::Surroundings{gate, std::make_shared<NativeContents>(gate), [this](const std::string&) {
                                  WaitForAnswer();
                                  return true;
                                }});
      host->Application()->SetDisplayFileAlerts(true);
    });
  }
  ~CallsOfOthers() override {
    thread.Run([this] {
      host.reset();
      calls.reset();
    });
  }

  void WaitForAnswer() {
    asked = true;
    for (int i = 0; i < kLooks && !answered; ++i) {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
      Sleep(1);
    }
  }
  Ref<zorva::Application> Served() {
    return thread.Served<zorva::Application>([this] { return host->Application(); });
  }

  test::TemporaryFolder folder;
  HostThread& thread = HostThread::Shared();
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  std::unique_ptr<CallCounter> calls;
  std::unique_ptr<CadHost> host;
  std::atomic<bool> asked = false;
  std::atomic<bool> answered = false;
};

TEST_F(CallsOfOthers, AreTurnedAwayWhileOneIsOnItsWay) {
  const auto application = Served();
  const auto documents = application->Documents();
  int opened = 0;
  std::thread other([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      const auto mine = Served();
      opened = NumberOf([&] { mine->Documents()->Open(folder.Path("MENDED.ZVAProduct")); });
    }
    CoUninitialize();
  });
  for (int i = 0; i < kLooks && !asked; ++i) Sleep(kBetweenLooks);

  const int turnedAway = NumberOf([&] { documents->Add("ZVAProduct"); });
  answered = true;
  other.join();

  EXPECT_TRUE(asked);
  EXPECT_EQ(turnedAway, static_cast<int>(RPC_E_SERVERCALL_RETRYLATER));
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(documents->Count(), 1);
}

TEST_F(CallsOfOthers, AreCounted) {
  const auto documents = Served()->Documents();
  const auto before = calls->Count();

  documents->Count();
  documents->Count();

  EXPECT_EQ(calls->Count(), before + 2);
}

TEST_F(CallsOfOthers, PassTheGateOnceWhateverTheyGive) {
  const auto documents = Served()->Documents();
  thread.Run([this] { gate->StartRecording(); });

  documents->Add("ZVAProduct");

  EXPECT_EQ(gate->Record(), std::vector<std::string>{"Documents.Add(ZVAProduct)"});
}

TEST_F(CallsOfOthers, ThatFailLetTheNextOneIn) {
  const auto documents = Served()->Documents();

  EXPECT_NE(NumberOf([&] { documents->Read(folder.Path("absent")); }), 0);

  EXPECT_EQ(documents->Count(), 0);
}

}  // namespace
}  // namespace quintara::hosts
