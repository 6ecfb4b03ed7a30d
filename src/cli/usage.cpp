#include "cli/usage.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

namespace tarn {
namespace {

constexpr size_t kColumns = 80;
constexpr size_t kNameColumns = 30;

// Breaks text into lines of at most `width` characters, at its blanks.
std::string Wrap(std::string_view text, size_t width) {
  std::string wrapped;
  size_t line = 0;  // characters of the last line so far
  while (!text.empty()) {
    const size_t end = std::min(text.find(' '), text.size());
    if (line > 0) {
      const bool fits = line + 1 + end <= width;
      wrapped += fits ? ' ' : '\n';
      line = fits ? line + 1 : 0;
    }
    wrapped += text.substr(0, end);
    line += end;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return wrapped;
}

class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() {
    column_width(kNameColumns);
    label("SUBCOMMAND", "COMMAND");
    label("Positionals", "Arguments");
  }

  std::string make_option_opts(const CLI::Option* option) const override {
    return option->get_type_name().empty() ? "" : " " + ValueName(*option);
  }

  std::string make_option_desc(const CLI::Option* option) const override {
    std::string text = option->get_description();
    const std::string standard = option->get_default_str();
    if (!standard.empty()) text += "; " + standard + " unless given";
    if (option->get_required() && !option->get_positional()) text += " (required)";
    return Wrap(text, kColumns - kNameColumns);
  }

 private:
  // Without the checks that the library adds to the name.
  static std::string ValueName(const CLI::Option& option) {
    const std::string name = option.get_type_name();
    return name.substr(0, name.find(':'));
  }
};

}  // namespace

void UseHelpFormat(CLI::App& program) {
  program.formatter(std::make_shared<HelpFormatter>());
}

std::string ExplainWrongUsage(const CLI::App& program, const CLI::ParseError& error) {
  const std::vector<CLI::App*> commands = program.get_subcommands();
  if (!commands.empty()) {
    return std::string(error.what()) + "; see 'tarn-cli " + commands.front()->get_name() +
           " --help'";
  }
  constexpr std::string_view kSeeHelp = "; see 'tarn-cli --help'";
  const std::vector<std::string> unknown = program.remaining();
  std::string text = unknown.empty() ? "a command is wanted" : "'" + unknown.front() + "' is no ";
  if (!unknown.empty()) text += unknown.front().starts_with('-') ? "option" : "command";
  return text.append(kSeeHelp);
}

}  // namespace tarn
