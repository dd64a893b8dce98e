#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "access/contracts/platform.h"
#include "hosts/native/native_platform.h"

namespace quintara::automation {

/// What the operating system and its desktop offer: other programs and objects through automation, native boxes and
/// dialogs. For one thread, on which automation was initialised before.
class WindowsPlatform : public Platform {
 public:
  WindowsPlatform();
  ~WindowsPlatform() override;

  /// Fails with 429 for a name that isn't registered and for a program that doesn't run or has ended; what another
  /// one refuses with is the failure's number.
  Ref<AnyObject> Attach(const std::string& programName) override;
  /// "Scripting.FileSystemObject" is one of our own where the system has none that works, and so is
  /// "Veldora.VdTranslator" where that name isn't registered.
  Ref<AnyObject> Create(const std::string& programName) override;
  Ref<FileSystemObject> FileSystem() override;
  FileContents& Contents() override;
  int ShowBox(const std::string& text, int style, const std::string& title) override;
  std::shared_ptr<dialog::View> NewView(const dialog::Layout& layout, dialog::Events& events) override;
  std::string Environment(const std::string& name) override;
  std::string DecimalSeparator() override;
  std::string ToCodePage(std::string_view utf8) override;
  std::string FromCodePage(std::string_view bytes) override;
  void Sleep(int milliseconds) override;
  void Yield() override;
  void LogEvent(const std::string& logPath, const std::string& text, int type) override;

 private:
  NativePlatform native_;  ///< what needs no automation and no desktop
};

}  // namespace quintara::automation
