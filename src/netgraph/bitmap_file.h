#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/status.h"

namespace tarn {

// Pixels row by row from the upper left corner: red, green and blue of each.
struct Raster {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint8_t> rgb;
};

// What the user is told, and then asked, where a display has too many colours for a bitmap file.
struct BitmapRefusal {
  Message told;
  Message offer;
};
// `depth` is that of the display in bits per pixel; files are written from up to 8.
std::optional<BitmapRefusal> CheckBitmapDepth(int32_t depth);

// A Windows bitmap file with a palette: of 1, 4 or 8 bits per pixel, as many as a display of
// `depth` needs. Every colour is exact where the palette has room for all. Otherwise it holds the
// most frequent colours of an even division of those that there are, or, of two, black and white.
std::string BitmapFile(const Raster& raster, int32_t depth);

}  // namespace tarn
