#include <cstdint>
#include <initializer_list>

#include "base/counter16.h"
#include "wip/MainPanel.h"
#include "wip/node_tags.h"

namespace quintara {
namespace {

constexpr int kMinimumWidth = 9525;
constexpr int kMinimumHeight = 10935;

std::int16_t In16Bits(int units) {
  return static_cast<std::int16_t>(int{Counter16(units)});
}

dialog::Control Frame(const char* name, const dialog::Box& box) {
  return {.name = name, .kind = dialog::Kind::kFrame, .box = box};
}

dialog::Control Label(const char* name, const dialog::Box& box, const char* container) {
  return {.name = name, .kind = dialog::Kind::kLabel, .box = box, .container = container};
}

dialog::Control Button(const char* name, const dialog::Box& box, const char* shortcut) {
  return {.name = name, .kind = dialog::Kind::kButton, .box = box, .shortcut = shortcut};
}

// Both answers have one shortcut, which goes from one to the other.
dialog::Control Choice(const char* name, const dialog::Box& box, bool isChecked) {
  dialog::Control control{.name = name, .kind = dialog::Kind::kRadioButton, .box = box, .container = "FrameInstances"};
  control.isChecked = isChecked;
  control.shortcut = "a";
  return control;
}

// One of the states in the legend.
dialog::Control Sample(const char* name, int left, int top, const char* picture) {
  dialog::Control control{.name = name, .kind = dialog::Kind::kPicture, .box = {left, top, 255, 255}};
  control.container = "FrameLegend";
  control.picture = picture;
  return control;
}

// The controls of the panel by the names of their edges.
class Edges {
 public:
  explicit Edges(dialog::View& view) : view_(view) {}

  int Left(const char* control) { return view_.BoxOf(control).left; }
  int Top(const char* control) { return view_.BoxOf(control).top; }
  int Width(const char* control) { return view_.BoxOf(control).width; }
  int Height(const char* control) { return view_.BoxOf(control).height; }
  int Right(const char* control) { return Left(control) + Width(control); }
  int Bottom(const char* control) { return Top(control) + Height(control); }

  void Set(const char* control, int dialog::Box::*edge, int value) {
    auto box = view_.BoxOf(control);
    box.*edge = value;
    view_.SetBox(control, box);
  }

 private:
  dialog::View& view_;
};

}  // namespace

// The controls in the order in which they are made. Between the frame of the tree and that of the instances there is
// as much room as between cmdExpand and cmdCollapse; the column at the right is as wide as cmdShow.
dialog::Layout MainPanel::MakeLayout() const {
  dialog::Layout layout;
  layout.name = "MainPanel";
  layout.box = {0, 0, kMinimumWidth, kMinimumHeight};
  layout.isSizable = true;
  layout.pictures = node_tag::All();
  layout.controls = {
      {.name = "Timer1", .kind = dialog::Kind::kTimer, .interval = 100},
      Frame("FrameInstances", {120, 8430, 6075, 1095}),
      Choice("GetAllInstances(0)", {240, 300, 5700, 285}, false),
      Choice("GetAllInstances(1)", {240, 660, 5700, 285}, true),
      Frame("FrameLegend", {6425, 2640, 2850, 1545}),
      Label("lblNoSelection", {735, 330, 2010, 255}, "FrameLegend"),
      Label("lblLightRepresentation", {735, 720, 2010, 255}, "FrameLegend"),
      Label("lblDocument", {735, 1110, 2010, 255}, "FrameLegend"),
      Sample("img_none", 105, 330, node_tag::kProductNone),
      Sample("img_3d", 420, 1110, node_tag::kPartDocument),
      Sample("img_lwt", 420, 720, node_tag::kPartLight),
      Sample("Image2", 420, 330, node_tag::kPartNone),
      Button("cmdFind", {6425, 600, 2850, 375}, "/"),
      Button("cmdCollapse", {6425, 1590, 2850, 375}, "c"),
      Button("cmdExpand", {6425, 1095, 2850, 375}, "e"),
      Button("cmdShow", {6425, 2085, 2850, 375}, "i"),
      Label("lblWIPName", {120, 165, 1950, 255}, ""),
      {.name = "txtWIPName", .kind = dialog::Kind::kTextBox, .box = {2160, 120, 3915, 315}, .shortcut = "n"},
      Button("cmdCancel", {4515, 9960, 1680, 375}, "Esc"),
      Button("cmdCreateWIP", {2585, 9960, 1680, 375}, "Enter"),
      Frame("FrameReview", {120, 600, 6075, 7710}),
      {.name = "Tree1", .kind = dialog::Kind::kTree, .box = {250, 360, 5575, 7110}, .container = "FrameReview"},
  };
  return layout;
}

void MainPanel::OnResize() {
  if (IsLoaded()) ArrangeControls();
}

void MainPanel::ArrangeControls() {
  if (!HoldsMinimum()) return;
  const auto panel = TheView().BoxOf("");
  Edges edges(TheView());
  const auto left = &dialog::Box::left;
  const auto top = &dialog::Box::top;
  const auto width = &dialog::Box::width;
  const auto height = &dialog::Box::height;

  for (const auto* control : {"cmdShow", "cmdExpand", "cmdCollapse", "cmdFind", "FrameLegend"}) {
    edges.Set(control, left, panel.width - (edges.Width(control) + 250));
  }
  const int column = edges.Width("cmdShow") + 600;
  edges.Set("FrameInstances", width, panel.width - column);
  edges.Set("txtWIPName", width, panel.width - (edges.Left("txtWIPName") + column));
  edges.Set("FrameReview", width, panel.width - column);
  edges.Set("Tree1", width, edges.Width("FrameReview") - 500);
  edges.Set("cmdCancel", left, edges.Right("FrameReview") - edges.Width("cmdCancel"));
  edges.Set("cmdCreateWIP", left,
            edges.Right("FrameReview") - (edges.Width("cmdCancel") + edges.Width("cmdCreateWIP") + 250));
  for (const auto* control : {"cmdCancel", "cmdCreateWIP"}) {
    edges.Set(control, top, panel.height - (edges.Height(control) + 600));
  }
  edges.Set("FrameReview", height, panel.height - (edges.Height("cmdCancel") + 2850));
  edges.Set("FrameInstances", top,
            edges.Bottom("FrameReview") + (edges.Top("cmdCollapse") - edges.Bottom("cmdExpand")));
  edges.Set("Tree1", height, edges.Height("FrameReview") - 600);
  StoreGeometry();
}

// A panel that is too small gets its least size, which comes back as another resize. One that became so by its left or
// upper edge keeps the opposite edge where it was.
bool MainPanel::HoldsMinimum() {
  auto& view = TheView();
  auto panel = view.BoxOf("");
  if (panel.width < kMinimumWidth) {
    if (panel.left > SavedLeft) panel.left = SavedLeft + SavedWidth - kMinimumWidth;
    panel.width = kMinimumWidth;
  } else if (panel.height < kMinimumHeight) {
    if (panel.top > SavedTop) panel.top = SavedTop + SavedHeight - kMinimumHeight;
    panel.height = kMinimumHeight;
  } else {
    return true;
  }
  view.SetBox("", panel);
  return false;
}

void MainPanel::OnTick(const std::string& timer) {
  if (timer == "Timer1") Timer1_Timer();
}

// A panel that was moved mustn't jump back when it is made too small afterwards.
void MainPanel::Timer1_Timer() {
  const auto panel = TheView().BoxOf("");
  if (panel.left != SavedLeft || panel.top != SavedTop) StorePlace();
}

void MainPanel::OnMouseUp(const std::string& control, int /*button*/) {
  if (control.empty()) StorePlace();
}

void MainPanel::StorePlace() {
  const auto panel = TheView().BoxOf("");
  SavedLeft = In16Bits(panel.left);
  SavedTop = In16Bits(panel.top);
}

void MainPanel::StoreGeometry() {
  const auto panel = TheView().BoxOf("");
  SavedTop = In16Bits(panel.top);
  SavedLeft = In16Bits(panel.left);
  SavedHeight = In16Bits(panel.height);
  SavedWidth = In16Bits(panel.width);
}

}  // namespace quintara
