#include "cli/console.h"

#include <algorithm>
#include <cstdio>
#include <fmt/printf.h>

#include "base/utf8.h"
#include "cli/terminal.h"
#include "engine/training_run.h"

namespace tarn {
namespace {

constexpr int64_t kRedrawMs = 100;
constexpr size_t kBarWidth = 24;

void Print(std::FILE* stream, std::string_view text) {
  (void)std::fwrite(text.data(), 1, text.size(), stream);
}

bool IsShown(std::FILE* stream) {
  static const bool results = IsTerminal(stdout);
  static const bool errors = IsTerminal(stderr);
  return stream == stdout ? results : errors;
}

// Names and texts out of files of others must not steer the terminal that shows them.
void PrintPlain(std::FILE* stream, std::string_view text) {
  if (IsShown(stream)) {
    Print(stream, WithoutControls(text));
  } else {
    Print(stream, text);
  }
}

}  // namespace

void PrintError(std::string_view text) {
  PrintPlain(stderr, fmt::sprintf("tarn-cli: %s\n", text));
}

void PrintNotices(const Notices& notices) {
  for (const std::string& text : notices) {
    PrintPlain(stderr, fmt::sprintf("tarn-cli: notice: %s\n", text));
  }
}

void PrintNote(std::string_view text) {
  PrintPlain(stderr, text);
}

bool PrintResult(std::string_view text) {
  PrintPlain(stdout, text);
  return std::ferror(stdout) == 0;
}

ExitStatus RefuseUsage(std::string_view command, const std::string& text) {
  PrintError(fmt::sprintf("%s; see 'tarn-cli %s --help'", text, command));
  return kWrongUsage;
}

ExitStatus Report(const Status& status) {
  if (status.ok()) return kDone;
  PrintError(status.message());
  return kFailed;
}

bool FlushResults() {
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

ProgressLine::ProgressLine(bool wanted, int64_t now_ms)
    : m_wanted(wanted && CanRedrawErrors()), m_start_ms(now_ms), m_last_ms(now_ms) {}

void ProgressLine::Show(int32_t iteration, int32_t max_iterations, float rms_error,
                        int64_t now_ms) {
  const double fraction = std::min(static_cast<double>(iteration) / max_iterations, 1.0);
  const auto done = static_cast<size_t>(fraction * kBarWidth);
  const std::string bar = std::string(done, '#') + std::string(kBarWidth - done, ' ');
  std::string text = fmt::sprintf("[%s] %5.1f %%", bar, fraction * 100.0);
  if (iteration > 0) text += fmt::sprintf("  RMS error %8.6f", double{rms_error});
  if (iteration > kNoEstimateTo) {
    const double elapsed = static_cast<double>(now_ms - m_start_ms) / 1000.0;
    const auto seconds = static_cast<int64_t>((1.0 - fraction) * elapsed / fraction);
    text +=
        fmt::sprintf("  remaining %d:%02d:%02d", seconds / 3600, seconds % 3600 / 60, seconds % 60);
  }
  ShowText(text, now_ms);
}

void ProgressLine::ShowText(const std::string& text, int64_t now_ms) {
  if (!m_wanted || now_ms - m_last_ms < kRedrawMs) return;
  m_last_ms = now_ms;
  Print(stderr, "\r" + text + "\x1b[K");
  m_shown = true;
}

void ProgressLine::Clear() {
  if (m_shown) Print(stderr, "\r\x1b[K");
  m_shown = false;
}

}  // namespace tarn
