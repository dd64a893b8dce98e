#include "support/test_platform.h"

#include <utility>

#include "access/session/process.h"
#include "base/text.h"

namespace quintara::test {
namespace {

// A test doesn't wait; it only wants to know how long it would have.
class PatientPlatform : public NativePlatform {
 public:
  PatientPlatform(std::shared_ptr<Gate> gate, BoxHandler showBox, std::vector<int>& sleeps)
      : NativePlatform(std::move(gate), std::move(showBox)), sleeps_(sleeps) {}

  // Whatever the locale that the tests run under.
  std::string DecimalSeparator() override { return "."; }
  std::string ToCodePage(std::string_view utf8) override { return ToCodePage1252(utf8); }
  std::string FromCodePage(std::string_view bytes) override { return FromCodePage1252(bytes); }

 protected:
  void Pause(int milliseconds) override { sleeps_.push_back(milliseconds); }

 private:
  std::vector<int>& sleeps_;
};

}  // namespace

TestPlatform::TestPlatform() {
  auto showBox = [this](const std::string& text, int style, const std::string& title) {
    boxes_.push_back({text, style, title});
    if (answers.empty()) return answer::kOk;
    const int given = answers.front();
    answers.pop_front();
    return given;
  };
  platform_ = std::make_shared<PatientPlatform>(gate_, showBox, sleeps_);
  before_ = InstallPlatform(platform_);
  ResetProcess();
}

TestPlatform::~TestPlatform() {
  ResetProcess();
  InstallPlatform(std::move(before_));
}

}  // namespace quintara::test
