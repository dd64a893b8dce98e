#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "access/contracts/platform.h"
#include "hosts/gate/gate.h"

namespace quintara {

/// The platform without the closed systems: a table of running objects in this process, the files
/// of this machine, and boxes and views that whoever made the platform answers. `Attach`, `Create` and
/// `LogEvent` pass the gate, as all operations on files do. The rest passes none: boxes go to their
/// handler, views to their maker and sleeps to their listeners, which can record them and fail
/// themselves, and reading the environment and the locale or handing out the file objects can't fail.
class NativePlatform : public Platform {
 public:
  /// Answers a box with a button code. Without a handler a box is answered with No or Cancel where
  /// it has such a button, else with OK.
  using BoxHandler = std::function<int(const std::string& text, int style, const std::string& title)>;
  using Maker = std::function<Ref<AnyObject>()>;
  using ViewMaker = std::function<std::shared_ptr<dialog::View>(const dialog::Layout&, dialog::Events&)>;

  NativePlatform(std::shared_ptr<Gate> gate, BoxHandler showBox);

  /// Makes `object` the running one of `programName`; nothing takes it out of the table.
  void Register(const std::string& programName, const Ref<AnyObject>& object);
  /// Makes `Create` of `programName` call `maker`. "Scripting.FileSystemObject" has one from the
  /// start.
  void RegisterMaker(const std::string& programName, Maker maker);
  /// Makes the views of all dialogs from now on; an empty one takes the user interface away.
  void SetViewMaker(ViewMaker maker);
  /// Called at each sleep, after it. Listeners are called in the order in which they came.
  void OnSleep(std::function<void()> listener);
  /// Called at each `Yield`, in the same way.
  void OnYield(std::function<void()> listener);

  Ref<AnyObject> Attach(const std::string& programName) override;
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

 protected:
  /// What a sleep does before the listeners are called: blocks the thread.
  virtual void Pause(int milliseconds);

 private:
  std::shared_ptr<Gate> gate_;
  BoxHandler showBox_;
  std::map<std::string, Ref<AnyObject>> running_;
  std::map<std::string, Maker> makers_;
  ViewMaker makeView_;
  std::vector<std::function<void()>> onSleep_;
  std::vector<std::function<void()>> onYield_;
  Ref<FileSystemObject> fileSystem_;
  std::shared_ptr<FileContents> contents_;
};

}  // namespace quintara
