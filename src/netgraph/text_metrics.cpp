#include "netgraph/text_metrics.h"

#include <array>
#include <cstdint>

#include "base/utf8.h"

namespace tarn {
namespace {

constexpr char32_t kFirst = ' ';
// Advance widths of the characters from the blank to '~', in thousandths of the font's height,
// rounded up.
constexpr std::array<uint16_t, 95> kWidths = {
    318, 401, 460, 838, 637, 951, 780, 275, 391, 391, 501, 838, 318, 361,  318, 337, 637, 637, 637,
    637, 637, 637, 637, 637, 637, 637, 337, 337, 838, 838, 838, 531, 1001, 685, 687, 699, 771, 632,
    576, 775, 752, 295, 295, 656, 558, 863, 749, 788, 604, 788, 695, 635,  611, 732, 685, 989, 686,
    611, 686, 391, 337, 391, 838, 501, 501, 613, 635, 550, 635, 616, 353,  635, 634, 278, 278, 580,
    278, 975, 634, 612, 635, 635, 412, 521, 393, 634, 592, 818, 592, 592,  525, 637, 337, 637, 838};
constexpr double kThousandth = 0.001;

}  // namespace

double PictureTextWidth(std::string_view text, double size) {
  double width = 0;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    const bool listed = character >= kFirst && character < kFirst + kWidths.size();
    width += listed ? kWidths[character - kFirst] * kThousandth : 1.0;
  }
  return width * size;
}

}  // namespace tarn
