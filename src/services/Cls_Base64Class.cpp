#include "services/Cls_Base64Class.h"

#include <algorithm>
#include <string_view>

#include "access/session/the_platform.h"
#include "base/failure.h"

namespace quintara {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kLineBreak = "\r\n";
constexpr std::size_t kLineLength = 76;

std::size_t EncodedLength(std::size_t bytes) {
  const auto characters = (bytes + 2) / 3 * 4;
  const auto length = characters + characters / kLineLength * kLineBreak.size();
  // A last line that is full would end in a break.
  return length % (kLineLength + kLineBreak.size()) == 0 ? length - kLineBreak.size() : length;
}

std::size_t DecodedLength(std::size_t letters) {
  constexpr std::array<std::size_t, 4> kOfTheRest = {0, 0, 1, 2};
  return letters / 4 * 3 + kOfTheRest[letters % 4];
}

// One pass: a break that only forms around what was taken out stays.
std::string WithoutBreaksAndPads(std::string_view text) {
  std::string letters;
  letters.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text.substr(at, kLineBreak.size()) == kLineBreak) {
      ++at;
    } else if (text[at] != '=') {
      letters.push_back(text[at]);
    }
  }
  return letters;
}

}  // namespace

Cls_Base64Class::Cls_Base64Class() : letters_(), values_() {
  std::ranges::copy(kLetters, letters_.begin());
  for (std::size_t i = 0; i < letters_.size(); ++i) {
    values_[static_cast<std::uint8_t>(letters_[i])] = static_cast<std::uint8_t>(i);
  }
}

std::string Cls_Base64Class::EncodeString(const std::string& Text) const {
  const auto bytes = ThePlatform().ToCodePage(Text);
  std::vector<std::uint8_t> data(bytes.size() + 1);
  std::ranges::copy(bytes, data.begin());
  return EncodeByteArray(data);
}

std::string Cls_Base64Class::EncodeByteArray(const std::vector<std::uint8_t>& Data) const {
  if (Data.empty()) throw Failure(failure::kSubscriptOutOfRange);
  std::string text(EncodedLength(Data.size()), '=');
  auto out = text.begin();
  const auto put = [&](unsigned bits, int shift) { *out++ = letters_[bits >> shift & 63U]; };
  std::size_t inLine = 0;
  std::size_t at = 0;
  for (; at + 3 <= Data.size(); at += 3) {
    const unsigned bits = Data[at] * 0x10000U + Data[at + 1] * 0x100U + Data[at + 2];
    for (const int shift : {18, 12, 6, 0}) put(bits, shift);
    inLine += 4;
    if (inLine < kLineLength || out == text.end()) continue;
    out = std::ranges::copy(kLineBreak, out).out;
    inLine = 0;
  }
  const auto rest = Data.size() - at;
  if (rest == 0) return text;
  const unsigned bits = Data[at] * 0x10000U + (rest == 2 ? Data[at + 1] * 0x100U : 0U);
  put(bits, 18);
  put(bits, 12);
  if (rest == 2) put(bits, 6);
  return text;
}

std::string Cls_Base64Class::DecodeToString(const std::string& EncodedText) const {
  const auto data = DecodeToByteArray(EncodedText);
  return ThePlatform().FromCodePage({reinterpret_cast<const char*>(data.data()), data.size()});
}

std::vector<std::uint8_t> Cls_Base64Class::DecodeToByteArray(const std::string& EncodedText) const {
  const auto letters = ThePlatform().ToCodePage(WithoutBreaksAndPads(EncodedText));
  std::vector<std::uint8_t> data(DecodedLength(letters.size()));
  if (data.empty()) throw Failure(failure::kSubscriptOutOfRange);
  unsigned bits = 0;
  auto out = data.begin();
  for (std::size_t at = 0; at < letters.size(); ++at) {
    bits = bits << 6U | values_[static_cast<std::uint8_t>(letters[at])];
    // Each letter but the first of a group completes a byte.
    if (at % 4 != 0) *out++ = static_cast<std::uint8_t>(bits >> (6U - 2U * (at % 4)));
  }
  return data;
}

}  // namespace quintara
