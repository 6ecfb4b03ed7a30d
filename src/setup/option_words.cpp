#include "setup/option_words.h"

#include <algorithm>
#include <array>

#include "base/text_numbers.h"
#include "engine/network.h"

namespace tarn {
namespace {

// As many characters of a number as an entry field takes.
constexpr size_t kLongestNumber = 39;

constexpr std::array<std::string_view, 4> kTestMethodNames = {"none", "beginning", "end",
                                                              "random"};  // by TestMethod
constexpr std::array<std::string_view, 2> kSwitchNames = {"off", "on"};

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameWord(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return Lower(x) == Lower(y); });
}

template <size_t kCount>
std::optional<int32_t> Find(const std::array<std::string_view, kCount>& names,
                            std::string_view word) {
  for (size_t i = 0; i < kCount; ++i) {
    if (SameWord(names[i], word)) return static_cast<int32_t>(i);
  }
  return std::nullopt;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

template <typename Value>
bool IsNumber(std::string_view text, bool (*scan)(std::string_view&, Value&)) {
  Value value{};
  return text.size() <= kLongestNumber && scan(text, value) && Trim(text).empty();
}

}  // namespace

std::vector<std::string_view> SplitList(std::string_view list) {
  std::vector<std::string_view> items;
  while (true) {
    const size_t comma = list.find(',');
    items.push_back(Trim(list.substr(0, comma)));
    if (comma == std::string_view::npos) return items;
    list.remove_prefix(comma + 1);
  }
}

std::optional<int32_t> ParseTransfer(std::string_view word) {
  return Find(kTransferNames, word);
}

std::optional<int32_t> ParseTestMethod(std::string_view word) {
  return Find(kTestMethodNames, word);
}

std::optional<bool> ParseSwitch(std::string_view word) {
  const std::optional<int32_t> index = Find(kSwitchNames, word);
  if (!index) return std::nullopt;
  return *index == 1;
}

bool IsInteger(std::string_view text) {
  return IsNumber<int32_t>(text, ScanInt);
}

bool IsReal(std::string_view text) {
  return IsNumber<float>(text, ScanFloat);
}

}  // namespace tarn
