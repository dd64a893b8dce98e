#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "access/host_mocks.h"
#include "matrix/merge_xml_bench.h"
#include "matrix/watched_util.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::SizeIs;
using ::testing::StartsWith;

TEST_F(MergeXMLMatrix, EndsInSilenceAtAChildThatTheVaultDoesNotKnow) {
  GivenMatrices();
  folder.Write("work/STRANGE.stp", TinyStep("STRANGE"));
  root->Products()->AddComponentsFromFiles({WorkPath("STRANGE.stp")}, "All");

  ExpectSilentFailure();
}

TEST_F(MergeXMLMatrix, EndsInSilenceAtAChildThatIsNotLoaded) {
  GivenMatrices();
  OpenCarWithout("NUT.7");

  ExpectSilentFailure();
}

TEST_F(MergeXMLMatrix, EndsInSilenceAtASubAssemblyWithoutMatrix) {
  GivenMatrix("FRAME", FrameMatrix());

  ExpectSilentFailure();
}

TEST_F(MergeXMLMatrix, EndsInSilenceAtASubAssemblyWhoseMatrixIsAWorkbook) {
  GivenMatrix("FRAME", FrameMatrix());
  GivenMatrix("AXLE", AxleMatrix(), "Microsoft Excel");

  ExpectSilentFailure();
}

TEST_F(MergeXMLMatrix, StopsAtTheFirstChildThatFails) {
  gate->StartRecording();

  ExpectSilentFailure();

  EXPECT_THAT(CallsOf(gate->Record(), "Products.Item"), ElementsAre("Products.Item(1)"));
}

TEST_F(MergeXMLMatrix, TellsAMatrixThatCannotBeLoaded) {
  GivenMatrix("FRAME", "<PRODUCT><PART></PRODUCT>");
  XmlDocument broken;
  broken.Parse("<PRODUCT><PART></PRODUCT>");

  ExpectFailure("Error in loading XML file \"" + Copied("FRAME") + "\" : " + broken.ParseError().reason);
}

TEST_F(MergeXMLMatrix, TellsAMatrixThatCannotBeCopiedAndThenThatItCannotBeLoaded) {
  GivenMatrices();
  WriteWork("CAR Matrix.xml", kOld);
  gate->FailOperation("VdSessionUtil.RunOperation");

  EXPECT_FALSE(Merge());

  ASSERT_THAT(platform.Boxes(), SizeIs(2));
  EXPECT_EQ(platform.Boxes()[0],
            ToldText("COMMON.UNEXPECTED_ERROR", kCritical, {"Cls_Utils.CopyVeldoraObjectToWork", "Injected failure"}));
  EXPECT_THAT(platform.Boxes()[1].text, StartsWith("Error in loading XML file \"\" : "));
  ExpectNothingDone();
}

class CopyingNothing : public WatchedUtil {
 public:
  using WatchedUtil::WatchedUtil;
  void RunOperation(const Ref<VdObject>&, const Ref<veldora::VdOperation>&, bool, const Ref<veldora::VdRecList>&,
                    const Ref<veldora::VdRecList>&) override {}
};

TEST_F(MergeXMLMatrix, TellsAMatrixOfWhichTheVaultBroughtNoFile) {
  GivenMatrices();
  WriteWork("CAR Matrix.xml", kOld);
  Watch watch;
  Process().gSessionUtil = MakeRef<CopyingNothing>(Process().gSessionUtil, watch);

  EXPECT_FALSE(Merge());

  ASSERT_THAT(platform.Boxes(), SizeIs(1));
  EXPECT_EQ(platform.Boxes()[0].title, "QNTR");
  EXPECT_THAT(platform.Boxes()[0].text, StartsWith("Error in loading XML file \"" + Copied("FRAME") + "\" : "));
  ExpectNothingDone();
}

TEST_F(MergeXMLMatrix, TellsAFailingSearchForAMatrixAndNothingMore) {
  GivenMatrices();
  WriteWork("CAR Matrix.xml", kOld);
  gate->FailOperation("VdQuery.RunWithBehavior");

  EXPECT_FALSE(Merge());

  EXPECT_THAT(platform.Boxes(), ElementsAre(ToldText("COMMON.UNEXPECTED_ERROR", kCritical,
                                                     {"Cls_Init.GetDocumentMatrixFromObject", "Injected failure"})));
  ExpectNothingDone();
}

TEST_F(MergeXMLMatrix, TellsAPolicyThatCannotBeMade) {
  GivenMatrices();
  gate->FailOperation("VdObjectStore.DefaultBehavior", 1, Failure(failure::kServerGone));

  ExpectFailureInTheWalk(Failure(failure::kServerGone).Description());
}

// A document of which a test tells what is wrong with it after it was loaded or filled.
class FaultyDocument : public MatrixDocument {
 public:
  XmlParseError ParseError() const override { return {-1072896683, "a fault"}; }
};

// Makes the n-th document, from 1, a faulty one.
MatrixDocumentMaker FaultyFromThe(int nth) {
  return [nth, made = 0]() mutable -> std::unique_ptr<MatrixDocument> {
    if (++made < nth) return std::make_unique<MatrixDocument>();
    return std::make_unique<FaultyDocument>();
  };
}

TEST_F(MergeXMLMatrix, TellsAMatrixWithAParseError) {
  GivenMatrices();
  matrice = Cls_Matrice(FaultyFromThe(2));

  ExpectFailure("Error in reading XML file \"" + Copied("FRAME") + "\" : a fault");
}

TEST_F(MergeXMLMatrix, TellsAParseErrorOfItsOwnDocument) {
  root->Products()->Remove(3);
  root->Products()->Remove(1);
  matrice = Cls_Matrice(FaultyFromThe(1));

  ExpectFailure("The XML File contains some errors : a fault");
}

TEST_F(MergeXMLMatrix, TellsADocumentThatCannotBeMade) {
  matrice = Cls_Matrice([]() -> std::unique_ptr<MatrixDocument> { throw std::runtime_error("foreign"); });

  ExpectFailure("Unexpected error in function Cls_Matrice.MergeXMLMatrix : foreign");
}

TEST_F(MergeXMLMatrix, TellsAFailingWriteAndKeepsTheOldFile) {
  root->Products()->Remove(3);
  root->Products()->Remove(1);
  gate->FailOperation("Files.Write", 1, Failure(failure::kDiskFull, "Disk full"));

  ExpectFailure("Unexpected error in function Cls_Matrice.MergeXMLMatrix : Disk full");
}

TEST_F(MergeXMLMatrix, TellsARootThatIsNothing) {
  root = nullptr;

  ExpectFailureInTheWalk(Failure(failure::kObjectNotSet).Description());
}

TEST_F(MergeXMLMatrix, TellsAClassThatTheVaultDoesNotKnow) {
  gate->FailOperation("VdMetaInfo.ClassByName", 1, Failure(failure::kInvalidCall, "No such class"));

  ExpectFailureInTheWalk("No such class");
}

TEST_F(MergeXMLMatrix, TellsANameThatHoldsANul) {
  root->SetName(std::string("C\0R", 3));

  ExpectFailureInTheWalk("A name holds a NUL character");
}

TEST_F(MergeXMLMatrix, TellsMoreChildrenThanItsCounterHolds) {
  root = Crowd(32'768);

  ExpectFailureInTheWalk("Overflow");
}

TEST_F(MergeXMLMatrix, CountsAsManyChildrenAsItsCounterHolds) {
  root = Crowd(32'767);

  ExpectSilentFailure();
}

// What is behind the first node of a matrix that can't be grafted.
class GraftedMatrix : public MergeXMLMatrix {
 protected:
  GraftedMatrix() { root->Products()->Remove(1); }

  void Given(const std::string& matrix) { GivenMatrix("AXLE", matrix); }
  void ExpectNoRootTold() {
    ExpectFailureInTheWalk("The matrix \"" + Copied("AXLE") + "\" has no root element behind its first node");
  }
};

TEST_F(GraftedMatrix, IsRefusedWithoutInstruction) {
  Given("<PART PART_NUMBER=\"AXLE\"/>");

  ExpectNoRootTold();
}

TEST_F(GraftedMatrix, IsRefusedWithACommentBeforeTheRoot) {
  Given(std::string(kInstruction) + "<!--mine--><PART PART_NUMBER=\"AXLE\"/>");

  ExpectNoRootTold();
}

TEST_F(GraftedMatrix, IsTakenWithACommentInThePlaceOfTheInstruction) {
  Given("<!--mine--><PART PART_NUMBER=\"AXLE\" FULL_INSTANCE_NAME=\"A\"/>");

  EXPECT_TRUE(Merge());

  EXPECT_THAT(Merged(), EndsWith("<PART PART_NUMBER=\"AXLE\" FULL_INSTANCE_NAME=\"CAR\\A\"/></PRODUCT>"));
}

TEST_F(GraftedMatrix, IsTakenWithACommentAfterTheRootWhichIsLeft) {
  Given(std::string(kInstruction) + "\r\n<PART PART_NUMBER=\"AXLE\" FULL_INSTANCE_NAME=\"A\"/>\n<!--mine-->");

  EXPECT_TRUE(Merge());

  EXPECT_THAT(Merged(), EndsWith("<PART PART_NUMBER=\"AXLE\" FULL_INSTANCE_NAME=\"CAR\\A\"/></PRODUCT>"));
}

TEST_F(GraftedMatrix, MayHaveAsManyElementsAsTheCounterHolds) {
  std::string parts;
  for (int i = 0; i < 32'766; ++i) parts += "<P/>";
  Given(std::string(kInstruction) + "<R>" + parts + "</R>");

  EXPECT_TRUE(Merge());
}

TEST_F(GraftedMatrix, OverflowsWithOneElementMore) {
  std::string parts;
  for (int i = 0; i < 32'767; ++i) parts += "<P/>";
  Given(std::string(kInstruction) + "<R>" + parts + "</R>");

  ExpectFailureInTheWalk("Overflow");
}

TEST_F(GraftedMatrix, OverflowsWhereTheFullNameStandsBehindMoreAttributesThanCanBeCounted) {
  std::string attributes;
  for (int i = 0; i < 32'768; ++i) attributes += " a" + std::to_string(i) + "=\"\"";
  Given(std::string(kInstruction) + "<R" + attributes + " FULL_INSTANCE_NAME=\"A\"/>");

  ExpectFailureInTheWalk("Overflow");
}

TEST_F(GraftedMatrix, MayBeDeeperThanTheStack) {
  constexpr int kDepth = 20'000;
  std::string opening, closing;
  for (int i = 0; i < kDepth; ++i) {
    opening += "<P FULL_INSTANCE_NAME=\"n\">";
    closing += "</P>";
  }
  Given(std::string(kInstruction) + opening + closing);

  ASSERT_TRUE(Merge());

  const auto elements = ElementsOf(Merged());
  EXPECT_THAT(elements, SizeIs(kDepth + 2));
  EXPECT_EQ(std::ranges::count(elements, "P CAR\\n   "), kDepth);
}

class OneChild : public zorva::Products {
 public:
  explicit OneChild(Ref<zorva::Product> child) : child_(std::move(child)) {}
  int Count() override { return 1; }
  Ref<zorva::Product> Item(int) override { return child_; }
  void Remove(int) override {}
  Ref<zorva::Product> ReplaceWithFile(const Ref<zorva::Product>&, const std::string&, bool) override { return nullptr; }
  void AddComponentsFromFiles(const std::vector<std::string>&, const std::string&) override {}

 private:
  Ref<zorva::Product> child_;
};

// No full name is how the walk knows a root, so that the child of a nameless one is taken for another root.
TEST_F(MergeXMLMatrix, TellsARootWithoutNameAtItsFirstChild) {
  const auto nameless = MakeRef<NiceMock<MockProduct>>();
  const Ref<zorva::Products> children = MakeRef<OneChild>(root->Products()->Item(2));
  ON_CALL(*nameless, PartNumber).WillByDefault(Return("CAR"));
  ON_CALL(*nameless, Products).WillByDefault(Return(children));
  ON_CALL(*nameless, Position).WillByDefault(Return(root->Position()));
  root = nameless;

  ExpectFailureInTheWalk("Only one top level element is allowed in an XML document");
}

TEST_F(MergeXMLMatrix, SurvivesEachFailingCallOfTheHosts) {
  GivenMatrix("AXLE", AxleMatrix());
  root->Products()->Remove(1);
  ASSERT_TRUE(Merge());
  const auto merged = ElementsOf(Merged());
  int call = 1;
  for (;; ++call) {
    WriteWork("CAR Matrix.xml", kOld);
    gate->StartRecording();
    gate->FailCall(call);
    bool isMerged = false;

    EXPECT_NO_THROW(isMerged = Merge()) << call;

    const bool hasFailed = gate->HasFailed();
    gate->Reset();
    if (!hasFailed) break;
    const bool isOfPartNumber = gate->Record()[static_cast<std::size_t>(call) - 1] == "Product.PartNumber";
    if (isMerged) {
      EXPECT_TRUE(isOfPartNumber || ElementsOf(Merged()) == merged) << call;
    } else {
      EXPECT_TRUE(WorkHas("CAR Matrix.xml") ? Merged() == kOld : WorkHas("CAR Matrix.xml.new")) << call;
    }
    std::filesystem::remove(WorkPath("CAR Matrix.xml.new"));
    host.SetForm(root, ComponentForm::kDesign);
    host.SetForm(root->Products()->Item(1), ComponentForm::kDesign);
  }
  EXPECT_GT(call, 100);
}

}  // namespace
}  // namespace quintara::test
