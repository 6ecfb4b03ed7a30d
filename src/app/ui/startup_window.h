#pragma once

#include <functional>
#include <string>
#include <wx/panel.h>

#include "app/main_window_rules.h"

namespace tarn {

// What the start-up window asks of the main window.
struct StartUpActions {
  std::function<void()> new_network;
  std::function<void()> open;
  std::function<void(const std::string& path)> open_file;  // dropped on the window
  std::function<void(RunMode mode)> run;
  std::function<void()> help;
  std::function<void()> about;
  std::function<void()> exit;
};

// The start-up window: selects a network and a mode, and runs it.
class StartUpWindow : public wxPanel {
 public:
  StartUpWindow(wxWindow* parent, StartUpActions actions);

  RunMode Mode() const;
  void SelectMode(RunMode mode);
  void FocusRun();

 private:
  StartUpActions m_actions;
};

}  // namespace tarn
