#include "engine/error_history.h"

#include <algorithm>
#include <bit>

#include "base/output_file.h"
#include "engine/messages.h"

namespace tarn {
namespace {

void PutWord(unsigned char* bytes, uint32_t word) {
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<unsigned char>(word >> (8 * i));
}

uint32_t GetWord(const unsigned char* bytes) {
  uint32_t word = 0;
  for (int i = 0; i < 4; ++i) word |= static_cast<uint32_t>(bytes[i]) << (8 * i);
  return word;
}

// The seven floats in the order of the file.
constexpr std::array<float HistoryRecord::*, 7> kFloats = {&HistoryRecord::rms_train,
                                                           &HistoryRecord::rms_test,
                                                           &HistoryRecord::eta,
                                                           &HistoryRecord::correlation_train,
                                                           &HistoryRecord::correlation_test,
                                                           &HistoryRecord::within_train,
                                                           &HistoryRecord::within_test};

}  // namespace

HistoryBytes EncodeHistoryRecord(const HistoryRecord& record) {
  HistoryBytes bytes{};
  PutWord(bytes.data(), static_cast<uint32_t>(record.iteration));
  for (size_t i = 0; i < kFloats.size(); ++i) {
    PutWord(bytes.data() + 4 * (i + 1), std::bit_cast<uint32_t>(record.*kFloats[i]));
  }
  return bytes;
}

HistoryRecord DecodeHistoryRecord(const HistoryBytes& bytes) {
  HistoryRecord record;
  record.iteration = static_cast<int32_t>(GetWord(bytes.data()));
  for (size_t i = 0; i < kFloats.size(); ++i) {
    record.*kFloats[i] = std::bit_cast<float>(GetWord(bytes.data() + 4 * (i + 1)));
  }
  return record;
}

bool ErrorHistory::Restart() {
  Close();
  m_file = Files().Open(m_path, FileLayer::Mode::kCreate);
  return m_file != FileLayer::kNoFile;
}

bool ErrorHistory::Append(const HistoryRecord& record) {
  if (m_file == FileLayer::kNoFile) return false;
  const HistoryBytes bytes = EncodeHistoryRecord(record);
  const int64_t written = Files().Write(m_file, bytes.data(), bytes.size());
  if (written == static_cast<int64_t>(bytes.size())) return true;
  // Records behind half a record would be read askew: the file keeps its whole ones.
  const int64_t size = Files().Size(m_file);
  const auto whole = static_cast<int64_t>(kHistoryRecordSize);
  if (written > 0 && size >= 0) Files().Truncate(m_file, size - size % whole);
  Close();
  return false;
}

void ErrorHistory::Close() {
  if (m_file != FileLayer::kNoFile) Files().Close(m_file);
  m_file = FileLayer::kNoFile;
}

HistoryReader::HistoryReader(const std::string& path)
    // A device keeps no records, and one that gives bytes without end is never read through.
    : m_file(Files().IsSpecial(path) ? FileLayer::kNoFile
                                     : Files().Open(path, FileLayer::Mode::kRead)) {}

HistoryReader::~HistoryReader() {
  if (IsOpen()) Files().Close(m_file);
}

bool HistoryReader::Next(HistoryRecord& record) {
  HistoryBytes bytes{};
  size_t held = 0;
  while (IsOpen() && held < bytes.size()) {
    const int64_t count = Files().Read(m_file, bytes.data() + held, bytes.size() - held);
    m_failed = m_failed || count < 0;
    if (count <= 0) return false;
    held += static_cast<size_t>(count);
  }
  if (held < bytes.size()) return false;
  record = DecodeHistoryRecord(bytes);
  return true;
}

int64_t HistoryReader::Count() const {
  const int64_t size = IsOpen() ? Files().Size(m_file) : 0;
  return size < 0 ? -1 : size / static_cast<int64_t>(kHistoryRecordSize);
}

bool HistoryReader::Read(int64_t index, HistoryRecord& record) {
  return IsOpen() && Files().Seek(m_file, index * static_cast<int64_t>(kHistoryRecordSize)) &&
         Next(record);
}

Status ExportErrorHistory(const std::string& history_path, const std::string& path) {
  HistoryReader history(history_path);
  OutputFile file;
  if (!history.IsOpen() || !file.OpenReplacing(path)) {
    return Status::Failure(kErrorHistoryWriteError);
  }
  HistoryRecord record;
  while (history.Next(record)) {
    file.Printf("%d,%f,%f,%f,%f,%f,%f\n", record.iteration, double{record.rms_train},
                double{record.rms_test}, double{record.eta}, double{record.correlation_train},
                double{record.correlation_test}, double{record.within_train});
  }
  const bool written = !history.Failed() && file.Commit();
  return written ? Status() : Status::Failure(kErrorHistoryWriteError);
}

}  // namespace tarn
