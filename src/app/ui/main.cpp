#include <cstdio>
#include <string>
#include <wx/app.h>
#include <wx/init.h>

#include "app/ui/program_arguments.h"
#include "app/ui/tarn_app.h"
#include "base/command_line.h"

#ifdef _WIN32
#include <windows.h>

#include "base/wide_text.h"
#endif

namespace {

// Exit statuses.
constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// Before there is a display, where one can do without.
int Answer(const tarn::ProgramArguments& arguments) {
  const bool asked_for = arguments.request == tarn::ProgramArguments::Request::kTell;
#ifdef _WIN32
  ::MessageBoxW(nullptr, tarn::Widen(arguments.text).c_str(), L"Tarn",
                asked_for ? MB_ICONINFORMATION : MB_ICONEXCLAMATION);
#else
  std::FILE* const stream = asked_for ? stdout : stderr;
  const bool told = std::fputs(arguments.text.c_str(), stream) >= 0 && std::fflush(stream) == 0;
  if (asked_for && !told) return kFailed;
#endif
  return asked_for ? kDone : kWrongUsage;
}

// The window library makes the application when it is ready for it, and deletes it.
std::string& FileToOpen() {
  static std::string file;
  return file;
}

wxAppConsole* MakeApp() {
  return new tarn::TTarnApp(FileToOpen());
}

}  // namespace

int main(int argc, char** argv) {
  wxDISABLE_DEBUG_SUPPORT();
  const tarn::ProgramArguments arguments =
      tarn::ReadProgramArguments(tarn::CommandLineWords(argc, argv), TARN_VERSION);
  if (arguments.request != tarn::ProgramArguments::Request::kOpen) return Answer(arguments);
  FileToOpen() = arguments.file;
  wxApp::SetInitializerFunction(MakeApp);
  // The words have been read, byte by byte; the library would read them in the locale.
  int name_alone = 1;
  const int status = wxEntry(name_alone, argv);
  return status < 0 ? kFailed : status;
}
