#include "services/form.h"

#include <exception>
#include <utility>
#include <vector>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "base/attempt.h"
#include "base/failure.h"

namespace quintara {
namespace {

bool HasFont(dialog::Kind kind) {
  switch (kind) {
    case dialog::Kind::kFrame:
    case dialog::Kind::kLabel:
    case dialog::Kind::kTextBox:
    case dialog::Kind::kButton:
    case dialog::Kind::kRadioButton:
    case dialog::Kind::kTree: return true;
    default: return false;
  }
}

// False when the font of the settings isn't there, which only reading it back tells.
bool ApplyFontTo(dialog::View& view, const std::string& control) {
  const auto& settings = Process();
  const auto before = view.FontOf(control);
  auto font = before;
  font.name = settings.gFontName;
  view.SetFont(control, font);
  if (view.FontOf(control).name != settings.gFontName) {
    view.SetFont(control, before);
    return false;
  }
  if (settings.gFontSize > -1) font.size = settings.gFontSize;
  if (settings.gFontCharset > -1) font.charset = settings.gFontCharset;
  if (settings.gFontBold > -1) font.bold = settings.gFontBold > 0;
  if (settings.gFontItalic > -1) font.italic = settings.gFontItalic > 0;
  view.SetFont(control, font);
  return true;
}

template <class Body>
void UnloadedOnFailure(Form& form, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (const std::exception&) {
    ErrorState ignored;
    Attempt(ignored, [&] { form.Unload(); });
    throw;
  }
}

}  // namespace

void Form::Load() {
  if (view_) return;
  const auto self = shared_from_this();
  layout_ = MakeLayout();
  view_ = ThePlatform().NewView(layout_, *this);
  Process().gLoadedDialogs.push_back({self, view_});
  UnloadedOnFailure(*this, [&] { OnLoad(); });
}

void Form::ShowModal() {
  const auto self = shared_from_this();
  TheView();
  // The dialog may be unloaded, and even loaded anew, before its loop is over.
  const auto view = view_;
  UnloadedOnFailure(*this, [&] { view->ShowModal(); });
}

void Form::Hide() {
  if (view_) view_->Hide();
}

void Form::Unload() {
  const auto view = view_;
  if (view) view->Unload();
}

void Form::OnUnloaded() {
  // The globals may hold the last of this.
  const auto self = shared_from_this();
  const auto gone = std::exchange(view_, nullptr);
  std::erase_if(Process().gLoadedDialogs, [&](const LoadedDialog& dialog) { return dialog.view == gone; });
}

dialog::View& Form::TheView() {
  Load();
  if (!view_) throw Failure(failure::kObjectUnloaded, "\"" + layout_.name + "\" was unloaded while it was loaded");
  return *view_;
}

void Form::ApplyFonts() {
  ErrorState ignored;
  Attempt(ignored, [&] {
    if (Process().gFontName.empty() || !ApplyFontTo(TheView(), {})) return;
    for (const auto& control : layout_.controls) {
      if (HasFont(control.kind) && !ApplyFontTo(TheView(), control.name)) return;
    }
  });
}

}  // namespace quintara
