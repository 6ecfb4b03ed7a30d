#pragma once

#include <array>
#include <string_view>

namespace tarn {

inline constexpr std::string_view kUntrainedRecall =
    "Untrained Networks Cannot be used for Recall!";

inline constexpr std::array kAppMessages = {kUntrainedRecall};

}  // namespace tarn
