#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarn {

// The scratch file of a network that was never saved.
inline constexpr std::string_view kUntitledName = "UNTITLED.NE_";

// `folder` and `name` with one separator between them.
std::string JoinPath(std::string_view folder, std::string_view name);
// The path from the root, taken from the current directory; the path itself when that cannot
// be told.
std::string FullPath(const std::string& path);
// Whether the path holds "untitled.ne_", in any mixture of cases.
bool IsUntitled(std::string_view path);

// The path as the system keeps an opened one: lowercase where names do not tell cases apart
// (Windows), as it is elsewhere.
std::string OpenedPath(const std::string& path);

// A path for the standard library, which would take its bytes for another encoding on Windows;
// and the text of one.
std::filesystem::path NativePath(const std::string& path);
std::string PathText(const std::filesystem::path& path);

// Makes the folder of a file the current directory: when the path itself cannot be entered,
// it is cut at its last separator and the part before it is entered. A path without a
// separator changes nothing.
void EnterFolderOf(const std::string& path);

// The system's folder for temporary files; the current directory when there is none.
std::string TemporaryFolder();

}  // namespace tarn
