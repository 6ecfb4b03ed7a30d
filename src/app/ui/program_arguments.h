#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarn {

// What the command line asks of the program with the windows.
struct ProgramArguments {
  enum class Request {
    kOpen,   // open the main window, with `file` unless it is empty
    kTell,   // only tell `text`: what was asked for
    kRefuse  // only tell `text`: what is wrong with the words
  };
  Request request = Request::kOpen;
  std::string file;
  std::string text;  // whole lines
};

// `words` are those after the program's name: at most one network file, --help or --version.
// Behind "--" a word is a file, whatever it begins with.
ProgramArguments ReadProgramArguments(std::span<const std::string> words, std::string_view version);

}  // namespace tarn
