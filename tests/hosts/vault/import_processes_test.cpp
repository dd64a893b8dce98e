#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <functional>
#include <iostream>
#include <random>
#include <set>
#include <stdexcept>
#include <thread>
#include <utility>

#include "hosts/vault/import_fixture.h"

namespace quintara::test {
namespace {

using testing::Each;
using testing::IsEmpty;
using Clock = std::chrono::steady_clock;

/// A process of its own that runs `body`, given a way to tell that it is in the middle of it, and that
/// ends without the parent's clean-up.
class Child {
 public:
  using Tell = std::function<void()>;

  explicit Child(const std::function<void(const Tell&)>& body) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    id_ = ::fork();
    if (id_ == 0) {
      ::close(ends[0]);
      int status = 0;
      try {
        body([&] { status = ::write(ends[1], "x", 1) == 1 ? 0 : 1; });
      } catch (const std::exception& error) {
        std::cerr << "a child failed: " << error.what() << "\n";
        status = 1;
      }
      ::_exit(status);
    }
    ::close(ends[1]);
    told_ = ends[0];
  }
  ~Child() {
    if (id_ > 0) Kill();
    ::close(told_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// Waits until the child has told, or ended without.
  void WaitForWord() const {
    char word = 0;
    EXPECT_EQ(::read(told_, &word, 1), 1) << "the child ended early";
  }
  /// The status with which it ends, as `waitpid` gives it.
  int Status() {
    int status = -1;
    ::waitpid(id_, &status, 0);
    id_ = 0;
    return status;
  }
  int Kill() {
    ::kill(id_, SIGKILL);
    return Status();
  }

 private:
  pid_t id_ = 0;
  int told_ = -1;
};

template <class Maker>
class ImportInSeveralProcesses : public ImportTest<Maker> {
 protected:
  static constexpr std::size_t kParts = 12;

  // One assembly of parts, none of which another prefix has.
  AssemblyPlan Large(const std::string& prefix) const {
    AssemblyPlan plan;
    std::vector<AssemblyPlan::Child> children;
    for (std::size_t i = 0; i < kParts; ++i) {
      plan.definitions.push_back(this->Part(prefix + "-" + std::to_string(i), prefix + " part " + std::to_string(i)));
      children.push_back({i, 1});
    }
    plan.definitions.push_back(this->Assembly(prefix, prefix + " assembly", children));
    return plan;
  }
  Child Importing(const AssemblyPlan& plan) const {
    return Child([this, &plan](const Child::Tell& tell) {
      const auto own = this->OpenAnother(this->Options());
      AssemblyImportOptions options;
      bool told = false;
      options.progress = [&](double, const std::string&) {
        if (!std::exchange(told, true)) tell();
      };
      own->ImportAssembly(plan, options);
    });
  }
  std::chrono::duration<double> LengthOfAnImport() const {
    const auto plan = Large("MEASURED");
    auto child = Importing(plan);
    child.WaitForWord();
    const auto start = Clock::now();
    EXPECT_EQ(child.Status(), 0);
    return Clock::now() - start;
  }
  bool IncomingIsEmpty() const {
    return std::filesystem::is_empty(std::filesystem::path(this->vault->Folder().store) / "incoming");
  }
};
TYPED_TEST_SUITE(ImportInSeveralProcesses, Databases, DatabaseName);

TYPED_TEST(ImportInSeveralProcesses, KilledAtAnyMomentLeavesAllOrNothing) {
  const int rounds = std::is_same_v<TypeParam, OnSqlite> ? 50 : 12;
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 chance(seed);
  this->AddPart("BEFORE", "before");
  // How fast an import is changes with what else the machine does, so the moments follow: early enough to cut
  // most imports off, late enough to reach the tail too, where bytes are moved into place.
  auto reach = this->LengthOfAnImport();
  int cut = 0;
  int complete = 0;
  for (int round = 0; round < rounds; ++round) {
    const auto plan = this->Large("R" + std::to_string(round));
    this->Open();
    const auto before = this->Dump();
    const auto stored = this->StoredFiles();
    this->vault.reset();
    auto child = this->Importing(plan);
    child.WaitForWord();
    std::this_thread::sleep_for(reach * std::uniform_real_distribution(0.0, 1.1)(chance));
    const bool killed = WIFSIGNALED(child.Kill());

    this->Open();
    const bool committed = this->Dump() != before;
    if (committed) {
      ++complete;
      EXPECT_EQ(this->vault->FindNewest("R" + std::to_string(round)).size(), 1U);
      EXPECT_EQ(this->StoredFiles().size(), stored.size() + 2 * plan.definitions.size());
      reach /= 2;
    } else {
      cut += killed ? 1 : 0;
      reach *= 1.25;
      EXPECT_EQ(this->StoredFiles(), stored);
    }
    EXPECT_TRUE(this->IncomingIsEmpty());
    EXPECT_THAT(this->vault->Check(), IsEmpty());
    if (this->HasFailure()) break;
  }
  EXPECT_GT(cut, rounds / 4);
  EXPECT_EQ(cut + complete, rounds);
}

TYPED_TEST(ImportInSeveralProcesses, DifferentAssembliesAtOnceGetNumbersOfTheirOwn) {
  constexpr int kDraws = 40;
  const auto firstPlan = this->Large("FIRST");
  const auto secondPlan = this->Large("SECOND");
  const auto work = [this](const AssemblyPlan& plan) {
    return Child([this, &plan](const Child::Tell&) {
      const auto own = this->OpenAnother(this->Options());
      const auto session = own->Application()->Engine()->Sessions(0);
      const auto attributes = session->MetaInfo()->ClassByName("ZORVA Part")->Attributes();
      const auto mask = session->ObjectStore()->Masks()->MaskOf(attributes->ItemByName("CN_ID"));
      std::ofstream drawn(this->folder.Path(plan.definitions.back().partNumber));
      for (int i = 0; i < kDraws / 2; ++i) drawn << mask->NextValue() << "\n";
      own->ImportAssembly(plan, {});
      for (int i = 0; i < kDraws / 2; ++i) drawn << mask->NextValue() << "\n";
    });
  };

  auto first = work(firstPlan);
  auto second = work(secondPlan);
  EXPECT_EQ(first.Status(), 0);
  EXPECT_EQ(second.Status(), 0);

  std::multiset<std::string> numbers;
  for (const auto* name : {"FIRST", "SECOND"}) {
    std::ifstream file(this->folder.Path(name));
    for (std::string line; std::getline(file, line);) numbers.insert(line);
    numbers.insert(this->TextOf(this->Newest(name), "CN_ID"));
    for (std::size_t i = 0; i < this->kParts; ++i)
      numbers.insert(this->TextOf(this->Newest(std::string(name) + "-" + std::to_string(i)), "CN_ID"));
  }
  EXPECT_EQ(numbers.size(), 2 * (kDraws + this->kParts + 1));
  EXPECT_EQ(std::set<std::string>(numbers.begin(), numbers.end()).size(), numbers.size());
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

TYPED_TEST(ImportInSeveralProcesses, TheSameAssemblyAtOnceIsStoredOnce) {
  const auto plan = this->Large("SAME");

  auto first = this->Importing(plan);
  auto second = this->Importing(plan);
  EXPECT_EQ(first.Status(), 0);
  EXPECT_EQ(second.Status(), 0);

  for (const auto& definition : plan.definitions)
    EXPECT_EQ(this->vault->FindNewest(definition.partNumber).size(), 1U) << definition.partNumber;
  EXPECT_THAT(this->OutcomesOf(this->Import(plan)), Each(Outcome::kUnchanged));
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

TYPED_TEST(ImportInSeveralProcesses, ARevisionAtOnceIsMadeOnce) {
  this->Import(this->Large("SAME"));
  const auto plan = this->Large("SAME");
  this->WriteSplit("SAME-0.stp", "another part");

  auto first = this->Importing(plan);
  auto second = this->Importing(plan);
  EXPECT_EQ(first.Status(), 0);
  EXPECT_EQ(second.Status(), 0);

  EXPECT_EQ(this->RevisionOf("SAME-0"), "B");
  EXPECT_EQ(this->RevisionOf("SAME-1"), "A");
  EXPECT_THAT(this->vault->Check(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test
