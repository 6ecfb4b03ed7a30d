#include <gtest/gtest.h>
#include <wx/debug.h>
#include <wx/init.h>
#include <wx/log.h>

#include "ui/test_app.h"

// Window tests run within an application of their own, on the display of DISPLAY.

namespace tarn {

namespace {

// A box would wait for an answer, and the test go on as if nothing had been wrong.
void FailOnAssert(const wxString& file, int line, const wxString& function,
                  const wxString& condition, const wxString& message) {
  ADD_FAILURE() << file << ":" << line << ": " << function << ": " << condition << " " << message;
}

}  // namespace

bool TestApp::OnInit() {
  wxSetAssertHandler(FailOnAssert);
  // A message box would wait for an answer.
  delete wxLog::SetActiveTarget(new wxLogStderr);
  PrepareWindows();
  return true;
}

void TestApp::EndProgram() {
  ++m_ends;
}

}  // namespace tarn

wxIMPLEMENT_APP_NO_MAIN(tarn::TestApp);

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) return 1;
  const int failed = RUN_ALL_TESTS();
  wxTheApp->OnExit();
  wxEntryCleanup();
  return failed;
}
