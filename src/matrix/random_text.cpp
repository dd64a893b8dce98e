#include "matrix/random_text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <random>

#include "access/session/the_platform.h"

namespace quintara {

std::function<float()> RandomFromClock() {
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  std::mt19937 engine(static_cast<std::mt19937::result_type>(now));
  // As many bits as a single-precision number holds, so that none is rounded up to 1.
  return [engine]() mutable { return static_cast<float>(engine() >> 8U) * 0x1p-24F; };
}

std::string TextOf(float number) {
  std::array<char, 32> digits{};
  auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  std::string text(digits.data(), end);
  const auto point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, ThePlatform().DecimalSeparator());
  return text;
}

}  // namespace quintara
