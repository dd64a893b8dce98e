#pragma once

// The operating system's automation, and nothing else of it.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <oaidl.h>
#include <oleauto.h>
#include <windows.h>
#include <wrl/client.h>

// Its macros would rename operations of ours, or take them away.
#undef CopyFile
#undef DeleteFile
#undef GetMessage
#undef GetObject
#undef Yield

namespace quintara::automation {

using Microsoft::WRL::ComPtr;

}  // namespace quintara::automation
