#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/text.h"
#include "nls/embedded_texts.h"
#include "services/running_hosts.h"

namespace quintara::test {
namespace {

// The texts as users get them.
class StartInLanguage : public testing::TestWithParam<std::string>, public RunningHosts {
 protected:
  StartInLanguage() {
    for (const auto& file : EmbeddedTexts()) {
      const auto path = vault->Folder().base + "/NLS/" + std::string(file.path);
      std::filesystem::create_directories(ToPath(path).parent_path());
      files->WriteWhole(path, std::string(file.bytes));
    }
    RunVaultIn(GetParam());
  }
};

TEST_P(StartInLanguage, FillsEveryGlobal) {
  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gLanguage, GetParam());
  ForEachText(Process().texts, [](const std::string& text, const TextKey& key) { EXPECT_NE(text, "") << key.key; });
}

TEST_P(StartInLanguage, TellsLaterWhatIsMissing) {
  Init();
  const auto text = Process().texts.QD_INIT_ZORVA_INTEGRATION_NOT_CONNECTED.text;
  engine->Disconnect();

  EXPECT_THAT(BoxesOfInit(), testing::ElementsAre(Told(text)));
}

INSTANTIATE_TEST_SUITE_P(Of, StartInLanguage, testing::Values("EN", "FR", "DE"),
                         [](const auto& language) { return language.param; });

}  // namespace
}  // namespace quintara::test
