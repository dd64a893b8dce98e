#include <algorithm>

#include "positioning/wip_bench.h"

namespace quintara::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

PositionMatrix Turned(double x) {
  return {0.1, 0.2, 0.3, -0.7, 0.4, 1e-9, 0.5, -0.25, 3.3, x, 0.1, -1.5};
}

class RetrieveFromWorkbook : public WipTest {
 protected:
  static Box Failed() { return TextBox("QD.RETRIEVEMATRIX.ERROR_POSITIONNING_DATA", kCriticalModal); }
  static Box ReportOfWorkbook(const std::string& description) {
    return Report("Cls_RetrieveMatrix.ProcessExcelFile", kCriticalModal, description);
  }
  // The test for the design form fails, once. Gives the number of the call that reads the list first otherwise.
  std::ptrdiff_t GivenComponentThatLosesItsForm() {
    GivenWip({"PLATE"});
    GivenWorkbook(Plant());
    Retrieve();
    const auto whole = WholeRecord([&] { Retrieve(); });
    // Just before the list is read come the reading that tests the form and the one that counts.
    const auto list = std::ranges::find(whole, "Worksheet.Cells(2: 1, 1)") - whole.begin();
    gate->FailCall(static_cast<int>(list) - 1);
    return list;
  }
  std::vector<std::string> CallsOfRetrieve(const std::string& name) {
    return CallsOf(CallsOfHosts([&] { Retrieve(); }), name);
  }
};

TEST_F(RetrieveFromWorkbook, PlacesEachComponentInTheFrameOfTheRoot) {
  GivenWip({"PLATE", "PART", "BOLT"});
  GivenWorkbook({"R",
                 "R",
                 Turned(1),
                 {{"G", "G.1", Turned(2), {{"PART", "PART.1", Turned(3), {}}}},
                  {"PLATE", "P.1", Turned(4), {}},
                  {"BOLT", "B.1", At(5), {}}}});

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  const auto part = WrittenOut(WrittenOut(Turned(3), Turned(2)), Turned(1));
  EXPECT_THAT(PositionsOf(root), ElementsAre(HasBitsOf(WrittenOut(Turned(4), Turned(1))), HasBitsOf(part),
                                             HasBitsOf(WrittenOut(At(5), Turned(1)))));
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveFromWorkbook, SavesTheWorkbookAndEndsTheApplication) {
  GivenWip({"BOLT"});
  GivenWorkbook({"R", "R", At(0), {{"BOLT", "B.1", At(5), {}}}});

  Retrieve();

  EXPECT_THAT(spreadsheet->saved, ElementsAre(WorkPath("PLANT Matrix.xls")));
  EXPECT_THAT(spreadsheet->open, IsEmpty());
  EXPECT_EQ(spreadsheet->running, 0);
}

TEST_F(RetrieveFromWorkbook, DoesNotCompareTheNameOfASingleInstance) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("child 1"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5)));
}

TEST_F(RetrieveFromWorkbook, FindsSeveralInstancesByTheirNames) {
  GivenWip({"BOLT", "BOLT", "BOLT"});
  Child(1)->SetName("BOLT.2");
  Child(2)->SetName("BOLT.1");
  Child(3)->SetName("BOLT.1.1");
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1003, 100), At(1001), At(1002, 100)));
}

TEST_F(RetrieveFromWorkbook, PassesOverInstancesThatTheWipDoesNotHold) {
  GivenWip({"BOLT", "BOLT"});
  Child(2)->SetName("BOLT.2");
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(0), At(1003, 100)));
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveFromWorkbook, PlacesTheFirstOfTwoComponentsOfOneName) {
  GivenWip({"BOLT", "BOLT"});
  Child(1)->SetName("BOLT.2");
  Child(2)->SetName("BOLT.2");
  GivenWorkbook(Plant());

  Retrieve();

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1003, 100), At(0)));
}

TEST_F(RetrieveFromWorkbook, MovesTheFirstComponentOnceForEachInstanceOfAnOldWorkbook) {
  GivenWip({"BOLT", "BOLT", "BOLT", "PLATE"});
  GivenWorkbook(Plant());
  for (int row = 1; row <= 6; ++row) List().erase({row, 4});

  std::vector<Box> boxes;
  const auto moves = CallsOf(CallsOfHosts([&] { boxes = BoxesOfRetrieve(); }), "Position.SetComponents");

  EXPECT_THAT(boxes, IsEmpty());
  EXPECT_THAT(moves, SizeIs(3 * 3 + 1));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1003, 100), At(0), At(0), At(1000, 0, 5)));
}

TEST_F(RetrieveFromWorkbook, DoesTheSameWorkForEachComponentOfAPart) {
  GivenWip({"BOLT", "BOLT"});
  Child(1)->SetName("BOLT.1");
  Child(2)->SetName("BOLT.2");
  GivenWorkbook(Plant());

  EXPECT_THAT(CallsOfRetrieve("Position.SetComponents"), SizeIs(4));
}

TEST_F(RetrieveFromWorkbook, FailsAtAPartThatIsNotInTheWorkbook) {
  GivenWip({"PLATE", "STRANGER", "BOLT"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("There is no cell 0, 15"), Failed()));

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), At(0), At(0)));
  EXPECT_EQ(host.Redraws(), 0);
}

TEST_F(RetrieveFromWorkbook, LeavesTheApplicationRunningAfterAFailure) {
  GivenWip({"STRANGER"});
  GivenWorkbook(Plant());

  Retrieve();

  EXPECT_EQ(spreadsheet->running, 1);
  EXPECT_THAT(spreadsheet->open, SizeIs(1));
  EXPECT_THAT(spreadsheet->saved, IsEmpty());
}

TEST_F(RetrieveFromWorkbook, StopsInSilenceAtAComponentWithoutPartNumber) {
  GivenWip({"PLATE", "", "GROUP"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), At(0), At(0)));
  EXPECT_EQ(spreadsheet->running, 0);
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveFromWorkbook, ReadsOnBehindAComponentWithoutPartNumber) {
  GivenWip({"PLATE", "", "GROUP"});
  host.SetForm(Child(3), ComponentForm::kWithoutDesign);
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), SizeIs(2));

  EXPECT_EQ(spreadsheet->running, 1);
}

TEST_F(RetrieveFromWorkbook, TellsCapitalsApart) {
  GivenWip({"BOLT", "bolt", "BOLT"});
  Child(1)->SetName("bolt.2");
  Child(2)->SetName("BOLT.2");
  Child(3)->SetName("BOLT.2");
  GivenWorkbook(Plant());

  // No row is the "bolt"'s, which ends the run.
  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("There is no cell 0, 15"), Failed()));

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(0), At(0), At(1003, 100)));
}

TEST_F(RetrieveFromWorkbook, ReportsMoreComponentsThanSixteenBitsCount) {
  GivenWip(std::vector<std::string>(32'768, "BOLT"));
  GivenWorkbook(Plant());

  std::vector<Box> boxes;
  const auto calls = CallsOfHosts([&] { boxes = BoxesOfRetrieve(); });

  EXPECT_THAT(boxes, ElementsAre(ReportOfWorkbook("Overflow"), Failed()));
  EXPECT_THAT(CallsOf(calls, "Products.Item"), IsEmpty());
  EXPECT_EQ(spreadsheet->running, 1);
}

TEST_F(RetrieveFromWorkbook, FailsAtAComponentWithoutDesignForm) {
  GivenWip({"PLATE", "BOLT"});
  host.SetForm(Child(2), ComponentForm::kWithoutDesign);
  GivenWorkbook(Plant());

  const auto boxes = BoxesOfRetrieve();

  ASSERT_THAT(boxes, SizeIs(2));
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_RetrieveMatrix.ProcessExcelFile] ["));
  EXPECT_EQ(boxes[0].style, kCriticalModal);
  EXPECT_EQ(boxes[1], Failed());
}

TEST_F(RetrieveFromWorkbook, ReadsAComponentThatLosesItsDesignFormInTheModesTwoAndOne) {
  const auto list = GivenComponentThatLosesItsForm();
  gate->StartRecording();

  Retrieve();

  const auto& record = gate->Record();
  ASSERT_GT(record.size(), static_cast<std::size_t>(list) + 3);
  EXPECT_THAT(std::vector<std::string>(record.begin() + list - 3, record.begin() + list + 3),
              ElementsAre("Product.PartNumber", "Product.PartNumber", "Product.SetWorkMode(2)", "Product.PartNumber",
                          "Product.SetWorkMode(1)", "Worksheet.Cells(2: 1, 1)"));
}

TEST_F(RetrieveFromWorkbook, TakesAComponentWhoseFormStaysLostForAnUnknownOne) {
  GivenComponentThatLosesItsForm();
  gate->FailOperation("Product.SetWorkMode");

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("There is no cell 0, 15"), Failed()));
}

TEST_F(RetrieveFromWorkbook, KeepsWhatItFoundBeforeABadRow) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  List()[{4, 2}] = "four";

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  // A single one is left, so the name isn't compared.
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(RetrieveFromWorkbook, KeepsWhatItFoundBeforeARowNumberBeyondSixteenBits) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  List()[{4, 2}] = 32'768.0;

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(RetrieveFromWorkbook, FailsWhereTheFirstRowIsBadAlready) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  List()[{2, 3}] = "level two";

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("There is no cell 0, 15"), Failed()));
}

TEST_F(RetrieveFromWorkbook, ReadsNoRowPastTheLastOneThatHasANumber) {
  GivenWip({"BOLT"});
  GivenWorkbook({"R", "R", At(0), {{"BOLT", "B.1", At(5), {}}}});
  for (int row = 3; row <= 32'768; ++row) List()[{row, 1}] = "X";
  List()[{32'768, 1}] = "BOLT";

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(5)));
}

TEST_F(RetrieveFromWorkbook, EndsTheListAtItsFirstEmptyRow) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  List()[{3, 1}] = "";

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(RetrieveFromWorkbook, ComparesANumberInACellAsItsText) {
  GivenWip({"1207"});
  GivenWorkbook({"R", "R", At(0), {{"1207", "B.1", At(5), {}}}});
  List()[{2, 1}] = 1207.0;

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(5)));
}

TEST_F(RetrieveFromWorkbook, FailsOnACellThatIsNoNumber) {
  GivenWip({"BOLT"});
  GivenWorkbook({"R", "R", At(0), {{"BOLT", "B.1", At(5), {}}}});
  Tree()[{2, 20}] = "quite far";

  const auto boxes = BoxesOfRetrieve();

  ASSERT_THAT(boxes, SizeIs(2));
  EXPECT_THAT(boxes[0].text, HasSubstr("quite far"));
  EXPECT_EQ(boxes[1], Failed());
}

TEST_F(RetrieveFromWorkbook, FailsOnACellOfTheRootItselfOnlyWhereItIsSet) {
  GivenWip({"R"});
  GivenWorkbook({"R", "R", At(0), {}});
  Tree()[{1, 20}] = "quite far";

  const auto calls = CallsOfHosts([&] { EXPECT_THAT(BoxesOfRetrieve(), SizeIs(2)); });

  EXPECT_THAT(calls, Contains("Product.Position"));
  EXPECT_THAT(CallsOf(calls, "Position.SetComponents"), IsEmpty());
}

TEST_F(RetrieveFromWorkbook, TellsThatTheSpreadsheetDoesNotStart) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  platform.Native().RegisterMaker(excel::kProgramName,
                                  []() -> Ref<AnyObject> { throw Failure(failure::kCannotCreateObject, "no sheets"); });

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ERROR_EXCEL", kCriticalModal,
                                                     {WorkPath("PLANT Matrix.xls"), "no sheets"}),
                                             Failed()));
}

TEST_F(RetrieveFromWorkbook, ReportsAProgramOfAnotherKind) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  platform.Native().RegisterMaker(excel::kProgramName, [this] { return Ref<AnyObject>(host.Application()); });

  EXPECT_THAT(BoxesOfRetrieve(),
              ElementsAre(ReportOfWorkbook("Object variable or With block variable not set"), Failed()));
}

TEST_F(RetrieveFromWorkbook, ReportsAWorkbookThatCantBeOpened) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  gate->FailOperation("Workbooks.Open", 1, Failure(failure::kRefused, "damaged"));

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("damaged"), Failed()));
}

TEST_F(RetrieveFromWorkbook, ReportsAWorkbookOfOneWorksheet) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  spreadsheet->sheets.resize(1);

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("Subscript out of range"), Failed()));
}

TEST_F(RetrieveFromWorkbook, ReportsAnEndThatFails) {
  GivenWip({"BOLT"});
  GivenWorkbook({"R", "R", At(0), {{"BOLT", "B.1", At(5), {}}}});

  for (const auto* operation : {"Workbook.Save", "Workbook.Close(False)", "ExcelApplication.Quit"}) {
    gate->FailOperation(operation);
    EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfWorkbook("Injected failure"), Failed())) << operation;
    gate->Reset();
  }

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(5)));
  EXPECT_EQ(host.Redraws(), 0);
}

TEST_F(RetrieveFromWorkbook, PlacesNothingInAWipWithoutComponents) {
  GivenWip({});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_EQ(spreadsheet->running, 0);
  EXPECT_EQ(host.Redraws(), 1);
}

}  // namespace
}  // namespace quintara::test
