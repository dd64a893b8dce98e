#include "views/win32/fonts.h"

#include <algorithm>
#include <cwchar>

#include "base/failure.h"
#include "base/text16_windows.h"
#include "views/win32/desktop.h"

namespace quintara::win32 {
namespace {

// A screen to measure on, with a font for as long as it lives.
class Paper {
 public:
  explicit Paper(HFONT font) : context_(GetDC(nullptr)), former_(SelectObject(context_, font)) {}
  ~Paper() {
    SelectObject(context_, former_);
    ReleaseDC(nullptr, context_);
  }
  Paper(const Paper&) = delete;
  Paper& operator=(const Paper&) = delete;

  HDC Context() const { return context_; }

 private:
  HDC context_;
  HGDIOBJ former_;
};

bool AreSame(const std::wstring& one, const std::wstring& other) {
  return CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

dialog::Font StandardFont() {
  constexpr double kPointsOfInch = 72;
  constexpr double kLargest = 9;
  const auto font = MessageFont();
  const double points = std::abs(font.height) * kPointsOfInch / font.pixelsOfInch;
  dialog::Font standard{Narrow(font.name), std::min(points, kLargest), DEFAULT_CHARSET, false, false};
  standard.name = Fonts(Scale(font.pixelsOfInch)).NameUsed(standard);
  return standard;
}

Fonts::~Fonts() {
  for (const auto& [font, handle] : made_) DeleteObject(handle);
}

HFONT Fonts::Made(const dialog::Font& font) {
  if (font.size <= 0) throw Failure(failure::kInvalidPropertyValue);
  const auto found = std::ranges::find(made_, font, &std::pair<dialog::Font, HFONT>::first);
  if (found != made_.end()) return found->second;
  LOGFONTW wanted{};
  wanted.lfHeight = -std::max(scale_.PointsInPixels(font.size), 1);
  wanted.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  wanted.lfItalic = font.italic ? 1 : 0;
  wanted.lfCharSet = static_cast<BYTE>(font.charset);
  wanted.lfQuality = CLEARTYPE_QUALITY;
  lstrcpynW(wanted.lfFaceName, Wide(font.name).c_str(), LF_FACESIZE);
  const auto handle = CreateFontIndirectW(&wanted);
  if (handle == nullptr) throw Failure(failure::kOutOfMemory);
  made_.emplace_back(font, handle);
  return handle;
}

std::string Fonts::NameUsed(const dialog::Font& font) {
  const Paper paper(Made(font));
  wchar_t face[LF_FACESIZE] = {};
  GetTextFaceW(paper.Context(), LF_FACESIZE, face);
  return AreSame(face, Wide(font.name)) ? font.name : Narrow(face);
}

int Fonts::HeightOf(const dialog::Font& font) {
  const Paper paper(Made(font));
  TEXTMETRICW metrics{};
  GetTextMetricsW(paper.Context(), &metrics);
  return metrics.tmHeight;
}

}  // namespace quintara::win32
