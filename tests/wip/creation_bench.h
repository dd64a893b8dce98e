#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "wip/plant_in_vault.h"
#include "wip/zorva_in_front.h"

namespace quintara::test {

inline constexpr auto kCreationLabel = "MainPanel.cmdCreateWIP_Click";

/// The panel alone, without the command around it.
class Creation : public PlantTest {
 protected:
  Creation() { Choose(plant); }

  void Choose(const Ref<veldora::VdObject>& object) {
    Process().gCurrentObjectId = object->ObjectId();
    Process().gCurrentClassId = object->ClassId();
    Process().gWIPCancelled = true;
    GivenPanel(object);
  }

  /// Presses the button after the user has done something.
  void Create(const UserScript& user = {}) {
    desk.WhenShown("MainPanel", [user](ScriptedView& view) {
      if (user) user(view);
      view.Press("cmdCreateWIP");
      if (view.IsShown()) view.Close();
    });
    panel->ShowModal();
  }

  static UserScript Marking(const std::vector<int>& nodes) {
    return [nodes](ScriptedView& view) {
      for (const int node : nodes) view.Click("Tree1", dialog::button::kRight, node);
    };
  }
  static UserScript Naming(const std::string& name) {
    return [name](ScriptedView& view) { view.Type("txtWIPName", name); };
  }

  std::vector<std::string> IdsOf(const std::string& prefix, const Ref<veldora::VdObject>& document) {
    return {"WIP=TRUE", "From=Quintara", prefix + "CID=" + std::to_string(document->ClassId()),
            prefix + "OID=" + std::to_string(document->ObjectId())};
  }

  std::vector<std::string> PartNumbers() {
    std::vector<std::string> numbers;
    for (const auto& component : Components()) numbers.push_back(component.partNumber);
    return numbers;
  }

  std::vector<std::string> Types() {
    std::vector<std::string> types;
    for (int i = 1; i <= Root()->Products()->Count(); ++i) {
      types.push_back(Utils().ReadStringProperty(Root()->Products()->Item(i), "TYPE", "String"));
    }
    return types;
  }

  /// The last things that were done with the dialogs.
  std::vector<std::string> LastDone(std::ptrdiff_t count) const {
    const auto& record = desk.Record();
    return {record.end() - std::min(count, std::ssize(record)), record.end()};
  }
  bool IsProgressOpen() { return desk.Made("frmProgressBar") > 0 && desk.Last("frmProgressBar").IsLoaded(); }

  void ExpectAbandoned(const std::string& description) {
    EXPECT_THAT(NewBoxes(), testing::Contains(Report(kCreationLabel, kCriticalModal, description)));
    ExpectGone();
    EXPECT_TRUE(Process().gWIPCancelled);
    EXPECT_FALSE(Process().gSkipPositioning);
  }
  void ExpectGone() {
    EXPECT_FALSE(panel->IsLoaded());
    EXPECT_FALSE(IsProgressOpen());
  }

  /// The CAD host with something in front of it that a test answers.
  std::shared_ptr<ZorvaInFront> GivenZorvaInFront() {
    auto front = std::make_shared<ZorvaInFront>(host.Application());
    platform.Native().Register("ZORVA.Application", Ref<zorva::Application>(front));
    Process().gZorva = nullptr;
    return front;
  }
};

}  // namespace quintara::test
