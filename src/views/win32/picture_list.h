#pragma once

#include <string>
#include <vector>

#include "views/win32/visual_styles.h"

struct _IMAGELIST;

namespace quintara::win32 {

/// Pictures of one size as the toolkit's own list of images, for a tree and for drawing.
class PictureList {
 public:
  /// Fails as `DrawPicture` does, and with 7 where the system can't hold them.
  PictureList(const std::vector<std::string>& keys, int size);
  ~PictureList();
  PictureList(const PictureList&) = delete;
  PictureList& operator=(const PictureList&) = delete;

  /// An HIMAGELIST, for as long as this lives.
  _IMAGELIST* Handle() const { return list_; }
  int Size() const { return size_; }
  /// The place of a key in the list; -1 for one that isn't there, such as an empty one.
  int IndexOf(const std::string& key) const;
  /// Draws over what is there, the upper left corner at that place.
  void Draw(HDC target, const std::string& key, int left, int top) const;

 private:
  void Add(const std::string& key);

  std::vector<std::string> keys_;
  int size_;
  _IMAGELIST* list_;
};

}  // namespace quintara::win32
