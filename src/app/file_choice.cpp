#include "app/file_choice.h"

#include "base/paths.h"

namespace tarn {

std::string WithExtension(const std::string& path, std::string_view extension) {
  const bool has_one = NativePath(path).has_extension();
  return has_one ? path : path + std::string(extension);
}

std::string_view ExtensionUnder(const FileQuestion& question, size_t filter) {
  std::string_view rest = question.filter;
  // Texts and patterns stand in turn.
  for (size_t skipped = 0; skipped < 2 * filter + 1; ++skipped) {
    const size_t bar = rest.find('|');
    if (bar == std::string_view::npos) return question.extension;
    rest.remove_prefix(bar + 1);
  }
  const std::string_view pattern = rest.substr(0, rest.find('|'));
  const bool all = !pattern.starts_with("*.") || pattern == "*.*";
  return all ? question.extension : pattern.substr(1);
}

}  // namespace tarn
