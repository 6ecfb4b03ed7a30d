#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// What the systems have of their own about paths, behind paths.h.

namespace tarn {

// What separates the names in a path; the first is the one that is written.
std::string_view PathSeparators();
// "C:" and its like, which name a drive where there are drives.
bool NamesDrive(std::string_view path);
// "\\server\share" and its like, which the standard library takes for a path in the current drive.
bool NamesServer(std::string_view path);
// A path in the current folder of the drive that it names, as "D:a.net", in full.
std::string FromItsDrive(const std::string& path);
// The folder that the system names for temporary files, or ought to have.
std::string NamedTemporaryFolder();

}  // namespace tarn
