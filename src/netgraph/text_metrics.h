#pragma once

#include <string_view>

namespace tarn {

// The fonts that the width below is that of, or wider: for a picture file that is drawn elsewhere.
inline constexpr std::string_view kPictureFonts = "DejaVu Sans, Verdana, Arial, sans-serif";

// How wide a line of text in one of these fonts is at most, by the widths of DejaVu Sans; a
// character beyond ASCII counts as wide as the font is high.
double PictureTextWidth(std::string_view text, double size);

}  // namespace tarn
