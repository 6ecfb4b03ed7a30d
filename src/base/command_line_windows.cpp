#include <windows.h>

#include "base/command_line.h"
#include "base/wide_text.h"

namespace tarn {

std::vector<std::string> CommandLineWords(int, char**) {
  // The words of main have the system's code page, which is not UTF-8 before Windows 10.
  std::vector<std::string> words;
  int count = 0;
  LPWSTR* wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  for (int i = 1; wide != nullptr && i < count; ++i) words.push_back(Narrow(wide[i]));
  ::LocalFree(wide);
  return words;
}

}  // namespace tarn
