#pragma once

#include <string>
#include <vector>

/// The states of a review node: its kind and what becomes of it, and the key of the picture that shows both.
namespace quintara::node_tag {

inline constexpr auto kPartNone = "part none";
inline constexpr auto kPartLight = "part lwt";
inline constexpr auto kPartDocument = "part doc";
inline constexpr auto kProductNone = "product none";
inline constexpr auto kProductLight = "product lwt";
inline constexpr auto kProductDocument = "product doc";

inline std::vector<std::string> All() {
  return {kPartNone, kPartLight, kPartDocument, kProductNone, kProductLight, kProductDocument};
}

}  // namespace quintara::node_tag
