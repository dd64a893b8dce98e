#pragma once

#include <functional>
#include <string>

namespace quintara {

/// A generator of its own, seeded from the clock. It gives single-precision numbers, all equally
/// likely, from 0 up to but not including 1.
std::function<float()> RandomFromClock();

/// The shortest text that reads back to the same single-precision value, with the decimal separator
/// of the user's locale.
std::string TextOf(float number);

}  // namespace quintara
