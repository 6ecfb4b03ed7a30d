#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/log.h>

#include "ui/test_app.h"

// Window tests run within an application of their own, on the display of DISPLAY.

namespace tarn {

bool TestApp::OnInit() {
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
