#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "automation/calls/request_counter.h"
#include "automation/host_thread.h"
#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAreArray;

/// What one run has cost.
struct Cost {
  RequestCounter::Counts requests;
  std::vector<std::string> operations;  ///< that passed the host's gate
};

/// A flat product on another thread, as in another program, and a matrix for it.
class Positioning : public testing::Test {
 protected:
  Positioning() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Positioning() override { CoUninitialize(); }

  static std::vector<std::string> PartNumbers(int count) {
    std::vector<std::string> partNumbers;
    for (int i = 0; i < count; ++i) partNumbers.push_back("PART-" + std::to_string(i % 5));
    return partNumbers;
  }
  /// A matrix in which each of the part numbers stands once, in an assembly.
  void GivenMatrixOf(const std::vector<std::string>& partNumbers) {
    Node assembly{"ASSEMBLY", "ASSEMBLY.1", At(100), {}};
    for (const auto& partNumber : partNumbers) assembly.children.push_back({partNumber, partNumber + ".1", At(1), {}});
    folder.Write("matrix.xml", MatrixText({"ROOT", "ROOT", At(1000), {assembly}}));
  }
  static AssemblyStructure FlatOf(const std::vector<std::string>& partNumbers) {
    Node root{"WIP", "WIP", kIdentityPosition, {}};
    for (const auto& partNumber : partNumbers) root.children.push_back({partNumber, partNumber, kIdentityPosition, {}});
    return StructureOf(root);
  }

  using Work = std::function<bool(const Ref<zorva::ProductDocument>& document, const std::string& matrix)>;
  static bool Process(const Ref<zorva::ProductDocument>& document, const std::string& matrix) {
    return Cls_Matrice().ProcessXMLFile(document->Product(), matrix);
  }
  static bool PositionAll(const Ref<zorva::ProductDocument>& document, const std::string& matrix) {
    return Cls_Matrice().PositionAllInstances(document->Product(), matrix, true, document->Selection());
  }

  Cost CostOf(const std::vector<std::string>& children, const Work& work) {
    struct Host {
      std::shared_ptr<Gate> gate = std::make_shared<Gate>();
      CadHost cad{{gate, std::make_shared<NativeContents>(gate), {}}};
      Ref<zorva::ProductDocument> document;
      RequestCounter counter;
    };
    auto& thread = HostThread::Shared();
    std::unique_ptr<Host> host;
    auto document = thread.Served<zorva::ProductDocument>([&] {
      host = std::make_unique<Host>();
      host->document = host->cad.Build(FlatOf(children));
      return host->document;
    });
    thread.Run([&] {
      host->gate->StartRecording();
      host->counter.Reset();
    });
    EXPECT_TRUE(work(document, folder.Path("matrix.xml")));
    Cost cost;
    thread.Run([&] { cost = {host->counter.Counted(), host->gate->Record()}; });
    document = nullptr;
    thread.Run([&] { host.reset(); });
    return cost;
  }
  // The operations that the same takes without anything in between.
  std::vector<std::string> DirectOperations(const std::vector<std::string>& children, const Work& work) {
    const auto gate = std::make_shared<Gate>();
    CadHost cad({gate, std::make_shared<NativeContents>(gate), {}});
    const auto document = cad.Build(FlatOf(children));
    gate->StartRecording();
    EXPECT_TRUE(work(document, folder.Path("matrix.xml")));
    return gate->Record();
  }

  TestPlatform platform;
  TemporaryFolder folder;
};

// The names of the operations, each once: "Products.Item" of "Products.Item(3)".
std::set<std::string> NamesOf(const std::vector<std::string>& operations) {
  std::set<std::string> names;
  for (const auto& operation : operations) names.insert(operation.substr(0, operation.find('(')));
  return names;
}

TEST_F(Positioning, OfAnotherProgramTakesTheSameOperationsInTheSameOrder) {
  GivenMatrixOf(PartNumbers(10));

  const auto cost = CostOf(PartNumbers(10), Process);

  EXPECT_THAT(cost.operations, ElementsAreArray(DirectOperations(PartNumbers(10), Process)));
  EXPECT_THAT(cost.operations, Contains("Products.Item(10)"));
}

TEST_F(Positioning, AsksOnceForEachOperation) {
  GivenMatrixOf(PartNumbers(10));

  const auto cost = CostOf(PartNumbers(10), Process);

  EXPECT_EQ(cost.requests.invocations, static_cast<int>(cost.operations.size()));
}

TEST_F(Positioning, TakesTwoLooksAtEachComponentAndPlacesIt) {
  GivenMatrixOf(PartNumbers(20));

  const auto ten = CostOf(PartNumbers(10), Process).requests;
  const auto twenty = CostOf(PartNumbers(20), Process).requests;

  // Each look takes the component and reads its part number twice: to test that it can be read, and to have it.
  constexpr int kLook = 3;
  constexpr int kPlace = 2;
  EXPECT_EQ(twenty.invocations - ten.invocations, 10 * (2 * kLook + kPlace));
}

TEST_F(Positioning, AsksForTheIdOfANameOnceAKindHoweverManyComponentsThereAre) {
  GivenMatrixOf(PartNumbers(40));

  const auto few = CostOf(PartNumbers(5), Process);
  const auto many = CostOf(PartNumbers(40), Process);

  EXPECT_EQ(few.requests.names, static_cast<int>(NamesOf(few.operations).size()));
  EXPECT_EQ(many.requests.names, few.requests.names);
}

TEST_F(Positioning, LetsEachObjectGoWithOneRequestAtMost) {
  GivenMatrixOf(PartNumbers(20));

  const auto ten = CostOf(PartNumbers(10), Process).requests;
  const auto twenty = CostOf(PartNumbers(20), Process).requests;

  // Two looks at the component and its position.
  EXPECT_LE(twenty.others - ten.others, 10 * 3);
}

TEST_F(Positioning, OfAllInstancesTakesTheSameOperationsAndAsksOnceForEach) {
  GivenMatrixOf(PartNumbers(20));

  const auto cost = CostOf(PartNumbers(5), PositionAll);

  EXPECT_THAT(cost.operations, ElementsAreArray(DirectOperations(PartNumbers(5), PositionAll)));
  EXPECT_EQ(cost.requests.invocations, static_cast<int>(cost.operations.size()));
}

TEST_F(Positioning, OfAllInstancesAsksForNoNameTwice) {
  GivenMatrixOf(PartNumbers(40));
  const auto few = CostOf(PartNumbers(5), PositionAll);
  GivenMatrixOf(PartNumbers(80));

  const auto many = CostOf(PartNumbers(5), PositionAll);

  EXPECT_GT(many.requests.invocations, few.requests.invocations);
  EXPECT_EQ(many.requests.names, few.requests.names);
}

TEST_F(Positioning, WritingTheMatrixAsksOnceForEachOperationToo) {
  const auto write = [](const Ref<zorva::ProductDocument>& document, const std::string& matrix) {
    return Cls_Matrice().CreateXMLFile(document->Product(), matrix + ".new");
  };

  const auto ten = CostOf(PartNumbers(10), write);
  const auto twenty = CostOf(PartNumbers(20), write);

  EXPECT_THAT(twenty.operations, ElementsAreArray(DirectOperations(PartNumbers(20), write)));
  EXPECT_EQ(twenty.requests.invocations, static_cast<int>(twenty.operations.size()));
  EXPECT_EQ(twenty.requests.names, ten.requests.names);
}

}  // namespace
}  // namespace quintara::test
