#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "access/contracts/dialog.h"
#include "views/console/bar_view.h"
#include "views/console/full_screen.h"

namespace quintara {

/// Makes the views of dialogs on a console: one that has nothing to press or type in is a line that tells of long
/// work, any other one takes the full screen where someone can answer it, and is cancelled where nobody can.
class ConsoleDialogs {
 public:
  using Maker = std::function<std::shared_ptr<dialog::View>(const dialog::Layout& layout, dialog::Events& events)>;

  struct Surroundings {
    bool canAsk = false;
    FullScreen::Surroundings screen = {};
    BarView::Line line = {};
  };

  explicit ConsoleDialogs(Surroundings surroundings);

  std::shared_ptr<dialog::View> Make(const dialog::Layout& layout, dialog::Events& events);
  /// Has the views of the dialog of that name made by `maker` from now on, which may call `MakeOwn`; an empty
  /// one takes that back.
  void SetMaker(const std::string& dialog, Maker maker);
  /// As without a maker of its own.
  std::shared_ptr<PlainView> MakeOwn(const dialog::Layout& layout, dialog::Events& events);

  FullScreen& TheScreen() { return *screen_; }

 private:
  Surroundings around_;
  std::shared_ptr<FullScreen> screen_;
  std::map<std::string, Maker> makers_;
};

}  // namespace quintara
