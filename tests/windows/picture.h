#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "windows/window.h"

namespace tarn {

// What is on the screen where a window is.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> bytes;  // blue, green, red; the lowest row first, padded to 4 bytes

  friend bool operator==(const Picture&, const Picture&) = default;
};

Picture PictureOf(const Window& window);
// When it has been painted: it looks the same twice.
Picture SettledPictureOf(const Window& window);
// Curves or contours, on white with black letters.
bool HasColours(const Picture& picture);
// Letters or lines near the upper edge.
bool HasInkAtTop(const Picture& picture);
bool SaveBitmap(const Picture& picture, const std::string& path);

}  // namespace tarn
