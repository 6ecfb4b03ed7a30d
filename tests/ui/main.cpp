#include <clocale>
#include <cstdio>
#include <cstdlib>
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

// The program itself stays in the locale "C"; TARN_LOCALE is of a library that would change it.
bool SetLocale() {
  const char* const locale = std::getenv("TARN_LOCALE");
  if (locale == nullptr || std::setlocale(LC_ALL, locale) != nullptr) return true;
  std::fprintf(stderr, "There is no locale %s.\n", locale);
  return false;
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
  if (!tarn::SetLocale()) return 1;
  const int failed = RUN_ALL_TESTS();
  wxTheApp->OnExit();
  wxEntryCleanup();
  return failed;
}
