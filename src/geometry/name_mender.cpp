#include "geometry/name_mender.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/text.h"

namespace quintara {
namespace {

// Leaves room for what is put around a part number in file names, in the 255 bytes of most systems.
constexpr std::size_t kLongestName = 180;

constexpr std::string_view kBlanks = " \t\r\n\f\v";

bool IsControl(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 || code == 0x7F;
}

// The length of the character at the front of `rest`, 0 when it is none that XML could hold.
std::size_t CharacterLength(std::string_view rest) {
  for (std::size_t length = 1; length <= std::min<std::size_t>(4, rest.size()); ++length) {
    const auto character = rest.substr(0, length);
    if (IsUtf8(character)) return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF" ? 0 : length;
  }
  return 0;
}

std::string Replaced(std::string_view name, std::string_view refused) {
  if (name.find_first_not_of(kBlanks) == std::string_view::npos) return {};
  std::string text;
  for (auto rest = name; !rest.empty();) {
    const auto length = CharacterLength(rest);
    const bool bad = length == 0 || IsControl(rest.front()) || refused.find(rest.front()) != std::string_view::npos;
    text += bad ? "_" : rest.substr(0, length);
    rest.remove_prefix(std::max<std::size_t>(1, length));
  }
  return text;
}

void Shorten(std::string& text) {
  if (text.size() <= kLongestName) return;
  text.resize(kLongestName);
  while (!IsUtf8(text)) text.pop_back();
}

bool IsDevice(std::string_view stem) {
  static constexpr std::array<std::string_view, 6> kNames = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
  static constexpr std::array<std::string_view, 13> kNumbers = {"0", "1", "2", "3", "4", "5", "6",
                                                                "7", "8", "9", "¹", "²", "³"};
  const auto name = Capitals(stem);
  if (std::ranges::find(kNames, name) != kNames.end()) return true;
  if (!name.starts_with("COM") && !name.starts_with("LPT")) return false;
  return std::ranges::find(kNumbers, std::string_view(name).substr(3)) != kNumbers.end();
}

// Windows takes a device's name for the device whatever follows the first point.
void EscapeDevice(std::string& text) {
  const auto point = std::min(text.find('.'), text.size());
  const auto stem = text.find_last_not_of(' ', point == 0 ? 0 : point - 1) + 1;
  if (point > 0 && IsDevice(std::string_view(text).substr(0, stem))) text.insert(point, "_");
}

void EscapeEnd(std::string& text) {
  for (auto at = text.rbegin(); at != text.rend() && (*at == ' ' || *at == '.'); ++at) *at = '_';
}

using Key = std::function<std::string(const std::string&)>;

// Makes names unique in the order given. Names that need no change claim their place first.
class Uniqueness {
 public:
  explicit Uniqueness(Key key) : key_(std::move(key)) {}

  bool Claim(const std::string& name) { return taken_.insert(key_(name)).second; }

  std::string Free(const std::string& name) { return Claim(name) ? name : Numbered(name + "_", 2); }

  /// The first free name of the form `stem` and a number.
  std::string Numbered(const std::string& stem, std::size_t first) {
    for (std::size_t& number = numbers_.try_emplace(key_(stem), first).first->second;; ++number) {
      auto candidate = stem + std::to_string(number);
      if (Claim(candidate)) return candidate;
    }
  }

 private:
  Key key_;
  std::unordered_set<std::string> taken_;
  std::unordered_map<std::string, std::size_t> numbers_;
};

struct Wish {
  std::string* name;
  std::string mended;    // empty for an unnamed one
  std::string fallback;  // for an unnamed one: its name, or the stem of a numbered one
};

enum class Fallback { kName, kStem };

std::string ReasonOf(const Wish& wish, const std::string& given) {
  if (wish.mended.empty()) return "it has no name";
  if (given != wish.mended) return "the name was already taken";
  return wish.mended.size() < wish.name->size() ? "the name cannot be used as it is, or is too long"
                                                : "the name cannot be used as it is";
}

void Fulfil(std::vector<Wish>& wishes, Uniqueness unique, Fallback fallback, const std::string& kind,
            std::vector<AssemblyStructure::NameChange>& changes) {
  std::vector<Wish*> open;
  for (auto& wish : wishes) {
    const bool good = !wish.mended.empty() && wish.mended == *wish.name;
    if (!good || !unique.Claim(wish.mended)) open.push_back(&wish);
  }
  for (auto* wish : open) {
    const bool numbered = wish->mended.empty() && fallback == Fallback::kStem;
    const auto given = numbered ? unique.Numbered(wish->fallback, 1)
                                : unique.Free(wish->mended.empty() ? wish->fallback : wish->mended);
    changes.push_back({kind, *wish->name, given, ReasonOf(*wish, given)});
    *wish->name = given;
  }
}

void MendPartNumbers(AssemblyStructure& structure) {
  std::vector<Wish> wishes;
  std::size_t place = 0;
  for (auto& definition : structure.definitions) {
    const auto fallback = (definition.isAssembly ? "ASSEMBLY_" : "PART_") + std::to_string(++place);
    wishes.push_back({&definition.partNumber, AsFileName(definition.partNumber), fallback});
  }
  Uniqueness unique([](const std::string& name) { return Capitals(name); });
  Fulfil(wishes, std::move(unique), Fallback::kName, "part number", structure.changes);
}

// An unnamed instance is named as the CAD host names an added one: part number, point, first free number.
void MendInstanceNames(AssemblyStructure& structure, AssemblyStructure::Definition& parent) {
  std::vector<Wish> wishes;
  for (auto& child : parent.children) {
    const auto stem = structure.definitions[child.definition].partNumber + ".";
    wishes.push_back({&child.name, AsInstanceName(child.name), stem});
  }
  Uniqueness unique([](const std::string& name) { return name; });
  Fulfil(wishes, std::move(unique), Fallback::kStem, "instance name", structure.changes);
}

}  // namespace

std::string AsFileName(std::string_view name) {
  auto text = Replaced(name, "<>:\"/\\|?*");
  Shorten(text);
  EscapeEnd(text);
  EscapeDevice(text);
  return text;
}

std::string AsInstanceName(std::string_view name) {
  return Replaced(name, "\\");
}

void MendNames(AssemblyStructure& structure) {
  MendPartNumbers(structure);
  for (auto& definition : structure.definitions) MendInstanceNames(structure, definition);
}

}  // namespace quintara
