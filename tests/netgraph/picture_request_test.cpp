#include "netgraph/picture_request.h"

#include <gtest/gtest.h>
#include <string>

#include "netgraph/graph_file.h"

namespace tarn {
namespace {

std::string Read(std::string_view text) {
  Size size;
  const Status read = ParsePictureSize(text, size);
  return read.ok() ? PictureSizeText(size) : "refused";
}

TEST(PictureSize, IsReadHoweverItsNumbersAreParted) {
  for (const char* text : {"800 x 600", "800x600", "800X600", "800,600", "800, 600", "800 600",
                           " 800  x\t600 ", "0800x0600"}) {
    EXPECT_EQ(Read(text), "800 x 600") << text;
  }
}

TEST(PictureSize, IsReadUpToItsLimits) {
  EXPECT_EQ(Read("300 x 200"), "300 x 200");
  EXPECT_EQ(Read("8000 x 6000"), "8000 x 6000");
}

TEST(PictureSize, IsRefusedBeyondItsLimits) {
  for (const char* text :
       {"299 x 200", "300 x 199", "8001 x 6000", "8000 x 6001", "0 x 0", "99999999999 x 600"}) {
    EXPECT_EQ(Read(text), "refused") << text;
  }
}

TEST(PictureSize, IsRefusedWhereItIsNoTwoNumbers) {
  for (const char* text : {"", " ", "800", "800 x", "x 600", "800 x 600 x 3", "800 x x 600",
                           "800 by 600", "-800 x 600", "+800 x 600", "800+600", "800-600",
                           "800.5 x 600", "nan x 600", "0x320 x 600"}) {
    EXPECT_EQ(Read(text), "refused") << text;
  }
}

TEST(PictureSize, SaysWhatItMayBe) {
  Size size = {1, 2};
  EXPECT_EQ(ParsePictureSize("big", size).message(),
            "The size of a picture is two numbers from 300 x 200 to 8000 x 6000");
  EXPECT_EQ(size.width, 1);
  EXPECT_EQ(size.height, 2);
}

TEST(PictureSize, IsOfferedWithinItsLimits) {
  EXPECT_EQ(PictureSizeText({640, 479.6}), "640 x 480");
  EXPECT_EQ(PictureSizeText({20, 9999}), "300 x 6000");
}

TEST(PictureKind, IsToldByTheExtension) {
  PictureKind kind = PictureKind::kSvg;
  EXPECT_TRUE(PictureKindOf("/home/me/a.png", kind).ok());
  EXPECT_EQ(kind, PictureKind::kPng);
  EXPECT_TRUE(PictureKindOf("/home/me/a.b.SvG", kind).ok());
  EXPECT_EQ(kind, PictureKind::kSvg);
}

TEST(PictureKind, IsNoOther) {
  PictureKind kind = PictureKind::kSvg;
  for (const char* path :
       {"graph.jpg", "run.1", "graph", "png", ".png", "graph.png.txt", "/home/me/.png", ""}) {
    EXPECT_EQ(PictureKindOf(path, kind).message(),
              "A picture is PNG or SVG: its name has to end in .png or .svg")
        << path;
  }
}

}  // namespace
}  // namespace tarn
