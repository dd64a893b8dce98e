#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/dialog.h"
#include "views/win32/picture_list.h"
#include "views/win32/visual_styles.h"

struct _TREEITEM;
struct tagNMTVCUSTOMDRAW;
struct tagTVITEMW;

namespace quintara::win32 {

/// A tree of the toolkit that shows what a content says: its rows are there, with their nodes' numbers, and ask for
/// text and picture when they are drawn. What becomes of the content is looked at when someone asks, or before the next
/// drawing.
class TreeWindow {
 public:
  /// `window`: a tree of the toolkit. It is told by the message `kLook` to its parent that it is to look at its
  /// content.
  TreeWindow(HWND window, std::vector<std::string> pictures);

  static constexpr UINT kLook = WM_APP + 1;

  /// Makes the pictures anew.
  void SetPictureSize(int pixels);
  /// At least so high, in pixels.
  void SetRowHeight(int pixels);
  void SetContent(dialog::TreeContent* content);
  /// The content has changed in some way.
  void Changed();
  /// Takes over what has changed.
  void Look();
  /// The content is gone.
  void Forget() { content_ = nullptr; }
  /// Takes all rows away, before the window goes.
  void RemoveRows();

  /// The node in whose row a point is, 0 for none.
  int NodeAt(POINT point);
  /// The same where the point is on its picture or text.
  int NodeHitBy(POINT point);
  int Selected();
  void Select(int node);
  void EnsureVisible(int node);

  /// Answers a notice of the toolkit; nothing for one that isn't answered here. A node that the user has chosen by a
  /// key is in `chosen` then.
  std::optional<LRESULT> Answer(NMHDR& notice, int& chosen);

 private:
  using Row = _TREEITEM*;

  int NodeUnder(POINT point, UINT where);
  int NodeOf(Row row) const;
  Row RowOf(int node) const { return rows_[static_cast<std::size_t>(node)]; }
  int Count() const { return static_cast<int>(rows_.size()) - 1; }
  void CheckNode(int node) const;
  void Insert(int node);
  bool IsOtherwise(int node, bool open) const;
  void Fold(int node);
  void FoldAll();
  static LRESULT Colour(tagNMTVCUSTOMDRAW& drawing);
  void Describe(int node, tagTVITEMW& item) const;

  HWND window_;
  std::vector<std::string> keys_;
  std::unique_ptr<PictureList> pictures_;
  dialog::TreeContent* content_ = nullptr;
  // By node; the first one is the place of none.
  std::vector<Row> rows_;
  std::vector<int> lastChildren_;
  std::vector<int> depths_;
  std::vector<bool> areOpen_;
  int depth_ = 0;  // the greatest one
  bool isStale_ = false;
  bool isBusy_ = false;  // what the toolkit tells now isn't the user's doing
};

}  // namespace quintara::win32
