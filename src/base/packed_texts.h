#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quintara {

/// Texts of any bytes as one piece of bytes, to be handed from process to process, and back.
/// Failure 321 when `bytes` are none that PackTexts gave.
std::string PackTexts(const std::vector<std::string>& texts);
std::vector<std::string> UnpackTexts(std::string_view bytes);

}  // namespace quintara
