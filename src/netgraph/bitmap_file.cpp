#include "netgraph/bitmap_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

#include "netgraph/messages.h"

namespace tarn {
namespace {

constexpr int32_t kDeepestPalette = 8;      // bits per pixel
constexpr uint32_t kFileHeaderBytes = 14;   // BITMAPFILEHEADER
constexpr uint32_t kInfoHeaderBytes = 40;   // BITMAPINFOHEADER
constexpr uint32_t kPaletteEntryBytes = 4;  // blue, green, red and a zero
constexpr uint32_t kPixelsPerMetre = 3780;  // 96 to the inch

using Rgb = std::array<uint8_t, 3>;
constexpr Rgb kBlackRgb = {0, 0, 0};
constexpr Rgb kWhiteRgb = {255, 255, 255};

struct CountedColour {
  Rgb colour = {};
  size_t count = 0;
};
using ColourBox = std::vector<CountedColour>;

int32_t BitsFor(int32_t depth) {
  if (depth <= 1) return 1;
  return depth <= 4 ? 4 : kDeepestPalette;
}

Rgb PixelAt(const Raster& raster, size_t pixel) {
  return {raster.rgb[3 * pixel], raster.rgb[3 * pixel + 1], raster.rgb[3 * pixel + 2]};
}

ColourBox CountColours(const Raster& raster) {
  std::map<Rgb, size_t> counts;
  for (size_t pixel = 0; pixel < raster.rgb.size() / 3; ++pixel) ++counts[PixelAt(raster, pixel)];
  ColourBox colours;
  for (const auto& [colour, count] : counts) colours.push_back({colour, count});
  return colours;
}

// The colour component that differs most within a box, and by how much.
struct Spread {
  size_t component = 0;
  int32_t lowest = 0;
  int32_t width = 0;
};

Spread SpreadOf(const ColourBox& box) {
  Spread widest;
  for (size_t component = 0; component < 3; ++component) {
    const auto [low, high] = std::ranges::minmax_element(
        box, {}, [&](const CountedColour& entry) { return entry.colour[component]; });
    const int32_t lowest = low->colour[component];
    const int32_t width = high->colour[component] - lowest;
    if (width > widest.width) widest = {component, lowest, width};
  }
  return widest;
}

// Moves the upper half of a box, along the component that differs most, to one of its own.
ColourBox SplitOff(ColourBox& box, const Spread& spread) {
  const auto upper = std::stable_partition(box.begin(), box.end(), [&](const CountedColour& entry) {
    return entry.colour[spread.component] <= spread.lowest + spread.width / 2;
  });
  ColourBox split(upper, box.end());
  box.erase(upper, box.end());
  return split;
}

// By the widest box each time, however few pixels have its colours: a thin curve counts.
std::vector<ColourBox> Divide(ColourBox colours, size_t most) {
  std::vector<ColourBox> boxes = {std::move(colours)};
  std::vector<Spread> spreads = {SpreadOf(boxes[0])};
  while (boxes.size() < most) {
    const auto widest = std::ranges::max_element(spreads, {}, &Spread::width);
    if (widest->width == 0) break;
    const auto chosen = static_cast<size_t>(widest - spreads.begin());
    boxes.push_back(SplitOff(boxes[chosen], spreads[chosen]));
    spreads[chosen] = SpreadOf(boxes[chosen]);
    spreads.push_back(SpreadOf(boxes.back()));
  }
  return boxes;
}

bool IsLight(const Rgb& colour) {
  return 299 * colour[0] + 587 * colour[1] + 114 * colour[2] >= 128 * 1000;
}

struct Palette {
  std::vector<Rgb> colours;
  std::map<Rgb, uint8_t> places;  // of every colour of the raster
};

Palette BlackAndWhite(const ColourBox& colours) {
  Palette palette = {{kBlackRgb, kWhiteRgb}, {}};
  for (const CountedColour& entry : colours) {
    palette.places[entry.colour] = IsLight(entry.colour) ? 1 : 0;
  }
  return palette;
}

Palette PaletteFor(ColourBox colours, size_t most) {
  if (colours.empty()) return {};
  if (most == 2 && colours.size() > most) return BlackAndWhite(colours);
  Palette palette;
  for (const ColourBox& box : Divide(std::move(colours), most)) {
    const auto place = static_cast<uint8_t>(palette.colours.size());
    palette.colours.push_back(std::ranges::max_element(box, {}, &CountedColour::count)->colour);
    for (const CountedColour& entry : box) palette.places[entry.colour] = place;
  }
  return palette;
}

// Numbers of a bitmap file have their lowest byte first.
void Append(std::string& file, uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    file.push_back(static_cast<char>(static_cast<uint8_t>(value >> (8 * i))));
  }
}

struct Measures {
  uint32_t bits = 0;
  uint32_t palette_bytes = 0;
  size_t row_bytes = 0;  // a multiple of 4
};

Measures MeasuresOf(const Raster& raster, int32_t depth) {
  const auto bits = static_cast<uint32_t>(BitsFor(depth));
  const size_t row_bits = static_cast<size_t>(raster.width) * bits;
  return {bits, kPaletteEntryBytes << bits, (row_bits + 31) / 32 * 4};
}

void AppendHeaders(std::string& file, const Raster& raster, const Measures& measures) {
  const uint32_t offset = kFileHeaderBytes + kInfoHeaderBytes + measures.palette_bytes;
  const auto image_bytes =
      static_cast<uint32_t>(measures.row_bytes * static_cast<size_t>(raster.height));
  file += "BM";
  Append(file, offset + image_bytes, 4);
  Append(file, 0, 4);
  Append(file, offset, 4);
  Append(file, kInfoHeaderBytes, 4);
  Append(file, static_cast<uint32_t>(raster.width), 4);
  Append(file, static_cast<uint32_t>(raster.height), 4);
  Append(file, 1, 2);  // planes
  Append(file, measures.bits, 2);
  Append(file, 0, 4);  // not compressed
  Append(file, image_bytes, 4);
  Append(file, kPixelsPerMetre, 4);
  Append(file, kPixelsPerMetre, 4);
  Append(file, 1U << measures.bits, 4);
  Append(file, 0, 4);  // all colours are important
}

void AppendPalette(std::string& file, const Palette& palette, const Measures& measures) {
  for (size_t i = 0; i < measures.palette_bytes / kPaletteEntryBytes; ++i) {
    const Rgb colour = i < palette.colours.size() ? palette.colours[i] : kBlackRgb;
    for (const uint8_t part : {colour[2], colour[1], colour[0], uint8_t{0}}) {
      file.push_back(static_cast<char>(part));
    }
  }
}

void AppendRow(std::string& file, const Raster& raster, size_t row, const Palette& palette,
               const Measures& measures) {
  const auto width = static_cast<size_t>(raster.width);
  std::string bytes(measures.row_bytes, '\0');
  for (size_t x = 0; x < width; ++x) {
    const uint32_t place = palette.places.find(PixelAt(raster, row * width + x))->second;
    const size_t bit = x * measures.bits;
    // The first pixel is in the highest bits.
    const uint32_t shifted = place << (8 - measures.bits - bit % 8);
    bytes[bit / 8] = static_cast<char>(static_cast<uint8_t>(bytes[bit / 8]) | shifted);
  }
  file += bytes;
}

}  // namespace

std::optional<BitmapRefusal> CheckBitmapDepth(int32_t depth) {
  if (depth <= kDeepestPalette) return std::nullopt;
  const std::string caption(kBitmapSaveCaption);
  return BitmapRefusal{{caption, std::string(kBitmapDepth), MessageIcon::kExclamation},
                       {caption, std::string(kCopyInstead), MessageIcon::kQuestion}};
}

std::string BitmapFile(const Raster& raster, int32_t depth) {
  const Measures measures = MeasuresOf(raster, depth);
  const Palette palette = PaletteFor(CountColours(raster), size_t{1} << measures.bits);
  std::string file;
  AppendHeaders(file, raster, measures);
  AppendPalette(file, palette, measures);
  for (auto row = static_cast<size_t>(raster.height); row-- > 0;) {
    AppendRow(file, raster, row, palette, measures);
  }
  return file;
}

}  // namespace tarn
