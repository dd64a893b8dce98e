#include "quintara/pattern.h"

#include "base/text.h"
#include "quintara/wrong_use.h"

namespace quintara {

Pattern::Pattern(const std::string& given) : text_(given) {
  constexpr std::string_view kPart = "part:";
  constexpr std::string_view kProduct = "product:";
  takesProducts_ = !given.starts_with(kPart);
  takesParts_ = !given.starts_with(kProduct);
  if (!takesProducts_) text_.erase(0, kPart.size());
  if (!takesParts_) text_.erase(0, kProduct.size());
  if (text_.empty()) throw WrongUse("the pattern '" + given + "' is empty");
}

bool Pattern::Matches(std::string_view text) const {
  return MatchesPattern(text_, text);
}

}  // namespace quintara
