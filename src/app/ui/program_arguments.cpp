#include "app/ui/program_arguments.h"

#include <fmt/format.h>
#include <utility>

namespace tarn {
namespace {

constexpr std::string_view kUsage =
    "tarn [FILE]\n"
    "\n"
    "Opens the main window of Tarn, with the network FILE where one is named.\n"
    "\n"
    "  -h, --help   Show this and end\n"
    "  --version    Show the version and end\n";

ProgramArguments Tell(std::string text) {
  return {.request = ProgramArguments::Request::kTell, .file = {}, .text = std::move(text)};
}

ProgramArguments Refuse(std::string_view fault) {
  return {.request = ProgramArguments::Request::kRefuse,
          .file = {},
          .text = fmt::format("tarn: {}; see 'tarn --help'\n", fault)};
}

}  // namespace

ProgramArguments ReadProgramArguments(std::span<const std::string> words,
                                      std::string_view version) {
  ProgramArguments arguments;
  bool options = true;
  for (const std::string& word : words) {
    if (options && word == "--") {
      options = false;
    } else if (options && word.starts_with('-')) {
      if (word == "-h" || word == "--help") return Tell(std::string(kUsage));
      if (word == "--version") return Tell(fmt::format("tarn {}\n", version));
      return Refuse(fmt::format("there is no option '{}'", word));
    } else if (!arguments.file.empty()) {
      return Refuse(fmt::format("'{}' and '{}': one network at a time", arguments.file, word));
    } else {
      arguments.file = word;
    }
  }
  return arguments;
}

}  // namespace tarn
