#include "views/win32/window_view.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text16_windows.h"
#include "views/win32/desktop.h"
#include "views/win32/mnemonics.h"

namespace quintara::win32 {
namespace {

using dialog::Kind;

constexpr int kFirstNumber = 100;

// The toolkit presses these two by Enter and Esc.
int NumberOf(const dialog::Control& control, std::size_t place) {
  if (control.kind == Kind::kButton && control.shortcut == "Enter") return IDOK;
  if (control.kind == Kind::kButton && control.shortcut == "Esc") return IDCANCEL;
  return kFirstNumber + static_cast<int>(place);
}

// A dialog without controls, menu, own class and title, as a resource would have it.
struct Template {
  DLGTEMPLATE head{};
  std::array<WORD, 3> names{};
};

void CheckNames(const dialog::Layout& layout) {
  for (auto at = layout.controls.begin(); at != layout.controls.end(); ++at) {
    const auto isContainer = [&](const dialog::Control& other) {
      return other.kind == Kind::kFrame && other.name == at->container;
    };
    if (std::any_of(layout.controls.begin(), at, [&](const auto& other) { return other.name == at->name; })) {
      throw Failure(failure::kDuplicateKey, "'" + layout.name + "' has two controls '" + at->name + "'");
    }
    if (!at->container.empty() && std::none_of(layout.controls.begin(), at, isContainer)) {
      throw Failure(failure::kElementNotFound, "'" + layout.name + "' has no frame '" + at->container + "'");
    }
  }
}

}  // namespace

std::shared_ptr<WindowView> WindowView::Make(const dialog::Layout& layout, dialog::Events& events) {
  if (!HasDesktop()) {
    throw Failure(failure::kCannotCreateObject, "There is no desktop to show the dialog '" + layout.name + "' on");
  }
  CheckNames(layout);
  auto view = std::make_shared<WindowView>(layout, events);
  view->isReady_ = true;
  return view;
}

WindowView::WindowView(const dialog::Layout& layout, dialog::Events& events)
    : layout_(layout), events_(events), hostAwareness_(FormerPixels::Now()), box_(layout.box) {
  const OwnPixels pixels;
  const VisualStyles styles;
  AddItems();
  MakeDialog();
  try {
    scale_ = ScaleHere();
    MakeControls();
    PlaceFirst();
    Rescale();
  } catch (...) {
    Destroy();
    throw;
  }
}

WindowView::~WindowView() {
  Destroy();
}

void WindowView::AddItems() {
  const auto font = StandardFont();
  for (const auto& control : layout_.controls) {
    ViewItem item;
    item.control = control;
    item.number = NumberOf(control, items_.size());
    item.font = font;
    items_.push_back(std::move(item));
  }
  ViewItem itself;
  itself.control = {.name = {}, .kind = Kind::kFrame, .box = layout_.box, .text = layout_.text};
  itself.font = font;
  items_.push_back(std::move(itself));
}

bool WindowView::CanBeAnswered() const {
  return std::ranges::any_of(layout_.controls, [](const dialog::Control& control) {
    return control.kind == Kind::kButton || control.kind == Kind::kTextBox || control.kind == Kind::kRadioButton ||
           control.kind == Kind::kTree;
  });
}

void WindowView::MakeDialog() {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
  Template made;
  made.head.style = WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN | DS_NOFAILCREATE;
  made.head.style |= layout_.isSizable ? WS_THICKFRAME : DS_MODALFRAME;
  made.head.dwExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
  if (CanBeAnswered()) {
    made.head.style |= WS_SYSMENU;
  } else {
    made.head.dwExtendedStyle |= WS_EX_TOPMOST;
  }
  const auto owner = Owner();
  window_ = CreateDialogIndirectParamW(OwnModule(), &made.head, owner, DialogProcedure, reinterpret_cast<LPARAM>(this));
  if (window_ == nullptr) {
    throw Failure(failure::kCannotCreateObject, "No window could be made for the dialog '" + layout_.name + "'");
  }
  RefuseStretching(window_);
  Itself().window = window_;
  SetWindowTextW(window_, Wide(layout_.text).c_str());
}

// A group ends where the next one begins, so all that isn't a further radio button begins one.
bool WindowView::BeginsGroup(std::size_t place) const {
  const auto& control = items_[place].control;
  if (control.kind != Kind::kRadioButton || place == 0) return true;
  const auto& before = items_[place - 1].control;
  return before.kind != Kind::kRadioButton || before.container != control.container;
}

bool WindowView::IsReached(std::size_t place) const {
  const auto& control = items_[place].control;
  if (control.kind != Kind::kRadioButton) return false;
  const bool isAnyChecked = std::ranges::any_of(items_, [&](const ViewItem& other) {
    return other.control.kind == Kind::kRadioButton && other.control.container == control.container &&
           other.control.isChecked;
  });
  return control.isChecked || (!isAnyChecked && BeginsGroup(place));
}

void WindowView::MakeControls() {
  for (std::size_t place = 0; place + 1 < items_.size(); ++place) {
    auto& item = items_[place];
    item.window = MakeWindow(window_, item, BeginsGroup(place), IsReached(place));
    if (item.window == nullptr) continue;
    if (item.control.isChecked) SendMessageW(item.window, BM_SETCHECK, BST_CHECKED, 0);
    if (item.control.kind == Kind::kTree) item.tree = std::make_unique<TreeWindow>(item.window, layout_.pictures);
    const auto procedure = reinterpret_cast<LONG_PTR>(ControlProcedure);
    item.former = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(item.window, GWLP_WNDPROC, procedure));
  }
  if (ItemNumbered(IDOK) != nullptr) SendMessageW(window_, DM_SETDEFID, IDOK, 0);
  // The user sees at once where the keyboard is and which letters press what.
  SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
  ShowCaptions();
}

void WindowView::SetWindowFont(const ViewItem& item) {
  if (item.window == nullptr || item.window == window_ || !HasFont(item.control.kind)) return;
  SendMessageW(item.window, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_->Made(item.font)), TRUE);
  constexpr int kRoom = 60;  // between the rows, in twips
  const int text = fonts_->HeightOf(item.font);
  if (item.tree) item.tree->SetRowHeight(std::max(text, PixelsOfPicture()) + scale_.PlaceInPixels(kRoom));
}

// Whether it is a frame right before the tree that it holds.
bool WindowView::BeginsTree(std::size_t place) const {
  if (place + 1 >= items_.size()) return false;
  const auto& frame = items_[place].control;
  const auto& next = items_[place + 1].control;
  return frame.kind == Kind::kFrame && next.kind == Kind::kTree && next.container == frame.name;
}

// 0 for no caption, 1 for one without a mnemonic, 2 for one with it: what can be pressed by none yet, or stands before
// what the keyboard goes to.
int WindowView::CaptionRole(std::size_t place) const {
  const auto& control = items_[place].control;
  const bool isBeforeBox = place + 1 < items_.size() && items_[place + 1].control.kind == Kind::kTextBox;
  switch (control.kind) {
    case Kind::kButton: return items_[place].number >= kFirstNumber ? 2 : 1;
    case Kind::kRadioButton: return 2;
    case Kind::kLabel: return isBeforeBox ? 2 : 1;
    case Kind::kFrame: return BeginsTree(place) ? 2 : 1;
    default: return 0;
  }
}

void WindowView::ShowCaptions() {
  std::vector<std::wstring> pressed;
  for (std::size_t place = 0; place + 1 < items_.size(); ++place) {
    if (CaptionRole(place) == 2) pressed.push_back(Wide(items_[place].control.text));
  }
  auto marked = WithMnemonics(pressed);
  auto next = marked.begin();
  for (std::size_t place = 0; place + 1 < items_.size(); ++place) {
    const int role = CaptionRole(place);
    if (role == 0) continue;
    const auto caption = role == 2 ? *next++ : Escaped(Wide(items_[place].control.text));
    std::wstring before(caption.size() + 2, L'\0');
    before.resize(
        static_cast<std::size_t>(GetWindowTextW(items_[place].window, before.data(), static_cast<int>(before.size()))));
    if (before != caption) SetWindowTextW(items_[place].window, caption.c_str());
    // What reads the screen aloud names a tree so.
    if (BeginsTree(place)) SetWindowTextW(items_[place + 1].window, Wide(items_[place].control.text).c_str());
  }
}

}  // namespace quintara::win32
