#pragma once

#include <string>
#include <vector>

#include "base/counter16.h"
#include "services/form.h"
#include "services/tree_model.h"

namespace quintara {

/// Finds the nodes of a dialog's tree whose text holds a text, capitals ignored, and steps through them. `nodes` are
/// what the control `tree` of `owner` shows; all of them must outlive the dialog.
class frmFind : public Form {
 public:
  frmFind(const TreeModel& nodes, dialog::View& owner, std::string tree);

  void OnClick(const std::string& control) override;

 protected:
  dialog::Layout MakeLayout() const override;
  void OnLoad() override;

 private:
  friend class FindInternals;  // the tests' way to the private operations

  void cmdFind_Click();
  void cmdCancel_Click();
  void FindInTree(int node, const std::string& text);
  /// Shows the match at `Position`, which goes round past either end.
  void HighlightNode(Counter16& Position);
  void ResetMatches();
  void ShowMatches(const std::string& text);

  const TreeModel& nodes_;
  dialog::View& owner_;
  std::string tree_;

  /// The matches in the order of the walk; one spare entry behind them while it goes on, and where there are none.
  std::vector<Counter16> Occurrences;
  Counter16 Position = -1;  ///< -1 before the first step
};

}  // namespace quintara
