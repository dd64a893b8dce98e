#include "automation/platform/windows_platform.h"

#include <memory>

#include "automation/dispatch/com.h"
#include "automation/dispatch/failures.h"
#include "automation/dispatch/late_object.h"
#include "automation/dispatch/text16.h"
#include "automation/platform/own_translator.h"
#include "base/text.h"
#include "hosts/gate/gate.h"
#include "views/win32/views.h"

namespace quintara::automation {
namespace {

constexpr auto kFileSystem = "Scripting.FileSystemObject";
constexpr auto kTranslator = "Veldora.VdTranslator";

bool IsSameName(const std::string& left, const std::string& right) {
  return Capitals(left) == Capitals(right);
}

std::string Quoted(const std::string& programName) {
  return "\"" + programName + "\"";
}

[[noreturn]] void ThrowCannotCreate(const std::string& what) {
  throw Failure(failure::kCannotCreateObject, "ActiveX component can't create object: " + what);
}

[[noreturn]] void ThrowCannotCreate(const std::string& programName, HRESULT why) {
  EXCEPINFO none{};
  ThrowCannotCreate(FailureOf(why, none, Quoted(programName)).Description());
}

HRESULT ClassOf(const std::string& programName, CLSID& id) {
  return CLSIDFromProgID(Wide(programName).c_str(), &id);
}

// What runs under a class's id; a program that has ended without a word counts as one that doesn't run.
ComPtr<IDispatch> RunningObject(const std::string& programName, const CLSID& id) {
  ComPtr<IUnknown> running;
  ComPtr<IDispatch> object;
  auto result = GetActiveObject(id, nullptr, &running);
  if (SUCCEEDED(result)) result = running.As(&object);
  if (SUCCEEDED(result)) return object;
  EXCEPINFO none{};
  auto why = FailureOf(result, none, Quoted(programName));
  if (result == MK_E_UNAVAILABLE || why.Number() == failure::kServerGone) {
    ThrowCannotCreate(Quoted(programName) + " is not running");
  }
  throw why;
}

Ref<AnyObject> Adapted(ComPtr<IDispatch> object) {
  return Incoming(std::move(object), std::make_shared<Connection>());
}

HRESULT MakeObject(const CLSID& id, ComPtr<IDispatch>& object) {
  return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&object));
}

}  // namespace

WindowsPlatform::WindowsPlatform() : native_(std::make_shared<Gate>(), {}) {}

WindowsPlatform::~WindowsPlatform() = default;

Ref<AnyObject> WindowsPlatform::Attach(const std::string& programName) {
  CLSID id{};
  if (FAILED(ClassOf(programName, id))) ThrowCannotCreate(Quoted(programName) + " is not known");
  return Adapted(RunningObject(programName, id));
}

Ref<AnyObject> WindowsPlatform::Create(const std::string& programName) {
  CLSID id{};
  ComPtr<IDispatch> object;
  const auto known = ClassOf(programName, id);
  const auto result = FAILED(known) ? known : MakeObject(id, object);
  if (SUCCEEDED(result)) return Adapted(std::move(object));
  if (IsSameName(programName, kFileSystem)) return native_.FileSystem();
  if (known == CO_E_CLASSSTRING) {
    if (IsSameName(programName, kTranslator)) return MakeRef<OwnTranslator>(*this);
    ThrowCannotCreate(Quoted(programName) + " is not known");
  }
  ThrowCannotCreate(programName, result);
}

// Each time a new one, so that none is held past the end of automation on the thread.
Ref<FileSystemObject> WindowsPlatform::FileSystem() {
  return Create(kFileSystem)->AsFileSystemObject();
}

FileContents& WindowsPlatform::Contents() {
  return native_.Contents();
}

int WindowsPlatform::ShowBox(const std::string& text, int style, const std::string& title) {
  return win32::ShowBox(text, style, title);
}

std::shared_ptr<dialog::View> WindowsPlatform::NewView(const dialog::Layout& layout, dialog::Events& events) {
  return win32::NewView(layout, events);
}

std::string WindowsPlatform::Environment(const std::string& name) {
  return native_.Environment(name);
}

std::string WindowsPlatform::DecimalSeparator() {
  return native_.DecimalSeparator();
}

std::string WindowsPlatform::ToCodePage(std::string_view utf8) {
  return native_.ToCodePage(utf8);
}

std::string WindowsPlatform::FromCodePage(std::string_view bytes) {
  return native_.FromCodePage(bytes);
}

void WindowsPlatform::Sleep(int milliseconds) {
  native_.Sleep(milliseconds);
}

void WindowsPlatform::Yield() {
  win32::CatchUp();
}

void WindowsPlatform::LogEvent(const std::string& logPath, const std::string& text, int type) {
  native_.LogEvent(logPath, text, type);
}

}  // namespace quintara::automation
