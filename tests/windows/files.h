#pragma once

#include <cstddef>
#include <string>

namespace tarn {

bool IsFile(const std::string& path);
bool IsEmptyFolder(const std::string& path);
void MakeFolder(const std::string& path);
void RemoveFile(const std::string& path);
bool CopyFileTo(const std::string& from, const std::string& to);

// Empty when it cannot be read.
std::string ReadWhole(const std::string& path);
bool WriteWhole(const std::string& path, const std::string& bytes);

// Every line ends with CR LF, and there is no CR or LF besides.
bool HasWindowsLines(const std::string& bytes);
size_t LineCount(const std::string& bytes);

}  // namespace tarn
