#include "base/packed_texts.h"

#include <gmock/gmock.h>

#include "base/failure.h"

namespace quintara {
namespace {

TEST(PackedTexts, AreTheSameAfterwards) {
  for (const std::vector<std::string>& texts :
       {std::vector<std::string>{}, {""}, {"a", "", std::string("\0\xFF\n", 3)}, {std::string(100'000, 'x')}}) {
    EXPECT_EQ(UnpackTexts(PackTexts(texts)), texts);
  }
}

TEST(PackedTexts, FailWhenTheyAreCut) {
  const auto packed = PackTexts({"first", "second"});

  for (std::size_t length = 0; length < packed.size(); ++length) {
    EXPECT_THROW(UnpackTexts(packed.substr(0, length)), Failure) << length;
  }
}

TEST(PackedTexts, FailForOtherBytes) {
  EXPECT_THROW(UnpackTexts("some text"), Failure);
  EXPECT_THROW(UnpackTexts(std::string("\x82\x01\x02", 3)), Failure) << "a list of numbers";
}

}  // namespace
}  // namespace quintara
