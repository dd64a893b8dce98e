#pragma once

#include <string>
#include <vector>

#include "wip/MainPanel.h"
#include "wip/frmFind.h"

namespace quintara {

/// The tests' way to what the panel keeps to itself.
class MainPanelInternals {
 public:
  explicit MainPanelInternals(MainPanel& panel) : panel_(panel) {}

  TreeModel& Nodes() { return panel_.nodes_; }
  dialog::Box Saved() const { return {panel_.SavedLeft, panel_.SavedTop, panel_.SavedWidth, panel_.SavedHeight}; }
  void Save(const dialog::Box& box) {
    panel_.SavedLeft = static_cast<std::int16_t>(box.left);
    panel_.SavedTop = static_cast<std::int16_t>(box.top);
    panel_.SavedWidth = static_cast<std::int16_t>(box.width);
    panel_.SavedHeight = static_cast<std::int16_t>(box.height);
  }
  const Ref<veldora::VdObject>& RootObject() const { return panel_.RootObject; }

  void CycleNodeState(int node) { panel_.CycleNodeState(node); }
  void PropagateNodeState(int node, std::string& tag) { panel_.PropagateNodeState(node, tag); }
  void SetState(int node, const std::string& tag) { panel_.SetState(node, tag); }
  void SplitNodeKey(int node, std::string& objectId, std::string& classId) const {
    panel_.SplitNodeKey(node, objectId, classId);
  }
  static std::string GetNodeText(const Ref<veldora::VdObject>& object) { return MainPanel::GetNodeText(object); }
  static Ref<veldora::VdObject> OneOf(const Ref<veldora::VdObjects>& documents) { return MainPanel::OneOf(documents); }
  /// Has a root remember the matrix that is among some documents of a type.
  static void MarkWithOneOf(const Ref<veldora::VdObjects>& documents, MatrixType type,
                            const Ref<zorva::Product>& root) {
    MainPanel::MarkRoot(root, "WIP~~", MainPanel::MatrixAmong(documents, type));
  }

 private:
  MainPanel& panel_;
};

/// The same for the search dialog.
class FindInternals {
 public:
  explicit FindInternals(frmFind& find) : find_(find) {}

  void ResetMatches() { find_.ResetMatches(); }
  void FindInTree(int node, const std::string& text) { find_.FindInTree(node, text); }
  void HighlightNode() { find_.HighlightNode(find_.Position); }
  std::vector<Counter16>& Occurrences() { return find_.Occurrences; }
  Counter16& Position() { return find_.Position; }

 private:
  frmFind& find_;
};

}  // namespace quintara
