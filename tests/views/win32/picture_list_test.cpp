#include "views/win32/picture_list.h"

// Behind the system's header, on which it depends.
#include <commctrl.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "views/win32/pictures.h"

namespace quintara::win32 {
namespace {

constexpr int kSize = 20;

// What a picture looks like on a ground of one colour.
class Ground {
 public:
  explicit Ground(std::uint32_t colour) : context_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO information{};
    information.bmiHeader = {sizeof information.bmiHeader, kSize, -kSize, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0);
    SelectObject(context_, bitmap_);
    bits_ = static_cast<std::uint32_t*>(bits);
    std::fill_n(bits_, kSize * kSize, colour);
  }
  ~Ground() {
    DeleteDC(context_);
    DeleteObject(bitmap_);
  }
  Ground(const Ground&) = delete;
  Ground& operator=(const Ground&) = delete;

  HDC Context() const { return context_; }
  std::uint32_t At(int x, int y) const {
    GdiFlush();
    return bits_[y * kSize + x] & 0xFFFFFF;
  }

 private:
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  std::uint32_t* bits_ = nullptr;
};

bool IsNear(std::uint32_t one, std::uint32_t other) {
  for (int shift = 0; shift < 24; shift += 8) {
    if (std::abs(static_cast<int>(one >> shift & 255) - static_cast<int>(other >> shift & 255)) > 2) return false;
  }
  return true;
}

std::uint32_t Over(std::uint32_t colour, std::uint32_t ground) {
  const auto opacity = colour >> 24;
  std::uint32_t mixed = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    mixed |= ((colour >> shift & 255) * opacity + (ground >> shift & 255) * (255 - opacity)) / 255 << shift;
  }
  return mixed;
}

void ExpectDrawn(const std::string& key, std::uint32_t colour) {
  const PictureList list({"product doc", key}, kSize);
  const Ground ground(colour);
  list.Draw(ground.Context(), key, 0, 0);
  const auto picture = DrawPicture(key, kSize);
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      ASSERT_TRUE(IsNear(ground.At(x, y), Over(picture.At(x, y), colour))) << key << " at " << x << ", " << y;
    }
  }
}

TEST(PictureList, DrawsOnAnyGroundWithSmoothEdges) {
  for (const std::uint32_t ground : {0xFFFFFFu, 0x0u, 0x3399FFu}) {
    ExpectDrawn("part none", ground);
    ExpectDrawn("product lwt yes", ground);
  }
}

TEST(PictureList, KeepsTheOrderOfItsKeys) {
  const PictureList list({"part doc", "part lwt no", "product lwt"}, kSize);

  EXPECT_EQ(list.IndexOf("part doc"), 0);
  EXPECT_EQ(list.IndexOf("product lwt"), 2);
  EXPECT_EQ(ImageList_GetImageCount(list.Handle()), 3);
}

TEST(PictureList, HasPicturesOfTheSizeThatWasAskedFor) {
  const PictureList list({"part doc"}, kSize);
  int width = 0;
  int height = 0;

  ImageList_GetIconSize(list.Handle(), &width, &height);

  EXPECT_EQ(width, kSize);
  EXPECT_EQ(height, kSize);
}

TEST(PictureList, HasNoPlaceForOtherKeys) {
  const PictureList list({"part doc"}, kSize);

  EXPECT_EQ(list.IndexOf(""), -1);
  EXPECT_EQ(list.IndexOf("part lwt"), -1);
}

TEST(PictureList, DrawsNothingForOtherKeys) {
  const PictureList list({"part doc"}, kSize);
  const Ground ground(0x123456);

  list.Draw(ground.Context(), "part lwt", 0, 0);

  for (int i = 0; i < kSize; ++i) EXPECT_EQ(ground.At(i, i), 0x123456u);
}

TEST(PictureList, IsRefusedWithAKeyThatHasNoPicture) {
  EXPECT_THROW(PictureList({"part doc", "gear"}, kSize), Failure);
}

}  // namespace
}  // namespace quintara::win32
