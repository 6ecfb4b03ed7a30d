#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// A training option that can be changed while the network trains: what the single-value entry
// dialog says, and what a value that is refused is answered with.
struct OptionPrompt {
  int32_t command;           // of the training window's menu
  std::string_view caption;  // of the dialog
  std::string_view prompt;
  std::string_view message;
  std::string_view message_caption;
};

// All of them, in the order of the menu.
std::span<const OptionPrompt> OptionPrompts();
// By its command; null when it is none of them.
const OptionPrompt* FindOptionPrompt(int32_t command);

// The value that the dialog opens with.
std::string OptionText(const OptionPrompt& prompt, const Network& network);

// Stores the value that was entered; one out of range is answered, and the old one stays. Whole
// numbers: screen update rate and iterations from 1, AutoSave rate and patterns from 0. Learn
// rates and momentum 0 to 1, FAST-Prop coefficient 0 to 3, tolerance from 0 (no monitor).
std::optional<Message> ApplyOption(const OptionPrompt& prompt, std::string_view text,
                                   Network& network);

}  // namespace tarn
