#include "setup/handover_file.h"

#include "base/file_layer.h"
#include "base/text_reader.h"
#include "setup/messages.h"

namespace tarn {
namespace {

constexpr size_t kPathLimit = 254;

HandOver ReadHandOver(TextReader& file) {
  HandOver handover;
  TextReader::Line line;
  if (!file.ReadLine(kPathLimit, line)) return handover;
  handover.path = line.text;
  // The column stands behind the whole path line, also behind one that is longer.
  while (!line.ended && file.ReadLine(kPathLimit, line)) {
  }
  (void)file.ScanInt(handover.target_column);
  return handover;
}

}  // namespace

std::optional<HandOver> TakeHandOver(const std::string& handover_path, Message& message) {
  TextReader file;
  HandOver handover;
  if (file.Open(handover_path)) handover = ReadHandOver(file);
  const bool read = file.IsOpen() && !file.Failed();
  file.Close();
  if (!read) {
    message = {std::string(kInvalidRequest), std::string(kNoHandOverFile),
               MessageIcon::kExclamation};
    return std::nullopt;
  }
  (void)Files().Remove(handover_path);
  return handover;
}

}  // namespace tarn
