#pragma once

#include <string>
#include <string_view>

namespace tarn {

// Windows only: texts between UTF-8, which all of the program has, and the UTF-16 of the system.
// What is no valid text becomes the replacement character, so that it names no file.
std::wstring Widen(std::string_view text);
std::string Narrow(std::wstring_view text);

}  // namespace tarn
