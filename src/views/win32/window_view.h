#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "access/contracts/dialog.h"
#include "views/win32/fonts.h"
#include "views/win32/pump.h"
#include "views/win32/scale.h"
#include "views/win32/view_item.h"
#include "views/win32/visual_styles.h"

namespace quintara::win32 {

/// A dialog of the desktop. Its window and those of its controls are made with it, hidden; the window stays until no
/// event is at work in it, also where it is unloaded before. A dialog in which nothing can be pressed or typed stands
/// above all others and has no close box. While a click is at work, the user's further ones are passed over.
class WindowView final : public dialog::View, public std::enable_shared_from_this<WindowView> {
 public:
  /// Fails with 429 where windows can't be made.
  static std::shared_ptr<WindowView> Make(const dialog::Layout& layout, dialog::Events& events);
  /// The dialog that the user is at now, on this thread; null for none.
  static HWND ShownModally();
  WindowView(const dialog::Layout& layout, dialog::Events& events);
  ~WindowView() override;

  std::string Text(const std::string& control) override;
  void SetText(const std::string& control, const std::string& text) override;
  bool IsEnabled(const std::string& control) override;
  void SetEnabled(const std::string& control, bool enabled) override;
  bool IsChecked(const std::string& control) override;
  void SetChecked(const std::string& control, bool checked) override;
  dialog::Box BoxOf(const std::string& control) override;
  void SetBox(const std::string& control, const dialog::Box& box) override;
  dialog::Font FontOf(const std::string& control) override;
  void SetFont(const std::string& control, const dialog::Font& font) override;
  void SetProgress(const std::string& control, int value, int max) override;
  void SetTree(const std::string& control, dialog::TreeContent* content) override;
  void TreeChanged(const std::string& control) override;
  int NodeAt(const std::string& control, int x, int y) override;
  int SelectedNode(const std::string& control) override;
  void SelectNode(const std::string& control, int node) override;
  void EnsureVisible(const std::string& control, int node) override;
  void ShowModal() override;
  void Hide() override;
  void ShowOnTop(int left, int top, int width, int height) override;
  void Redraw(const std::string& control) override;
  void Unload() override;
  dialog::Box Screen() override;

 private:
  using Event = std::function<void(dialog::Events&)>;
  class Arranging;

  // Its controls; window_view.cpp.
  ViewItem& ItemNamed(const std::string& name);
  ViewItem& ItemWith(const std::string& name, bool (*has)(dialog::Kind));
  ViewItem& ItemOfKind(const std::string& name, dialog::Kind kind);
  TreeWindow& TreeOf(const std::string& control);
  ViewItem* ItemOf(HWND window);
  ViewItem* ItemNumbered(int number);
  ViewItem& Itself() { return items_.back(); }
  void Check(ViewItem& radioButton, bool checked);

  // How it is made; window_view_make.cpp.
  void AddItems();
  void MakeDialog();
  void MakeControls();
  bool BeginsGroup(std::size_t place) const;
  bool IsReached(std::size_t place) const;
  bool CanBeAnswered() const;
  void ShowCaptions();
  void SetWindowFont(const ViewItem& item);
  bool BeginsTree(std::size_t place) const;
  int CaptionRole(std::size_t place) const;

  // Where it stands, and at what scale; window_view_place.cpp.
  void Rescale();
  int PixelsOfPicture() const;
  Scale ScaleHere() const;
  void PlaceFirst();
  RECT BesideOwner(HWND owner, const RECT& work, SIZE size) const;
  RECT SeenEdges() const;
  void NoteBorders();
  RECT InPixels(const dialog::Box& box) const;
  RECT WithBorders(const RECT& seen) const;
  void NoteEdges(const RECT& now);
  void PlaceWindow(HWND above, UINT flags);
  void Resize(const dialog::Box& box, const std::function<void()>& place);
  void Resized();
  void PlaceControls();
  RECT PlaceOf(const ViewItem& item);
  void OnSize();
  void OnSizing(RECT& proposed, WPARAM edge);
  int MostPixels() const;
  void KeepWithinNumbers(WINDOWPOS& change) const;
  void OnDpiChanged(const RECT& suggested);

  // What the toolkit tells; window_view_messages.cpp.
  static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM first, LPARAM second);
  std::optional<LRESULT> Guarded(const std::function<std::optional<LRESULT>()>& answer);
  std::optional<LRESULT> OnMessage(UINT message, WPARAM first, LPARAM second);
  std::optional<LRESULT> OnGeometry(UINT message, WPARAM first, LPARAM second);
  std::optional<LRESULT> OnControl(ViewItem& item, UINT message, WPARAM first, LPARAM second);
  std::optional<LRESULT> OnNotice(NMHDR& notice);
  LRESULT OnPointer(ViewItem& item, UINT message, WPARAM first, LPARAM second);
  void OnCommand(int number);
  void OnDestroyed();
  void DrawPicture(const DRAWITEMSTRUCT& request);

  // How events are told, and how it comes and goes; window_view_show.cpp.
  void Deliver(const Event& event);
  void DeliverFromUser(const Event& event);
  void Fail(const std::exception_ptr& failure);
  void Appear();
  void Disappear();
  HWND Owner();
  void Destroy();
  void LetGo(HWND window);
  void StartTimers();
  void StopTimers();

  dialog::Layout layout_;
  dialog::Events& events_;
  HANDLE hostAwareness_;
  HWND window_ = nullptr;
  ViewItems items_;  // the last one is the dialog itself
  Scale scale_{96};
  std::unique_ptr<Fonts> fonts_;

  dialog::Box box_;            // of the dialog, as it was set or as the user made it
  RECT seen_{};                // the edges that became of it, or that the user drags now
  RECT borders_{};             // beyond these
  int arranging_ = 0;          // controls are placed when all of them are
  bool isOverDialog_ = false;  // modal to another dialog of these
  bool isPlacing_ = false;
  bool isDragged_ = false;

  bool isReady_ = false;  // events are told
  bool isLoaded_ = true;
  bool isShown_ = false;
  bool isAnswering_ = false;
  int atWork_ = 0;  // events
  Pump* pump_ = nullptr;
  std::optional<OthersDisabled> others_;
};

}  // namespace quintara::win32
