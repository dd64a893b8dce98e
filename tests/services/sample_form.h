#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "services/form.h"
#include "support/scripted_view.h"

namespace quintara::test {

/// A dialog with a control of each kind, whose rules a test sets.
class SampleForm : public Form {
 public:
  explicit SampleForm(std::string name = "Sample") : name_(std::move(name)) {}

  dialog::View& View() { return TheView(); }
  using Form::ApplyFonts;

  std::function<void(SampleForm&)> onLoad;
  std::function<void(const std::string&)> onClick;
  std::function<void()> onResize;
  std::function<void()> onUnloaded;
  int loads = 0;

  void OnClick(const std::string& control) override {
    if (onClick) onClick(control);
  }
  void OnResize() override {
    if (onResize) onResize();
  }
  void OnUnloaded() override {
    Form::OnUnloaded();
    if (onUnloaded) onUnloaded();
  }

 protected:
  dialog::Layout MakeLayout() const override {
    using dialog::Kind;
    return {.name = name_,
            .box = {.width = 6000, .height = 4500},
            .isSizable = true,
            .controls = {{.name = "Timer1", .kind = Kind::kTimer, .interval = 100},
                         {.name = "Frame1", .kind = Kind::kFrame, .box = {100, 100, 2000, 1000}},
                         {.name = "Option1(0)", .kind = Kind::kRadioButton, .container = "Frame1"},
                         {.name = "Option1(1)", .kind = Kind::kRadioButton, .container = "Frame1", .isChecked = true},
                         {.name = "lbl", .kind = Kind::kLabel},
                         {.name = "img", .kind = Kind::kPicture},
                         {.name = "txt", .kind = Kind::kTextBox},
                         {.name = "cmd", .kind = Kind::kButton},
                         {.name = "pb1", .kind = Kind::kProgressBar},
                         {.name = "Tree1", .kind = Kind::kTree, .box = {100, 1200, 3000, 2000}}}};
  }
  void OnLoad() override {
    ++loads;
    if (onLoad) onLoad(*this);
  }

 private:
  std::string name_;
};

inline auto NewSample(const std::string& name = "Sample") {
  return std::make_shared<SampleForm>(name);
}

}  // namespace quintara::test
