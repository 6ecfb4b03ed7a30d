#include "netgraph/bitmap_file.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace tarn {
namespace {

using Rgb = std::array<uint8_t, 3>;
constexpr Rgb kBlack = {0, 0, 0};
constexpr Rgb kWhite = {255, 255, 255};
constexpr Rgb kPureBlue = {0, 0, 255};

Raster RasterOf(int32_t width, const std::vector<Rgb>& pixels) {
  Raster raster = {width, static_cast<int32_t>(pixels.size()) / width, {}};
  for (const Rgb& pixel : pixels) raster.rgb.insert(raster.rgb.end(), pixel.begin(), pixel.end());
  return raster;
}

// A bitmap file, read by its own offsets.
class Parsed {
 public:
  explicit Parsed(std::string file) : m_file(std::move(file)) {}

  uint32_t Number(size_t at, size_t bytes) const {
    uint32_t number = 0;
    for (size_t i = bytes; i-- > 0;) number = number * 256 + Byte(at + i);
    return number;
  }
  size_t size() const { return m_file.size(); }
  std::string Magic() const { return m_file.substr(0, 2); }
  uint32_t Offset() const { return Number(10, 4); }
  uint32_t Width() const { return Number(18, 4); }
  uint32_t Height() const { return Number(22, 4); }
  uint32_t Bits() const { return Number(28, 2); }
  size_t RowBytes() const { return (Width() * Bits() + 31) / 32 * 4; }

  Rgb Entry(size_t place) const {
    const size_t at = 14 + Number(14, 4) + 4 * place;
    EXPECT_EQ(Byte(at + 3), 0);
    return {Byte(at + 2), Byte(at + 1), Byte(at)};
  }
  // From the upper left corner.
  Rgb Pixel(size_t x, size_t y) const {
    const size_t bit = x * Bits();
    const size_t at = Offset() + (Height() - 1 - y) * RowBytes() + bit / 8;
    const uint32_t mask = (1U << Bits()) - 1;
    return Entry(Byte(at) >> (8 - Bits() - bit % 8) & mask);
  }
  std::vector<Rgb> Pixels() const {
    std::vector<Rgb> pixels;
    for (size_t y = 0; y < Height(); ++y) {
      for (size_t x = 0; x < Width(); ++x) pixels.push_back(Pixel(x, y));
    }
    return pixels;
  }

 private:
  uint8_t Byte(size_t at) const { return static_cast<uint8_t>(m_file.at(at)); }

  std::string m_file;
};

// As many different colours as wanted, the first ones black and white.
std::vector<Rgb> Colours(size_t count) {
  std::vector<Rgb> colours = {kBlack, kWhite};
  for (size_t i = 2; i < count; ++i) {
    colours.push_back({static_cast<uint8_t>(i * 7), static_cast<uint8_t>(i), 90});
  }
  colours.resize(count);
  return colours;
}

TEST(BitmapFile, IsAStandardFileWithAWholePalette) {
  for (const int32_t depth : {1, 4, 8}) {
    const Parsed file(
        BitmapFile(RasterOf(3, {kBlack, kWhite, kBlack, kWhite, kWhite, kBlack}), depth));
    const size_t palette = size_t{4} << static_cast<size_t>(depth);
    EXPECT_EQ(file.Magic(), "BM");
    EXPECT_EQ(file.Number(2, 4), file.size());
    EXPECT_EQ(file.Number(6, 4), 0U);
    EXPECT_EQ(file.Offset(), 54 + palette);
    EXPECT_EQ(file.Number(14, 4), 40U);
    EXPECT_EQ(file.Width(), 3U);
    EXPECT_EQ(file.Height(), 2U);
    EXPECT_EQ(file.Number(26, 2), 1U) << "planes";
    EXPECT_EQ(file.Bits(), static_cast<uint32_t>(depth));
    EXPECT_EQ(file.Number(30, 4), 0U) << "not compressed";
    EXPECT_EQ(file.Number(34, 4), 8U) << "rows of four bytes";
    EXPECT_EQ(file.Number(46, 4), 1U << static_cast<uint32_t>(depth));
    EXPECT_EQ(file.size(), 54 + palette + 8);
  }
}

TEST(BitmapFile, IsAsDeepAsTheDisplayNeeds) {
  const Raster raster = RasterOf(1, {kWhite});
  const auto bits = [&](int32_t depth) { return Parsed(BitmapFile(raster, depth)).Bits(); };
  EXPECT_EQ(bits(1), 1U);
  EXPECT_EQ(bits(2), 4U);
  EXPECT_EQ(bits(4), 4U);
  EXPECT_EQ(bits(5), 8U);
  EXPECT_EQ(bits(8), 8U);
}

TEST(BitmapFile, KeepsEveryPixelWhereThePaletteHasRoom) {
  const struct {
    int32_t depth;
    size_t colours;
  } kCases[] = {{1, 2}, {4, 16}, {8, 256}};
  for (const auto& [depth, count] : kCases) {
    for (const int32_t width : {1, 2, 7, 8, 9, 31, 32, 33}) {
      std::vector<Rgb> pixels = Colours(count);
      while (pixels.size() % static_cast<size_t>(width) != 0) pixels.push_back(kWhite);
      EXPECT_EQ(Parsed(BitmapFile(RasterOf(width, pixels), depth)).Pixels(), pixels)
          << depth << " bits, " << width << " wide";
    }
  }
}

TEST(BitmapFile, IsBlackAndWhiteWhereTwoColoursAreTooFew) {
  const Parsed file(
      BitmapFile(RasterOf(5, {kWhite, {225, 225, 225}, kPureBlue, {0, 150, 0}, {255, 0, 0}}), 1));
  EXPECT_EQ(file.Pixels(), (std::vector<Rgb>{kWhite, kWhite, kBlack, kBlack, kBlack}));
}

// A page with a thin line, its colour fading into the page.
TEST(BitmapFile, KeepsThePageAndTheCurveWhereColoursAreTooMany) {
  std::vector<Rgb> pixels(2000, kWhite);
  for (size_t i = 0; i < 20; ++i) pixels[i] = kPureBlue;
  for (size_t i = 0; i < 255; ++i) {
    const auto fade = static_cast<uint8_t>(i);
    pixels[100 + i] = {fade, fade, 255};
    pixels[500 + i] = {fade, fade, fade};
  }
  for (const int32_t depth : {4, 8}) {
    const std::vector<Rgb> read = Parsed(BitmapFile(RasterOf(50, pixels), depth)).Pixels();
    EXPECT_EQ(read[0], kPureBlue);
    EXPECT_EQ(read[1999], kWhite);
    const int allowed = depth == 4 ? 64 : 4;
    for (size_t i = 0; i < pixels.size(); ++i) {
      for (size_t part = 0; part < 3; ++part) {
        EXPECT_NEAR(read[i][part], pixels[i][part], allowed) << i;
      }
    }
  }
}

TEST(BitmapFile, UsesTheWholePaletteWhereColoursAreTooMany) {
  std::vector<Rgb> pixels;
  for (size_t i = 0; i < 4096; ++i) {
    pixels.push_back({static_cast<uint8_t>(i % 16 * 17), static_cast<uint8_t>(i / 16 % 16 * 17),
                      static_cast<uint8_t>(i / 256 * 17)});
  }
  const std::vector<Rgb> read = Parsed(BitmapFile(RasterOf(64, pixels), 8)).Pixels();
  EXPECT_EQ(std::set<Rgb>(read.begin(), read.end()).size(), 256U);
}

TEST(BitmapFile, OfNothingIsHeadersAndPalette) {
  EXPECT_EQ(Parsed(BitmapFile({}, 8)).size(), 54U + 1024U);
}

TEST(BitmapFile, IsRefusedOnADisplayOfMoreThan256Colours) {
  EXPECT_FALSE(CheckBitmapDepth(1));
  EXPECT_FALSE(CheckBitmapDepth(8));
  for (const int32_t depth : {9, 16, 24, 32}) {
    const std::optional<BitmapRefusal> refusal = CheckBitmapDepth(depth);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->told.caption, "Bitmap Save Error");
    EXPECT_EQ(refusal->told.text, "Display mode error: 256 color mode maximum under Tarn!");
    EXPECT_EQ(refusal->told.icon, MessageIcon::kExclamation);
    EXPECT_EQ(refusal->offer.caption, "Bitmap Save Error");
    EXPECT_EQ(refusal->offer.text, "Copy graph to clipboard instead?");
  }
}

}  // namespace
}  // namespace tarn
