#include "windows/companion.h"

#include <array>
#include <filesystem>
#include <fmt/format.h>

#include "base/wide_text.h"
#include "windows/files.h"

namespace tarn {
namespace {

constexpr std::string_view kName = "TABULO.EXE";

std::string OwnPath() {
  std::array<wchar_t, 1024> path{};
  const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return Narrow({path.data(), length});
}

}  // namespace

bool IsCompanion() {
  return OwnPath().ends_with(kName);
}

int HandOver() {
  // Beside the program, and written there: whoever started it has to have done so in that folder.
  const std::string folder = Narrow(std::filesystem::current_path().native());
  const std::string text = fmt::format("{}\\xor.txt\r\n{}\r\n", folder, kHandedOverColumn);
  return WriteWhole("TABULO.TBI", text) ? 0 : 1;
}

void InstallCompanion(Driver& driver) {
  if (!CopyFileTo(OwnPath(), driver.Path(kName))) throw Lost("cannot install the data editor");
}

void RemoveCompanion(Driver& driver) {
  // It may not have ended yet.
  driver.ExpectSoon("the data editor has ended", [&] {
    RemoveFile(driver.Path(kName));
    return !IsFile(driver.Path(kName));
  });
}

}  // namespace tarn
