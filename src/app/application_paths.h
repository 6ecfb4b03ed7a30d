#pragma once

#include <string>

namespace tarn {

// The program's own files, looked up in the folder that it was started in.
struct ApplicationPaths {
  std::string help_file;     // TARN.HLP
  std::string data_editor;   // TABULO.EXE, the companion
  std::string hand_over;     // TABULO.TBI, written by it
  std::string start_folder;  // the current directory at the start
};

// Forms them from the current directory; where a full path cannot be told, the bare name holds.
ApplicationPaths FormApplicationPaths();

}  // namespace tarn
