#pragma once

#include <string>

#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "services/form.h"
#include "services/tree_model.h"

namespace quintara {

/// The dialog in which a user ticks the light components of a work in progress that are to be replaced by their latest
/// revisions. It fills the session's `ReplaceCandidates` while it is loaded, and marks what is ticked when it is closed
/// by its OK. What can't be loaded is told, and ends the loading; other failures come out of `ShowModal`.
class formSelectLWT : public Form {
 public:
  /// `root`: of the work in progress.
  explicit formSelectLWT(Ref<zorva::Product> root);

  void OnClick(const std::string& control) override;
  void OnNodeClick(const std::string& control, int node) override;

 protected:
  dialog::Layout MakeLayout() const override;
  void OnLoad() override;

 private:
  void AddRoot();
  void LoadTreeBefore(const Ref<zorva::Product>& root);
  void AddChild(const Ref<zorva::Product>& child, const Ref<zorva::Product>& root);
  /// With the revision, where there is a newer one.
  static bool HasNewerRevision(const Ref<zorva::Product>& child, std::string& revision);
  void MarkChosenComponents();
  void ApplyCaptions();

  void Tree1_NodeClick(int node);
  void cmdOK_Click();
  void cmdCancel_Click();

  /// The picture of a node, and its tag with it.
  void SetState(int node, const std::string& state);

  Ref<zorva::Product> root_;
  TreeModel nodes_;
};

}  // namespace quintara
