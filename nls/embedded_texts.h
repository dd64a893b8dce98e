#pragma once

#include <span>
#include <string_view>

namespace quintara {

/// One file of the texts that users read.
struct TextFile {
  std::string_view path;  ///< below the folder of all languages: "EN/Custom/Controls/..."
  std::string_view bytes;
};

/// The files of every language as they stood when the program was built; they stay as long as it runs.
std::span<const TextFile> EmbeddedTexts();

}  // namespace quintara
