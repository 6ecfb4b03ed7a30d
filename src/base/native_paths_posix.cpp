#include <cstdlib>

#include "base/file_layer.h"
#include "base/native_paths.h"
#include "base/paths.h"

namespace tarn {

std::string_view PathSeparators() {
  return "/";
}

bool NamesDrive(std::string_view) {
  return false;
}

bool NamesServer(std::string_view) {
  return false;
}

std::string FromItsDrive(const std::string& path) {
  return path;
}

std::string NamedTemporaryFolder() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing here changes the environment.
  const char* named = std::getenv("TMPDIR");
  if (named != nullptr && *named != '\0' && Files().IsDirectory(named)) return FullPath(named);
  return "/tmp";
}

std::string OpenedPath(const std::string& path) {
  return path;
}

std::filesystem::path NativePath(const std::string& path) {
  return path;
}

std::string PathText(const std::filesystem::path& path) {
  return path.native();
}

}  // namespace tarn
