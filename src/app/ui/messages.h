#pragma once

#include <string_view>

// Texts that only windows show. Those with a format are completed by fmt::sprintf.

namespace tarn {

inline constexpr std::string_view kAborting = "FATAL - Aborting Session!";
inline constexpr std::string_view kAskToReplace = "%s exists. Replace it?";
inline constexpr std::string_view kNoHelpFile = "The help file is missing: %s";
inline constexpr std::string_view kHelpFileUnreadable = "The help file cannot be read: %s";
inline constexpr std::string_view kRecallComplete = "Recall Complete";
inline constexpr std::string_view kNoDataEditor = "The data editor cannot be started: %s";

}  // namespace tarn
