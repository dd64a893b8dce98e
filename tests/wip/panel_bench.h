#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "services/running_hosts.h"
#include "support/scripted_view.h"
#include "wip/Cls_Application.h"
#include "wip/MainPanel.h"
#include "wip/panel_internals.h"
#include "wip/paper_object.h"

namespace quintara::test {

/// The nodes of a tree, a line each: two blanks for each level, the text, the state and, if it is another one, the
/// picture.
std::vector<std::string> LinesOf(const TreeModel& nodes);

/// Hosts that run, with a user at the dialogs, after a first start.
class PanelBench : public RunningHosts {
 public:
  PanelBench();

  /// Makes the panel for an object, without loading it.
  MainPanel& GivenPanel(const Ref<veldora::VdObject>& object);
  MainPanelInternals Inside() { return MainPanelInternals(*panel); }
  TreeModel& Nodes() { return Inside().Nodes(); }
  /// Shows the panel and lets the user do something and then cancel.
  void ShowPanel(const UserScript& script = {});
  /// What the tree of an object looks like when the panel comes up.
  std::vector<std::string> TreeOf(const Ref<veldora::VdObject>& object);

  /// Runs the command on the objects selected in the vault.
  void RunOn(const std::vector<Ref<veldora::VdObject>>& selected);
  /// What was shown since the last call of this.
  std::vector<Box> NewBoxes();

  Paper PaperOf(std::int32_t objectId, const std::string& partNumber, const std::string& className = "ZORVA Part");
  Paper PaperOf(std::int32_t objectId, const std::string& partNumber, const std::vector<Paper>& children);

  ScriptedDialogs desk{platform};
  std::shared_ptr<MainPanel> panel;
  std::shared_ptr<std::vector<std::string>> paperCalls = std::make_shared<std::vector<std::string>>();

 private:
  std::ptrdiff_t boxesSeen_ = 0;
};

class PanelTest : public testing::Test, protected PanelBench {};

}  // namespace quintara::test
