#include "base/command_line.h"

namespace tarn {

std::vector<std::string> CommandLineWords(int argc, char** argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

}  // namespace tarn
