#include "views/win32/tree_window.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/text16_windows.h"

namespace quintara::win32 {
namespace {

constexpr int kNoPicture = -2;

// The toolkit gives back what is below a row by recursion, which a great depth is too much for.
constexpr int kDepthForToolkit = 500;

class Quiet {
 public:
  Quiet(HWND window, bool& isBusy) : window_(window), isBusy_(isBusy), before_(std::exchange(isBusy, true)) {
    if (!before_) SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  }
  ~Quiet() {
    isBusy_ = before_;
    if (before_) return;
    SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window_, nullptr, TRUE);
  }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  HWND window_;
  bool& isBusy_;
  bool before_;
};

}  // namespace

TreeWindow::TreeWindow(HWND window, std::vector<std::string> pictures) : window_(window), keys_(std::move(pictures)) {
  TreeView_SetExtendedStyle(window_, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
  RemoveRows();
}

void TreeWindow::SetPictureSize(int pixels) {
  if (keys_.empty()) return;
  auto pictures = std::make_unique<PictureList>(keys_, pixels);
  TreeView_SetImageList(window_, pictures->Handle(), TVSIL_NORMAL);
  pictures_ = std::move(pictures);
}

// The toolkit takes even heights only.
void TreeWindow::SetRowHeight(int pixels) {
  TreeView_SetItemHeight(window_, pixels + pixels % 2);
}

void TreeWindow::SetContent(dialog::TreeContent* content) {
  RemoveRows();
  content_ = content;
  Changed();
}

void TreeWindow::Changed() {
  InvalidateRect(window_, nullptr, FALSE);
  if (!std::exchange(isStale_, true)) PostMessageW(GetParent(window_), kLook, 0, reinterpret_cast<LPARAM>(window_));
}

void TreeWindow::Look() {
  if (!std::exchange(isStale_, false) || content_ == nullptr) return;
  if (content_->Count() < Count()) RemoveRows();
  bool isSame = content_->Count() == Count();
  for (int node = 1; isSame && node <= Count(); ++node) isSame = !IsOtherwise(node, content_->IsExpanded(node));
  if (isSame) return;
  const Quiet quiet(window_, isBusy_);
  while (Count() < content_->Count()) Insert(Count() + 1);
  FoldAll();
}

void TreeWindow::RemoveRows() {
  const Quiet quiet(window_, isBusy_);
  if (depth_ > kDepthForToolkit) {
    for (int node = 1; node <= Count(); ++node) {
      if (depths_[static_cast<std::size_t>(node)] == 1) TreeView_Expand(window_, RowOf(node), TVE_COLLAPSE);
    }
    for (int node = Count(); node > 0; --node) TreeView_DeleteItem(window_, RowOf(node));
  }
  TreeView_DeleteAllItems(window_);
  rows_.assign(1, nullptr);
  lastChildren_.assign(1, 0);
  depths_.assign(1, 0);
  areOpen_.assign(1, false);
  depth_ = 0;
}

// After the row of the sibling before, since the toolkit looks for the last one from the first.
void TreeWindow::Insert(int node) {
  const auto parent = static_cast<std::size_t>(content_->Parent(node));
  const int before = lastChildren_[parent];
  TVINSERTSTRUCTW row{};
  row.hParent = parent == 0 ? TVI_ROOT : rows_[parent];
  row.hInsertAfter = before == 0 ? TVI_FIRST : RowOf(before);
  row.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
  row.item.pszText = LPSTR_TEXTCALLBACKW;
  row.item.iImage = I_IMAGECALLBACK;
  row.item.iSelectedImage = I_IMAGECALLBACK;
  row.item.lParam = node;
  const auto made = reinterpret_cast<Row>(SendMessageW(window_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row)));
  if (made == nullptr) throw Failure(failure::kOutOfMemory);
  lastChildren_[parent] = node;
  rows_.push_back(made);
  lastChildren_.push_back(0);
  depths_.push_back(depths_[parent] + 1);
  areOpen_.push_back(false);
  depth_ = std::max(depth_, depths_.back());
}

bool TreeWindow::IsOtherwise(int node, bool open) const {
  return areOpen_[static_cast<std::size_t>(node)] != open && lastChildren_[static_cast<std::size_t>(node)] != 0;
}

void TreeWindow::Fold(int node) {
  const bool open = content_->IsExpanded(node);
  if (!IsOtherwise(node, open)) return;
  TreeView_Expand(window_, RowOf(node), open ? TVE_EXPAND : TVE_COLLAPSE);
  areOpen_[static_cast<std::size_t>(node)] = open;
}

// What is closed goes from the top down and what is opened from the bottom up, so that most of it happens out of
// sight, where it costs nothing. Parents have lower numbers than their children.
void TreeWindow::FoldAll() {
  for (int node = 1; node <= Count(); ++node) {
    if (!content_->IsExpanded(node)) Fold(node);
  }
  for (int node = Count(); node > 0; --node) {
    if (content_->IsExpanded(node)) Fold(node);
  }
}

int TreeWindow::NodeOf(Row row) const {
  if (row == nullptr) return 0;
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_PARAM;
  item.hItem = row;
  SendMessageW(window_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return static_cast<int>(item.lParam);
}

int TreeWindow::NodeUnder(POINT point, UINT where) {
  Look();
  TVHITTESTINFO hit{};
  hit.pt = point;
  const auto row = TreeView_HitTest(window_, &hit);
  return (hit.flags & where) != 0 ? NodeOf(row) : 0;
}

int TreeWindow::NodeAt(POINT point) {
  return NodeUnder(point, TVHT_ONITEM | TVHT_ONITEMBUTTON | TVHT_ONITEMINDENT | TVHT_ONITEMRIGHT);
}

int TreeWindow::NodeHitBy(POINT point) {
  return NodeUnder(point, TVHT_ONITEM);
}

int TreeWindow::Selected() {
  Look();
  return NodeOf(TreeView_GetSelection(window_));
}

void TreeWindow::CheckNode(int node) const {
  if (node < 1 || node > Count()) throw Failure(failure::kSubscriptOutOfRange);
}

void TreeWindow::Select(int node) {
  Look();
  if (node != 0) CheckNode(node);
  TreeView_SelectItem(window_, RowOf(node));
}

void TreeWindow::EnsureVisible(int node) {
  Look();
  CheckNode(node);
  for (int above = content_->Parent(node); above != 0; above = content_->Parent(above)) {
    if (content_->IsExpanded(above)) continue;
    content_->SetExpanded(above, true);
    isStale_ = true;
  }
  Look();
  TreeView_EnsureVisible(window_, RowOf(node));
}

void TreeWindow::Describe(int node, TVITEMW& item) const {
  if (content_ == nullptr || node < 1 || node > content_->Count()) return;
  if ((item.mask & TVIF_TEXT) != 0 && item.pszText != nullptr) {
    lstrcpynW(item.pszText, Wide(content_->Text(node)).c_str(), item.cchTextMax);
  }
  const int place = pictures_ ? pictures_->IndexOf(content_->Picture(node)) : -1;
  if ((item.mask & TVIF_IMAGE) != 0) item.iImage = place < 0 ? kNoPicture : place;
  if ((item.mask & TVIF_SELECTEDIMAGE) != 0) item.iSelectedImage = place < 0 ? kNoPicture : place;
}

// The chosen node is as plain to see while the keyboard is elsewhere, such as in a dialog that looks for nodes.
LRESULT TreeWindow::Colour(NMTVCUSTOMDRAW& drawing) {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawing.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && (drawing.nmcd.uItemState & CDIS_SELECTED) != 0) {
    drawing.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
    drawing.clrTextBk = GetSysColor(COLOR_HIGHLIGHT);
  }
  return CDRF_DODEFAULT;
}

std::optional<LRESULT> TreeWindow::Answer(NMHDR& notice, int& chosen) {
  switch (notice.code) {
    case TVN_GETDISPINFOW: {
      auto& item = reinterpret_cast<NMTVDISPINFOW&>(notice).item;
      ErrorState ignored;
      Attempt(ignored, [&] { Describe(static_cast<int>(item.lParam), item); });
      return 0;
    }
    case TVN_ITEMEXPANDEDW: {
      const auto& change = reinterpret_cast<NMTREEVIEWW&>(notice);
      const auto node = static_cast<int>(change.itemNew.lParam);
      if (isBusy_ || content_ == nullptr || node < 1 || node > Count()) return 0;
      const bool isOpen = (change.itemNew.state & TVIS_EXPANDED) != 0;
      areOpen_[static_cast<std::size_t>(node)] = isOpen;
      content_->SetExpanded(node, isOpen);
      return 0;
    }
    case TVN_SELCHANGEDW: {
      const auto& change = reinterpret_cast<NMTREEVIEWW&>(notice);
      if (!isBusy_ && change.action == TVC_BYKEYBOARD) chosen = static_cast<int>(change.itemNew.lParam);
      return 0;
    }
    case NM_CUSTOMDRAW: return Colour(reinterpret_cast<NMTVCUSTOMDRAW&>(notice));
    default: return {};
  }
}

}  // namespace quintara::win32
