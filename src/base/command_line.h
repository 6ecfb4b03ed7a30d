#pragma once

#include <string>
#include <vector>

namespace tarn {

// The words of the command line after the program's name, in UTF-8; `argc` and `argv` are those
// of main. Bytes that are no UTF-8 stay as they are where the system's names are bytes.
std::vector<std::string> CommandLineWords(int argc, char** argv);

}  // namespace tarn
