#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "access/contracts/any_object.h"
#include "access/contracts/dialog.h"
#include "access/contracts/file_system.h"

namespace quintara {

/// Styles of message boxes; a style is a sum of these.
namespace box {
inline constexpr int kOkOnly = 0;
inline constexpr int kOkCancel = 1;
inline constexpr int kYesNo = 4;
inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kWarning = 48;
inline constexpr int kInformation = 64;
inline constexpr int kSystemModal = 4096;
inline constexpr int kCriticalModal = kCritical + kSystemModal;
inline constexpr int kInformationModal = kInformation + kSystemModal;
}  // namespace box

/// Codes of the buttons that answer a box.
namespace answer {
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;
}  // namespace answer

/// What the operating system and the desktop offer.
class Platform {
 public:
  virtual ~Platform() = default;

  /// The running object of a program name such as "ZORVA.Application"; it is never started.
  /// Fails with 429 when none runs. Program names are compared without case.
  virtual Ref<AnyObject> Attach(const std::string& programName) = 0;
  /// Starts the program, or creates the object, of a program name. Fails with 429.
  virtual Ref<AnyObject> Create(const std::string& programName) = 0;

  virtual Ref<FileSystemObject> FileSystem() = 0;
  virtual FileContents& Contents() = 0;

  /// Shows a message box and waits for its answer, a button code.
  virtual int ShowBox(const std::string& text, int style, const std::string& title) = 0;
  /// A view of one dialog, made hidden; `events` must outlive it until `OnUnloaded`. Fails with 429 where there
  /// is no user interface.
  virtual std::shared_ptr<dialog::View> NewView(const dialog::Layout& layout, dialog::Events& events) = 0;

  /// The value of an environment variable; empty when it isn't set.
  virtual std::string Environment(const std::string& name) = 0;
  /// What parts the decimals from a number in the user's locale.
  virtual std::string DecimalSeparator() = 0;
  /// UTF-8 in the system's 8-bit code page, which is Windows-1252 where the system has none: one byte for
  /// each UTF-16 unit, "?" for what the page lacks.
  virtual std::string ToCodePage(std::string_view utf8) = 0;
  /// The other way, a character for each byte.
  virtual std::string FromCodePage(std::string_view bytes) = 0;
  /// Blocks the thread, the user interface included.
  virtual void Sleep(int milliseconds) = 0;
  /// Lets the user interface catch up.
  virtual void Yield() = 0;
  /// Writes one line of `type` (1 error, 4 information) to the event log at `logPath`.
  virtual void LogEvent(const std::string& logPath, const std::string& text, int type) = 0;
};

}  // namespace quintara
