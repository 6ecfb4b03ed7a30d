#include "app/main_window_rules.h"

#include <algorithm>

#include "app/messages.h"
#include "base/paths.h"
#include "base/utf8.h"

namespace tarn {
namespace {

constexpr int32_t kFewestIterationsToSave = 2;
constexpr std::string_view kGap = "...";

size_t Characters(std::string_view text) {
  size_t characters = 0;
  for (; !text.empty(); ++characters) TakeCharacter(text);
  return characters;
}

// Up to and with the separator behind the root and the first folder: "/home/" or "C:\\Users\\".
std::string_view Front(std::string_view path) {
  const size_t root = path.find_first_of("/\\");
  const size_t folder = root == std::string_view::npos ? root : path.find_first_of("/\\", root + 1);
  return folder == std::string_view::npos ? std::string_view() : path.substr(0, folder + 1);
}

std::string Shortened(std::string_view path) {
  size_t left = Characters(path);
  if (left <= kLongestCaptionName) return std::string(path);
  const std::string_view front = Front(path);
  const size_t beside = Characters(front) + kGap.size();
  const size_t room = beside < kLongestCaptionName ? kLongestCaptionName - beside
                                                   : kLongestCaptionName - kGap.size();
  std::string_view end = path;
  for (; left > room; --left) TakeCharacter(end);
  const std::string shown(beside < kLongestCaptionName ? front : std::string_view());
  return shown + std::string(kGap) + std::string(end);
}

}  // namespace

std::string FrameCaption(std::string_view network_file) {
  const std::string start(kCaptionStart);
  if (IsUntitled(network_file)) return start + std::string(kUntitledCaption);
  return start + Shortened(network_file);
}

bool AsksToSave(const Network& network, bool saved) {
  return !saved && network.mode == Mode::kTraining && network.iteration >= kFewestIterationsToSave;
}

std::optional<Message> CheckRun(RunMode mode, const Network& network) {
  if (mode == RunMode::kNone) {
    return Message{std::string(kSelectModeCaption), std::string(kSelectMode),
                   MessageIcon::kExclamation};
  }
  if (mode == RunMode::kRecall && !network.trained) {
    return Message{std::string(kSelectionError), std::string(kUntrainedRecall),
                   MessageIcon::kExclamation};
  }
  return std::nullopt;
}

}  // namespace tarn
