#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// The setup options of the command line as given there; one that is not given is empty.
struct SetupOptions {
  using Value = std::optional<std::string>;

  Value name;
  Value layers;    // node counts, input layer first: "4,8,3"
  Value transfer;  // one name for all layers above the input layer, or one each: "tanh,sech"
  Value inputs;
  Value inputs_column;
  Value targets;
  Value targets_column;
  Value normalize_inputs;   // on, off
  Value normalize_targets;  // on, off
  Value test_patterns;
  Value test_method;  // none, beginning, end, random
  Value eta;
  Value eta_min;
  Value eta_max;
  Value momentum;
  Value fast_prop;
  Value tolerance;
  Value patterns_per_update;
  Value iterations;
  Value lrc_start;
  Value autosave_rate;
  Value update_rate;
};

enum class OptionKind { kText, kLayers, kTransfer, kInteger, kReal, kSwitch, kTestMethod };

struct SetupOptionEntry {
  std::string_view name;  // without its dashes
  SetupOptions::Value SetupOptions::*value;
  OptionKind kind;
};

// Every setup option, in the order in which they are explained and checked.
inline constexpr std::array kSetupOptions = {
    SetupOptionEntry{"name", &SetupOptions::name, OptionKind::kText},
    SetupOptionEntry{"layers", &SetupOptions::layers, OptionKind::kLayers},
    SetupOptionEntry{"transfer", &SetupOptions::transfer, OptionKind::kTransfer},
    SetupOptionEntry{"inputs", &SetupOptions::inputs, OptionKind::kText},
    SetupOptionEntry{"inputs-column", &SetupOptions::inputs_column, OptionKind::kInteger},
    SetupOptionEntry{"targets", &SetupOptions::targets, OptionKind::kText},
    SetupOptionEntry{"targets-column", &SetupOptions::targets_column, OptionKind::kInteger},
    SetupOptionEntry{"normalize-inputs", &SetupOptions::normalize_inputs, OptionKind::kSwitch},
    SetupOptionEntry{"normalize-targets", &SetupOptions::normalize_targets, OptionKind::kSwitch},
    SetupOptionEntry{"test-patterns", &SetupOptions::test_patterns, OptionKind::kInteger},
    SetupOptionEntry{"test-method", &SetupOptions::test_method, OptionKind::kTestMethod},
    SetupOptionEntry{"eta", &SetupOptions::eta, OptionKind::kReal},
    SetupOptionEntry{"eta-min", &SetupOptions::eta_min, OptionKind::kReal},
    SetupOptionEntry{"eta-max", &SetupOptions::eta_max, OptionKind::kReal},
    SetupOptionEntry{"momentum", &SetupOptions::momentum, OptionKind::kReal},
    SetupOptionEntry{"fast-prop", &SetupOptions::fast_prop, OptionKind::kReal},
    SetupOptionEntry{"tolerance", &SetupOptions::tolerance, OptionKind::kReal},
    SetupOptionEntry{"patterns-per-update", &SetupOptions::patterns_per_update,
                     OptionKind::kInteger},
    SetupOptionEntry{"iterations", &SetupOptions::iterations, OptionKind::kInteger},
    SetupOptionEntry{"lrc-start", &SetupOptions::lrc_start, OptionKind::kInteger},
    SetupOptionEntry{"autosave-rate", &SetupOptions::autosave_rate, OptionKind::kInteger},
    SetupOptionEntry{"update-rate", &SetupOptions::update_rate, OptionKind::kInteger},
};

// Answers for the first option that cannot be understood: a word that is none of those known,
// text that is no number where one is wanted, the wrong number of transfer functions for the
// layers. Values out of range and layer counts are the dialogs' business.
Status CheckSetupOptions(const SetupOptions& options, const Network& network);

// The dialogs' message boxes in their order. Not accepted when one of the dialogs would have
// stayed open; what passed its check is in the network all the same.
struct SetupOutcome {
  std::vector<Message> messages;
  bool accepted = true;
};

// Applies the options as the dialogs would: design, training data, training parameters, each
// only when one of its options is given. Its other fields stand as the network has them; a
// data file that is not named now ("none" names no file) is not opened, and a parameter that
// is not given is not refused, but for ETA. Options that do not pass CheckSetupOptions change
// nothing.
SetupOutcome ApplySetupOptions(const SetupOptions& options, Network& network);

}  // namespace tarn
