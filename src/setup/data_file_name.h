#pragma once

#include <string>

namespace tarn {

// Whether the file opens for reading; its content is not looked at.
bool IsReadableFile(const std::string& path);

// The same for a name that a network file is to keep: one that does not fit a line of it
// counts as a file that cannot be opened.
bool IsReadableDataFile(const std::string& path);

}  // namespace tarn
