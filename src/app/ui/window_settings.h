#pragma once

#include <wx/gdicmn.h>
#include <wx/string.h>

namespace tarn {

// Where the main window was and how large each of its clients, kept between sessions in the
// user's settings folder. What cannot be read or written is done without.
class WindowSettings {
 public:
  WindowSettings();

  // On no display when none is known.
  wxPoint Position() const;
  // By the name of the client; 0, 0 when none is known.
  wxSize Size(const wxString& client) const;
  void Remember(const wxPoint& position, const wxString& client, const wxSize& size);

 private:
  wxString m_path;
};

}  // namespace tarn
