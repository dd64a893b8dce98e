#include "positioning/wip_bench.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr PositionMatrix kZeros{};

const Box kTooOld = {
    "The matrix has been created with an old version of QNTR (< DROP 4).\r\n"
    "The instances can't be positioned.\r\n"
    "Please generate a new matrix for this product.",
    kInformation, "Quintara"};

class AllInstancesOfWorkbook : public WipTest {
 protected:
  static Box ReportOfRun(const std::string& description) {
    return Report("Cls_AllInstances.Run", kCritical, description);
  }
  // The last calls of a run in which an operation fails whenever it is called.
  std::vector<std::string> LastCallsWithout(const std::string& operation, std::ptrdiff_t count) {
    GivenWip({"PLATE"});
    GivenWorkbook(Plant());
    gate->FailOperation(operation);
    const auto calls = WholeRecord([&] { PlaceAll(); });
    return {calls.end() - count, calls.end()};
  }
  void ExpectEnded() {
    EXPECT_EQ(spreadsheet->running, 0);
    EXPECT_THAT(spreadsheet->open, IsEmpty());
  }
};

class WantingAllInstances : public AllInstancesOfWorkbook {
 protected:
  WantingAllInstances() { Process().gAllInstancesRequested = true; }
};

TEST_F(AllInstancesOfWorkbook, PlaceAndNameTheFirstOneOfEachPart) {
  GivenWip({"BOLT", "PLATE"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), At(1000, 0, 5)));
  EXPECT_THAT(NamesOf(root), ElementsAre("BOLT.1", "PLATE.1"));
  EXPECT_THAT(spreadsheet->saved, ElementsAre(WorkPath("PLANT Matrix.xls")));
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, AreReadWithTheNumbersOfTheWholeChain) {
  const PositionMatrix turned{0.1, 0.2, 0.3, -0.7, 0.4, 1e-9, 0.5, -0.25, 3.3, 0.3, 0.1, -1.5};
  GivenWip({"PART"});
  GivenWorkbook({"R", "R", turned, {{"G", "G.1", At(2, 3), {{"PART", "P.1", turned, {}}}}}});

  PlaceAll();

  EXPECT_THAT(PositionsOf(root), ElementsAre(HasBitsOf(WrittenOut(WrittenOut(turned, At(2, 3)), turned))));
}

TEST_F(AllInstancesOfWorkbook, PlaceTwoComponentsOfOnePartAtItsFirstOne) {
  GivenWip({"BOLT", "BOLT"});
  GivenWorkbook(Plant());

  PlaceAll();

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), At(1001)));
  EXPECT_THAT(NamesOf(root), ElementsAre("BOLT.1", "BOLT.1"));
}

TEST_F(WantingAllInstances, GetsAComponentForEach) {
  GivenWip({"BOLT", "PLATE"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(ComponentsOf(root),
              ElementsAre(Component{"BOLT", "BOLT.1", At(1001)}, Component{"PLATE", "PLATE.1", At(1000, 0, 5)},
                          Component{"BOLT", "BOLT.1.1", At(1002, 100)}, Component{"BOLT", "BOLT.2", At(1003, 100)}));
}

TEST_F(WantingAllInstances, AddsThoseOfSeveralPartsOneAfterTheOther) {
  GivenWip({"A", "B"});
  GivenWorkbook({"R",
                 "R",
                 At(0),
                 {{"A", "A.1", At(1), {}}, {"B", "B.1", At(2), {}}, {"A", "A.2", At(3), {}}, {"B", "B.2", At(4), {}}}});

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("A.1", "B.1", "A.2", "B.2"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1), At(2), At(3), At(4)));
}

TEST_F(WantingAllInstances, PastesNothingForASingleOne) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());

  const auto calls = CallsOfHosts([&] { PlaceAll(); });

  EXPECT_THAT(CallsOf(calls, "Selection."), IsEmpty());
  EXPECT_THAT(ComponentsOf(root), ElementsAre(Component{"PLATE", "PLATE.1", At(1000, 0, 5)}));
}

TEST_F(WantingAllInstances, GetsThemTwiceForTwoComponentsOfOnePart) {
  GivenWip({"A", "A"});
  GivenWorkbook({"R", "R", At(0), {{"A", "A.1", At(1), {}}, {"A", "A.2", At(2), {}}}});

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("A.1", "A.1", "A.2", "A.2"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1), At(1), At(2), At(2)));
}

TEST_F(WantingAllInstances, CountsTheOnesOutsideOfALoadedSubAssemblyOnly) {
  GivenWip({"BOLT", "GROUP"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(ComponentsOf(root),
              ElementsAre(Component{"BOLT", "BOLT.1", At(1001)}, Component{"GROUP", "GROUP.1", At(1000, 100)}));
}

TEST_F(WantingAllInstances, LooksForALoadedSubAssemblyAtEveryLevelAbove) {
  const Node bolt{"BOLT", "BOLT.1", At(1), {}};
  const Node deep{"OUTER", "OUTER.1", At(0), {{"MID", "MID.1", At(0), {{"INNER", "INNER.1", At(0), {bolt}}}}}};
  GivenWip({"BOLT", "OUTER"});
  GivenWorkbook({"R", "R", At(0), {deep, {"BOLT", "BOLT.9", At(9), {}}}});

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("BOLT.9", "OUTER.1"));
}

TEST_F(WantingAllInstances, KeepsNoCoverFromOneInstanceToTheNext) {
  GivenWip({"BOLT", "GROUP"});
  GivenWorkbook({"R",
                 "R",
                 At(0),
                 {{"GROUP", "GROUP.1", At(0), {{"BOLT", "BOLT.1", At(1), {}}}},
                  {"BOLT", "BOLT.2", At(2), {}},
                  {"BOLT", "BOLT.3", At(3), {}}}});

  PlaceAll();

  EXPECT_THAT(NamesOf(root), ElementsAre("BOLT.2", "GROUP.1", "BOLT.3"));
}

TEST_F(WantingAllInstances, CountsNoComponentPastTheLastNumber) {
  std::vector<std::string> partNumbers(32'767, "OTHER");
  partNumbers.front() = "A";
  GivenWip(partNumbers);
  GivenWorkbook({"R", "R", At(0), {{"A", "A.1", At(1), {}}, {"A", "A.2", At(2), {}}}});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Overflow")));

  // The copy is there, but nothing gets at it.
  const auto positions = PositionsOf(root);
  EXPECT_EQ(positions.size(), 32'768U);
  EXPECT_EQ(positions.front(), At(1));
  EXPECT_EQ(positions.back(), kIdentityPosition);
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, AreNamedBeforeTheyAreMoved) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  gate->FailOperation("Position.SetComponents");

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Injected failure")));

  gate->Reset();
  EXPECT_THAT(NamesOf(root), ElementsAre("PLATE.1"));
}

TEST_F(AllInstancesOfWorkbook, AreLeftOutBelowAComponentOfTheirOwnPart) {
  GivenWip({"BOX"});
  GivenWorkbook({"R", "R", At(0), {{"BOX", "BOX.1", At(1), {{"BOX", "BOX.2", At(2), {}}}}}});
  Process().gAllInstancesRequested = true;

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("BOX.1"));
}

TEST_F(AllInstancesOfWorkbook, AreAllCoveredWhereTheRootIsAComponentToo) {
  GivenWip({"BOLT", "PLANT"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("There is no cell 0, 15")));

  EXPECT_THAT(PositionsOf(root), Each(kIdentityPosition));
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, TakeThePositionBeforeForTheRootItself) {
  GivenWip({"PLATE", "R"});
  GivenWorkbook({"TOP", "TOP.1", At(4), {{"PLATE", "PLATE.1", At(7), {}}}});
  // The list names the first row by a part number that the tree hasn't there.
  List()[{1, 1}] = "R";

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(ComponentsOf(root), ElementsAre(Component{"PLATE", "PLATE.1", At(11)}, Component{"R", "TOP.1", At(11)}));
}

TEST_F(AllInstancesOfWorkbook, PlaceTheRootItselfNowhereAtFirst) {
  GivenWip({"PLANT"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(ComponentsOf(root), ElementsAre(Component{"PLANT", "PLANT", kZeros}));
}

TEST_F(AllInstancesOfWorkbook, FailAtAPartThatIsNotInTheWorkbook) {
  GivenWip({"PLATE", "STRANGER", "BOLT"});
  GivenWorkbook(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("There is no cell 0, 15")));

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), kIdentityPosition, kIdentityPosition));
  EXPECT_THAT(NamesOf(root), ElementsAre("PLATE.1", "child 2", "child 3"));
}

TEST_F(AllInstancesOfWorkbook, FailWhereAllRowsOfAPartAreCovered) {
  GivenWip({"GROUP", "BOLT"});
  GivenWorkbook({"R", "R", At(0), {{"GROUP", "GROUP.1", At(1), {{"BOLT", "BOLT.1", At(2), {}}}}}});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("There is no cell 0, 15")));

  EXPECT_THAT(NamesOf(root), ElementsAre("GROUP.1", "child 2"));
}

TEST_F(AllInstancesOfWorkbook, CloseTheWorkbookUnsavedAfterAFailure) {
  GivenWip({"STRANGER"});
  GivenWorkbook(Plant());

  const auto calls = CallsOfHosts([&] { PlaceAll(); });

  ASSERT_GE(calls.size(), 2U);
  EXPECT_THAT(std::vector(calls.end() - 2, calls.end()), ElementsAre("Workbook.Close(False)", "ExcelApplication.Quit"));
  EXPECT_THAT(spreadsheet->saved, IsEmpty());
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, OfAnOldGeneratorAreToldAndTriedAllTheSame) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  for (int row = 1; row <= 6; ++row) List().erase({row, 4});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(kTooOld, ReportOfRun("The name of \"child 1\" can't be empty")));

  EXPECT_THAT(ComponentsOf(root), ElementsAre(Component{"PLATE", "child 1", kIdentityPosition}));
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, ArePlacedAfterTheWarningWhereTheyHaveNames) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  List().erase({1, 4});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(kTooOld));

  EXPECT_THAT(ComponentsOf(root), ElementsAre(Component{"PLATE", "PLATE.1", At(1000, 0, 5)}));
}

TEST_F(AllInstancesOfWorkbook, AreNotOldForAMissingNameFurtherDown) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  List().erase({2, 4});

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());
}

TEST_F(AllInstancesOfWorkbook, FailForAWipWithoutComponents) {
  GivenWip({});
  GivenWorkbook(Plant());
  List().erase({1, 4});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(kTooOld, ReportOfRun("Subscript out of range")));

  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, FailWhereAnInstanceHasNoParent) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  Tree().erase({1, 1});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Subscript out of range")));
}

TEST_F(AllInstancesOfWorkbook, FailWhereOneOfThemHasNoParent) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  List()[{4, 3}] = 9.0;

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Subscript out of range")));
  EXPECT_THAT(NamesOf(root), ElementsAre("child 1"));
}

TEST_F(AllInstancesOfWorkbook, FailOutsideOfTheWorksheet) {
  for (const double column : {0.0, -32'768.0, 32'767.0, 32'768.0}) {
    GivenWip({"PLATE"});
    GivenWorkbook(Plant());
    List()[{6, 3}] = column;
    EndInit();  // the texts are filled in for good, and read again by the next start
    EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Subscript out of range"))) << column;
    ExpectEnded();
  }
}

TEST_F(AllInstancesOfWorkbook, FailPastTheLastRowThatHasANumber) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  for (int row = 7; row <= 32'768; ++row) List()[{row, 1}] = "X";

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Subscript out of range")));
}

TEST_F(AllInstancesOfWorkbook, AreReadToTheLastRowThatHasANumber) {
  GivenWip({"PLATE"});
  GivenWorkbook({"R", "R", At(4), {}});
  for (int row = 2; row < 32'767; ++row) List()[{row, 1}] = "X";
  List()[{32'766, 1}] = "PLATE";
  List()[{32'766, 2}] = 2.0;
  List()[{32'766, 3}] = 2.0;
  List()[{32'766, 4}] = "PLATE.1";

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(NamesOf(root), ElementsAre("PLATE.1"));
}

TEST_F(AllInstancesOfWorkbook, ArePlacedForAComponentWithoutDesignForm) {
  GivenWip({"PLATE", "BOLT"});
  host.SetForm(Child(2), ComponentForm::kWithoutDesign);
  GivenWorkbook(Plant());

  const auto calls = CallsOf(CallsOfHosts([&] { EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty()); }), "Product.SetWorkMode");

  EXPECT_THAT(calls, ElementsAre("Product.SetWorkMode(0)", "Product.SetWorkMode(1)", "Product.SetWorkMode(0)",
                                 "Product.SetWorkMode(1)"));
  EXPECT_EQ(Child(2)->Name(), "BOLT.1");
}

TEST_F(AllInstancesOfWorkbook, FailOnACellThatIsNoNumber) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  Tree()[{6, 20}] = "quite far";

  const auto boxes = BoxesOfPlaceAll();

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, HasSubstr("quite far"));
  EXPECT_THAT(NamesOf(root), ElementsAre("child 1"));
}

TEST_F(AllInstancesOfWorkbook, NeedASpreadsheetThatStarts) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  platform.Native().RegisterMaker(excel::kProgramName,
                                  []() -> Ref<AnyObject> { throw Failure(failure::kCannotCreateObject, "no sheets"); });

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("no sheets")));
}

TEST_F(AllInstancesOfWorkbook, EndTheApplicationWhoseWorkbookCantBeOpened) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  gate->FailOperation("Workbooks.Open", 1, Failure(failure::kRefused, "damaged"));

  const auto calls = CallsOfHosts([&] { EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("damaged"))); });

  EXPECT_EQ(calls.back(), "ExcelApplication.Quit");
  EXPECT_THAT(CallsOf(calls, "Workbook.Close"), IsEmpty());
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, NeedTwoWorksheets) {
  GivenWip({"PLATE"});
  GivenWorkbook(Plant());
  spreadsheet->sheets.resize(1);

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Subscript out of range")));
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, AreInPlaceWhenTheEndFails) {
  for (const auto* operation : {"Workbook.Save", "Workbook.Close(False)", "ExcelApplication.Quit"}) {
    GivenWip({"PLATE"});
    GivenWorkbook(Plant());
    gate->FailOperation(operation);
    EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Injected failure"))) << operation;
    gate->Reset();
    EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5)));
  }
}

TEST_F(AllInstancesOfWorkbook, EndTheApplicationWhereTheWorkbookCantBeSaved) {
  EXPECT_THAT(LastCallsWithout("Workbook.Save", 3),
              ElementsAre("Workbook.Save", "Workbook.Close(False)", "ExcelApplication.Quit"));
  ExpectEnded();
}

TEST_F(AllInstancesOfWorkbook, EndTheApplicationWhereTheWorkbookCantBeClosed) {
  EXPECT_THAT(LastCallsWithout("Workbook.Close(False)", 4),
              ElementsAre("Workbook.Save", "Workbook.Close(False)", "Workbook.Close(False)", "ExcelApplication.Quit"));
  EXPECT_EQ(spreadsheet->running, 0);
}

TEST_F(AllInstancesOfWorkbook, TryTwiceToEndTheApplication) {
  EXPECT_THAT(LastCallsWithout("ExcelApplication.Quit", 3),
              ElementsAre("Workbook.Close(False)", "ExcelApplication.Quit", "ExcelApplication.Quit"));
}

TEST_F(WantingAllInstances, KeepsWhatWasMadeBeforeAFailure) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  gate->FailOperation("Selection.Paste", 2);

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Injected failure")));

  gate->Reset();
  EXPECT_THAT(NamesOf(root), ElementsAre("BOLT.1", "BOLT.1.1"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), At(1002, 100)));
  ExpectEnded();
}

}  // namespace
}  // namespace quintara::test
