#include "base/xml_tags.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace quintara::xml {
namespace {

constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

constexpr std::array<bool, 256> kEndsAName = [] {
  std::array<bool, 256> ends{};
  for (const char c : {' ', '\t', '\r', '\n', '=', '/', '>'}) ends[static_cast<unsigned char>(c)] = true;
  return ends;
}();

// A number below 256 that equal names share and others mostly don't.
std::size_t Mark(std::string_view name) {
  std::uint32_t mark = 0;
  for (std::size_t i = 0; i < 3 && i < name.size(); ++i) mark = mark * 31 + static_cast<unsigned char>(name[i]);
  return (mark * 0x9E3779B1U) >> 24;
}

// The names of one start tag.
class Names {
 public:
  // False when the name stands there already.
  bool Insert(std::string_view name) {
    const auto mark = Mark(name);
    const bool isNew = lastTag_[mark] != tag_ || !Holds(name);
    lastTag_[mark] = tag_;
    names_.push_back(name);
    if (names_.size() > kFew) many_.insert(name);
    return isNew;
  }
  void Clear() {
    ++tag_;
    names_.clear();
    many_.clear();
  }

 private:
  static constexpr std::size_t kFew = 64;

  bool Holds(std::string_view name) const {
    if (many_.contains(name)) return true;
    for (std::size_t i = 0; i < names_.size() && i < kFew; ++i) {
      if (names_[i] == name) return true;
    }
    return false;
  }

  std::uint64_t tag_ = 1;
  std::array<std::uint64_t, 256> lastTag_{};  // the tag that a mark was last seen in
  std::vector<std::string_view> names_;
  std::unordered_set<std::string_view> many_;
};

// At most one colon, with something on both sides.
bool IsQualified(std::string_view name) {
  const auto colon = name.find(':');
  return colon == name.npos || (colon > 0 && colon + 1 < name.size() && name.find(':', colon + 1) == name.npos);
}

std::string NoName(std::string_view name) {
  return "\"" + std::string(name) + "\" is not a name";
}

class TagScan {
 public:
  explicit TagScan(std::string_view bytes) : bytes_(bytes) {}

  TagReport Run() {
    TagReport report;
    for (at_ = bytes_.find('<'); at_ < bytes_.size() && !report.fault; at_ = bytes_.find('<', at_)) {
      const auto rest = bytes_.substr(at_, 4);
      if (rest.starts_with("</")) {
        SkipPast(">");
      } else if (rest.starts_with("<!") || rest.starts_with("<?")) {
        ++report.sections;
        SkipSection(rest);
      } else {
        report.fault = StartTag();
      }
    }
    return report;
  }

 private:
  void SkipPast(std::string_view end) {
    const auto found = bytes_.find(end, at_);
    at_ = found == bytes_.npos ? bytes_.size() : found + end.size();
  }

  // The end begins behind the whole beginning: the comment in "<!--->-->" is "->".
  void SkipSection(std::string_view start) {
    const auto skip = [&](std::string_view beginning, std::string_view end) {
      at_ += beginning.size();
      SkipPast(end);
    };
    if (start == "<!--") return skip(start, "-->");
    if (start.starts_with("<![")) return skip("<![", "]]>");
    if (start.starts_with("<?")) return skip("<?", "?>");
    skip("<!", ">");
  }

  char Here() const { return at_ < bytes_.size() ? bytes_[at_] : '>'; }

  void SkipBlanks() {
    while (IsBlank(Here())) ++at_;
  }

  std::string_view Name() {
    const auto start = at_;
    while (at_ < bytes_.size() && !kEndsAName[static_cast<unsigned char>(bytes_[at_])]) ++at_;
    return bytes_.substr(start, at_ - start);
  }

  void SkipValue() {
    SkipBlanks();
    ++at_;  // the equals sign
    SkipBlanks();
    const auto end = bytes_.find(Here(), at_ + 1);
    at_ = end == bytes_.npos ? bytes_.size() : end + 1;
  }

  std::optional<std::string> StartTag() {
    ++at_;
    const auto element = Name();
    if (!IsQualified(element)) return NoName(element);
    names_.Clear();
    const auto nextTag = bytes_.find('<', at_);
    for (SkipBlanks(); Here() != '>' && Here() != '/'; SkipBlanks()) {
      const auto name = Name();
      SkipValue();
      if (nextTag < at_) return "the value of attribute " + std::string(name) + " is not well-formed";
      if (!IsQualified(name)) return NoName(name);
      if (!names_.Insert(name)) return "an attribute of <" + std::string(element) + "> stands twice";
    }
    SkipPast(">");
    return {};
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  Names names_;
};

}  // namespace

TagReport ScanTags(std::string_view bytes) {
  return TagScan(bytes).Run();
}

}  // namespace quintara::xml
