#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "access/session/the_platform.h"

namespace quintara::test {

/// Installed for as long as it lives, hands everything on to the platform before it, but tells a test of each message
/// box at the moment at which it comes up.
class PlatformInFront {
 public:
  explicit PlatformInFront(std::function<void()> whenBoxShows) {
    auto watched = std::make_shared<Watched>();
    watched->whenBoxShows = std::move(whenBoxShows);
    watched->before = InstallPlatform(watched);
    platform_ = std::move(watched);
  }
  ~PlatformInFront() { InstallPlatform(platform_->before); }
  PlatformInFront(const PlatformInFront&) = delete;
  PlatformInFront& operator=(const PlatformInFront&) = delete;

 private:
  struct Watched : Platform {
    Ref<AnyObject> Attach(const std::string& programName) override { return before->Attach(programName); }
    Ref<AnyObject> Create(const std::string& programName) override { return before->Create(programName); }
    Ref<FileSystemObject> FileSystem() override { return before->FileSystem(); }
    FileContents& Contents() override { return before->Contents(); }
    int ShowBox(const std::string& text, int style, const std::string& title) override {
      whenBoxShows();
      return before->ShowBox(text, style, title);
    }
    std::shared_ptr<dialog::View> NewView(const dialog::Layout& layout, dialog::Events& events) override {
      return before->NewView(layout, events);
    }
    std::string Environment(const std::string& name) override { return before->Environment(name); }
    std::string DecimalSeparator() override { return before->DecimalSeparator(); }
    std::string ToCodePage(std::string_view utf8) override { return before->ToCodePage(utf8); }
    std::string FromCodePage(std::string_view bytes) override { return before->FromCodePage(bytes); }
    void Sleep(int milliseconds) override { before->Sleep(milliseconds); }
    void Yield() override { before->Yield(); }
    void LogEvent(const std::string& logPath, const std::string& text, int type) override {
      before->LogEvent(logPath, text, type);
    }

    std::shared_ptr<Platform> before;
    std::function<void()> whenBoxShows;
  };

  std::shared_ptr<Watched> platform_;
};

}  // namespace quintara::test
