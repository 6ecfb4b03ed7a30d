#include "setup/data_file_name.h"

#include "base/file_layer.h"
#include "setup/edit_text.h"

namespace tarn {

bool IsReadableFile(const std::string& path) {
  // The system would take a name with a zero byte for the shorter one before it.
  if (path.find('\0') != std::string::npos) return false;
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
  if (file == FileLayer::kNoFile) return false;
  Files().Close(file);
  return true;
}

bool IsReadableDataFile(const std::string& path) {
  return LineText(path).size() == path.size() && IsReadableFile(path);
}

}  // namespace tarn
