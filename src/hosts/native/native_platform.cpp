#include "hosts/native/native_platform.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "base/text.h"
#include "hosts/native/file_failure.h"
#include "hosts/native/file_handle.h"
#include "hosts/native/native_files.h"

namespace quintara {
namespace {

constexpr int kErrorEvent = 1;

[[noreturn]] void ThrowCannotCreate(const std::string& programName, const char* why) {
  throw Failure(failure::kCannotCreateObject, "ActiveX component can't create object: \"" + programName + "\" " + why);
}

// The list may grow while it is called.
void CallAll(const std::vector<std::function<void()>>& listeners) {
  for (std::size_t i = 0; i < listeners.size(); ++i) {
    const auto listener = listeners[i];
    listener();
  }
}

// What nobody has agreed to isn't done.
int AnswerOfNobody(int style) {
  constexpr int kButtons = 15;
  if ((style & kButtons) == box::kYesNo) return answer::kNo;
  return (style & kButtons) == box::kOkCancel ? answer::kCancel : answer::kOk;
}

std::string LogLine(const std::string& text, int type) {
  std::string line = (type == kErrorEvent ? "ERROR " : "INFORMATION ") + text;
  std::ranges::replace(line, '\r', ' ');
  std::ranges::replace(line, '\n', ' ');
  return line + "\n";
}

}  // namespace

NativePlatform::NativePlatform(std::shared_ptr<Gate> gate, BoxHandler showBox)
    : gate_(std::move(gate)),
      showBox_(std::move(showBox)),
      fileSystem_(MakeRef<NativeFileSystem>(gate_)),
      contents_(std::make_shared<NativeContents>(gate_)) {
  RegisterMaker("Scripting.FileSystemObject",
                [gate = gate_] { return Ref<AnyObject>(MakeRef<NativeFileSystem>(gate)); });
}

void NativePlatform::Register(const std::string& programName, const Ref<AnyObject>& object) {
  running_[Capitals(programName)] = object;
}

void NativePlatform::RegisterMaker(const std::string& programName, Maker maker) {
  makers_[Capitals(programName)] = std::move(maker);
}

void NativePlatform::SetViewMaker(ViewMaker maker) {
  makeView_ = std::move(maker);
}

void NativePlatform::OnSleep(std::function<void()> listener) {
  onSleep_.push_back(std::move(listener));
}

void NativePlatform::OnYield(std::function<void()> listener) {
  onYield_.push_back(std::move(listener));
}

Ref<AnyObject> NativePlatform::Attach(const std::string& programName) {
  gate_->Pass("Platform.Attach", [&] { return programName; });
  const auto found = running_.find(Capitals(programName));
  if (found == running_.end()) ThrowCannotCreate(programName, "is not running");
  return found->second;
}

Ref<AnyObject> NativePlatform::Create(const std::string& programName) {
  gate_->Pass("Platform.Create", [&] { return programName; });
  const auto found = makers_.find(Capitals(programName));
  if (found == makers_.end()) ThrowCannotCreate(programName, "is not known");
  return found->second();
}

Ref<FileSystemObject> NativePlatform::FileSystem() {
  return fileSystem_;
}

FileContents& NativePlatform::Contents() {
  return *contents_;
}

int NativePlatform::ShowBox(const std::string& text, int style, const std::string& title) {
  return showBox_ ? showBox_(text, style, title) : AnswerOfNobody(style);
}

std::shared_ptr<dialog::View> NativePlatform::NewView(const dialog::Layout& layout, dialog::Events& events) {
  if (makeView_) return makeView_(layout, events);
  throw Failure(failure::kCannotCreateObject, "No user interface to show \"" + layout.name + "\"");
}

std::string NativePlatform::Environment(const std::string& name) {
  return native::EnvironmentValue(name);
}

std::string NativePlatform::DecimalSeparator() {
  return native::DecimalSeparator();
}

std::string NativePlatform::ToCodePage(std::string_view utf8) {
  return native::ToCodePage(utf8);
}

std::string NativePlatform::FromCodePage(std::string_view bytes) {
  return native::FromCodePage(bytes);
}

void NativePlatform::Sleep(int milliseconds) {
  Pause(milliseconds);
  CallAll(onSleep_);
}

void NativePlatform::Pause(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void NativePlatform::Yield() {
  CallAll(onYield_);
}

void NativePlatform::LogEvent(const std::string& logPath, const std::string& text, int type) {
  gate_->Pass("Platform.LogEvent", [&] { return text; });
  native::FileHandle log(ToPath(logPath), native::FileHandle::Use::kAppend);
  if (!log.IsOpen() || !log.WriteAll(LogLine(text, type))) native::ThrowFileFailure(log.Error(), logPath);
}

}  // namespace quintara
