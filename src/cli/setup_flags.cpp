#include "cli/setup_flags.h"

#include <array>
#include <string>

namespace tarn {
namespace {

struct Help {
  const char* value;
  const char* text;
};

// By the names of the options.
Help HelpOf(std::string_view name) {
  struct Entry {
    std::string_view name;
    Help help;
  };
  static constexpr std::array<Entry, 22> kHelp = {{
      {"name", {"TEXT", "A name for the network"}},
      {"layers",
       {"N,N,N", "Nodes of every layer from the inputs to the outputs, 3 to 10 layers: 4,8,3"}},
      {"transfer",
       {"NAME[,NAME]",
        "Transfer function: sigmoid, gaussian, tanh or sech; one for all layers above the "
        "inputs, or one for each"}},
      {"inputs", {"FILE", "Text file with the inputs, one pattern a line"}},
      {"inputs-column", {"N", "Column of the first input value, from 1"}},
      {"targets", {"FILE", "Text file with the targets; may be the same file"}},
      {"targets-column", {"N", "Column of the first target value, from 1"}},
      {"normalize-inputs", {"on|off", "Scale every input into 0.15..0.85"}},
      {"normalize-targets", {"on|off", "Scale every target into 0.15..0.85"}},
      {"test-patterns", {"N", "Patterns held back from training to test the network"}},
      {"test-method",
       {"METHOD",
        "Which patterns these are: none, beginning, end or random (a random choice is kept in "
        "the network file)"}},
      {"eta", {"X", "Learn rate, above 0 to 1"}},
      {"eta-min", {"X", "Lowest learn rate of learn rate control, above 0 to 1"}},
      {"eta-max", {"X", "Highest learn rate of learn rate control, above 0 to 1"}},
      {"momentum", {"X", "Momentum, 0 to 1"}},
      {"fast-prop", {"X", "FAST-Prop coefficient, 0 (off) to 3"}},
      {"tolerance",
       {"X", "Count outputs that are within X of their targets, in their units; 0: off"}},
      {"patterns-per-update", {"N", "Patterns per weight update; 0: all training patterns"}},
      {"iterations", {"N", "Iterations to train for"}},
      {"lrc-start", {"N", "Iteration from which learn rate control acts"}},
      {"autosave-rate", {"N", "Iterations between AutoSave snapshots; 0: none"}},
      {"update-rate", {"N", "Iterations from one line of figures to the next while training"}},
  }};
  for (const Entry& entry : kHelp) {
    if (entry.name == name) return entry.help;
  }
  return {"VALUE", ""};
}

}  // namespace

void AddSetupFlags(CLI::App& command, SetupOptions& options) {
  for (const SetupOptionEntry& entry : kSetupOptions) {
    const Help help = HelpOf(entry.name);
    command.add_option("--" + std::string(entry.name), options.*entry.value, help.text)
        ->type_name(help.value)
        ->group("Setup options");
  }
}

ExitStatus ApplyAndReport(const SetupOptions& options, Network& network) {
  const Status understood = CheckSetupOptions(options, network);
  if (!understood.ok()) {
    PrintError(understood.message());
    return kWrongUsage;
  }
  const SetupOutcome outcome = ApplySetupOptions(options, network);
  Notices notices;
  for (const Message& message : outcome.messages) {
    if (outcome.accepted) {
      notices.push_back(message.text);
    } else {
      PrintError(message.text);
    }
  }
  PrintNotices(notices);
  return outcome.accepted ? kDone : kFailed;
}

}  // namespace tarn
