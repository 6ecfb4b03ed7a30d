#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tarn {

// The program's own files, in the folder that it was started in.
struct ApplicationPaths {
  std::string help_file;     // TARN.HLP
  std::string data_editor;   // TABULO.EXE, the companion
  std::string hand_over;     // TABULO.TBI, written by it
  std::string start_folder;  // the current directory at the start
};

// Forms them from the current directory; where a full path cannot be told, the bare name holds.
ApplicationPaths FormApplicationPaths();

// Where the help file may be, in the order in which it is looked for: in the folder of the start,
// beside the program, and in ../share/tarn/ of the program's folder.
std::array<std::string, 3> HelpFilePlaces(const ApplicationPaths& paths,
                                          std::string_view program_folder);

}  // namespace tarn
