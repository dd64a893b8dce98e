#include <algorithm>

#include "positioning/wip_bench.h"

namespace quintara::test {
namespace {

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

enum class Form { kXml, kWorkbook };

// One run of a command, one call of which failed.
struct Outcome {
  std::string failed;  // empty when the run had fewer calls
  bool isInStart;      // of the command, before its own work
  std::vector<Box> boxes;
};

// Fails each call of a command once, one call a run.
class FailedCalls : public WipTest {
 protected:
  // Two instances of one part, which lie in another that isn't loaded, and one of a second part.
  static Node Tree() {
    return {"TOP",
            "TOP.1",
            At(100),
            {{"GROUP", "GROUP.1", At(10), {{"PIN", "PIN.1", At(1), {}}, {"PIN", "PIN.2", At(2), {}}}},
             {"PLATE", "PLATE.1", At(20), {}}}};
  }

  void GivenFreshWip(Form form) {
    GivenWip(components);
    Remember(form == Form::kXml ? "DocXML" : "DocExcel", form == Form::kXml ? xml : workbook);
    spreadsheet->running = 0;
    spreadsheet->open.clear();
    Process().texts = texts;
  }

  // Gives the number of calls; what is left after the last run, none of whose calls failed, stays to be looked at.
  template <class Command, class Examine>
  int Sweep(Form form, Command&& command, Examine&& examine) {
    xml = AddMatrix(".xml", MatrixText(Tree()));
    GivenWorkbookCells(Tree());
    workbook = AddMatrix(".xls", "a workbook");
    Init();
    texts = Process().texts;
    for (int n = 1;; ++n) {
      GivenFreshWip(form);
      const auto outcome = RunWithFailedCall(n, command);
      if (outcome.failed.empty()) {
        EXPECT_THAT(outcome.boxes, IsEmpty());
        return n - 1;
      }
      SCOPED_TRACE("call " + std::to_string(n) + ", " + outcome.failed);
      if (outcome.isInStart) {
        EXPECT_THAT(outcome.boxes, SizeIs(1));
        ExpectUntouched();
      } else {
        examine(outcome);
      }
    }
  }

  void ExpectUntouched() {
    EXPECT_THAT(PositionsOf(root), Each(kIdentityPosition));
    EXPECT_EQ(spreadsheet->running, 0);
  }

  std::vector<std::string> components;

 private:
  template <class Command>
  Outcome RunWithFailedCall(int n, Command&& command) {
    Outcome outcome{};
    gate->StartRecording();
    gate->FailCall(n);
    EXPECT_NO_THROW(outcome.boxes = BoxesOf(command));
    const bool hasFailed = gate->HasFailed();
    gate->Reset();
    if (!hasFailed) return outcome;
    // The command's own work begins with the active document.
    const auto& record = gate->Record();
    const auto end = record.begin() + n;
    outcome.isInStart = std::find(record.begin(), end, "Application.ActiveDocument") == end;
    outcome.failed = *(end - 1);
    return outcome;
  }

  Ref<veldora::VdObject> xml;
  Ref<veldora::VdObject> workbook;
  Texts texts;
};

Box ReportOf(const char* label, int style) {
  return Report(label, style, "Injected failure");
}

// Whether `boxes` are one box of the roads that lead to the matrix's file.
bool TellWhyThereIsNoFile(const std::vector<Box>& boxes) {
  return boxes.size() == 1 &&
         (boxes[0] == TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal) ||
          boxes[0] == TextBox("QD.RETRIEVEMATRIX.NO_ZORVA_ACTIVEDOCUMENT", kInformationModal) ||
          boxes[0] == TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal) ||
          boxes[0] == TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kInformationModal) ||
          boxes[0] == TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_FAILED", kCriticalModal));
}

class FailedCallsOfRetrieve : public FailedCalls {
 protected:
  FailedCallsOfRetrieve() { components = {"PLATE", "GROUP"}; }

  void ExpectEachMovedOrNot() {
    const auto positions = PositionsOf(root);
    ASSERT_THAT(positions, SizeIs(2));
    EXPECT_THAT(positions[0], AnyOf(kIdentityPosition, At(120)));
    EXPECT_THAT(positions[1], AnyOf(kIdentityPosition, At(110)));
    EXPECT_THAT(NamesOf(root), ElementsAre("child 1", "child 2"));
  }
  void ExpectAllMoved() { EXPECT_THAT(PositionsOf(root), ElementsAre(At(120), At(110))); }
};

TEST_F(FailedCallsOfRetrieve, FromXmlAreToldInOneBox) {
  const int calls = Sweep(
      Form::kXml, [&] { Retrieve(); },
      [&](const Outcome& outcome) {
        ExpectEachMovedOrNot();
        if (outcome.boxes.empty()) return ExpectAllMoved();
        ASSERT_THAT(outcome.boxes, SizeIs(1));
        const auto& box = outcome.boxes[0];
        EXPECT_TRUE(TellWhyThereIsNoFile(outcome.boxes) || box == ReportOf("Cls_RetrieveMatrix.Run", kCriticalModal) ||
                    box.title == "QNTR")
            << box.text;
      });

  EXPECT_GT(calls, 80);
  ExpectAllMoved();
}

TEST_F(FailedCallsOfRetrieve, FromAWorkbookAreToldTwiceAndLeaveTheApplication) {
  const auto failed = TextBox("QD.RETRIEVEMATRIX.ERROR_POSITIONNING_DATA", kCriticalModal);
  const int calls = Sweep(
      Form::kWorkbook, [&] { Retrieve(); },
      [&](const Outcome& outcome) {
        ExpectEachMovedOrNot();
        const bool isOfWorkbook = outcome.boxes.size() == 2 && outcome.boxes[0].text.starts_with(
                                                                   "EN COMMON.UNEXPECTED_ERROR "
                                                                   "[Cls_RetrieveMatrix.ProcessExcelFile] [");
        EXPECT_EQ(spreadsheet->running, isOfWorkbook ? 1 : 0);
        if (outcome.boxes.empty()) return ExpectAllMoved();
        if (outcome.boxes.size() == 2) {
          EXPECT_TRUE(isOfWorkbook || outcome.failed == "Platform.Create(Excel.Application)");
          EXPECT_EQ(outcome.boxes[0].style, kCriticalModal);
          EXPECT_EQ(outcome.boxes[1], failed);
          return;
        }
        ASSERT_THAT(outcome.boxes, SizeIs(1));
        EXPECT_TRUE(TellWhyThereIsNoFile(outcome.boxes) ||
                    outcome.boxes[0] == ReportOf("Cls_RetrieveMatrix.Run", kCriticalModal));
      });

  EXPECT_GT(calls, 200);
  ExpectAllMoved();
}

class FailedCallsOfAllInstances : public FailedCalls {
 protected:
  FailedCallsOfAllInstances() { components = {"PIN", "PLATE"}; }

  void ExpectEachMadeOrNot() {
    EXPECT_THAT(PositionsOf(root), Each(AnyOf(kIdentityPosition, At(111), At(120), At(112))));
    EXPECT_EQ(spreadsheet->running, 0);
    EXPECT_THAT(spreadsheet->open, IsEmpty());
  }
  void ExpectAllMade() { EXPECT_THAT(PositionsOf(root), ElementsAre(At(111), At(120), At(112))); }
  void RunForAll() {
    Process().gAllInstancesRequested = true;
    PlaceAll();
  }
};

TEST_F(FailedCallsOfAllInstances, FromXmlAreToldInOneBox) {
  const int calls = Sweep(
      Form::kXml, [&] { RunForAll(); },
      [&](const Outcome& outcome) {
        ExpectEachMadeOrNot();
        if (outcome.boxes.empty()) return ExpectAllMade();
        ASSERT_THAT(outcome.boxes, SizeIs(1));
        const auto& box = outcome.boxes[0];
        EXPECT_TRUE(
            TellWhyThereIsNoFile(outcome.boxes) || box.title == "QNTR" ||
            (box.text.starts_with("EN COMMON.UNEXPECTED_ERROR [Cls_AllInstances.Run] [") && box.style == kCritical))
            << box.text;
      });

  EXPECT_GT(calls, 80);
  ExpectAllMade();
}

TEST_F(FailedCallsOfAllInstances, FromAWorkbookAreToldInOneBoxAndEndTheApplication) {
  const int calls = Sweep(
      Form::kWorkbook, [&] { RunForAll(); },
      [&](const Outcome& outcome) {
        ExpectEachMadeOrNot();
        if (outcome.boxes.empty()) return ExpectAllMade();
        ASSERT_THAT(outcome.boxes, SizeIs(1));
        const auto& box = outcome.boxes[0];
        EXPECT_TRUE(
            TellWhyThereIsNoFile(outcome.boxes) ||
            (box.text.starts_with("EN COMMON.UNEXPECTED_ERROR [Cls_AllInstances.Run] [") && box.style == kCritical))
            << box.text;
      });

  EXPECT_GT(calls, 200);
  ExpectAllMade();
}

}  // namespace
}  // namespace quintara::test
