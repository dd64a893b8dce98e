#include "views/win32/picture_list.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

#include "base/failure.h"
#include "views/win32/pictures.h"

namespace quintara::win32 {
namespace {

// Deleted by the caller; nothing where the system refuses.
HBITMAP MakeBitmap(const Pixels& pixels) {
  BITMAPINFO information{};
  auto& header = information.bmiHeader;
  header.biSize = sizeof header;
  header.biWidth = pixels.size;
  header.biHeight = -pixels.size;  // rows from the top
  header.biPlanes = 1;
  header.biBitCount = 32;
  header.biCompression = BI_RGB;
  void* bits = nullptr;
  const auto bitmap = CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap != nullptr) std::memcpy(bits, pixels.colours.data(), pixels.colours.size() * sizeof(pixels.colours[0]));
  return bitmap;
}

}  // namespace

PictureList::PictureList(const std::vector<std::string>& keys, int size)
    : size_(size), list_(ImageList_Create(size, size, ILC_COLOR32, static_cast<int>(keys.size()), 1)) {
  if (list_ == nullptr) throw Failure(failure::kOutOfMemory);
  try {
    for (const auto& key : keys) Add(key);
  } catch (const Failure&) {
    ImageList_Destroy(list_);
    throw;
  }
}

PictureList::~PictureList() {
  ImageList_Destroy(list_);
}

void PictureList::Add(const std::string& key) {
  const auto bitmap = MakeBitmap(DrawPicture(key, size_));
  const bool isAdded = bitmap != nullptr && ImageList_Add(list_, bitmap, nullptr) >= 0;
  if (bitmap != nullptr) DeleteObject(bitmap);
  if (!isAdded) throw Failure(failure::kOutOfMemory);
  keys_.push_back(key);
}

int PictureList::IndexOf(const std::string& key) const {
  const auto found = std::ranges::find(keys_, key);
  return found == keys_.end() ? -1 : static_cast<int>(found - keys_.begin());
}

void PictureList::Draw(HDC target, const std::string& key, int left, int top) const {
  const int index = IndexOf(key);
  if (index >= 0) ImageList_Draw(list_, index, target, left, top, ILD_TRANSPARENT);
}

}  // namespace quintara::win32
