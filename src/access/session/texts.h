#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "access/session/text_keys.h"

namespace quintara {

/// The global of one catalogue key: its text, or what showing it has made of it. `Parameters` is the
/// number of values that its callers fill in.
template <std::size_t Parameters>
struct CatalogueText {
  std::string text;
};

/// The catalogue that a key stands in.
enum class Catalogue { kControls, kMessages };

/// One key of the message catalogue.
struct TextKey {
  Catalogue catalogue;
  std::string_view key;
  std::vector<std::string_view> parameters;  ///< what stands for "REP1", "REP2", ...
};

namespace texts {

template <class... Names>
consteval std::size_t CountOf(Names...) {
  return sizeof...(Names);
}

}  // namespace texts

/// One global for each key. They are filled when a session starts and outlive it.
struct Texts {
#define QUINTARA_DECLARE_TEXT(global, key, ...) CatalogueText<texts::CountOf(__VA_ARGS__)> global;
  QUINTARA_CONTROL_TEXTS(QUINTARA_DECLARE_TEXT)
  QUINTARA_MESSAGE_TEXTS(QUINTARA_DECLARE_TEXT)
#undef QUINTARA_DECLARE_TEXT
};

/// Calls `visit(std::string& global, const TextKey& key)` for each global, in the order in which the
/// catalogue is read.
template <class Visit>
void ForEachText(Texts& all, Visit&& visit) {
#define QUINTARA_VISIT_CONTROL(global, key, ...) \
  visit(all.global.text, TextKey{Catalogue::kControls, key, {__VA_ARGS__}});
#define QUINTARA_VISIT_MESSAGE(global, key, ...) \
  visit(all.global.text, TextKey{Catalogue::kMessages, key, {__VA_ARGS__}});
  QUINTARA_CONTROL_TEXTS(QUINTARA_VISIT_CONTROL)
  QUINTARA_MESSAGE_TEXTS(QUINTARA_VISIT_MESSAGE)
#undef QUINTARA_VISIT_CONTROL
#undef QUINTARA_VISIT_MESSAGE
}

}  // namespace quintara
