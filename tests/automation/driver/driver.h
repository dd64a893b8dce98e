#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "automation/driver/desktop.h"
#include "automation/driver/input.h"
#include "automation/driver/program.h"
#include "automation/driver/steps.h"

namespace quintara::driver {

/// Carries out steps on the windows of other programs, as a user would. Every step waits until what it needs is there,
/// for a bounded time; a message box that comes while it waits for something else ends that wait. What is worth being
/// compared is written to `log`, a line each, every message box with its answer among it.
class Driver {
 public:
  /// Pictures go to `folder`.
  Driver(std::ostream& log, std::filesystem::path folder);

  /// All steps, a line each.
  static std::string Usage();

  /// Fails with a `Failed` that doesn't name the step.
  void Do(const Step& step);
  /// What the screen shows, for whoever looks for the reason of a failure.
  std::string Situation() const;
  void TakePicture(const std::string& name) const;

 private:
  using Words = std::vector<std::string>;
  struct Verb;
  static const std::vector<Verb>& Verbs();

  void WaitUntil(const std::string& what, const std::function<bool()>& isSo);
  void WaitForWindow(const std::string& title);
  void WaitUntilGone(const std::string& title);
  void WaitForEnd(int code);
  HWND Control(const std::string& name);
  HWND Tree();
  void Press(const std::string& name);
  void Close();
  void ClickNode(const Words& path, Button button, int times);
  void WaitUntilInFront();
  void Key(const std::string& name);
  void Type(const std::string& text);
  void DragEdge(const std::string& edge, int right, int down);
  void ExpectBox(const std::string& title, int style, const std::string& text);
  void Answer(const std::string& answer);
  void ExpectText(const std::string& name, const std::string& text);
  void ExpectEnabled(const std::string& name, bool isSo);
  void ExpectChecked(const std::string& name, bool isSo);
  void ExpectFocus(const std::string& name);
  void ExpectTopmost();
  void ExpectPlace(const Words& numbers);
  void ExpectNode(const Words& path);
  void ExpectPicture(int picture, const Words& path);
  void ExpectSelected(const Words& path);
  void ShowTree();

  std::ostream& log_;
  std::filesystem::path folder_;
  std::chrono::milliseconds time_{30'000};
  HWND window_ = nullptr;  ///< the one that steps are about
  HWND box_ = nullptr;     ///< the message box that was expected and not yet answered
  std::string told_ = {};
  Program program_;
};

}  // namespace quintara::driver
