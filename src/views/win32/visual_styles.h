#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace quintara::win32 {

/// Whether windows of this process can be seen by anyone; a service's cannot.
bool HasDesktop();

/// While one lives, windows made on this thread have the desktop's visual styles, whatever the program around them
/// asked for: the manifest of the module that holds this code is in force, which is its resource 2 in a library, 1 in
/// a program. Without one it does nothing.
class VisualStyles {
 public:
  VisualStyles();
  ~VisualStyles();
  VisualStyles(const VisualStyles&) = delete;
  VisualStyles& operator=(const VisualStyles&) = delete;

  bool AreOn() const { return isOn_; }

 private:
  ULONG_PTR cookie_ = 0;
  bool isOn_ = false;
};

/// While one lives, windows made on this thread measure in the pixels of their screen, and no one stretches them. Where
/// the system is too old for it, it does nothing.
class OwnPixels {
 public:
  OwnPixels();
  ~OwnPixels();
  OwnPixels(const OwnPixels&) = delete;
  OwnPixels& operator=(const OwnPixels&) = delete;

 private:
  HANDLE former_ = nullptr;
};

}  // namespace quintara::win32
