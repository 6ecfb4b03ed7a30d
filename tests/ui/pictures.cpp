#include "ui/pictures.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/image.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>
#include <wx/utils.h>

#include "resources/controls.h"

namespace tarn {
namespace {

bool ShowsAText(const wxWindow& control) {
  const auto* text = dynamic_cast<const wxStaticText*>(&control);
  if (text != nullptr) return !text->IsEllipsized();
  return dynamic_cast<const wxButton*>(&control) != nullptr ||
         dynamic_cast<const wxCheckBox*>(&control) != nullptr ||
         dynamic_cast<const wxRadioButton*>(&control) != nullptr;
}

void ExpectWhole(const wxWindow& window, const std::string& name) {
  const wxRect room(window.GetClientSize());
  for (const wxWindow* child : window.GetChildren()) {
    // A status bar lies outside the room of its frame's client.
    const bool is_bar = dynamic_cast<const wxStatusBar*>(child) != nullptr;
    if (!child->IsShown() || child->IsTopLevel() || is_bar) continue;
    const std::string what = name + ": " + Utf8(child->GetLabel());
    EXPECT_TRUE(room.Contains(child->GetRect())) << what << " lies partly outside";
    if (ShowsAText(*child)) {
      EXPECT_GE(child->GetSize().x,
                child->GetTextExtent(wxControl::RemoveMnemonics(child->GetLabel())).x)
          << what;
    }
    ExpectWhole(*child, name);
  }
}

// What the display keeps of its screen: an X window dump, with its header in big-endian words and
// 32 bits a pixel, blue first.
class Screen {
 public:
  explicit Screen(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    m_dump = {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_GT(m_dump.size(), kHeaderBytes) << path;
  }

  wxImage Part(const wxRect& area) const {
    const size_t colours = Word(19);
    const size_t line_bytes = Word(12);
    const size_t pixels = Word(0) + colours * kColourBytes;
    wxImage image(area.GetSize());
    for (int y = 0; y < area.height; ++y) {
      for (int x = 0; x < area.width; ++x) {
        const size_t at = pixels + static_cast<size_t>(area.y + y) * line_bytes +
                          static_cast<size_t>(area.x + x) * 4;
        image.SetRGB(x, y, Byte(at + 2), Byte(at + 1), Byte(at));
      }
    }
    return image;
  }

 private:
  static constexpr size_t kHeaderBytes = 100;
  static constexpr size_t kColourBytes = 12;

  unsigned char Byte(size_t at) const { return static_cast<unsigned char>(m_dump.at(at)); }
  size_t Word(size_t index) const {
    size_t word = 0;
    for (size_t i = 0; i < 4; ++i) word = word * 256 + Byte(index * 4 + i);
    return word;
  }

  std::string m_dump;
};

void Keep(const wxWindow& window, const wxString& path) {
  wxString screen;
  ASSERT_TRUE(wxGetEnv("TARN_SCREEN", &screen));
  const wxImage picture = Screen(Utf8(screen)).Part(window.GetScreenRect());
  EXPECT_TRUE(picture.SaveFile(path, wxBITMAP_TYPE_PNG)) << Utf8(path);
}

}  // namespace

void LookAt(wxWindow& window, const std::string& name) {
  ExpectWhole(window, name);
  wxString folder;
  if (!wxGetEnv("TARN_SCREENSHOTS", &folder) || folder.empty()) return;
  Keep(window, folder + "/" + Wide(name) + ".png");
}

}  // namespace tarn
