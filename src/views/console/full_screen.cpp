#include "views/console/full_screen.h"

#include <iterator>
#include <utility>

#include "base/text.h"

namespace quintara {

FullScreen::Place::Place(FullScreen& screen, ScreenDialog& dialog) : screen_(screen) {
  if (!screen_.screen_) screen_.screen_ = screen_.around_.open();
  screen_.dialogs_.push_back(&dialog);
}

FullScreen::Place::~Place() {
  screen_.dialogs_.pop_back();
  if (!screen_.dialogs_.empty()) return;
  screen_.screen_.reset();
  screen_.messages_.clear();
}

void FullScreen::Suspend() {
  if (screen_) screen_->Suspend();
}

void FullScreen::Tell(const std::string& message) {
  if (!IsShown()) return;
  for (auto& line : Split(message, '\n')) {
    if (line.ends_with('\r')) line.pop_back();
    messages_.push_back(std::move(line));
  }
}

std::optional<Key> FullScreen::NextKey(int milliseconds) {
  if (around_.check) around_.check();
  const auto shown = Compose(screen_->Size());
  screen_->Draw(shown.lines, shown.cursor);
  auto key = screen_->ReadKey(milliseconds);
  if (key && key->code != Key::Code::kResize) messages_.clear();
  return key;
}

DialogLines FullScreen::Compose(const ScreenSize& size) const {
  DialogLines all;
  auto free = size.rows;
  for (auto dialog = dialogs_.rbegin(); dialog != dialogs_.rend() && free > 0; ++dialog) {
    const bool isOnTop = dialog == dialogs_.rbegin();
    auto part = (*dialog)->Draw(free, isOnTop, isOnTop ? messages_ : std::vector<std::string>(),
                                {size.columns, around_.hasUtf8});
    if (part.lines.size() > free) part.lines.resize(free);
    free -= part.lines.size();
    if (isOnTop) all.cursor = part.cursor;
    if (all.cursor && isOnTop) all.cursor->row += free;
    all.lines.insert(all.lines.begin(), std::make_move_iterator(part.lines.begin()),
                     std::make_move_iterator(part.lines.end()));
  }
  all.lines.insert(all.lines.begin(), free, ScreenLine());
  if (all.cursor && all.cursor->row >= size.rows) all.cursor.reset();
  return all;
}

}  // namespace quintara
