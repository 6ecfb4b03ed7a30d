#pragma once

#include <cstddef>
#include <fmt/printf.h>
#include <string>
#include <string_view>

#include "base/file_layer.h"
#include "base/status.h"
#include "base/temp_file.h"

namespace tarn {

// Bytes of a line of a report.
inline constexpr size_t kReportWidth = 80;

// A report being written: a temporary file of the program's own, one record of kReportWidth bytes
// a line and nothing between them. Removed with the object, so it lives as long as whatever shows
// it. All reports write their lines through this.
class ReportFile {
 public:
  ReportFile() = default;
  ~ReportFile() { Close(); }
  ReportFile(const ReportFile&) = delete;
  ReportFile& operator=(const ReportFile&) = delete;

  // kReportFileDenied when the folder takes no new file.
  Status Create(const std::string& folder);

  // One line, padded with blanks or cut to the width; no character is cut in half.
  void Write(std::string_view line);
  template <typename... Args>
  void Printf(const char* format, const Args&... args) {
    Write(fmt::sprintf(format, args...));
  }
  void WriteBlank() { Write(" "); }

  // Ends the writing. kReportFileDenied when not every line is in the file; it is gone then.
  Status Finish();
  // Ends it without a report.
  void Discard();

  // Empty without a file.
  const std::string& path() const { return m_file.path(); }

 private:
  void Flush();
  bool Close();

  TempFile m_file;
  FileLayer::Handle m_handle = FileLayer::kNoFile;
  std::string m_pending;
  bool m_failed = false;
};

}  // namespace tarn
