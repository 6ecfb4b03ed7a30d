#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/status.h"

namespace tarn {

// Exit statuses of the program.
enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2, kInterrupted = 130 };

// Results go to stdout; everything about them goes to stderr.
void PrintError(std::string_view text);
void PrintNotices(const Notices& notices);
// Text about the work, as it stands.
void PrintNote(std::string_view text);
// False when the text could not be taken any more.
bool PrintResult(std::string_view text);

// Tells what is wrong with the words of a command, and where they are explained.
ExitStatus RefuseUsage(std::string_view command, const std::string& text);

// Prints the failure and returns kFailed, or returns kDone.
ExitStatus Report(const Status& status);

// False when a result could not be written, as to a full disk or a closed pipe.
bool FlushResults();

// One line on stderr that is drawn over again; nothing when stderr is no terminal.
class ProgressLine {
 public:
  ProgressLine(bool wanted, int64_t now_ms);
  ~ProgressLine() { Clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  // "[#####     ]  50.0 %  RMS error 0.123456  remaining 0:00:12", at most ten times a second.
  // The time is an estimate by the iterations done so far and missing before the first few.
  void Show(int32_t iteration, int32_t max_iterations, float rms_error, int64_t now_ms);
  // Any text, as often.
  void ShowText(const std::string& text, int64_t now_ms);
  void Clear();

 private:
  bool m_wanted;
  bool m_shown = false;
  int64_t m_start_ms;
  int64_t m_last_ms;
};

}  // namespace tarn
