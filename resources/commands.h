#pragma once

// Numbers that several windows share.

namespace tarn {

// Commands of the menus of graphs and reports.
enum SharedCommand : int {
  kSaveAsCommand = 136,
  kPrintCommand = 137,
  kCopyCommand = 138,
  kExitCommand = 143,
  kPreviewCommand = 151,
  kPageSetupCommand = 152,
  kHelpCommand = 24341,  // of every menu
};

// Fields of a status bar: the first for the hints of the menus, the second for what the window
// itself has to say.
inline constexpr int kStatusFields = 2;
inline constexpr int kHintField = 0;
inline constexpr int kStatusField = 1;

}  // namespace tarn
