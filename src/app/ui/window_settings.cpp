#include "app/ui/window_settings.h"

#include <wx/fileconf.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>

namespace tarn {
namespace {

constexpr long kNowhere = -1000000;

wxString SettingsFolder() {
#ifdef __WXMSW__
  return wxStandardPaths::Get().GetUserConfigDir() + "/Tarn";
#else
  wxString base;
  if (!wxGetEnv("XDG_CONFIG_HOME", &base) || base.empty()) base = wxGetHomeDir() + "/.config";
  return base + "/tarn";
#endif
}

// Opened for one look or one change, so that two programs at once lose nothing.
wxFileConfig OpenConfig(const wxString& path) {
  return {"", "", path, "", wxCONFIG_USE_LOCAL_FILE};
}

}  // namespace

WindowSettings::WindowSettings() : m_path(SettingsFolder() + "/windows.ini") {}

wxPoint WindowSettings::Position() const {
  const wxLogNull quiet;
  const wxFileConfig config(OpenConfig(m_path));
  return {static_cast<int>(config.ReadLong("/Main/x", kNowhere)),
          static_cast<int>(config.ReadLong("/Main/y", kNowhere))};
}

wxSize WindowSettings::Size(const wxString& client) const {
  const wxLogNull quiet;
  const wxFileConfig config(OpenConfig(m_path));
  return {static_cast<int>(config.ReadLong("/" + client + "/width", 0)),
          static_cast<int>(config.ReadLong("/" + client + "/height", 0))};
}

void WindowSettings::Remember(const wxPoint& position, const wxString& client, const wxSize& size) {
  const wxLogNull quiet;
  wxFileName::Mkdir(SettingsFolder(), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
  wxFileConfig config(OpenConfig(m_path));
  config.Write("/Main/x", position.x);
  config.Write("/Main/y", position.y);
  config.Write("/" + client + "/width", size.x);
  config.Write("/" + client + "/height", size.y);
}

}  // namespace tarn
