#include "windows/picture.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/wide_text.h"

namespace tarn {
namespace {

constexpr DWORD kPaintedMs = 120;
constexpr int kMostLooks = 20;

BITMAPINFOHEADER HeaderOf(int width, int height) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  header.biCompression = BI_RGB;
  return header;
}

size_t RowBytes(int width) {
  return (static_cast<size_t>(width) * 3 + 3) / 4 * 4;
}

// How many dots of the rows from `first` on are such, by their least and their greatest part.
size_t CountDots(const Picture& picture, size_t first, bool (*is)(int least, int most)) {
  const size_t row = RowBytes(picture.width);
  size_t count = 0;
  for (size_t start = first * row; start + row <= picture.bytes.size(); start += row) {
    for (size_t dot = start; dot < start + static_cast<size_t>(picture.width) * 3; dot += 3) {
      const auto [least, most] =
          std::minmax({picture.bytes[dot], picture.bytes[dot + 1], picture.bytes[dot + 2]});
      if (is(least, most)) ++count;
    }
  }
  return count;
}

}  // namespace

Picture PictureOf(const Window& window) {
  const RECT place = window.Place();
  Picture picture{place.right - place.left, place.bottom - place.top, {}};
  picture.bytes.resize(RowBytes(picture.width) * static_cast<size_t>(picture.height));
  const HDC screen = ::GetDC(nullptr);
  const HDC memory = ::CreateCompatibleDC(screen);
  const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, picture.width, picture.height);
  const HGDIOBJ before = ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, picture.width, picture.height, screen, place.left, place.top, SRCCOPY);
  ::SelectObject(memory, before);
  BITMAPINFO format{};
  format.bmiHeader = HeaderOf(picture.width, picture.height);
  ::GetDIBits(memory, bitmap, 0, static_cast<UINT>(picture.height), picture.bytes.data(), &format,
              DIB_RGB_COLORS);
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
  ::ReleaseDC(nullptr, screen);
  return picture;
}

Picture SettledPictureOf(const Window& window) {
  Picture picture = PictureOf(window);
  for (int look = 0; look < kMostLooks; ++look) {
    ::Sleep(kPaintedMs);
    Picture next = PictureOf(window);
    if (std::exchange(picture, std::move(next)) == picture) break;
  }
  return picture;
}

bool HasColours(const Picture& picture) {
  constexpr size_t kEnough = 100;
  return CountDots(picture, 0, [](int least, int most) { return most - least > 60; }) > kEnough;
}

bool HasInkAtTop(const Picture& picture) {
  constexpr int kRows = 16;
  constexpr size_t kEnough = 20;
  const auto first = static_cast<size_t>(std::max(picture.height - kRows, 0));
  return CountDots(picture, first, [](int, int most) { return most < 128; }) > kEnough;
}

bool SaveBitmap(const Picture& picture, const std::string& path) {
  const BITMAPINFOHEADER header = HeaderOf(picture.width, picture.height);
  BITMAPFILEHEADER file{};
  file.bfType = 0x4D42;  // "BM"
  file.bfOffBits = sizeof file + sizeof header;
  file.bfSize = file.bfOffBits + static_cast<DWORD>(picture.bytes.size());
  FILE* stream = ::_wfopen(Widen(path).c_str(), L"wb");
  if (stream == nullptr) return false;
  const bool written =
      std::fwrite(&file, sizeof file, 1, stream) == 1 &&
      std::fwrite(&header, sizeof header, 1, stream) == 1 &&
      std::fwrite(picture.bytes.data(), 1, picture.bytes.size(), stream) == picture.bytes.size();
  return std::fclose(stream) == 0 && written;
}

}  // namespace tarn
