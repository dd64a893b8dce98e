#include "views/win32/sample_dialog.h"

#include "views/win32/desktop.h"
#include "views/win32/scale.h"

namespace quintara::test {

int NumberOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

int SampleNodes::Add(int parent, const std::string& text, bool isExpanded) {
  nodes_.push_back({.text = text, .parent = parent, .isExpanded = isExpanded});
  const int added = Count();
  int& last = parent == 0 ? lastRoot_ : At(parent).lastChild;
  if (parent != 0 && last == 0) At(parent).firstChild = added;
  if (last != 0 && last < added) At(last).next = added;
  last = added;
  return added;
}

void SampleEvents::OnClick(const std::string& control) {
  calls.push_back("OnClick(" + control + ")");
  if (click) click(control);
}

void SampleEvents::OnNodeClick(const std::string& control, int node) {
  calls.push_back("OnNodeClick(" + control + ", " + std::to_string(node) + ")");
  if (nodeClick) nodeClick();
}

void SampleEvents::OnMouseDown(const std::string& control, int button, int shift, int x, int y) {
  calls.push_back("OnMouseDown(" + control + ", " + std::to_string(button) + ", " + std::to_string(shift) + ")");
  pressedAt = {x, y};
  if (mouseDown) mouseDown();
}

void SampleEvents::OnMouseUp(const std::string& control, int button) {
  calls.push_back("OnMouseUp(" + control + ", " + std::to_string(button) + ")");
}

void SampleEvents::OnResize() {
  ++resizes;
  if (resize) resize();
}

void SampleEvents::OnTick(const std::string& /*timer*/) {
  ++ticks;
  if (tick) tick();
}

void SampleEvents::OnUnloaded() {
  calls.emplace_back("OnUnloaded");
  if (unloaded) unloaded();
}

dialog::Layout SampleLayout(const std::string& title) {
  using enum dialog::Kind;
  dialog::Layout layout{.name = "Sample", .text = title, .box = {0, 0, 6000, 6000}, .isSizable = true};
  layout.pictures = {"part none", "part lwt", "part doc"};
  layout.controls = {
      {.name = "Timer1", .kind = kTimer, .interval = 20},
      {.name = "Frame1", .kind = kFrame, .box = {105, 105, 2505, 1005}, .text = "Choice"},
      {.name = "Option(0)", .kind = kRadioButton, .box = {150, 300, 1500, 285}, .container = "Frame1", .text = "One"},
      {.name = "Option(1)",
       .kind = kRadioButton,
       .box = {150, 600, 1500, 285},
       .container = "Frame1",
       .text = "Two",
       .isChecked = true},
      {.name = "img", .kind = kPicture, .box = {3000, 105, 255, 255}, .picture = "part doc"},
      {.name = "lbl", .kind = kLabel, .box = {3000, 450, 1500, 255}, .text = "Name & number:"},
      {.name = "txt", .kind = kTextBox, .box = {4500, 450, 1200, 315}, .text = "typed"},
      {.name = "cmdOther", .kind = kButton, .box = {3000, 900, 1200, 375}, .text = "Other & more"},
      {.name = "cmdOff", .kind = kButton, .box = {4500, 900, 1200, 375}, .text = "Off", .isEnabled = false},
      {.name = "pb1", .kind = kProgressBar, .box = {3000, 1350, 2700, 255}},
      {.name = "Frame2", .kind = kFrame, .box = {105, 1700, 5600, 3000}, .text = "Tree"},
      {.name = "Tree1", .kind = kTree, .box = {150, 300, 5250, 2550}, .container = "Frame2"},
      {.name = "cmdOK", .kind = kButton, .box = {105, 4900, 1200, 375}, .text = "OK", .shortcut = "Enter"},
      {.name = "cmdCancel", .kind = kButton, .box = {1500, 4900, 1200, 375}, .text = "Cancel", .shortcut = "Esc"},
  };
  return layout;
}

SampleDialog::SampleDialog(const std::string& title, const std::function<void(dialog::Layout&)>& change)
    : layout(SampleLayout(title)) {
  if (change) change(layout);
  view = win32::NewView(layout, events);
  window = MadeDialog(title);
}

SampleDialog::~SampleDialog() {
  events.unloaded = nullptr;
  if (view) view->Unload();
}

int SampleDialog::Size(int twips) const {
  return win32::Scale(win32::PixelsOfInch(window)).SizeInPixels(twips);
}

int SampleDialog::Place(int twips) const {
  return win32::Scale(win32::PixelsOfInch(window)).PlaceInPixels(twips);
}

void OnDesktop::Show(SampleDialog& dialog, const std::function<void()>& act) {
  User user;
  user.Until("the dialog", [&] { return IsWindowVisible(dialog.window) != 0; }).Do(act).Do([&] {
    if (!dialog.IsGone()) SendMessageW(dialog.window, WM_CLOSE, 0, 0);
  });
  dialog.view->ShowModal();
}

}  // namespace quintara::test
