#pragma once

#include <exception>
#include <vector>

#include "views/win32/visual_styles.h"

namespace quintara::win32 {

/// Handles the messages of a thread, for as long as someone wants. Pumps stand within each other. What fails in an
/// event mustn't pass through the toolkit, so it is left with the innermost pump, which ends, and comes out of it.
class Pump {
 public:
  Pump();
  ~Pump();
  Pump(const Pump&) = delete;
  Pump& operator=(const Pump&) = delete;

  /// Leaves a failure with the innermost pump of this thread; without one it is lost.
  static void Fail(const std::exception_ptr& failure);
  /// The first one counts.
  void Take(const std::exception_ptr& failure);

  /// One message, `dialog`'s keys included, null for no dialog. False when none waits or the thread is to end.
  bool HandleOne(HWND dialog);
  /// Until something happens.
  static void Wait();
  bool IsOver() const { return failure_ != nullptr || isQuitting_; }
  bool IsQuitting() const { return isQuitting_; }
  /// Throws what was left here, if anything.
  void Rethrow() const;

 private:
  Pump* outer_;
  std::exception_ptr failure_;
  bool isQuitting_ = false;
};

/// While one lives, the windows of the thread but one are deaf to the user, as they are to those of a dialog's owner.
class OthersDisabled {
 public:
  explicit OthersDisabled(HWND window);
  ~OthersDisabled();
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;

 private:
  std::vector<HWND> windows_;
};

}  // namespace quintara::win32
