#include "quintara/user_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "quintara/wrong_use.h"

namespace quintara::test {
namespace {

using Variables = std::map<std::string, std::string>;

UserChoice Chosen(const Variables& variables, const CommonOptions& options = {}) {
  return ChooseUser(options, [&](const std::string& name) {
    const auto found = variables.find(name);
    return found == variables.end() ? std::string() : found->second;
  });
}

TEST(TheChoiceOfAUser, IsAdminAndEnglishWithoutAnyWord) {
  const auto choice = ChooseUser({}, {});

  EXPECT_EQ(choice.user, "admin");
  EXPECT_EQ(choice.language, "EN");
  EXPECT_EQ(choice.workFolder, "");
  EXPECT_FALSE(choice.zorvaStartedFirst);
}

TEST(TheChoiceOfAUser, TakesOptionsBeforeTheEnvironment) {
  const Variables variables{{"QUINTARA_USER", "anna"}, {"QUINTARA_LANG", "FR"}, {"QUINTARA_WORK", "w"}};
  CommonOptions options;
  options.user = "bert";
  options.language = "de";

  const auto choice = Chosen(variables, options);

  EXPECT_EQ(choice.user, "bert");
  EXPECT_EQ(choice.language, "DE");
  EXPECT_EQ(choice.workFolder, "w");
}

TEST(TheChoiceOfAUser, TakesTheLanguageOfTheLocale) {
  EXPECT_EQ(Chosen({{"LANG", "fr_FR.UTF-8"}}).language, "FR");
  EXPECT_EQ(Chosen({{"LANG", "fr_FR"}, {"LC_MESSAGES", "de"}}).language, "DE");
  EXPECT_EQ(Chosen({{"LANG", "fr_FR"}, {"LC_ALL", "C"}}).language, "EN");
}

TEST(TheChoiceOfAUser, IsEnglishWhereThereAreNoTextsInTheLanguageOfTheLocale) {
  for (const auto* locale : {"it_IT", "C.UTF-8", "POSIX", "d", "den_XX", "\xFF\xFF"}) {
    EXPECT_EQ(Chosen({{"LANG", locale}}).language, "EN") << locale;
  }
}

TEST(TheChoiceOfAUser, RefusesALanguageThatIsNoCode) {
  for (const auto* language : {"E", "ENG", "E1", "\xC3\xA9"}) {
    EXPECT_THROW(Chosen({{"QUINTARA_LANG", language}}), WrongUse) << language;
  }
}

}  // namespace
}  // namespace quintara::test
