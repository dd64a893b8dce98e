#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/insertion_bench.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// Fails each call behind the start once, one in a run on a work in progress and a work directory of its own.
class FailedCallsOfAnInsertion : public Insertion {
 protected:
  struct Outcome {
    std::vector<Box> boxes;
    int added = 0;
    bool alerts = false;
    std::string stamps;
  };

  FailedCallsOfAnInsertion() {
    GivenRun("LWT");
    all = gate->Record();
    gate->Reset();
    EXPECT_EQ(Seen({}).added, 1);
  }

  std::vector<Box> GivenRun(const std::string& mode, int failing = 0) {
    if (WorkHas("BOLT.lwt")) files->Rename(WorkPath("BOLT.lwt"), folder.Path("old.lwt"));
    // A text that was shown keeps what it was filled with.
    Process().texts = texts;
    SetAlerts(true);
    GivenProduct();
    Mark("TRUE");
    gate->StartRecording();
    if (failing != 0) gate->FailCall(failing);
    return BoxesOfRun(bolt, mode);
  }
  Outcome Seen(const std::vector<Box>& boxes) {
    Outcome outcome{boxes, Count() - 1, Alerts(), {}};
    if (outcome.added == 0) return outcome;
    for (const auto* name : {"TYPE", "OBJECT_ID", "CLASS_ID"}) {
      if (!Property(Last(), name).empty()) outcome.stamps += std::string(outcome.stamps.empty() ? "" : " ") + name;
    }
    return outcome;
  }
  // What comes of the run when the n-th call fails.
  Outcome FailCall(std::size_t n) {
    const auto boxes = GivenRun("LWT", static_cast<int>(n));
    EXPECT_TRUE(gate->HasFailed()) << n;
    gate->Reset();
    return Seen(boxes);
  }
  // The place, from 1, of the call that begins so, the one behind `after`.
  std::size_t PlaceOf(const std::string& beginning, std::size_t after = 0) const {
    for (auto i = after; i < all.size(); ++i) {
      if (all[i].starts_with(beginning)) return i + 1;
    }
    ADD_FAILURE() << "no call " << beginning;
    return all.size();
  }
  template <class Examine>
  void FailEachOf(std::size_t first, std::size_t last, Examine&& examine) {
    EXPECT_LE(first, last);
    for (auto n = first; n <= last; ++n) {
      SCOPED_TRACE("call " + std::to_string(n) + ", " + all[n - 1]);
      examine(FailCall(n));
    }
  }

  const Texts texts = Process().texts;
  const std::string injected = "Injected failure";
  std::vector<std::string> all;
};

TEST_F(FailedCallsOfAnInsertion, OnTheWayToTheWip) {
  const auto has = PlaceOf("Application.ActiveDocument");
  const auto take = PlaceOf("Application.ActiveDocument", has);
  const auto test = PlaceOf("Product.Parameters");
  const auto components = PlaceOf("Product.Products");
  const auto expect = [](const Box& box) {
    return [box](const Outcome& outcome) {
      EXPECT_THAT(outcome.boxes, ElementsAre(box));
      EXPECT_EQ(outcome.added, 0);
      EXPECT_TRUE(outcome.alerts);
    };
  };

  FailEachOf(PlaceOf("Application.Documents"), take - 1, expect(NoDocument()));
  FailEachOf(take, take, expect(NoDocument(injected)));
  FailEachOf(take + 1, test - 1, expect(Report(injected)));
  FailEachOf(test, components - 1, expect(NoWip()));
  FailEachOf(components, PlaceOf("VdRecord.ValueAsInteger(FILE_TYPE)"), expect(Report(injected)));
}

TEST_F(FailedCallsOfAnInsertion, InLookingAtFileTypes) {
  const auto part = PlaceOf("VdSession.MetaInfo", PlaceOf("VdRecord.ValueAsInteger(FILE_TYPE)"));
  const auto product = PlaceOf("VdSession.MetaInfo", part);
  const auto copy = PlaceOf("VdObject.Record", product);

  FailEachOf(part, product - 1, [](const Outcome& outcome) {
    EXPECT_THAT(outcome.boxes, IsEmpty());
    EXPECT_EQ(outcome.added, 0);
  });
  FailEachOf(product, copy - 1, [](const Outcome& outcome) {
    EXPECT_THAT(outcome.boxes, IsEmpty());
    EXPECT_EQ(outcome.added, 1);
    EXPECT_EQ(outcome.stamps, "TYPE OBJECT_ID CLASS_ID");
  });
}

TEST_F(FailedCallsOfAnInsertion, InBringingTheFile) {
  const auto copy = PlaceOf("VdRecord.ValueAsInteger(VAULT_OBJECT_ID)") - 1;

  FailEachOf(copy, PlaceOf("Application.DisplayFileAlerts") - 1, [](const Outcome& outcome) {
    ASSERT_THAT(outcome.boxes, SizeIs(1));
    EXPECT_THAT(outcome.boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_InsertLWT.Run] ["));
    EXPECT_EQ(outcome.added, 0);
    EXPECT_FALSE(outcome.alerts);
  });
}

TEST_F(FailedCallsOfAnInsertion, InLoadingTheFile) {
  const auto off = PlaceOf("Application.DisplayFileAlerts=(False)");
  const auto on = PlaceOf("Application.DisplayFileAlerts=(True)");

  FailEachOf(off - 1, on, [&](const Outcome& outcome) {
    ASSERT_THAT(outcome.boxes, SizeIs(1));
    EXPECT_THAT(outcome.boxes[0].text, testing::HasSubstr(injected));
    EXPECT_EQ(outcome.boxes[0].style, kCriticalModal);
    EXPECT_EQ(outcome.stamps, "");
  });
  EXPECT_TRUE(FailCall(off - 1).alerts);
  EXPECT_TRUE(FailCall(off).alerts);
  FailEachOf(off + 1, on - 1, [](const Outcome& outcome) {
    EXPECT_FALSE(outcome.alerts);
    EXPECT_EQ(outcome.added, 0);
  });
  const auto last = FailCall(on);
  EXPECT_FALSE(last.alerts);
  EXPECT_EQ(last.added, 1);
}

TEST_F(FailedCallsOfAnInsertion, InFindingTheComponent) {
  FailEachOf(PlaceOf("Application.DisplayFileAlerts=(True)") + 1, PlaceOf("Product.AsProduct"),
             [&](const Outcome& outcome) {
               EXPECT_THAT(outcome.boxes, ElementsAre(Report(injected)));
               EXPECT_EQ(outcome.added, 1);
               EXPECT_TRUE(outcome.alerts);
               EXPECT_EQ(outcome.stamps, "");
             });
}

TEST_F(FailedCallsOfAnInsertion, InStampingIt) {
  const auto objectId = FailCall(PlaceOf("VdObject.ObjectId"));
  EXPECT_THAT(objectId.boxes, ElementsAre(Report(injected)));
  EXPECT_EQ(objectId.stamps, "TYPE");
  const auto classId = FailCall(PlaceOf("VdObject.ClassId"));
  EXPECT_THAT(classId.boxes, ElementsAre(Report(injected)));
  EXPECT_EQ(classId.stamps, "TYPE OBJECT_ID");

  // A stamp that can't be written is left out without a word.
  const auto type = FailCall(PlaceOf("Parameters.CreateString(TYPE"));
  EXPECT_THAT(type.boxes, IsEmpty());
  EXPECT_EQ(type.stamps, "OBJECT_ID CLASS_ID");
  const auto parameters = FailCall(PlaceOf("Parameters.Count", PlaceOf("VdObject.ClassId")));
  EXPECT_THAT(parameters.boxes, IsEmpty());
  EXPECT_EQ(parameters.stamps, "TYPE OBJECT_ID CLASS_ID");
}

TEST_F(FailedCallsOfAnInsertion, OfADocumentAreToldOrTheDocumentIsThere) {
  GivenRun("PRODUCT");
  const auto calls = gate->Record();
  gate->Reset();
  const auto start = std::ranges::find(calls, "Application.Documents") - calls.begin();
  const auto silentFrom = std::ranges::find(calls, "VdRecord.ValueAsInteger(FILE_TYPE)") - calls.begin();
  const auto silentUpTo = std::ranges::find(calls, "VdMetaInfo.OperationByName(CopyFile)") - calls.begin();
  for (auto n = start + 1; n <= std::ssize(calls); ++n) {
    SCOPED_TRACE("call " + std::to_string(n) + ", " + calls[static_cast<std::size_t>(n - 1)]);

    const auto boxes = GivenRun("PRODUCT", static_cast<int>(n));

    gate->Reset();
    const bool isSilent = n > silentFrom + 1 && n < silentUpTo;
    EXPECT_TRUE(!boxes.empty() || Count() == 2 || isSilent);
    EXPECT_EQ(Property(Last(), "TYPE"), "");
  }
}

}  // namespace
}  // namespace quintara::test
