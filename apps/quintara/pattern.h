#pragma once

#include <string>
#include <string_view>

namespace quintara {

/// A pattern of a user: "*" stands for any text, "?" for one character, capitals are ignored. "part:" or
/// "product:" in front restricts it to what has no children, or has some.
class Pattern {
 public:
  /// Wrong use for a pattern that is empty.
  explicit Pattern(const std::string& given);

  bool TakesKind(bool hasChildren) const { return hasChildren ? takesProducts_ : takesParts_; }
  bool Matches(std::string_view text) const;

 private:
  std::string text_;
  bool takesParts_;
  bool takesProducts_;
};

}  // namespace quintara
