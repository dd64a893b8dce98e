#include "automation/driver/picture.h"

#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>

#include "automation/driver/steps.h"

namespace quintara::driver {
namespace {

// A bitmap in memory that can be drawn into and read.
class Canvas {
 public:
  Canvas(int width, int height) : picture_{width, height, {}}, context_(CreateCompatibleDC(nullptr)) {
    auto& header = information_.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;  // rows from the top
    header.biPlanes = 1;
    header.biBitCount = 32;
    bitmap_ = CreateDIBSection(nullptr, &information_, DIB_RGB_COLORS, &bits_, nullptr, 0);
    if (bitmap_ == nullptr) throw Failed("a picture can't be made");
    former_ = SelectObject(context_, bitmap_);
  }
  ~Canvas() {
    SelectObject(context_, former_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  HDC Context() const { return context_; }
  Picture Take() {
    GdiFlush();
    const auto* first = static_cast<const std::uint32_t*>(bits_);
    picture_.pixels.assign(first, first + picture_.width * picture_.height);
    for (auto& pixel : picture_.pixels) pixel &= 0xFFFFFF;
    return picture_;
  }

 private:
  BITMAPINFO information_{};
  Picture picture_;
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ former_ = nullptr;
  void* bits_ = nullptr;
};

void Append32(std::string& bytes, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift & 255);
}

std::uint32_t Checksum(const std::string& bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum & 1) != 0 ? sum >> 1 ^ 0xEDB88320 : sum >> 1;
  }
  return ~sum;
}

void AppendChunk(std::string& file, const std::string& kind, const std::string& content) {
  Append32(file, static_cast<std::uint32_t>(content.size()));
  file += kind + content;
  Append32(file, Checksum(kind + content));
}

// Stored, not compressed: a reader takes it all the same.
std::string Stored(const std::string& content) {
  constexpr std::size_t kMost = 65'535;
  std::string stream("\x78\x01", 2);
  for (std::size_t at = 0; at < content.size(); at += kMost) {
    const auto size = std::min(kMost, content.size() - at);
    const auto byte = [](std::size_t number) { return static_cast<char>(number & 255); };
    stream += at + size == content.size() ? '\1' : '\0';
    stream += {byte(size), byte(size >> 8), byte(~size), byte(~size >> 8)};
    stream.append(content, at, size);
  }
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const char byte : content) {
    low = (low + static_cast<unsigned char>(byte)) % 65'521;
    high = (high + low) % 65'521;
  }
  Append32(stream, high << 16 | low);
  return stream;
}

int Difference(const Picture& one, const Picture& other) {
  int sum = 0;
  for (std::size_t i = 0; i < one.pixels.size(); ++i) {
    for (int shift = 0; shift < 24; shift += 8) {
      sum +=
          std::abs(static_cast<int>(one.pixels[i] >> shift & 255) - static_cast<int>(other.pixels[i] >> shift & 255));
    }
  }
  return one.pixels.empty() ? 0 : sum / (3 * static_cast<int>(one.pixels.size()));
}

Picture SignOn(std::uint32_t background, int width, int height, const wchar_t* name) {
  Canvas canvas(width, height);
  const RECT all = {0, 0, width, height};
  const auto red = static_cast<BYTE>(background >> 16 & 255);
  const auto green = static_cast<BYTE>(background >> 8 & 255);
  const auto brush = CreateSolidBrush(RGB(red, green, static_cast<BYTE>(background & 255)));
  FillRect(canvas.Context(), &all, brush);
  DeleteObject(brush);
  DrawIconEx(canvas.Context(), 0, 0, LoadIconW(nullptr, name), width, height, 0, nullptr, DI_NORMAL);
  return canvas.Take();
}

}  // namespace

RECT WholeScreen() {
  const int left = GetSystemMetrics(SM_XVIRTUALSCREEN);
  const int top = GetSystemMetrics(SM_YVIRTUALSCREEN);
  return {left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN), top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

Picture PictureOf(const RECT& box) {
  const int width = box.right - box.left;
  const int height = box.bottom - box.top;
  Canvas canvas(width, height);
  const auto screen = GetDC(nullptr);
  BitBlt(canvas.Context(), 0, 0, width, height, screen, box.left, box.top, SRCCOPY);
  ReleaseDC(nullptr, screen);
  return canvas.Take();
}

void Save(const Picture& picture, const std::filesystem::path& file) {
  std::string header;
  Append32(header, static_cast<std::uint32_t>(picture.width));
  Append32(header, static_cast<std::uint32_t>(picture.height));
  header += std::string("\x8\x2\0\0\0", 5);  // 8 bits, colours, no interlacing
  std::string rows;
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    if (i % static_cast<std::size_t>(picture.width) == 0) rows += '\0';
    for (int shift = 16; shift >= 0; shift -= 8) rows += static_cast<char>(picture.pixels[i] >> shift & 255);
  }
  std::string content("\x89PNG\r\n\x1a\n", 8);
  AppendChunk(content, "IHDR", header);
  AppendChunk(content, "IDAT", Stored(rows));
  AppendChunk(content, "IEND", {});
  std::ofstream stream(file, std::ios::binary);
  stream << content;
  if (!stream.flush()) throw Failed("the picture " + file.string() + " can't be written");
}

// Icons of other processes can't be asked what they are, so it is told from what is seen.
int SignIn(const RECT& box) {
  constexpr int kNearly = 8;
  constexpr std::pair<int, WORD> kSigns[] = {{16, 32513}, {32, 32514}, {48, 32515}, {64, 32516}};
  const auto seen = PictureOf(box);
  if (seen.pixels.empty()) return 0;
  int best = 0;
  int least = kNearly;
  for (const auto& [style, name] : kSigns) {
    const auto sign = SignOn(seen.pixels[0], seen.width, seen.height, MAKEINTRESOURCEW(name));
    const int difference = Difference(seen, sign);
    if (difference < least) best = style;
    least = std::min(least, difference);
  }
  return best;
}

}  // namespace quintara::driver
