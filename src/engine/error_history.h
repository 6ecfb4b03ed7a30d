#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/file_layer.h"
#include "base/status.h"

namespace tarn {

// What one screen update leaves in the error history.
struct HistoryRecord {
  int32_t iteration = 0;
  float rms_train = 0;
  float rms_test = 0;
  float eta = 0;
  float correlation_train = 0;
  float correlation_test = 0;
  float within_train = 0;  // per cent
  float within_test = 0;   // per cent
};

// In the file: the iteration as a 32-bit integer, then the seven floats in the order above,
// little-endian on every machine.
inline constexpr size_t kHistoryRecordSize = 32;
using HistoryBytes = std::array<unsigned char, kHistoryRecordSize>;
HistoryBytes EncodeHistoryRecord(const HistoryRecord& record);
HistoryRecord DecodeHistoryRecord(const HistoryBytes& bytes);

// The growing history file of a training run.
class ErrorHistory {
 public:
  // The file is not created before Restart.
  explicit ErrorHistory(std::string path) : m_path(std::move(path)) {}
  ~ErrorHistory() { Close(); }
  ErrorHistory(const ErrorHistory&) = delete;
  ErrorHistory& operator=(const ErrorHistory&) = delete;

  const std::string& path() const { return m_path; }

  // Empties the file and opens it for the records to come.
  bool Restart();
  // Appends one record at once, so that readers see it; false when it could not be written.
  bool Append(const HistoryRecord& record);
  void Close();

 private:
  std::string m_path;
  FileLayer::Handle m_file = FileLayer::kNoFile;
};

// Reads a history file forward.
class HistoryReader {
 public:
  explicit HistoryReader(const std::string& path);
  ~HistoryReader();
  HistoryReader(const HistoryReader&) = delete;
  HistoryReader& operator=(const HistoryReader&) = delete;

  bool IsOpen() const { return m_file != FileLayer::kNoFile; }
  // Whole records that there are by now; below 0 when that cannot be told.
  int64_t Count() const;
  // False when no whole record is left, or it cannot be read: Failed tells of that.
  bool Next(HistoryRecord& record);
  bool Failed() const { return m_failed; }
  // Record `index`, from 0; Next goes on behind it.
  bool Read(int64_t index, HistoryRecord& record);

 private:
  FileLayer::Handle m_file;
  bool m_failed = false;
};

// Writes the history as text to `path`, replacing it: a line "%ld,%f,%f,%f,%f,%f,%f" per
// record: iteration, RMS error training and test, ETA, correlation training and test, per cent
// within tolerance of the training set. The figure of the test set is left out.
Status ExportErrorHistory(const std::string& history_path, const std::string& path);

}  // namespace tarn
