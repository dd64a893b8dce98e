#include "views/win32/window_view.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "views/win32/desktop.h"

namespace quintara::win32 {
namespace {

// Places and sizes of a dialog are kept in 16 bits by who owns it.
constexpr int kMostTwips = std::numeric_limits<std::int16_t>::max();

// What pictures can be drawn in.
constexpr int kLeastPicture = 8;
constexpr int kLargestPicture = 256;

int WidthOf(const RECT& edges) {
  return edges.right - edges.left;
}

int HeightOf(const RECT& edges) {
  return edges.bottom - edges.top;
}

RECT Centred(const RECT& area, SIZE size) {
  const LONG left = area.left + (WidthOf(area) - size.cx) / 2;
  const LONG top = area.top + (HeightOf(area) - size.cy) / 2;
  return {left, top, left + size.cx, top + size.cy};
}

// The edges that are dragged go no further than a place or a size may.
void BoundDrag(RECT& edges, WPARAM edge, LONG most) {
  if (edge == WMSZ_LEFT || edge == WMSZ_TOPLEFT || edge == WMSZ_BOTTOMLEFT) {
    edges.left = std::max({edges.left, -most, edges.right - most});
  } else {
    edges.right = std::min(edges.right, edges.left + most);
  }
  if (edge == WMSZ_TOP || edge == WMSZ_TOPLEFT || edge == WMSZ_TOPRIGHT) {
    edges.top = std::max({edges.top, -most, edges.bottom - most});
  } else {
    edges.bottom = std::min(edges.bottom, edges.top + most);
  }
}

}  // namespace

// Counts the changes that wait for the last one of them.
class WindowView::Arranging {
 public:
  explicit Arranging(WindowView& view) : view_(view) { ++view_.arranging_; }
  ~Arranging() { --view_.arranging_; }
  Arranging(const Arranging&) = delete;
  Arranging& operator=(const Arranging&) = delete;

 private:
  WindowView& view_;
};

// Smaller than the screen has it where the dialog would not have room on it.
Scale WindowView::ScaleHere() const {
  const int pixelsOfInch = PixelsOfInch(window_);
  const Scale whole(pixelsOfInch);
  const auto work = WorkAreaOf(window_);
  const double across = static_cast<double>(WidthOf(work)) / std::max(whole.SizeInPixels(layout_.box.width), 1);
  const double down = static_cast<double>(HeightOf(work)) / std::max(whole.SizeInPixels(layout_.box.height), 1);
  return Scale(pixelsOfInch, std::min({across, down, 1.0}));
}

// Of those of a tree.
int WindowView::PixelsOfPicture() const {
  constexpr int kTwipsOfPicture = 240;
  return std::clamp(scale_.PlaceInPixels(kTwipsOfPicture), kLeastPicture, kLargestPicture);
}

// Fonts and pictures of the scale, and all controls in it.
void WindowView::Rescale() {
  const auto former = std::exchange(fonts_, std::make_unique<Fonts>(scale_));
  for (auto& item : items_) {
    SetWindowFont(item);
    if (item.tree) item.tree->SetPictureSize(PixelsOfPicture());
    if (item.control.kind == dialog::Kind::kPicture) {
      const int size = scale_.PlaceInPixels(std::min(item.control.box.width, item.control.box.height));
      item.picture = std::make_unique<PictureList>(std::vector{item.control.picture},
                                                   std::clamp(size, kLeastPicture, kLargestPicture));
      InvalidateRect(item.window, nullptr, TRUE);
    }
  }
  PlaceControls();
}

// In the middle of the work area, or beside the dialog that it is modal to, so that this is still seen.
void WindowView::PlaceFirst() {
  const auto owner = GetWindow(window_, GW_OWNER);
  const auto place = [&](HWND on) {
    const auto work = WorkAreaOf(on);
    SetWindowPos(window_, nullptr, work.left, work.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    scale_ = ScaleHere();
    const SIZE size{scale_.SizeInPixels(layout_.box.width), scale_.SizeInPixels(layout_.box.height)};
    return owner != nullptr && on == owner ? BesideOwner(owner, work, size) : Centred(work, size);
  };
  const auto isFar = [&](const RECT& edges) {
    return std::abs(scale_.PlaceInTwips(edges.left)) > kMostTwips ||
           std::abs(scale_.PlaceInTwips(edges.top)) > kMostTwips;
  };
  auto edges = place(CanBeAnswered() ? (owner != nullptr ? owner : GetForegroundWindow()) : nullptr);
  if (isFar(edges)) edges = place(nullptr);
  box_.left = std::min(scale_.PlaceInTwips(edges.left), kMostTwips);
  box_.top = std::min(scale_.PlaceInTwips(edges.top), kMostTwips);
  PlaceWindow(nullptr, SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT WindowView::BesideOwner(HWND owner, const RECT& work, SIZE size) const {
  RECT beside{};
  GetWindowRect(owner, &beside);
  if (IsRectEmpty(&beside) != 0) return Centred(work, size);
  const auto unseen = UnseenBorders(owner);
  beside = {beside.left + unseen.left, beside.top + unseen.top, beside.right - unseen.right,
            beside.bottom - unseen.bottom};
  RECT edges = Centred(beside, size);
  if (!isOverDialog_) {
    edges = Centred(work, size);
  } else if (work.right - beside.right >= size.cx) {
    OffsetRect(&edges, static_cast<int>(beside.right - edges.left), 0);
  } else if (beside.left - work.left >= size.cx) {
    OffsetRect(&edges, static_cast<int>(beside.left - edges.right), 0);
  } else {
    OffsetRect(&edges, 0, static_cast<int>(beside.bottom - edges.bottom));
  }
  OffsetRect(&edges, static_cast<int>(std::max(work.left - edges.left, 0L) - std::max(edges.right - work.right, 0L)),
             static_cast<int>(std::max(work.top - edges.top, 0L) - std::max(edges.bottom - work.bottom, 0L)));
  return edges;
}

RECT WindowView::SeenEdges() const {
  RECT edges{};
  GetWindowRect(window_, &edges);
  return {edges.left + borders_.left, edges.top + borders_.top, edges.right - borders_.right,
          edges.bottom - borders_.bottom};
}

// They are known from the first showing on.
void WindowView::NoteBorders() {
  const auto borders = UnseenBorders(window_);
  if (EqualRect(&borders, &borders_) != 0) return;
  NoteEdges(SeenEdges());
  borders_ = borders;
  PlaceWindow(nullptr, SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT WindowView::WithBorders(const RECT& seen) const {
  return {seen.left - borders_.left, seen.top - borders_.top, seen.right + borders_.right,
          seen.bottom + borders_.bottom};
}

RECT WindowView::InPixels(const dialog::Box& box) const {
  const LONG left = scale_.PlaceInPixels(box.left);
  const LONG top = scale_.PlaceInPixels(box.top);
  return {left, top, left + scale_.SizeInPixels(box.width), top + scale_.SizeInPixels(box.height)};
}

// What the user hasn't changed stays the number that was set.
void WindowView::NoteEdges(const RECT& now) {
  if (now.left != seen_.left) box_.left = scale_.PlaceInTwips(now.left);
  if (now.top != seen_.top) box_.top = scale_.PlaceInTwips(now.top);
  if (WidthOf(now) != WidthOf(seen_)) box_.width = scale_.SizeInTwips(WidthOf(now));
  if (HeightOf(now) != HeightOf(seen_)) box_.height = scale_.SizeInTwips(HeightOf(now));
  seen_ = now;
}

void WindowView::PlaceWindow(HWND above, UINT flags) {
  const auto edges = WithBorders(InPixels(box_));
  const bool before = std::exchange(isPlacing_, true);
  SetWindowPos(window_, above, edges.left, edges.top, WidthOf(edges), HeightOf(edges), flags);
  isPlacing_ = before;
  seen_ = SeenEdges();
}

dialog::Box WindowView::BoxOf(const std::string& control) {
  const OwnPixels pixels;
  const auto& item = ItemWith(control, HasBox);
  if (&item != &Itself()) return item.control.box;
  if (!isDragged_) NoteEdges(SeenEdges());
  return box_;
}

void WindowView::SetBox(const std::string& control, const dialog::Box& box) {
  const OwnPixels pixels;
  auto& item = ItemWith(control, HasBox);
  if (&item != &Itself()) {
    item.control.box = box;
    if (arranging_ == 0) PlaceControls();
    return;
  }
  Resize(box, [&] {
    if (isDragged_) {
      seen_ = InPixels(box_);
    } else {
      PlaceWindow(nullptr, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    }
  });
}

void WindowView::Resize(const dialog::Box& box, const std::function<void()>& place) {
  const auto before = BoxOf({});
  box_ = box;
  place();
  if (before.width != box.width || before.height != box.height) Resized();
}

void WindowView::Resized() {
  {
    const Arranging arranging(*this);
    const FormerPixels pixels(hostAwareness_);
    events_.OnResize();
  }
  if (arranging_ == 0 && !isDragged_) PlaceControls();
}

// A control stands where its frame stands, to the twip.
RECT WindowView::PlaceOf(const ViewItem& item) {
  auto box = item.control.box;
  auto container = item.control.container;
  while (!container.empty()) {
    const auto& frame = ItemNamed(container).control;
    box.left += frame.box.left;
    box.top += frame.box.top;
    container = frame.container;
  }
  return InPixels(box);
}

// All at once. What a frame uncovers within itself is nobody else's to draw.
void WindowView::PlaceControls() {
  if (!isLoaded_) return;
  auto batch = BeginDeferWindowPos(static_cast<int>(items_.size()));
  std::vector<RECT> uncovered;
  for (auto& item : items_) {
    if (item.window == nullptr || item.window == window_) continue;
    const auto place = PlaceOf(item);
    if (EqualRect(&place, &item.place) != 0) continue;
    if (item.control.kind == dialog::Kind::kFrame) {
      uncovered.push_back(item.place);
      uncovered.push_back(place);
    }
    item.place = place;
    batch = DeferWindowPos(batch, item.window, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                           SWP_NOZORDER | SWP_NOACTIVATE);
    if (batch == nullptr) throw Failure(failure::kOutOfMemory);
  }
  EndDeferWindowPos(batch);
  for (const auto& area : uncovered) RedrawWindow(window_, &area, nullptr, RDW_INVALIDATE | RDW_ERASE);
  for (const auto& item : items_) {
    if (!uncovered.empty() && item.control.kind == dialog::Kind::kFrame) InvalidateRect(item.window, nullptr, FALSE);
  }
}

void WindowView::OnSize() {
  if (!isReady_ || isPlacing_ || !isLoaded_ || IsIconic(window_) != 0) return;
  const auto before = box_;
  NoteEdges(SeenEdges());
  if (before.width != box_.width || before.height != box_.height) Deliver([this](dialog::Events&) { Resized(); });
  PlaceControls();
}

// Whoever owns the dialog has the last word before it gets the size that the user drags it to.
void WindowView::OnSizing(RECT& proposed, WPARAM edge) {
  if (!isReady_ || !isLoaded_) return;
  BoundDrag(proposed, edge, MostPixels());
  isDragged_ = true;
  NoteEdges({proposed.left + borders_.left, proposed.top + borders_.top, proposed.right - borders_.right,
             proposed.bottom - borders_.bottom});
  Deliver([this](dialog::Events&) { Resized(); });
  isDragged_ = false;
  if (isLoaded_) proposed = WithBorders(seen_);
}

int WindowView::MostPixels() const {
  return scale_.PlaceInPixels(kMostTwips - Scale::kTwipsOfPixel);
}

void WindowView::KeepWithinNumbers(WINDOWPOS& change) const {
  if (isPlacing_ || !isReady_) return;
  const int most = MostPixels();
  if ((change.flags & SWP_NOMOVE) == 0) {
    change.x = std::clamp(change.x, -most, most - static_cast<int>(borders_.left));
    change.y = std::clamp(change.y, -most, most - static_cast<int>(borders_.top));
  }
  if ((change.flags & SWP_NOSIZE) == 0) {
    change.cx = std::min(change.cx, most);
    change.cy = std::min(change.cy, most);
  }
}

// The numbers stay, what they mean is another size.
void WindowView::OnDpiChanged(const RECT& suggested) {
  if (!isReady_ || !isLoaded_) return;
  scale_ = ScaleHere();
  const int most = MostPixels();
  box_.left = scale_.PlaceInTwips(std::clamp(static_cast<int>(suggested.left + borders_.left), -most, most));
  box_.top = scale_.PlaceInTwips(std::clamp(static_cast<int>(suggested.top + borders_.top), -most, most));
  Rescale();
  PlaceWindow(nullptr, SWP_NOZORDER | SWP_NOACTIVATE);
  if (isShown_) NoteBorders();
  InvalidateRect(window_, nullptr, TRUE);
}

}  // namespace quintara::win32
