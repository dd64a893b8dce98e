#include "hosts/vault/connection_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

namespace quintara::vault {
namespace {

constexpr std::string_view kScheme = "postgresql://";
constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr std::string_view kPassword = "password";
constexpr std::string_view kKeyPassword = "sslpassword";

/// One secret: what has to go from the text for it to go, and what it is.
struct Secret {
  std::size_t from;
  std::size_t to;
  std::string key;
  std::string raw;
  std::string value;
};

bool IsSecret(std::string_view key) {
  return key == kPassword || key == kKeyPassword;
}

std::size_t SkipBlanks(const std::string& text, std::size_t at) {
  return std::min(text.find_first_not_of(kBlanks, at), text.size());
}

// The value at `at`, quoted or not; a backslash guards the character behind it. `at` moves past it.
std::string ValueAt(const std::string& text, std::size_t& at) {
  const bool quoted = at < text.size() && text[at] == '\'';
  if (quoted) ++at;
  std::string value;
  for (; at < text.size(); ++at) {
    if (quoted ? text[at] == '\'' : kBlanks.find(text[at]) != kBlanks.npos) break;
    if (text[at] == '\\' && at + 1 < text.size()) ++at;
    value += text[at];
  }
  if (quoted && at < text.size()) ++at;
  return value;
}

std::vector<Secret> SecretsOfPairs(const std::string& text) {
  std::vector<Secret> secrets;
  for (auto at = SkipBlanks(text, kScheme.size()); at < text.size(); at = SkipBlanks(text, at)) {
    const auto from = at;
    const auto end = std::min(text.find_first_of("= \t\r\n\f\v", at), text.size());
    const auto key = text.substr(at, end - at);
    at = SkipBlanks(text, end);
    if (at == text.size() || text[at] != '=') continue;
    at = SkipBlanks(text, at + 1);
    const auto valueFrom = at;
    const auto value = ValueAt(text, at);
    if (!IsSecret(key)) continue;
    secrets.push_back({from, SkipBlanks(text, at), key, text.substr(valueFrom, at - valueFrom), value});
  }
  return secrets;
}

std::string Decoded(const std::string& text) {
  std::string decoded;
  for (std::size_t at = 0; at < text.size(); ++at) {
    int code = 0;
    const char* const digits = text.data() + at + 1;
    const bool escaped =
        text[at] == '%' && at + 2 < text.size() && std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2;
    decoded += escaped ? static_cast<char>(code) : text[at];
    if (escaped) at += 2;
  }
  return decoded;
}

std::vector<Secret> SecretsOfAddress(const std::string& text) {
  std::vector<Secret> secrets;
  const auto add = [&](std::size_t from, std::size_t to, std::string key, std::size_t valueFrom, std::size_t valueTo) {
    const auto raw = text.substr(valueFrom, valueTo - valueFrom);
    secrets.push_back({from, to, std::move(key), raw, Decoded(raw)});
  };
  const auto host = text.find_first_of("@/", kScheme.size());
  const auto colon = text.find(':', kScheme.size());
  if (host != text.npos && text[host] == '@' && colon < host) add(colon, host, std::string(kPassword), colon + 1, host);
  auto mark = text.find('?', kScheme.size());
  while (mark < text.size()) {
    const auto end = std::min(text.find('&', mark + 1), text.size());
    const auto equals = text.find('=', mark);
    const auto key = text.substr(mark + 1, std::min(equals, end) - mark - 1);
    // The mark in front stays when another parameter comes behind.
    if (equals < end && IsSecret(key)) {
      add(end == text.size() ? mark : mark + 1, std::min(end + 1, text.size()), key, equals + 1, end);
    }
    mark = end;
  }
  return secrets;
}

std::vector<Secret> SecretsIn(const std::string& connection) {
  if (!connection.starts_with(kScheme)) return {};
  return HoldsPairs(connection) ? SecretsOfPairs(connection) : SecretsOfAddress(connection);
}

void ReplaceAll(std::string& text, const std::string& what) {
  if (what.empty()) return;
  for (auto at = text.find(what); at != text.npos; at = text.find(what, at + 3)) text.replace(at, what.size(), "***");
}

}  // namespace

bool HoldsPairs(const std::string& connection) {
  const auto rest = connection.substr(std::min(kScheme.size(), connection.size()));
  const auto equals = rest.find('=');
  return rest.empty() || (equals != rest.npos && equals < rest.find_first_of("/@:?"));
}

std::string PasswordIn(const std::string& connection) {
  std::string password;
  for (const auto& secret : SecretsIn(connection)) {
    if (secret.key == kPassword) password = secret.value;
  }
  return password;
}

std::string WithoutPassword(const std::string& connection) {
  auto text = connection;
  const auto secrets = SecretsIn(connection);
  for (auto secret = secrets.rbegin(); secret != secrets.rend(); ++secret) {
    text.erase(secret->from, secret->to - secret->from);
  }
  if (!secrets.empty()) text.erase(text.find_last_not_of(kBlanks) + 1);
  return text;
}

std::string WithoutSecretsOf(const std::string& connection, std::string message) {
  // A text that can't be read may have its password anywhere, and is then told piece by piece.
  constexpr std::array<std::string_view, 4> kUnreadable = {"connection info string", "URI", "percent-encoded",
                                                           "connection option"};
  if (std::ranges::any_of(kUnreadable, [&](auto words) { return message.find(words) != message.npos; })) {
    return "the text of the connection isn't well formed";
  }
  for (const auto& secret : SecretsIn(connection)) {
    ReplaceAll(message, secret.raw);
    ReplaceAll(message, secret.value);
  }
  return message;
}

}  // namespace quintara::vault
