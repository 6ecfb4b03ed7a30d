#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/output_file.h"
#include "bounded_run.h"
#include "cli/commands.h"
#include "cli/setup_flags.h"
#include "cli/usage.h"
#include "netfile/header.h"
#include "network_checks.h"
#include "setup/setup_options.h"

// The input is a command line, one word a line, behind the name of the program. It is parsed with
// all commands of the program, none of which runs; then its words behind the first are taken as
// setup options and applied to the new network. A line that cannot be parsed is explained; options
// that are not understood change nothing; what has been applied can be written and read again.

namespace tarn::fuzz {
namespace {

const std::string kNetwork = "/fuzz/input.net";
const std::string kWritten = "/fuzz/written.net";
constexpr std::string_view kData = "1 2 3 4\n5 6 7 8\n";

struct Parsed {};

// Ends where the commands would begin.
class ParserAlone : public CLI::App {
 public:
  ParserAlone() : CLI::App("", "tarn-cli") {
    set_version_flag("--version", std::string("tarn-cli"));
    require_subcommand(1);
    allow_windows_style_options(false);
    UseHelpFormat(*this);
    for (auto* add : {&AddNewCommand, &AddSetCommand, &AddTrainCommand, &AddRecallCommand,
                      &AddReportCommand, &AddPlotCommand, &AddRestoreCommand}) {
      add(*this, m_status);
    }
  }

 private:
  void pre_callback() override { throw Parsed(); }

  ExitStatus m_status = kDone;
};

// The setup options as a command has them.
class SetupParser {
 public:
  SetupParser() {
    m_app.allow_windows_style_options(false);
    AddSetupFlags(m_app, m_options);
  }

  // Empty when the words cannot be parsed.
  std::optional<SetupOptions> Parse(std::vector<std::string> words) {
    m_options = {};
    try {
      m_app.parse(std::move(words));
    } catch (const CLI::ParseError&) {
      return std::nullopt;
    }
    return m_options;
  }

 private:
  CLI::App m_app;
  SetupOptions m_options;
};

// In the order in which the parser takes them.
std::vector<std::string> Reversed(std::span<const std::string> words) {
  return {words.rbegin(), words.rend()};
}

struct Parsers {
  ParserAlone commands;
  SetupParser setup;
};

// To make them takes longer than a run. They keep the order of all options that they ever parsed,
// so new ones are made now and then.
Parsers& TheParsers() {
  constexpr int kRuns = 1024;
  static std::unique_ptr<Parsers> parsers;
  static int runs = 0;
  if (runs++ % kRuns == 0) parsers = std::make_unique<Parsers>();
  return *parsers;
}

void ParseCommand(ParserAlone& parser, std::span<const std::string> words) {
  try {
    parser.parse(Reversed(words));
    Require(false, "a command line is parsed or refused");
  } catch (const Parsed&) {
    Require(parser.get_subcommands().size() == 1, "one command was chosen");
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) return;
    Require(!ExplainWrongUsage(parser, error).empty(), "wrong usage is explained");
  }
}

const Network& NewNetwork() {
  static const Network network = [] {
    Network made;
    made.file_name = kNetwork;
    Require(ReadHeader(made).ok(), "the new network");
    return made;
  }();
  return network;
}

std::string HeaderText(const FuzzFiles& files, const Network& network) {
  OutputFile file;
  Require(file.OpenReplacing(kWritten) && WriteHeader(file, network, HeaderKind::kSetup) &&
              file.Commit(),
          "a header can be written");
  return std::string(files.Get(kWritten));
}

void Apply(const FuzzFiles& files, const SetupOptions& options) {
  Network network = NewNetwork();
  const bool understood = CheckSetupOptions(options, network).ok();
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  Require(understood || !outcome.accepted, "what is not understood is not accepted");
  Require(outcome.accepted || !outcome.messages.empty(), "a refusal has a message");
  Require(network.nLayers >= kMinLayers && network.nLayers <= kMaxLayers, "count of layers");
  if (!understood) {
    RequireSameHeader(NewNetwork(), network, HeaderKind::kSetup);
  } else if (outcome.accepted) {
    const std::string written = HeaderText(files, network);
    const Network again = ReadAgain(kWritten);
    // A layer has the role of the last load until the next one.
    for (size_t l = 0; l < again.layers.size(); ++l) network.layers[l].role = again.layers[l].role;
    RequireSameHeader(network, again, HeaderKind::kSetup);
    Require(ApplySetupOptions(options, network).accepted, "what was accepted is accepted again");
    Require(HeaderText(files, network) == written, "options that are given twice change no more");
  }
}

std::vector<std::string> WordsOf(std::string_view input) {
  std::vector<std::string> words;
  while (!input.empty()) {
    const std::string_view word = input.substr(0, input.find('\n'));
    // The system ends a word at a zero byte.
    words.emplace_back(word.substr(0, word.find('\0')));
    input.remove_prefix(std::min(word.size() + 1, input.size()));
  }
  return words;
}

}  // namespace

// The parser keeps every word in several lists.
const Bounds kBounds = {{1 << 19, 256}, {1 << 16, 16}, {1 << 14, 16}};

void Run(FuzzFiles& files, std::string_view input) {
  Parsers& parsers = TheParsers();
  const std::vector<std::string> words = WordsOf(input);
  ParseCommand(parsers.commands, words);
  if (words.empty()) return;
  files.Put("/fuzz/in.dat", kData);
  const std::optional<SetupOptions> options =
      parsers.setup.Parse(Reversed(std::span(words).subspan(1)));
  if (options) Apply(files, *options);
  Require(files.Get("/fuzz/in.dat") == kData, "the data file is as it was");
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 57> kWords = {"new",
                                                              "set",
                                                              "train",
                                                              "recall",
                                                              "report",
                                                              "plot",
                                                              "restore",
                                                              "a.net",
                                                              "--help",
                                                              "--version",
                                                              "--force",
                                                              "-o",
                                                              "--output",
                                                              "--no-save",
                                                              "--seed",
                                                              "--quiet",
                                                              "--history",
                                                              "--autosave",
                                                              "--outputs",
                                                              "--error-history",
                                                              "--node",
                                                              "--width",
                                                              "--height",
                                                              "--upper",
                                                              "--lower",
                                                              "rms",
                                                              "contour",
                                                              "statistics",
                                                              "divergence",
                                                              "a.svg",
                                                              "--name",
                                                              "--layers",
                                                              "4,8,3",
                                                              "--transfer",
                                                              "tanh,sech",
                                                              "--inputs",
                                                              "in.dat",
                                                              "--inputs-column",
                                                              "--targets",
                                                              "--targets-column",
                                                              "--normalize-inputs",
                                                              "on",
                                                              "--normalize-targets",
                                                              "off",
                                                              "--test-patterns",
                                                              "--test-method",
                                                              "random",
                                                              "--eta",
                                                              "--eta-min",
                                                              "--eta-max",
                                                              "--momentum",
                                                              "--fast-prop",
                                                              "--tolerance",
                                                              "--patterns-per-update",
                                                              "--iterations",
                                                              "--lrc-start",
                                                              "--autosave-rate\n5\n--update-rate"};
  return kWords;
}

}  // namespace tarn::fuzz
