#include "quintara/user_choice.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "hosts/desk/places.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

std::string Told(const std::string& option, const std::string& variable, const Environment& environment) {
  return option.empty() && environment ? environment(variable) : option;
}

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string CodeOf(const std::string& language) {
  if (language.size() != 2 || !std::ranges::all_of(language, IsLetter)) {
    throw WrongUse("'" + language + "' is no language; one is named by two letters, such as EN");
  }
  return Capitals(language);
}

std::string LanguageOfLocale(const Environment& environment) {
  constexpr std::array kWithTexts{"EN", "FR", "DE"};
  for (const auto* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const auto locale = Told({}, variable, environment);
    if (locale.empty()) continue;
    const auto known = std::ranges::find_if(kWithTexts, [&](const std::string& code) {
      return locale.size() >= 2 && IsUtf8(locale) && Capitals(locale).starts_with(code) &&
             (locale.size() == 2 || !IsLetter(locale[2]));
    });
    return known == kWithTexts.end() ? "EN" : *known;
  }
  return "EN";
}

}  // namespace

UserChoice ChooseUser(const CommonOptions& options, const Environment& environment) {
  UserChoice choice;
  choice.workFolder = Told(options.workFolder, "QUINTARA_WORK", environment);
  choice.namedVault = Told(options.vault, "QUINTARA_VAULT", environment);
  choice.vault = choice.namedVault.empty() ? VaultUpwards() : choice.namedVault;
  choice.user = Told(options.user, "QUINTARA_USER", environment);
  if (choice.user.empty()) choice.user = "admin";
  const auto language = Told(options.language, "QUINTARA_LANG", environment);
  choice.language = language.empty() ? LanguageOfLocale(environment) : CodeOf(language);
  choice.zorvaStartedFirst = options.zorvaStartedFirst;
  return choice;
}

}  // namespace quintara
