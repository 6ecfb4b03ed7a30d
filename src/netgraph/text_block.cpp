#include "netgraph/text_block.h"

#include <algorithm>
#include <string_view>

#include "base/utf8.h"

namespace tarn {
namespace {

constexpr double kSmallestSize = 1.0;

// As much of a text as fits a line: at least a character; up to a blank where there is one.
size_t FittingLength(const Canvas& canvas, std::string_view text, double size, double width) {
  if (canvas.TextWidth(text, size) <= width) return text.size();
  size_t fitting = 0;
  size_t word_end = 0;
  while (fitting < text.size()) {
    const size_t next = fitting + CharacterLength(text.substr(fitting));
    if (fitting > 0 && canvas.TextWidth(text.substr(0, next), size) > width) break;
    if (text[fitting] == ' ') word_end = fitting;
    fitting = next;
  }
  if (fitting < text.size() && text[fitting] == ' ') return fitting;
  return word_end > 0 ? word_end : fitting;
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}
std::string_view WithoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Lines have no blanks around them.
std::vector<std::string> Break(const Canvas& canvas, std::string_view text, double size,
                               double width) {
  std::vector<std::string> lines;
  text = WithoutLeadingBlanks(WithoutTrailingBlanks(text));
  while (!text.empty()) {
    const size_t length = FittingLength(canvas, text, size, width);
    lines.emplace_back(WithoutTrailingBlanks(text.substr(0, length)));
    text = WithoutLeadingBlanks(text.substr(length));
  }
  return lines;
}

}  // namespace

double TextBlock::height() const {
  return static_cast<double>(lines.size()) * size * kLineSpacing;
}

TextBlock FitText(const Canvas& canvas, const std::string& text, double size, double width,
                  double height) {
  TextBlock block;
  block.size = size;
  block.lines = Break(canvas, text, block.size, width);
  while (block.height() > height && block.size > kSmallestSize) {
    block.size *= kSmaller;
    block.lines = Break(canvas, text, block.size, width);
  }
  return block;
}

}  // namespace tarn
