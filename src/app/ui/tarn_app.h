#pragma once

#include <memory>
#include <string>
#include <wx/app.h>

#include "app/application_paths.h"
#include "app/session.h"
#include "app/ui/main_frame.h"
#include "app/ui/window_dialogs.h"

namespace tarn {

// Prepares pictures, resources and idle events; to be called once, when the application has
// begun, before any window is made.
void PrepareWindows();

// The application object.
class TTarnApp : public wxApp {
 public:
  // `file` is opened at the start unless it is empty.
  explicit TTarnApp(std::string file = {});
  bool OnInit() override;
  int OnExit() override;

  // Memory can run out in any event; the program is ended in order then.
  void CallEventHandler(wxEvtHandler* handler, wxEventFunctor& functor,
                        wxEvent& event) const override;
  bool OnExceptionInMainLoop() override;
  void OnUnhandledException() override;

 protected:
  // At once: windows may be in the midst of an event.
  virtual void EndProgram();

 private:
  void EndOutOfMemory();
  void EndIfOutOfMemory();
  void OnSessionEnd(wxCloseEvent& event);

  std::unique_ptr<ApplicationPaths> m_paths;
  std::unique_ptr<Session> m_session;
  std::unique_ptr<WindowDialogs> m_dialogs;
  std::string m_file;                 // to be opened when the window is there
  std::unique_ptr<char[]> m_reserve;  // given back when memory runs out, for the messages
};

}  // namespace tarn
