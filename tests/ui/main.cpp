#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/xrc/xmlres.h>

#include "resources/resources.h"

// Window tests run within an application of their own, on the display of DISPLAY.

namespace {

class TestApp : public wxApp {
 public:
  bool OnInit() override {
    // A message box would wait for an answer.
    delete wxLog::SetActiveTarget(new wxLogStderr);
    wxInitAllImageHandlers();
    wxXmlResource::Get()->InitAllHandlers();
    InitTarnResources();
    return true;
  }
};

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(TestApp);

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) return 1;
  const int failed = RUN_ALL_TESTS();
  wxTheApp->OnExit();
  wxEntryCleanup();
  return failed;
}
