#include "netgraph/text_block.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "netgraph/text_metrics.h"

namespace tarn {
namespace {

using Lines = std::vector<std::string>;
constexpr double kAnyHeight = 1e9;

size_t CharacterCount(std::string_view text) {
  size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(CharacterLength(text));
  return count;
}

class BlankCanvas : public Canvas {
 public:
  Size size() const override { return {}; }
  void DrawRect(Role, const Rect&, const Colour&, const std::optional<Pen>&) override {}
  void DrawLine(Role, const Point&, const Point&, const Pen&) override {}
  void DrawText(const TextLine&) override {}
  void FillPolygons(Role, const std::vector<Polygon>&, const Colour&) override {}
  void DrawCurve(Role, const CurveShape&) override {}
  void BeginClip(const Rect&) override {}
  void EndClip() override {}
};

// Every character is half as wide as the font is high.
class FixedWidthCanvas : public BlankCanvas {
 public:
  double TextWidth(std::string_view text, double size) const override {
    return static_cast<double>(CharacterCount(text)) * size / 2;
  }
};

class PictureCanvas : public BlankCanvas {
 public:
  double TextWidth(std::string_view text, double size) const override {
    return PictureTextWidth(text, size);
  }
};

// In a font of 2 pixels, whose characters are 1 wide.
Lines LinesOf(const std::string& text, double characters) {
  return FitText(FixedWidthCanvas(), text, 2, characters, kAnyHeight).lines;
}

std::string WithoutBlanks(std::string text) {
  std::erase(text, ' ');
  return text;
}

std::string Joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

TEST(FitText, LeavesTextThatFitsOnOneLine) {
  EXPECT_EQ(LinesOf("Average Error", 13), Lines{"Average Error"});
  EXPECT_EQ(LinesOf("Average Error", 1000), Lines{"Average Error"});
}

TEST(FitText, BreaksBetweenWords) {
  EXPECT_EQ(LinesOf("Average Error", 12), (Lines{"Average", "Error"}));
  EXPECT_EQ(LinesOf("Average Error", 7), (Lines{"Average", "Error"}));
  EXPECT_EQ(LinesOf("one two three four", 9), (Lines{"one two", "three", "four"}));
  EXPECT_EQ(LinesOf("one two three four", 10), (Lines{"one two", "three four"}));
}

TEST(FitText, BreaksWordsThatAreTooLongForALine) {
  EXPECT_EQ(LinesOf("abcdefghij", 4), (Lines{"abcd", "efgh", "ij"}));
  EXPECT_EQ(LinesOf("an abcdefghij so", 5), (Lines{"an", "abcde", "fghij", "so"}));
}

TEST(FitText, TakesACharacterAtLeast) {
  EXPECT_EQ(LinesOf("abc", 0.5), (Lines{"a", "b", "c"}));
  EXPECT_EQ(LinesOf("a bc", 0), (Lines{"a", "b", "c"}));
  EXPECT_EQ(LinesOf("abc", -5), (Lines{"a", "b", "c"}));
}

TEST(FitText, KeepsTheBytesOfACharacterTogether) {
  EXPECT_EQ(LinesOf("ßäöü", 2), (Lines{"ßä", "öü"}));
  EXPECT_EQ(LinesOf("気象予報", 3), (Lines{"気象予", "報"}));
  EXPECT_EQ(LinesOf("😀😀", 0.1), (Lines{"😀", "😀"}));
  EXPECT_EQ(LinesOf("für jede Größe", 5), (Lines{"für", "jede", "Größe"}));
}

TEST(FitText, HoldsWhatIsNoText) {
  EXPECT_EQ(LinesOf("\xff\xfe\xfd", 2), (Lines{"\xff\xfe", "\xfd"}));
  EXPECT_EQ(LinesOf("a\xc3", 1), (Lines{"a", "\xc3"}));
}

TEST(FitText, DropsTheBlanksAtABreak) {
  EXPECT_EQ(LinesOf("one     two", 4), (Lines{"one", "two"}));
  EXPECT_EQ(LinesOf("one     two", 6), (Lines{"one", "two"}));
  EXPECT_EQ(LinesOf("one     two", 3), (Lines{"one", "two"}));
}

TEST(FitText, KeepsTheBlanksWithinALine) {
  EXPECT_EQ(LinesOf("a   b", 5), Lines{"a   b"});
  EXPECT_EQ(LinesOf("a   b cd", 6), (Lines{"a   b", "cd"}));
}

TEST(FitText, DropsBlanksAroundTheText) {
  EXPECT_EQ(LinesOf("   one two", 3), (Lines{"one", "two"}));
  EXPECT_EQ(LinesOf(" title ", 5), Lines{"title"});
  EXPECT_EQ(LinesOf("     abcdef", 4), (Lines{"abcd", "ef"}));
  EXPECT_EQ(LinesOf("one   ", 3), Lines{"one"});
}

TEST(FitText, HasNoLineForEmptyText) {
  const TextBlock block = FitText(FixedWidthCanvas(), "", 12, 100, 0);
  EXPECT_TRUE(block.lines.empty());
  EXPECT_EQ(block.height(), 0);
  EXPECT_EQ(block.size, 12);
  EXPECT_TRUE(LinesOf("    ", 2).empty());
}

TEST(FitText, IsAsHighAsItsLinesAndTheSpaceBetweenThem) {
  const TextBlock block = FitText(FixedWidthCanvas(), "one two three", 10, 25, kAnyHeight);
  EXPECT_EQ(block.lines.size(), 3U);
  EXPECT_EQ(block.size, 10);
  EXPECT_NEAR(block.height(), 37.5, 1e-12);
}

TEST(FitText, KeepsTheFontWhereTheHeightIsEnough) {
  EXPECT_EQ(FitText(FixedWidthCanvas(), "one two", 10, 25, 25).size, 10);
  EXPECT_EQ(FitText(FixedWidthCanvas(), "one two", 10, 35, 12.5).size, 10);
}

TEST(FitText, TakesASmallerFontUntilTheHeightIsEnough) {
  const TextBlock little = FitText(FixedWidthCanvas(), "one two", 10, 25, 24.9);
  EXPECT_LT(little.size, 10);
  EXPECT_GT(little.size, 8);
  EXPECT_EQ(little.lines, (Lines{"one", "two"}));
  const TextBlock single = FitText(FixedWidthCanvas(), "one two", 10, 25, 12.5);
  EXPECT_EQ(single.lines, Lines{"one two"});
  EXPECT_LE(single.size, 25 / 3.5);
  EXPECT_GT(single.size, 6);
}

TEST(FitText, EndsAtASmallestFont) {
  for (const double height : {0.0, -1.0, 0.001}) {
    const TextBlock block = FitText(FixedWidthCanvas(), std::string(1000, 'w'), 16, 10, height);
    EXPECT_LE(block.size, 1);
    EXPECT_GT(block.size, 0.8);
    EXPECT_EQ(Joined(block.lines), std::string(1000, 'w'));
  }
}

struct Place {
  double size;
  double width;
  double height;
};

// What is wrong with a text in a place; nothing of a block that fits.
std::string Fault(const Canvas& canvas, const std::string& text, const Place& place) {
  const TextBlock block = FitText(canvas, text, place.size, place.width, place.height);
  if (block.size > place.size) return "larger font";
  if (block.height() > place.height && block.size > 1) return "too high";
  if (WithoutBlanks(Joined(block.lines)) != WithoutBlanks(text)) return "text changed";
  for (const std::string& line : block.lines) {
    if (line.empty()) return "empty line";
    if (line.front() == ' ' || line.back() == ' ') return "blank around a line";
    if (std::ranges::count(line, '\xef') > 0) return "character broken";
    const bool wide = canvas.TextWidth(line, block.size) > place.width;
    if (wide && CharacterCount(line) > 1) return "too wide";
  }
  return "";
}

void ExpectFits(const Canvas& canvas, const std::string& text) {
  for (const double size : {1.0, 7.5, 13.0, 40.0}) {
    for (const double height : {1.0, 20.0, 60.0, 1000.0}) {
      for (double width = 0.5; width < 800; width *= 1.6) {
        EXPECT_EQ(Fault(canvas, text, {size, width, height}), "")
            << text << ' ' << size << ' ' << width << ' ' << height;
      }
    }
  }
}

TEST(FitText, HasNoLineThatIsTooWideOverASweepOfPlaces) {
  for (const std::string& text :
       {std::string("Input nodes 3, 17 Influence on Output node 2"),
        std::string("  Temperatur in der Wetterstation am Großen Arber,   täglich   gemessen "),
        std::string("Donaudampfschifffahrtsgesellschaft i"), std::string("気象予報 の 誤差😀"),
        std::string(90, 'm'), std::string("i")}) {
    ExpectFits(FixedWidthCanvas(), text);
    ExpectFits(PictureCanvas(), text);
  }
}

// No line could have taken the word that begins the next.
TEST(FitText, FillsItsLines) {
  const FixedWidthCanvas canvas;
  const std::string text = "of the points of a line that follow each other the first and the last";
  for (int width = 6; width < 80; ++width) {
    const Lines lines = LinesOf(text, width);
    for (size_t i = 1; i < lines.size(); ++i) {
      const std::string word = lines[i].substr(0, lines[i].find(' '));
      EXPECT_GT(canvas.TextWidth(lines[i - 1] + ' ' + word, 2), width) << lines[i];
    }
    EXPECT_EQ(lines.size() > 1, static_cast<size_t>(width) < text.size());
  }
}

}  // namespace
}  // namespace tarn
