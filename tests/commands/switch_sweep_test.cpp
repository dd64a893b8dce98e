#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/text.h"
#include "commands/switching_bench.h"

namespace quintara::test {
namespace {

constexpr int kWarning = 48;

// How a run ends when one call fails.
struct Ending {
  std::vector<Box> boxes;
  std::string component;  // what has become of the one that the call was made for
  bool goesOn = false;    // whether the next one is switched
};

// The calls from the n-th on that begins so, counted behind the beginning of the section before, up to the next one.
struct Section {
  std::string beginning;
  Ending ending;
  int nth = 1;
};

// Fails each call behind the start of a command once, one in a run on a work in progress of two components.
class FailedCallsOfASwitch : public testing::Test, protected SwitchingBench {
 protected:
  virtual void AddComponent(const Ref<VdObject>& object) = 0;
  virtual void Switch() = 0;
  virtual std::string Before(const std::string& partNumber, const Ref<VdObject>& object) = 0;
  virtual std::string After(const std::string& partNumber, const Ref<VdObject>& object) = 0;
  // What comes of each call for the component of this name.
  virtual std::vector<Section> Sections(const std::string& partNumber, const Ref<VdObject>& object) = 0;

  std::vector<Box> GivenRun(std::size_t failing = 0) {
    Process().texts = texts;
    document->Close();
    // A file that is there is deleted first, which would be a call more.
    for (const auto* name : {"BOLT.lwt", "NUT.lwt", "BOLT.stp", "NUT.stp"})
      std::filesystem::remove(ToPath(WorkPath(name)));
    GivenWip();
    AddComponent(bolt);
    AddComponent(nut);
    SelectAll();
    const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
    gate->StartRecording();
    if (failing != 0) gate->FailCall(static_cast<int>(failing));
    Switch();
    gate->StopRecording();
    EXPECT_EQ(gate->HasFailed(), failing != 0);
    gate->Reset();
    return {platform.Boxes().begin() + before, platform.Boxes().end()};
  }
  // The place, from 0, of the n-th call from `from` on that begins so.
  std::size_t PlaceOf(const std::string& beginning, int nth, std::size_t from) const {
    for (auto i = from; i < calls.size(); ++i) {
      if (calls[i].starts_with(beginning) && --nth == 0) return i;
    }
    ADD_FAILURE() << "no call " << beginning;
    return calls.size();
  }
  // Fails the calls from `first` on and before `last`, which the sections tell all of.
  void FailAll(const std::vector<Section>& sections, std::size_t first, std::size_t last, bool isFirst) {
    auto at = first;
    ASSERT_LT(at, calls.size());
    ASSERT_TRUE(calls[at].starts_with(sections.front().beginning)) << calls[at];
    for (std::size_t s = 0; s < sections.size(); ++s) {
      const bool isLast = s + 1 == sections.size();
      const auto end = isLast ? last : PlaceOf(sections[s + 1].beginning, sections[s + 1].nth, at + 1);
      for (; at < end; ++at) Fail(at, sections[s].ending, isFirst);
    }
  }
  void Fail(std::size_t at, const Ending& ending, bool isFirst) {
    SCOPED_TRACE("call " + std::to_string(at + 1) + ", " + calls[at]);

    EXPECT_EQ(GivenRun(at + 1), ending.boxes);

    const std::vector<std::string> left =
        isFirst ? std::vector{ending.component, ending.goesOn ? After("NUT", nut) : Before("NUT", nut)}
                : std::vector{After("BOLT", bolt), ending.component};
    EXPECT_EQ(Components(), left);
  }
  void FailEachCall(const std::string& label) {
    ASSERT_THAT(GivenRun(), testing::IsEmpty());
    calls = gate->Record();
    const auto start = PlaceOf("Application.ActiveDocument", 1, 0);
    const auto first = PlaceOf("Selection.Item(1)", 1, start);
    const auto second = PlaceOf("Selection.Item(2)", 1, first);
    const auto untouched = Before("BOLT", bolt);
    FailAll(
        {{"Application.ActiveDocument", {{TextBox("QD.SWITCH.ONLY_AVAILABLE_FOR_WIP", kInformationModal)}, untouched}},
         {"Application.ActiveDocument", {{Report(label, kCriticalModal, injected)}, untouched}}},
        start, first, true);
    FailAll(Sections("BOLT", bolt), first, second, true);
    FailAll(Sections("NUT", nut), second, calls.size(), false);
  }

  static Box Refused(const std::string& key, const std::string& partNumber) {
    return TextBox("QD.SWITCH." + key, kCriticalModal, {partNumber + ".1"});
  }
  static Box Already(const std::string& partNumber, const std::string& form) {
    return TextBox("QD.SWITCH.ALREADY_IN_STATE", kInformationModal, {partNumber + ".1", form});
  }

  const Texts texts = Process().texts;
  const std::string injected = "Injected failure";
  const Ref<VdObject> bolt = Add("BOLT");
  const Ref<VdObject> nut = Add("NUT");
  std::vector<std::string> calls;
};

class FailedCallsOfSwitchingToLwt : public FailedCallsOfASwitch {
 protected:
  void AddComponent(const Ref<VdObject>& object) override { AddDocumentOf(object); }
  void Switch() override { SwitchToLwt(); }
  std::string Before(const std::string& partNumber, const Ref<VdObject>& /*object*/) override {
    return AsDocument(partNumber);
  }
  std::string After(const std::string& /*partNumber*/, const Ref<VdObject>& object) override { return AsLight(object); }

  std::vector<Section> Sections(const std::string& partNumber, const Ref<VdObject>& object) override {
    const auto before = AsDocument(partNumber);
    const auto after = AsLight(object);
    const auto bare = partNumber + ".1 " + partNumber + ".lwt";
    const auto classId = std::to_string(object->ClassId());
    const auto objectId = std::to_string(object->ObjectId());
    const auto unexpected = Report("Cls_SwitchToLWT.Run", kCriticalModal, injected);
    const Box parent{"ZORVA can not replace the component with a lwt. Try with the parent...", kInformationModal,
                     "Quintara"};
    const Ending none{{Refused("DOES_NOT_EXIST_IN_VELDORA", partNumber)}, before};
    const Ending shown{{Report("Cls_Utils.RetrieveVDObject", kCritical, injected), none.boxes[0]}, before};
    const Ending well{{}, after, true};
    return {{"Selection.Item", {{unexpected}, before}},
            {"Product.Parameters", well},
            {"Product.Reference", {{Already(partNumber, "LWT")}, before}},
            {"Product.Reference", none},
            {"HIXEngine.DocumentInfo", shown},
            {"VdObject.Retrieve", shown},
            {"VdObject.Retrieve", {{unexpected}, before}},
            {"VdObject.Record", {{Refused("CANT_BE_COPIED_FROM_VAULT", partNumber)}, before}, 4},
            {"Products.ReplaceWithFile", {{parent}, before}},
            {"Product.Reference", {{unexpected}, bare}},
            {"Product.Parameters", well},
            {"Product.UserProperties", {{}, bare + " " + classId + ":" + objectId, true}},
            {"VdObject.ObjectId", {{unexpected}, bare + " LWT"}},
            {"Product.Parameters", well},
            {"Product.UserProperties", {{}, bare + " LWT " + classId + ":", true}},
            {"VdObject.ClassId", {{unexpected}, bare + " LWT :" + objectId}},
            {"Product.Parameters", well},
            {"Product.UserProperties", {{}, bare + " LWT :" + objectId, true}}};
  }
};

TEST_F(FailedCallsOfSwitchingToLwt, EndAsToldOneByOne) {
  FailEachCall("Cls_SwitchToLWT.Run");
}

class FailedCallsOfSwitchingToProduct : public FailedCallsOfASwitch {
 protected:
  void AddComponent(const Ref<VdObject>& object) override { AddLight(object); }
  void Switch() override { SwitchToProduct(); }
  std::string Before(const std::string& /*partNumber*/, const Ref<VdObject>& object) override {
    return AsLight(object);
  }
  std::string After(const std::string& partNumber, const Ref<VdObject>& /*object*/) override {
    return AsDocument(partNumber);
  }

  std::vector<Section> Sections(const std::string& partNumber, const Ref<VdObject>& object) override {
    const auto before = AsLight(object);
    const auto unexpected = Report("Cls_SwitchToProduct.Run", kCriticalModal, injected);
    const auto warning = [&](const std::string& key) {
      return TextBox("QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_" + key, kWarning, {partNumber + ".1"});
    };
    const auto none = Refused("DOES_NOT_EXIST_IN_VELDORA", partNumber);
    return {{"Selection.Item", {{unexpected}, before}},
            {"Product.Parameters", {{Already(partNumber, "product")}, before}},
            {"Product.Parameters", {{warning("EMPTY"), none}, before, true}},
            {"VdSession.ObjectStore", {{warning("NOT_EXIST"), none}, before, true}},
            {"VdObject.Retrieve", {{unexpected}, before}},
            {"VdSession.MetaInfo",
             {{Report("Cls_Utils.CopyVeldoraObjectToWork", kCritical, injected),
               Refused("CANT_BE_COPIED_FROM_VAULT", partNumber)},
              before}},
            {"Product.Products", {{unexpected}, before}}};
  }
};

TEST_F(FailedCallsOfSwitchingToProduct, EndAsToldOneByOne) {
  FailEachCall("Cls_SwitchToProduct.Run");
}

}  // namespace
}  // namespace quintara::test
