#include "nls/text_check.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "base/text.h"
#include "base/xml.h"

namespace quintara::test {
namespace {

constexpr std::size_t kLongestButton = 20;
constexpr std::string_view kHardBlank = "\u00a0";

using Faults = std::vector<std::string>;

bool Contains(std::string_view text, std::string_view piece) {
  return text.find(piece) != std::string_view::npos;
}

std::vector<Character> CharactersOf(std::string_view text) {
  std::vector<Character> characters;
  while (!text.empty()) characters.push_back(TakeCharacter(text));
  return characters;
}

// Letters beyond ASCII begin at "À"; general punctuation is none.
bool BelongsToWord(std::int32_t code) {
  return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') ||
         (code >= 0xC0 && !(code >= 0x2000 && code <= 0x206F));
}

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words(1);
  for (const auto& character : CharactersOf(text)) {
    if (BelongsToWord(character.code)) {
      words.back() += character.bytes;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  return words;
}

// The tokens that a word is made of, 0 for a line break; nothing when it holds anything else.
std::optional<std::vector<std::size_t>> TokensOf(std::string_view word) {
  std::vector<std::size_t> tokens;
  while (!word.empty()) {
    if (word.starts_with("ENT")) {
      tokens.push_back(0);
      word.remove_prefix(3);
    } else if (word.starts_with("REP") && word.size() > 3 && word[3] >= '1' && word[3] <= '9') {
      tokens.push_back(static_cast<std::size_t>(word[3] - '0'));
      word.remove_prefix(4);
    } else {
      return std::nullopt;
    }
  }
  return tokens;
}

// Texts that are shown without their line breaks being made, or where there is room for one line only.
bool StandsOnOneLine(const TextKey& key) {
  return key.catalogue == Catalogue::kControls || key.key == "COMMON.UTILS.MESSAGE_IS_EMPTY" ||
         key.key == "QD.FRMMAINPANEL.INFORMATION" || key.key == "QD.UTILS.UNCORRECT_STATE_FOR_LIFECYCLE" ||
         Contains(key.key, "PROCESSING");
}

// The error is empty as a rule in the texts that take nothing else.
bool LeavesAnEmptyLine(const TextKey& key, std::string_view text) {
  return key.parameters.size() == 1 && key.parameters.front() == "error" && Contains(text, "ENTREP1");
}

Faults FaultsOfTokens(const TextKey& key, std::string_view text) {
  Faults faults;
  std::set<std::size_t> used;
  for (const auto& word : WordsOf(text)) {
    if (!Contains(word, "ENT") && !Contains(word, "REP")) continue;
    const auto tokens = TokensOf(word);
    if (tokens) {
      used.insert(tokens->begin(), tokens->end());
    } else {
      faults.push_back("a token stands inside the word \"" + word + "\"");
    }
  }
  if (used.erase(0) != 0 && StandsOnOneLine(key)) faults.emplace_back("a line break stands where none is made");
  if (LeavesAnEmptyLine(key, text)) faults.emplace_back("an empty line is left where there is no error");
  for (const auto token : used) {
    if (token > key.parameters.size()) faults.push_back("nothing stands for REP" + std::to_string(token));
  }
  for (std::size_t i = 1; i <= key.parameters.size(); ++i) {
    if (!used.contains(i)) {
      faults.push_back("REP" + std::to_string(i) + " is left out (" + std::string(key.parameters[i - 1]) + ")");
    }
  }
  return faults;
}

bool IsBlank(const Character& character) {
  return character.code <= ' ' || character.bytes == kHardBlank;
}

Faults FaultsOfForm(const TextKey& key, std::string_view text) {
  const auto characters = CharactersOf(text);
  if (characters.empty()) return {"it is empty"};
  Faults faults;
  if (IsBlank(characters.front()) || IsBlank(characters.back())) faults.emplace_back("a blank stands at an end");
  if (std::ranges::any_of(text, [](char c) { return c == '\n' || c == '\r' || c == '\t'; })) {
    faults.emplace_back("a line break or tab is no token");
  }
  const auto bothBlank = [](const Character& a, const Character& b) { return IsBlank(a) && IsBlank(b); };
  if (std::ranges::adjacent_find(characters, bothBlank) != characters.end()) faults.emplace_back("a blank is doubled");
  if (key.catalogue == Catalogue::kControls && Contains(text, "&")) faults.emplace_back("an \"&\" marks a letter");
  if (Contains(key.key, "_CMD") && characters.size() > kLongestButton)
    faults.emplace_back("it is too long for a button");
  if (Contains(key.key, "QUESTION") && !text.ends_with('?')) faults.emplace_back("it is no question");
  return faults;
}

Faults FaultsOfNames(std::string_view text) {
  Faults faults;
  for (const auto& word : WordsOf(text)) {
    for (const std::string_view name : {"Veldora", "ZORVA", "Quintara"}) {
      if (word != name && Capitals(word) == Capitals(name))
        faults.push_back("\"" + word + "\" is no name of a product");
    }
  }
  return faults;
}

Faults FaultsOfFrench(std::string_view text) {
  Faults faults;
  const auto characters = CharactersOf(text);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const auto bytes = characters[i].bytes;
    const auto hasHardBlank = [&](std::size_t at) {
      return at < characters.size() && characters[at].bytes == kHardBlank;
    };
    if (Contains(":;?!»", bytes) && !hasHardBlank(i - 1)) {
      faults.push_back("no hard blank stands before \"" + std::string(bytes) + "\"");
    }
    if (bytes == "«" && !hasHardBlank(i + 1)) faults.emplace_back("no hard blank stands behind \"«\"");
  }
  return faults;
}

Faults FaultsOfQuotes(std::string_view text, std::string_view opening, std::string_view closing,
                      const std::set<std::string_view>& foreign) {
  Faults faults;
  bool open = false;
  for (const auto& character : CharactersOf(text)) {
    if (foreign.contains(character.bytes))
      faults.push_back("\"" + std::string(character.bytes) + "\" is a foreign quote");
    const bool opens = character.bytes == opening && (opening != closing || !open);
    const bool closes = character.bytes == closing && !opens;
    if ((opens && open) || (closes && !open)) faults.emplace_back("quotes are not in pairs");
    open = opens || (open && !closes);
  }
  if (open) faults.emplace_back("quotes are not in pairs");
  return faults;
}

Faults FaultsOfLanguage(const std::string& language, std::string_view text) {
  if (language == "DE") return FaultsOfQuotes(text, "„", "“", {"\"", "'", "”", "«", "»"});
  if (language != "FR") return FaultsOfQuotes(text, "\"", "\"", {"„", "“", "”", "’", "«", "»"});
  auto faults = FaultsOfQuotes(text, "«", "»", {"\"", "'", "„", "“", "”"});
  for (auto& fault : FaultsOfFrench(text)) faults.push_back(std::move(fault));
  return faults;
}

struct Entry {
  std::string key;
  std::string text;
};

std::vector<Entry> EntriesOf(const XmlDocument& document, Faults& faults) {
  std::vector<Entry> entries;
  for (const auto& node : document.Root().children()) {
    if (node.type() == pugi::node_comment) continue;
    if (std::string_view(node.name()) != "Text") {
      faults.push_back("<" + std::string(node.name()) + "> is no text");
      continue;
    }
    const Entry entry{node.attribute("Key").value(), node.child_value()};
    if (node.first_child() != node.last_child()) faults.push_back(entry.key + ": it has more than its text");
    entries.push_back(entry);
  }
  return entries;
}

void CheckKeys(const std::vector<TextKey>& wanted, const std::vector<Entry>& entries, Faults& faults) {
  const auto before = faults.size();
  std::map<std::string, int> counts;
  for (const auto& entry : entries) ++counts[entry.key];
  for (const auto& key : wanted) {
    const auto found = counts.extract(std::string(key.key));
    if (found.empty()) faults.push_back(std::string(key.key) + ": it is missing");
    if (!found.empty() && found.mapped() > 1) faults.push_back(std::string(key.key) + ": it is there twice");
  }
  for (const auto& unknown : counts) faults.push_back(unknown.first + ": no such key is read");
  const auto sameKey = [](const TextKey& key, const Entry& entry) { return key.key == entry.key; };
  if (faults.size() == before && !std::ranges::equal(wanted, entries, sameKey)) {
    faults.emplace_back("the keys are out of order");
  }
}

void CheckText(const std::string& language, const TextKey& key, const std::string& text, Faults& all) {
  for (const auto& faults :
       {FaultsOfForm(key, text), FaultsOfTokens(key, text), FaultsOfNames(text), FaultsOfLanguage(language, text)}) {
    for (const auto& fault : faults) all.push_back(std::string(key.key) + ": " + fault);
  }
}

}  // namespace

std::string PathOfCatalogue(const std::string& language, Catalogue catalogue) {
  const std::string name = catalogue == Catalogue::kControls ? "Controls" : "Errors";
  return language + "/Custom/" + name + "/norvik.solutions.NLS." + name + ".QNTR/1.0/NLS.xml";
}

std::vector<TextKey> KeysOf(Catalogue catalogue) {
  std::vector<TextKey> keys;
  Texts texts;
  ForEachText(texts, [&](const std::string&, const TextKey& key) {
    const bool known = std::ranges::find(keys, key.key, &TextKey::key) != keys.end();
    if (key.catalogue == catalogue && !known) keys.push_back(key);
  });
  return keys;
}

std::vector<std::string> FaultsOf(const std::string& language, Catalogue catalogue, std::string_view bytes) {
  XmlDocument document;
  if (!document.Parse(bytes)) return {"the file is broken: " + document.ParseError().reason};
  Faults faults;
  const auto entries = EntriesOf(document, faults);
  const auto keys = KeysOf(catalogue);
  CheckKeys(keys, entries, faults);
  for (const auto& entry : entries) {
    const auto key = std::ranges::find(keys, entry.key, &TextKey::key);
    if (key != keys.end()) CheckText(language, *key, entry.text, faults);
  }
  return faults;
}

}  // namespace quintara::test
