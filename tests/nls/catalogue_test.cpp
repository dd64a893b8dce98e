#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <tuple>

#include "access/session/texts.h"
#include "base/text.h"
#include "nls/embedded_texts.h"
#include "nls/text_check.h"

namespace quintara::test {
namespace {

std::string BytesOnDisk(std::string_view path) {
  std::ifstream file(ToPath(std::string(QUINTARA_TEXTS "/").append(path)), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class CatalogueOf : public testing::TestWithParam<std::tuple<const char*, Catalogue>> {
 protected:
  std::string language = std::get<0>(GetParam());
  Catalogue catalogue = std::get<1>(GetParam());
};

TEST_P(CatalogueOf, HoldsEveryTextAsItMustBe) {
  const auto bytes = BytesOnDisk(PathOfCatalogue(language, catalogue));

  EXPECT_THAT(FaultsOf(language, catalogue, bytes), testing::IsEmpty());
}

TEST_P(CatalogueOf, IsBuiltInByteForByte) {
  const auto path = PathOfCatalogue(language, catalogue);

  const auto file = std::ranges::find(EmbeddedTexts(), path, &TextFile::path);

  ASSERT_NE(file, EmbeddedTexts().end());
  EXPECT_EQ(file->bytes, BytesOnDisk(path));
}

INSTANTIATE_TEST_SUITE_P(Files, CatalogueOf,
                         testing::Combine(testing::Values("EN", "FR", "DE"),
                                          testing::Values(Catalogue::kControls, Catalogue::kMessages)),
                         [](const auto& file) {
                           const bool controls = std::get<1>(file.param) == Catalogue::kControls;
                           return std::string(std::get<0>(file.param)) + (controls ? "Controls" : "Messages");
                         });

TEST(EmbeddedTexts, HoldNothingButTheCatalogues) {
  std::set<std::string> paths;
  for (const auto* language : {"EN", "FR", "DE"}) {
    for (const auto catalogue : {Catalogue::kControls, Catalogue::kMessages}) {
      paths.insert(PathOfCatalogue(language, catalogue));
    }
  }

  std::multiset<std::string> embedded;
  for (const auto& file : EmbeddedTexts()) embedded.emplace(file.path);

  EXPECT_THAT(embedded, testing::ElementsAreArray(paths));
}

TEST(TableOfKeys, HoldsEveryKeyOnceButTwoThatAreReadTwice) {
  Texts texts;
  std::map<Catalogue, std::size_t> counts;
  std::vector<std::string_view> keys;
  std::vector<std::string_view> readAgain;

  ForEachText(texts, [&](const std::string&, const TextKey& key) {
    ++counts[key.catalogue];
    if (!keys.empty() && keys.back() == key.key) readAgain.push_back(key.key);
    keys.push_back(key.key);
  });

  EXPECT_EQ(counts[Catalogue::kControls], 29U);
  EXPECT_EQ(counts[Catalogue::kMessages], 73U);
  EXPECT_EQ(std::set(keys.begin(), keys.end()).size(), 100U);
  EXPECT_THAT(readAgain,
              testing::ElementsAre("QD.GETMATRIX.NO_LINKED_MATRIX", "QD.UTILS.UNABLE_TO_RETRIEVE_OBJECT_EMPTY"));
}

TEST(TableOfKeys, GlobalsOfOneKeyTakeEquallyManyValues) {
  Texts texts;
  std::map<std::string_view, std::set<std::size_t>> counts;

  ForEachText(texts, [&](const std::string&, const TextKey& key) { counts[key.key].insert(key.parameters.size()); });

  for (const auto& [key, count] : counts) EXPECT_THAT(count, testing::SizeIs(1)) << key;
}

TEST(TableOfKeys, NoTextTakesSoManyValuesThatTheirTokensBeginAlike) {
  Texts texts;

  ForEachText(texts, [&](const std::string&, const TextKey& key) { EXPECT_LT(key.parameters.size(), 10) << key.key; });
}

}  // namespace
}  // namespace quintara::test
