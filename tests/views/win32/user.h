#pragma once

#include <functional>
#include <string>
#include <vector>

#include "views/win32/visual_styles.h"

namespace quintara::test {

/// A user at the desktop: does one step after another while the loop of a dialog runs on this thread, each as soon as
/// what it waits for is there. A wait that takes too long fails the test and closes all that is shown.
class User {
 public:
  User();
  /// Steps that were never done fail the test.
  ~User();
  User(const User&) = delete;
  User& operator=(const User&) = delete;

  User& Do(std::function<void()> step);
  User& Until(const std::string& what, std::function<bool()> isThere);

 private:
  struct Step {
    std::string what;
    std::function<bool()> isDone;
  };

  static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timer, DWORD time);
  void DoNext();
  void GiveUp(const std::string& what);

  std::vector<Step> steps_;
  std::size_t next_ = 0;
  UINT_PTR timer_;
  DWORD since_ = 0;
  bool isBusy_ = false;
  bool hasGivenUp_ = false;
};

/// The dialog with this title that is shown on this thread; null for none.
HWND ShownDialog(const std::string& title);
/// The same, whether it is shown or not.
HWND MadeDialog(const std::string& title);
/// Waits in a loop of its own until something is there, within the bounds of a `User`'s patience.
bool WaitFor(const std::function<bool()>& isThere);

/// What stands in a window, its mnemonic too.
std::string WindowText(HWND window);

// Of the pointer and the keyboard as the system gets them.
void MovePointer(POINT screen);
void PressPointer(bool right);
void ReleasePointer(bool right);
void PressKey(WORD key, WORD with = 0);

/// Stores a picture of a part of the screen in the folder that QUINTARA_PICTURES names, if it names one.
void KeepPicture(const RECT& screen, const std::string& name);
void KeepPicture(HWND window, const std::string& name);

}  // namespace quintara::test
