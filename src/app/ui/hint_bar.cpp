#include "app/ui/hint_bar.h"

#include <algorithm>
#include <array>

#include "resources/commands.h"
#include "resources/controls.h"

namespace tarn {

HintBar::HintBar(wxFrame& frame, std::string_view longest_status) : wxStatusBar(&frame) {
  // Beside the text its borders, and the grip of the window.
  m_wanted = GetTextExtent(Wide(longest_status)).x + 2 * GetSize().y;
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Divide();
    event.Skip();
  });
  Divide();
}

void HintBar::GiveAllToHints(bool all) {
  m_all_hints = all;
  Divide();
}

void HintBar::Divide() {
  const int most = m_all_hints ? 1 : 2 * GetClientSize().x / 3;
  const std::array widths = {-1, std::max(std::min(m_wanted, most), 1)};
  SetFieldsCount(kStatusFields, widths.data());
}

}  // namespace tarn
