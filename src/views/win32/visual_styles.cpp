#include "views/win32/visual_styles.h"

#include <initializer_list>

#include "views/win32/desktop.h"

namespace quintara::win32 {
namespace {

HANDLE MakeContext() {
  for (const WORD number : std::initializer_list<WORD>{2, 1}) {
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.hModule = OwnModule();
    context.lpResourceName = MAKEINTRESOURCEW(number);
    const HANDLE made = CreateActCtxW(&context);
    if (made != INVALID_HANDLE_VALUE) return made;
  }
  return INVALID_HANDLE_VALUE;
}

// Made once and kept: windows refer to it as long as they live.
HANDLE Context() {
  static const HANDLE context = MakeContext();
  return context;
}

using SetAwareness = HANDLE(WINAPI*)(HANDLE);

// Older systems haven't the function, and a program that needs it wouldn't start there.
SetAwareness FindSetAwareness() {
  const auto library = GetModuleHandleW(L"user32.dll");
  if (library == nullptr) return nullptr;
  const auto function = GetProcAddress(library, "SetThreadDpiAwarenessContext");
  return reinterpret_cast<SetAwareness>(reinterpret_cast<void*>(function));
}

HANDLE SetThreadAwareness(HANDLE awareness) {
  static const auto set = FindSetAwareness();
  return set == nullptr ? nullptr : set(awareness);
}

// The numbers of the two kinds of awareness of each monitor, the newer one first.
HANDLE Awareness(int number) {
  return reinterpret_cast<HANDLE>(static_cast<INT_PTR>(number));
}
constexpr int kPerMonitor = -3;
constexpr int kPerMonitor2 = -4;

}  // namespace

bool HasDesktop() {
  USEROBJECTFLAGS flags{};
  const auto station = GetProcessWindowStation();
  if (station == nullptr) return false;
  if (GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, nullptr) == 0) return false;
  return (flags.dwFlags & WSF_VISIBLE) != 0;
}

VisualStyles::VisualStyles() {
  const HANDLE context = Context();
  isOn_ = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie_) != 0;
}

VisualStyles::~VisualStyles() {
  if (isOn_) DeactivateActCtx(0, cookie_);
}

OwnPixels::OwnPixels() : former_(SetThreadAwareness(Awareness(kPerMonitor2))) {
  if (former_ == nullptr) former_ = SetThreadAwareness(Awareness(kPerMonitor));
}

OwnPixels::~OwnPixels() {
  if (former_ != nullptr) SetThreadAwareness(former_);
}

}  // namespace quintara::win32
