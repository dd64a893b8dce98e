#include "views/win32/mnemonics.h"

#include <algorithm>
#include <cwctype>
#include <optional>

namespace quintara::win32 {
namespace {

// Those that every keyboard has.
bool IsOnKeyboard(wchar_t sign) {
  return (sign >= L'a' && sign <= L'z') || (sign >= L'A' && sign <= L'Z') || (sign >= L'0' && sign <= L'9');
}

// The part of a word before an accent is no beginning of one.
bool BeginsWord(const std::wstring& caption, std::size_t at) {
  return at == 0 || caption[at - 1] == L' ' || caption[at - 1] == L'-' || caption[at - 1] == L'\u00A0';
}

class Choice {
 public:
  explicit Choice(const std::vector<std::wstring>& captions) : captions_(captions), places_(captions.size()) {}

  const std::vector<std::optional<std::size_t>>& Places() const { return places_; }

  void Choose(bool onlyBeginnings) {
    for (std::size_t i = 0; i < captions_.size(); ++i) {
      const auto& caption = captions_[i];
      for (std::size_t at = 0; at < caption.size() && !places_[i]; ++at) {
        if (!onlyBeginnings || BeginsWord(caption, at)) Try(i, at);
      }
    }
  }

 private:
  void Try(std::size_t caption, std::size_t at) {
    const auto& text = captions_[caption];
    if (!IsOnKeyboard(text[at]) && text.size() != 1) return;
    const auto key = static_cast<wchar_t>(std::towupper(text[at]));
    if (taken_.find(key) != std::wstring::npos) return;
    taken_ += key;
    places_[caption] = at;
  }

  const std::vector<std::wstring>& captions_;
  std::vector<std::optional<std::size_t>> places_;
  std::wstring taken_;
};

}  // namespace

std::wstring Escaped(const std::wstring& caption) {
  std::wstring escaped;
  for (const auto sign : caption) escaped.append(sign == L'&' ? 2 : 1, sign);
  return escaped;
}

std::vector<std::wstring> WithMnemonics(const std::vector<std::wstring>& captions) {
  Choice choice(captions);
  choice.Choose(true);
  choice.Choose(false);
  std::vector<std::wstring> marked;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    const auto& caption = captions[i];
    const auto at = choice.Places()[i];
    if (!at || caption[*at] == L'&') {
      marked.push_back(Escaped(caption));
    } else {
      marked.push_back(Escaped(caption.substr(0, *at)) + L'&' + Escaped(caption.substr(*at)));
    }
  }
  return marked;
}

}  // namespace quintara::win32
