#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <random>
#include <set>
#include <thread>

#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

// Runs `body` in a process of its own, which ends without the parent's clean-up.
template <class Body>
pid_t InAnotherProcess(Body&& body) {
  const pid_t child = ::fork();
  if (child == 0) {
    int status = 0;
    try {
      body();
    } catch (const std::exception&) {
      status = 1;
    }
    ::_exit(status);
  }
  return child;
}

int StatusOf(pid_t child) {
  int status = -1;
  ::waitpid(child, &status, 0);
  return status;
}

template <class Maker>
class VaultInSeveralProcesses : public VaultTest<Maker> {};
TYPED_TEST_SUITE(VaultInSeveralProcesses, Databases, DatabaseName);

TYPED_TEST(VaultInSeveralProcesses, NoNumberIsDrawnTwice) {
  constexpr int kDraws = 150;
  const auto draw = [&](const std::string& file) {
    const auto own = this->OpenAnother(this->Options());
    const auto session = own->Application()->Engine()->Sessions(0);
    const auto attributes = session->MetaInfo()->ClassByName("ZORVA Part")->Attributes();
    const auto mask = session->ObjectStore()->Masks()->MaskOf(attributes->ItemByName("CN_ID"));
    std::ofstream drawn(this->folder.Path(file));
    for (int i = 0; i < kDraws; ++i) drawn << mask->NextValue() << "\n";
  };

  const auto first = InAnotherProcess([&] { draw("first"); });
  const auto second = InAnotherProcess([&] { draw("second"); });
  EXPECT_EQ(StatusOf(first), 0);
  EXPECT_EQ(StatusOf(second), 0);

  std::set<std::string> numbers;
  for (const auto* name : {"first", "second"}) {
    std::ifstream file(this->folder.Path(name));
    for (std::string line; std::getline(file, line);) numbers.insert(line);
  }
  EXPECT_EQ(numbers.size(), 2U * kDraws);
}

TYPED_TEST(VaultInSeveralProcesses, AKilledTransactionLeavesTheVaultAsItWas) {
  this->AddPart("BEFORE", "before");
  const auto before = this->Dump();
  std::mt19937 chance(20240229);
  std::uniform_int_distribution<int> pause(0, 150);
  for (int round = 0; round < 6; ++round) {
    const auto child = InAnotherProcess([&] {
      const auto own = this->OpenAnother(this->Options());
      own->InTransaction([&] {
        std::ofstream(this->folder.Path("begun" + std::to_string(round))) << "x";
        for (int i = 0; i < 100000; ++i) {
          const auto name = std::to_string(i);
          this->folder.Write("source/" + name + ".stp", "bytes " + name);
          own->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", name}}, this->folder.Path("source/" + name + ".stp"));
        }
      });
    });
    while (!this->folder.Has("begun" + std::to_string(round)))
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    std::this_thread::sleep_for(std::chrono::milliseconds(pause(chance)));
    ::kill(child, SIGKILL);
    EXPECT_TRUE(WIFSIGNALED(StatusOf(child)));

    this->Open();
    EXPECT_EQ(this->Dump(), before);
    EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
  }
}

TYPED_TEST(VaultInSeveralProcesses, AKilledSeriesOfAddsKeepsWholeObjectsOnly) {
  std::mt19937 chance(7);
  std::uniform_int_distribution<int> pause(0, 120);
  for (int round = 0; round < 4; ++round) {
    const auto child = InAnotherProcess([&] {
      const auto own = this->OpenAnother(this->Options());
      std::ofstream(this->folder.Path("begun" + std::to_string(round))) << "x";
      for (int i = 0; i < 100000; ++i) {
        const auto name = std::to_string(round) + "-" + std::to_string(i);
        this->folder.Write("source/" + name + ".stp", "bytes " + name);
        own->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", name}}, this->folder.Path("source/" + name + ".stp"));
      }
    });
    while (!this->folder.Has("begun" + std::to_string(round)))
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    std::this_thread::sleep_for(std::chrono::milliseconds(pause(chance)));
    ::kill(child, SIGKILL);
    StatusOf(child);

    this->Open();
    EXPECT_THAT(this->vault->Check(), testing::IsEmpty());
  }
}

TYPED_TEST(VaultInSeveralProcesses, AWriterWaitsForTheOther) {
  const auto child = InAnotherProcess([&] {
    const auto own = this->OpenAnother(this->Options());
    own->InTransaction([&] {
      own->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", "THEIRS"}}, {});
      std::ofstream(this->folder.Path("begun")) << "x";
      std::this_thread::sleep_for(std::chrono::milliseconds(150));
    });
  });
  while (!this->folder.Has("begun")) std::this_thread::sleep_for(std::chrono::milliseconds(2));

  this->AddPart("MINE");

  EXPECT_EQ(StatusOf(child), 0);
  EXPECT_EQ(this->vault->FindNewest("THEIRS").size(), 1U);
  EXPECT_EQ(this->vault->FindNewest("MINE").size(), 1U);
}

TYPED_TEST(VaultInSeveralProcesses, AnOpenTransactionDoesNotKeepOthersFromOpeningTheVault) {
  this->vault->InTransaction([&] {
    this->AddPart("BOLT", "bytes");
    EXPECT_EQ(this->OpenAnother(this->Options())->FindNewest("BOLT").size(), 0U);
  });

  EXPECT_EQ(this->OpenAnother(this->Options())->FindNewest("BOLT").size(), 1U);
}

}  // namespace
}  // namespace quintara::test
