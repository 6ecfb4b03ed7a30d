#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tarn {

// The words and numbers of setup options. Words are known in any mixture of cases; nothing is
// returned for one that is not known.

// The items of a list between its commas, without the white space around them.
std::vector<std::string_view> SplitList(std::string_view list);

// A TransferCode.
std::optional<int32_t> ParseTransfer(std::string_view word);
// A TestMethod.
std::optional<int32_t> ParseTestMethod(std::string_view word);
std::optional<bool> ParseSwitch(std::string_view word);

// Whether the whole text is one number, as an entry field would take it.
bool IsInteger(std::string_view text);
bool IsReal(std::string_view text);

}  // namespace tarn
