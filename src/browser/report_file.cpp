#include "browser/report_file.h"

#include "base/utf8.h"
#include "browser/messages.h"

namespace tarn {
namespace {

constexpr size_t kBlock = 819 * kReportWidth;  // some 64 KB of whole lines

// The length of the longest part of a line that fits.
size_t FittingLength(std::string_view line) {
  if (line.size() <= kReportWidth) return line.size();
  size_t length = 0;
  while (length < kReportWidth) {
    const size_t next = length + CharacterLength(line.substr(length));
    if (next > kReportWidth) break;
    length = next;
  }
  return length;
}

}  // namespace

Status ReportFile::Create(const std::string& folder) {
  Discard();
  m_failed = false;
  if (m_file.Create(folder)) m_handle = Files().Open(m_file.path(), FileLayer::Mode::kCreate);
  if (m_handle != FileLayer::kNoFile) return {};
  Discard();
  return Status::Failure(kReportFileDenied);
}

void ReportFile::Write(std::string_view line) {
  const size_t length = FittingLength(line);
  m_pending.append(line, 0, length);
  m_pending.append(kReportWidth - length, ' ');
  if (m_pending.size() >= kBlock) Flush();
}

void ReportFile::Flush() {
  std::string_view rest = m_pending;
  while (!rest.empty() && !m_failed && m_handle != FileLayer::kNoFile) {
    const int64_t written = Files().Write(m_handle, rest.data(), rest.size());
    if (written <= 0) {
      m_failed = true;
    } else {
      rest.remove_prefix(static_cast<size_t>(written));
    }
  }
  m_pending.clear();
}

bool ReportFile::Close() {
  if (m_handle == FileLayer::kNoFile) return true;
  const bool closed = Files().Close(m_handle);
  m_handle = FileLayer::kNoFile;
  return closed;
}

Status ReportFile::Finish() {
  Flush();
  const bool closed = Close();
  if (closed && !m_failed && !m_file.path().empty()) return {};
  Discard();
  return Status::Failure(kReportFileDenied);
}

void ReportFile::Discard() {
  m_pending.clear();
  Close();
  m_file.Remove();
}

}  // namespace tarn
