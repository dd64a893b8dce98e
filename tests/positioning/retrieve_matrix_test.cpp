#include "positioning/wip_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RetrieveMatrix : public WipTest {
 protected:
  // A failed run has moved nothing and hasn't drawn the view again.
  void ExpectUntouched() {
    EXPECT_THAT(PositionsOf(root), Each(kIdentityPosition));
    EXPECT_EQ(host.Redraws(), 0);
  }
  Box ReportOfRun(const std::string& description) {
    return Report("Cls_RetrieveMatrix.Run", kCriticalModal, description);
  }
};

TEST_F(RetrieveMatrix, PutsTheComponentsBackToTheirPlaces) {
  GivenWip({"PLATE", "BOLT", "GROUP"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), At(1001), At(1000, 100)));
  EXPECT_THAT(NamesOf(root), ElementsAre("child 1", "child 2", "child 3"));
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveMatrix, PutsMovedComponentsBackAsOftenAsItRuns) {
  GivenWip({"PLATE", "BOLT"});
  GivenXmlMatrix(Plant());
  Retrieve();
  Child(2)->Position()->SetComponents(At(7, 8, 9));

  Retrieve();

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), At(1001)));
}

TEST_F(RetrieveMatrix, IsOnlyForAWorkInProgress) {
  GivenProduct({"BOLT"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));

  ExpectUntouched();
}

TEST_F(RetrieveMatrix, KnowsAWorkInProgressByCapitals) {
  GivenProduct({"BOLT"});
  Mark("WIP", "True");

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(RetrieveMatrix, IsOnlyForAWorkInProgressWithoutADocumentToo) {
  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(RetrieveMatrix, IsNotForAPart) {
  folder.Write("work/PART.stp", TinyStep("PART"));
  host.Application()->Documents()->Open(WorkPath("PART.stp"));

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(RetrieveMatrix, TellsThatTheDocumentIsGoneInTheMeantime) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  for (const auto& [operation, n] : {std::pair("Application.ActiveDocument", 2),
                                     {"Document.AsProductDocument", 2},
                                     {"ProductDocument.Product", 2},
                                     {"Product.Products", 1}}) {
    gate->FailOperation(operation, n);
    EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.NO_ZORVA_ACTIVEDOCUMENT", kInformationModal)))
        << operation;
    gate->Reset();
    ExpectUntouched();
  }
}

TEST_F(RetrieveMatrix, PlacesNothingInAWipWithoutComponents) {
  GivenWip({});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveMatrix, ReportsAViewThatCantBeDrawn) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  for (const auto* operation : {"Application.ActiveWindow", "Window.ActiveViewer", "Viewer.RefreshView"}) {
    gate->FailOperation(operation);
    EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfRun("Injected failure"))) << operation;
    gate->Reset();
  }

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(RetrieveMatrix, SetsTheModesOfARootWithoutDesignForm) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  gate->FailOperation("Product.PartNumber");

  const auto calls = CallsOf(CallsOfHosts([&] { Retrieve(); }), "Product.SetWorkMode");

  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.front(), "Product.SetWorkMode(0)");
}

}  // namespace
}  // namespace quintara::test
