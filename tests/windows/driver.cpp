#include "windows/driver.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

#include "base/wide_text.h"
#include "windows/boxes.h"
#include "windows/files.h"
#include "windows/picture.h"

namespace tarn {
namespace {

constexpr DWORD kStepMs = 20;
constexpr ULONGLONG kPatienceMs = 20'000;
constexpr ULONGLONG kLongestRoadMs = 120'000;

// The program has it from this one.
constexpr const wchar_t* kTemporaryFolder = L"TMP";

// What a file name may hold of a caption. Frames and dialogs share some.
std::string FileName(const Window& window) {
  std::string name = window.IsDialog() ? "" : "window-";
  for (const char c : window.Caption()) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    name += plain ? c : '-';
  }
  return name;
}

}  // namespace

Driver::Driver(Log& log, Surroundings surroundings)
    : m_log(log), m_surroundings(std::move(surroundings)) {
  const std::string temporary = Path("temp");
  MakeFolder(temporary);
  ::SetEnvironmentVariableW(kTemporaryFolder, Widen(temporary).c_str());
}

std::string Driver::Path(std::string_view name) const {
  return m_surroundings.folder + "\\" + std::string(name);
}

Window Driver::Start() {
  m_start_ms = ::GetTickCount64();
  m_known.clear();
  RemoveFile(Path("tarn.cfg"));
  m_program.emplace(m_surroundings.program, m_surroundings.folder);
  m_frame = Await("Tarn for Windows");
  return m_frame;
}

void Driver::AwaitEndOfProgram() {
  if (!Until([this] { return m_program->HasEnded(); })) throw Lost("the program does not end");
  Expect(m_program->ExitStatus() == 0, fmt::format("exit status {}", m_program->ExitStatus()));
  Expect(IsFile(Path("tarn.cfg")), "tarn.cfg stands in the folder");
  Expect(IsEmptyFolder(Path("temp")), "no temporary files are left");
}

bool Driver::Until(const std::function<bool()>& holds) const {
  const ULONGLONG end = std::min(::GetTickCount64() + kPatienceMs, m_start_ms + kLongestRoadMs);
  while (!holds()) {
    if (::GetTickCount64() > end) return false;
    ::Sleep(kStepMs);
  }
  return true;
}

std::vector<Window> Driver::NewWindows() {
  std::erase_if(m_known, [](const Window& window) { return !window.Exists(); });
  std::vector<Window> windows = WindowsOf(m_program->id());
  std::erase_if(windows, [this](const Window& window) {
    return std::ranges::find(m_known, window) != m_known.end();
  });
  return windows;
}

Window Driver::AwaitWhere(std::string_view wanted, const std::function<bool(const Window&)>& is) {
  Window found;
  const bool come = Until([&] {
    for (const Window& window : NewWindows()) {
      if (!is(window)) continue;
      found = window;
      return true;
    }
    return false;
  });
  if (!come) {
    std::string others;
    for (const Window& window : NewWindows()) {
      others += fmt::format(" \"{}: {}\"", window.Caption(), BoxText(window));
    }
    throw Lost(fmt::format("no {} has come, but{}", wanted, others.empty() ? " nothing" : others));
  }
  m_known.push_back(found);
  m_log.Window(found.Caption());
  TakePicture(found, FileName(found));
  return found;
}

Window Driver::Await(std::string_view caption) {
  return AwaitWhere(fmt::format("window \"{}\"", caption), [caption](const Window& window) {
    return window.IsEnabled() && window.Caption() == caption;
  });
}

Window Driver::AwaitAny() {
  return AwaitWhere("window", [](const Window& window) {
    return window.IsEnabled() && !window.Caption().empty();
  });
}

void Driver::AwaitEndOf(const Window& window) {
  const std::string caption = window.Caption();
  if (Until([&] { return !window.Exists(); })) return;
  throw Lost(fmt::format("the window \"{}\" does not close", caption));
}

void Driver::Expect(bool holds, std::string_view what) {
  if (holds) {
    m_log.Checked(what);
  } else {
    m_log.Failed(what);
  }
}

void Driver::ExpectSoon(std::string_view what, const std::function<bool()>& holds) {
  Expect(Until(holds), what);
}

void Driver::TakePicture(const Window& window, const std::string& name) {
  if (m_surroundings.pictures.empty() || !m_pictured.insert(name).second) return;
  const Picture picture = SettledPictureOf(window);
  const std::string path = fmt::format("{}\\{}.bmp", m_surroundings.pictures, name);
  if (!SaveBitmap(picture, path)) m_log.Failed("cannot write " + path);
}

}  // namespace tarn
