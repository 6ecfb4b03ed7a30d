#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "app/dialogs.h"

namespace tarn {

// The path with the extension when its name has none.
std::string WithExtension(const std::string& path, std::string_view extension);

// The extension of names that are saved under a filter of the question, counted from 0: the
// filter's own, or the question's where it is for all files.
std::string_view ExtensionUnder(const FileQuestion& question, size_t filter);

}  // namespace tarn
