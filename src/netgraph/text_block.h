#pragma once

#include <string>
#include <vector>

#include "netgraph/canvas.h"

namespace tarn {

// Text in lines that fit a given place.
struct TextBlock {
  std::vector<std::string> lines;
  double size = 0;  // height of the font, pixels

  double height() const;
};

// Breaks a text between words, within one where it is too long for a line, and takes a smaller font
// where all its lines would be higher than `height`. Empty text has no line.
TextBlock FitText(const Canvas& canvas, const std::string& text, double size, double width,
                  double height);

// From a font that is too large to the next one.
inline constexpr double kSmaller = 0.9;

// From one line to the next, in heights of the font.
inline constexpr double kLineSpacing = 1.25;

}  // namespace tarn
