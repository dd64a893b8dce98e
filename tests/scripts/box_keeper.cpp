// box_keeper LOG ANSWERS STOP: writes every message box that comes up to the file LOG, a line each, and answers it,
// until the file STOP is there. The answer is the word in the file ANSWERS, which is taken away then; where that is
// missing, Yes or OK.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "automation/driver/boxes.h"
#include "automation/driver/desktop.h"
#include "automation/driver/input.h"
#include "automation/driver/steps.h"
#include "base/text.h"

namespace quintara::driver {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kTime{10};
constexpr int kSigns = 0x70;

bool HasSign(HWND box) {
  for (const auto control : ControlsOf(box)) {
    const bool isIcon = (GetWindowLongPtrW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
    if (ClassOf(control) == "Static" && isIcon) return true;
  }
  return false;
}

// Its sign is drawn after it has come.
MessageBox Complete(HWND window) {
  MessageBox box;
  Within(kTime, [&] {
    box = ReadMessageBox(window);
    return !HasSign(window) || (box.style & kSigns) != 0;
  });
  return box;
}

std::string TakeAnswer(const fs::path& file, const MessageBox& box) {
  std::string answer = box.buttons.front() == 6 ? "yes" : "ok";
  const bool isTold = static_cast<bool>(std::ifstream(file) >> answer);
  if (isTold) fs::remove(file);
  return answer;
}

// The file is closed before the answer, after which the script opens it.
void Note(const fs::path& log, const MessageBox& box) {
  std::ofstream(log, std::ios::binary | std::ios::app) << box.Told() << '\n';
}

void Keep(HWND window, const fs::path& log, const fs::path& answers) {
  const auto box = Complete(window);
  const auto answer = TakeAnswer(answers, box);
  Note(log, box);
  const auto button = AnswerButton(box, answer);
  Click(button, MiddleOf(BoxOf(button)), Button::kLeft, 1, kTime);
  if (!Within(kTime, [&] { return IsWindowVisible(window) == 0; })) throw Failed("the message box stays");
}

int Run(const std::vector<std::string>& files) {
  while (!fs::exists(ToPath(files[2]))) {
    if (const auto window = FindMessageBox()) {
      Keep(window, ToPath(files[0]), ToPath(files[1]));
    } else {
      Sleep(10);
    }
  }
  return 0;
}

}  // namespace
}  // namespace quintara::driver

int main(int count, char** words) {
  if (count != 4) return 2;
  try {
    return quintara::driver::Run({words + 1, words + count});
  } catch (const std::exception& failed) {
    std::cerr << failed.what() << '\n';
    return 1;
  }
}
