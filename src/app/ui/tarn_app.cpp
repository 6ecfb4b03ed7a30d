#include "app/ui/tarn_app.h"

#include <cstdlib>
#include <new>
#include <utility>
#include <wx/image.h>
#include <wx/xrc/xmlres.h>

#include "base/clock.h"
#include "base/paths.h"
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

TTarnApp::TTarnApp(std::string file) : m_file(std::move(file)) {
  Bind(wxEVT_QUERY_END_SESSION, &TTarnApp::OnSessionEnd, this);
  Bind(wxEVT_END_SESSION, &TTarnApp::OnSessionEnd, this);
}

bool TTarnApp::OnInit() {
  SetAppName("tarn");
  SetAppDisplayName("Tarn");
  m_reserve = std::make_unique<char[]>(kReserveBytes);
  PrepareWindows();
  const std::vector<InterruptedRun> interrupted = ClearTemporaryFolder(TemporaryFolder());
  m_paths = std::make_unique<ApplicationPaths>(FormApplicationPaths());
  m_session = std::make_unique<Session>();
  m_dialogs = std::make_unique<WindowDialogs>(*m_paths);
  auto* frame = new TMain(*m_session, *m_dialogs, *m_paths, SteadyClock());
  SetTopWindow(frame);
  frame->Show();
  // Questions are asked when the window is there.
  frame->CallAfter([this, frame, interrupted] {
    frame->OfferInterruptedRuns(interrupted);
    if (!m_file.empty()) frame->OpenFile(m_file);
  });
  return true;
}

int TTarnApp::OnExit() {
  m_dialogs.reset();
  m_session.reset();
  return wxApp::OnExit();
}

void TTarnApp::CallEventHandler(wxEvtHandler* handler, wxEventFunctor& functor,
                                wxEvent& event) const {
  try {
    wxApp::CallEventHandler(handler, functor, event);
  } catch (const std::bad_alloc&) {
    const_cast<TTarnApp*>(this)->EndOutOfMemory();
  }
}

// What no event handler of ours stands around: calls that were put off, for one.
bool TTarnApp::OnExceptionInMainLoop() {
  EndIfOutOfMemory();
  return true;
}

void TTarnApp::OnUnhandledException() {
  EndIfOutOfMemory();
}

void TTarnApp::EndIfOutOfMemory() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    EndOutOfMemory();
  }
}

// The user may stay as long as the system lets the program object.
void TTarnApp::OnSessionEnd(wxCloseEvent& event) {
  wxWindow* top = GetTopWindow();
  if (top == nullptr || top->IsBeingDeleted()) return;
  if (!top->Close(!event.CanVeto())) event.Veto();
}

void TTarnApp::EndOutOfMemory() {
  m_reserve.reset();
  auto* frame = dynamic_cast<TMain*>(GetTopWindow());
  if (frame != nullptr) frame->EndOutOfMemory();
  EndProgram();
}

void TTarnApp::EndProgram() {
  std::_Exit(EXIT_FAILURE);
}

}  // namespace tarn
