#pragma once

#include <string>

namespace tarn {

// Windows only: puts the file `from` in the place of `to` in one step, so that at any moment the
// name holds the old file or the new one. The name keeps the spelling that it has on the disk. What
// others hold for a moment, as virus scanners do, is waited for, a second at most. False when it
// cannot be done; both files are as they were then.
bool ReplaceWholeFile(const std::wstring& from, const std::wstring& to);

// Gives `to` the access rights of `from`, where the disk knows rights.
void CopyRights(std::wstring from, std::wstring to);

}  // namespace tarn
