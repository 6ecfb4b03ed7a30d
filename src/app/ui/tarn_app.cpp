#include "app/ui/tarn_app.h"

#include <cstdlib>
#include <new>
#include <wx/cmdline.h>
#include <wx/image.h>
#include <wx/xrc/xmlres.h>

#include "app/messages.h"
#include "app/ui/messages.h"
#include "base/clock.h"
#include "resources/controls.h"
#include "resources/resources.h"

namespace tarn {
namespace {

constexpr size_t kReserveBytes = size_t{4} << 20U;

}  // namespace

void PrepareWindows() {
  wxIdleEvent::SetMode(wxIDLE_PROCESS_SPECIFIED);
  wxUpdateUIEvent::SetMode(wxUPDATE_UI_PROCESS_SPECIFIED);
  wxImage::AddHandler(new wxPNGHandler);
  wxXmlResource::Get()->InitAllHandlers();
  InitTarnResources();
}

bool TTarnApp::OnInit() {
  SetAppName("tarn");
  SetAppDisplayName("Tarn");
  if (!wxApp::OnInit()) return false;
  m_reserve = std::make_unique<char[]>(kReserveBytes);
  PrepareWindows();
  m_paths = std::make_unique<ApplicationPaths>(FormApplicationPaths());
  m_session = std::make_unique<Session>();
  m_dialogs = std::make_unique<WindowDialogs>(*m_paths);
  auto* frame = new TMain(*m_session, *m_dialogs, *m_paths, SteadyClock());
  SetTopWindow(frame);
  frame->Show();
  if (!m_file.empty()) frame->OpenFile(m_file);
  return true;
}

int TTarnApp::OnExit() {
  m_dialogs.reset();
  m_session.reset();
  return wxApp::OnExit();
}

void TTarnApp::OnInitCmdLine(wxCmdLineParser& parser) {
  wxApp::OnInitCmdLine(parser);
  parser.AddParam("network file", wxCMD_LINE_VAL_STRING, wxCMD_LINE_PARAM_OPTIONAL);
}

bool TTarnApp::OnCmdLineParsed(wxCmdLineParser& parser) {
  if (parser.GetParamCount() > 0) m_file = Utf8(parser.GetParam(0));
  return wxApp::OnCmdLineParsed(parser);
}

void TTarnApp::CallEventHandler(wxEvtHandler* handler, wxEventFunctor& functor,
                                wxEvent& event) const {
  try {
    wxApp::CallEventHandler(handler, functor, event);
  } catch (const std::bad_alloc&) {
    const_cast<TTarnApp*>(this)->EndOutOfMemory();
  }
}

void TTarnApp::EndOutOfMemory() {
  m_reserve.reset();
  auto* frame = dynamic_cast<TMain*>(GetTopWindow());
  if (frame != nullptr) frame->Abandon();
  TellOutOfMemory(*m_dialogs);
  // Windows that are in the midst of an event are left as they are; the files are closed.
  delete m_session.release();
  std::_Exit(EXIT_FAILURE);
}

void TellOutOfMemory(Dialogs& dialogs) {
  dialogs.Tell(kTarnErrorCaption, kOutOfMemory);
  dialogs.Tell(kTarnErrorCaption, kAborting);
}

}  // namespace tarn
