#include "views/win32/pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>

#include "base/failure.h"

namespace quintara::win32 {
namespace {

const std::vector<std::string>& Keys() {
  static const std::vector<std::string> keys = {"part none",      "part lwt",       "part doc",    "product none",
                                                "product lwt",    "product doc",    "part lwt no", "part lwt yes",
                                                "product lwt no", "product lwt yes"};
  return keys;
}

std::uint32_t Opacity(std::uint32_t colour) {
  return colour >> 24;
}

// What is left of a colour for someone who tells none apart, on white.
int Brightness(std::uint32_t colour) {
  const double part = Opacity(colour) / 255.0;
  const auto channel = [&](int shift) { return part * (colour >> shift & 255) + (1 - part) * 255; };
  return static_cast<int>(std::lround(0.299 * channel(16) + 0.587 * channel(8) + 0.114 * channel(0)));
}

// The pixels that differ so much that anyone sees it.
int PlainlyDifferent(const Pixels& one, const Pixels& other) {
  constexpr int kPlain = 64;
  int count = 0;
  for (std::size_t i = 0; i < one.colours.size(); ++i) {
    count += std::abs(Brightness(one.colours[i]) - Brightness(other.colours[i])) >= kPlain ? 1 : 0;
  }
  return count;
}

int FailureOf(const std::string& key, int size) {
  try {
    DrawPicture(key, size);
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

class PicturesOfSize : public testing::TestWithParam<int> {};

TEST_P(PicturesOfSize, HaveThatSizeAndSomethingOnClearGround) {
  for (const auto& key : Keys()) {
    const auto picture = DrawPicture(key, GetParam());

    EXPECT_EQ(picture.size, GetParam()) << key;
    ASSERT_EQ(picture.colours.size(), static_cast<std::size_t>(GetParam() * GetParam())) << key;
    EXPECT_EQ(Opacity(picture.At(0, 0)), 0u) << key;
    EXPECT_EQ(Opacity(picture.At(GetParam() - 1, 0)), 0u) << key;
    EXPECT_GT(std::ranges::count_if(picture.colours, [](auto colour) { return Brightness(colour) < 160; }), GetParam())
        << key;
  }
}

TEST_P(PicturesOfSize, DifferPlainlyEvenWithoutColours) {
  const int least = GetParam() * GetParam() / 20;
  for (const auto& key : Keys()) {
    for (const auto& other : Keys()) {
      if (key >= other) continue;
      EXPECT_GE(PlainlyDifferent(DrawPicture(key, GetParam()), DrawPicture(other, GetParam())), least)
          << key << " and " << other;
    }
  }
}

bool CanBeTicked(const std::string& key) {
  return key.ends_with(" no") || key.ends_with(" yes");
}

void ExpectMirroredOutline(const std::string& key, int size) {
  const auto picture = DrawPicture(key, size);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      ASSERT_EQ(Opacity(picture.At(x, y)), Opacity(picture.At(size - 1 - x, y)))
          << key << " of " << size << " at " << x << ", " << y;
    }
  }
}

TEST(Pictures, HaveOutlinesThatReadTheSameFromTheRightWhereNothingIsTicked) {
  for (const auto& key : Keys()) {
    if (CanBeTicked(key)) continue;
    for (int size = 8; size <= 64; ++size) ExpectMirroredOutline(key, size);
  }
}

TEST_P(PicturesOfSize, ShowProductsWithoutBlurredEdges) {
  for (const std::string key : {"product none", "product lwt", "product doc"}) {
    const auto picture = DrawPicture(key, GetParam());

    EXPECT_TRUE(std::ranges::all_of(picture.colours, [](auto colour) {
      return Opacity(colour) == 0 || Opacity(colour) == 255;
    })) << key;
    EXPECT_LE(std::set<std::uint32_t>(picture.colours.begin(), picture.colours.end()).size(), 4u) << key;
  }
}

TEST_P(PicturesOfSize, ShowPartsWithSharpUprightEdges) {
  for (const std::string key : {"part none", "part lwt", "part doc"}) {
    const auto picture = DrawPicture(key, GetParam());
    const int y = picture.size / 2;
    int x = 0;
    while (x < picture.size && Opacity(picture.At(x, y)) == 0) ++x;
    const auto edge = picture.At(x, y);

    EXPECT_EQ(Opacity(edge), 255u) << key;
    EXPECT_LT(Brightness(edge), 128) << key;
    EXPECT_EQ(picture.At(picture.size - 1 - x, y), edge) << key;
    EXPECT_EQ(picture.At(picture.size / 2, picture.size * 3 / 4), edge) << key << ", the edge in the middle";
    EXPECT_EQ(picture.At((picture.size - 1) / 2, picture.size * 3 / 4), edge) << key << ", the edge in the middle";
  }
}

TEST_P(PicturesOfSize, HaveSmoothTicks) {
  for (const std::string key : {"part lwt no", "part lwt yes", "product lwt no", "product lwt yes"}) {
    const auto picture = DrawPicture(key, GetParam());

    EXPECT_TRUE(std::ranges::any_of(picture.colours, [](auto colour) {
      return Opacity(colour) > 0 && Opacity(colour) < 255;
    })) << key;
  }
}

TEST_P(PicturesOfSize, FillTheDiscWhereItBearsATick) {
  const int size = GetParam();
  const int edge = size * 8 / 16;
  const auto mean = [&](const std::string& key) {
    const auto picture = DrawPicture(key, size);
    int sum = 0;
    for (int y = 0; y < edge; ++y) {
      for (int x = 0; x < edge; ++x) sum += Brightness(picture.At(size - 1 - x, size - 1 - y));
    }
    return sum / (edge * edge);
  };

  for (const std::string body : {"part lwt", "product lwt"}) {
    EXPECT_GT(mean(body + " no"), 160) << body;
    EXPECT_LT(mean(body + " yes"), 150) << body;
  }
}

TEST_P(PicturesOfSize, ShowProductsInThreePieces) {
  const auto picture = DrawPicture("product doc", GetParam());
  const int bottom = picture.size - 1 - picture.size / 8;
  const int top = picture.size / 8;
  const auto piecesOfRow = [&](int y) {
    int pieces = 0;
    for (int x = 1; x < picture.size; ++x) {
      pieces += Opacity(picture.At(x, y)) != 0 && Opacity(picture.At(x - 1, y)) == 0 ? 1 : 0;
    }
    return pieces;
  };

  EXPECT_EQ(piecesOfRow(top), 1);
  EXPECT_EQ(piecesOfRow(bottom), 2);
}

TEST_P(PicturesOfSize, FillPartsFromBelow) {
  const int size = GetParam();
  const auto above = [&](const char* key) { return Brightness(DrawPicture(key, size).At(size / 2, size * 15 / 64)); };
  const auto below = [&](const char* key) { return Brightness(DrawPicture(key, size).At(size / 4, size * 9 / 16)); };

  EXPECT_EQ(above("part none"), 255);
  EXPECT_EQ(below("part none"), 255);
  EXPECT_EQ(above("part lwt"), 255);
  EXPECT_LT(below("part lwt"), 190);
  EXPECT_LT(above("part doc"), 160);
  EXPECT_LT(below("part doc"), 120);
}

TEST_P(PicturesOfSize, FillProductsFromBelow) {
  const int size = GetParam();
  const int line = std::max(1, static_cast<int>(std::lround(size / 16.0)));
  const int bottom = size - static_cast<int>(std::lround(size / 32.0));  // where the boxes stand
  const auto brightness = [&](const char* key, int up) {
    return Brightness(DrawPicture(key, size).At(size / 4, bottom - up));
  };
  const int low = line + 1;
  const int high = 5 * size / 16;

  EXPECT_EQ(brightness("product none", low), 255);
  EXPECT_EQ(brightness("product none", high), 255);
  EXPECT_LT(brightness("product lwt", low), 190);
  EXPECT_EQ(brightness("product lwt", high), 255);
  EXPECT_LT(brightness("product doc", low), 120);
  EXPECT_LT(brightness("product doc", high), 120);
}

TEST_P(PicturesOfSize, ComeOutTheSameEachTime) {
  for (const auto& key : Keys()) EXPECT_EQ(DrawPicture(key, GetParam()), DrawPicture(key, GetParam())) << key;
}

INSTANTIATE_TEST_SUITE_P(Sizes, PicturesOfSize, testing::Values(16, 17, 20, 24, 32, 48));

TEST(Pictures, AreDrawnInTheLeastAndTheGreatestSize) {
  for (const auto& key : Keys()) {
    EXPECT_EQ(DrawPicture(key, 8).size, 8) << key;
    EXPECT_EQ(DrawPicture(key, 256).size, 256) << key;
  }
}

TEST(Pictures, AreRefusedInOtherSizes) {
  for (const int size : {-1, 0, 7, 257}) EXPECT_EQ(FailureOf("part doc", size), failure::kInvalidCall) << size;
}

TEST(Pictures, AreRefusedForUnknownKeys) {
  for (const std::string key : {"", " lwt", "part", "part ", "lwt", "part lwt maybe", "part doc yes", "part none no",
                                "Part lwt", "part  lwt", " part lwt", "part lwt ", "part lwt yes no", "assembly doc"}) {
    EXPECT_EQ(FailureOf(key, 16), failure::kElementNotFound) << "'" << key << "'";
  }
}

TEST(Pictures, NameTheKeyThatIsUnknown) {
  try {
    DrawPicture("part lwt maybe", 16);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_THAT(failure.Description(), testing::HasSubstr("part lwt maybe"));
  }
}

}  // namespace
}  // namespace quintara::win32
