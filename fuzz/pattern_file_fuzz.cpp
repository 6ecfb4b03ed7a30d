#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "bounded_run.h"
#include "data/column_labels.h"
#include "data/messages.h"
#include "data/pattern_files.h"
#include "data/test_set.h"
#include "engine/network.h"

// The input is one or two pattern data files. When it begins with "@" the seven characters
// behind it say how they are read (see Settings), else it is one file with two inputs from
// column 1 on and a target in column 3. A line "=====" divides two files.
//
// Nothing crashes; what is counted are the records as they are restated here; data that were
// read lie where normalization puts them; the test set is a part of the patterns.

namespace tarn::fuzz {
namespace {

constexpr std::string_view kDivider = "=====\n";
constexpr size_t kSettingsSize = 8;

// The characters behind the "@", as digits so that they can be read: the low four bits count.
struct Settings {
  int32_t input_column = 1;
  int32_t target_column = 3;
  int32_t inputs = 2;
  int32_t outputs = 1;
  bool pat_norm = false;        // bit 0 of the fifth
  bool targ_norm = false;       // bit 1
  bool recall = false;          // bit 2
  bool recall_targets = false;  // bit 3
  int32_t test_method = 0;
  int32_t test_patterns = 0;
};

int32_t Digit(char c) {
  return static_cast<unsigned char>(c) & 0x0F;
}

// Numbers beyond all files and below 0 as well.
int32_t Number(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte == 0xFF) return std::numeric_limits<int32_t>::max();
  if (byte >= 0xF0) return -Digit(c);
  return Digit(c);
}

Settings TakeSettings(std::string_view& input) {
  Settings settings;
  if (input.size() < kSettingsSize || input[0] != '@') return settings;
  settings.input_column = Number(input[1]);
  settings.target_column = Number(input[2]);
  settings.inputs = std::max(Digit(input[3]), 1);
  settings.outputs = std::max(Digit(input[4]), 1);
  const int32_t flags = Digit(input[5]);
  settings.pat_norm = (flags & 1) != 0;
  settings.targ_norm = (flags & 2) != 0;
  settings.recall = (flags & 4) != 0;
  settings.recall_targets = (flags & 8) != 0;
  settings.test_method = Digit(input[6]) - 2;
  settings.test_patterns = Number(input[7]);
  input.remove_prefix(kSettingsSize);
  return settings;
}

// What stands in the network file for recall: 0 and 10 for every node.
std::string NormalizeSection(const Settings& settings) {
  std::string text = "NORMALIZE:READ\n";
  const auto add = [&text](const char* heading, int32_t nodes) {
    text += heading;
    for (const char* limit : {"0 ", "10 "}) {
      for (int32_t i = 0; i < nodes; ++i) text += limit;
    }
    text += '\n';
  };
  add("INPUTS\n", settings.inputs);
  add("OUTPUTS\n", settings.outputs);
  return text + "NORMALIZE:STOP\n";
}

Network MakeNetwork(const Settings& settings, bool two_files) {
  Network network;
  network.nLayers = 3;
  network.layers[0].nUnits = settings.inputs;
  network.layers[1].nUnits = 1;
  network.layers[2].nUnits = settings.outputs;
  network.pat_norm = settings.pat_norm ? 1 : 0;
  network.targ_norm = settings.targ_norm ? 1 : 0;
  network.overMeth = settings.test_method;
  network.testPats = settings.test_patterns;
  network.file_name = "/fuzz/fuzz.net";
  network.PatName = network.RecallPatName = "in.dat";
  network.TargName = network.RecallTargName = two_files ? "targ.dat" : "in.dat";
  network.PatCol = network.RecallPatCol = settings.input_column;
  network.TargCol = network.RecallTargCol = settings.target_column;
  network.mode = settings.recall ? Mode::kRecall : Mode::kTraining;
  network.RecallTargets = !settings.recall || settings.recall_targets;
  return network;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// The rule restated: a line that is ended by a line feed, holds more than white space and does
// not begin with "#" behind it. Ctrl-Z ends the file.
std::vector<std::string_view> Records(std::string_view file) {
  file = file.substr(0, file.find('\x1A'));
  std::vector<std::string_view> records;
  for (size_t end = file.find('\n'); end != std::string_view::npos; end = file.find('\n')) {
    const std::string_view line = file.substr(0, end);
    const auto* const first = std::find_if_not(line.begin(), line.end(), IsBlank);
    if (first != line.end() && *first != '#') records.push_back(line);
    file.remove_prefix(end + 1);
  }
  return records;
}

int64_t FieldCount(std::string_view record) {
  int64_t count = 0;
  bool in_field = false;
  for (char c : record) {
    const bool separator = c == ',' || IsBlank(c);
    if (!separator && !in_field) ++count;
    in_field = !separator;
  }
  return count;
}

bool IsFieldMissing(const std::vector<std::string_view>& records, int32_t column, int32_t nodes) {
  return std::ranges::any_of(records, [&](std::string_view record) {
    return FieldCount(record) < int64_t{column} - 1 + nodes;
  });
}

// A failure before anything was read has one of these reasons.
void RequireReason(const Status& failed, const Network& network,
                   const std::vector<std::string_view>& inputs,
                   const std::vector<std::string_view>& targets) {
  const std::string& message = failed.message();
  bool reason = false;
  if (message == kInputColumnInvalid) {
    reason = network.PatCol < 1;
  } else if (message == kTargetColumnInvalid) {
    reason = network.TargCol < 1;
  } else if (message == kCountsNotEqual) {
    reason = inputs.size() != targets.size();
  } else if (message == kDataFileEmpty) {
    reason = inputs.empty();
  } else if (message.starts_with("Insufficient input")) {
    reason = IsFieldMissing(inputs, network.PatCol, network.layers[0].nUnits);
  } else if (message.starts_with("Insufficient target")) {
    reason = IsFieldMissing(targets, network.TargCol, OutputLayer(network).nUnits);
  }
  Require(reason, "reason for: " + message);
}

void RequireWithin(std::span<const float> values, float lower, float upper) {
  for (float value : values) Require(value >= lower && value <= upper, "value within its band");
}

// Training data lie in 0..1, normalized ones in the band; recall data anywhere, but finite.
void RequireValues(std::span<const float> values, bool normalized, bool recall) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  if (recall) {
    RequireWithin(values, -kLargest, kLargest);
  } else if (normalized) {
    RequireWithin(values, 0.15F, 0.85F + 1e-6F);
  } else {
    RequireWithin(values, 0.0F, 1.0F);
  }
}

void RequireMeasured(const Limits& limits) {
  for (size_t i = 0; i < limits.lower.size(); ++i) Require(limits.Measured(i), "limit order");
}

void RequireNames(const std::vector<std::string>& names, int32_t nodes) {
  Require(names.empty() || names.size() == static_cast<size_t>(nodes), "labels by node");
  for (const std::string& name : names) {
    Require(FirstCharacters(name, kLongestLabel) == name, "label length");
  }
}

void RequireData(const Network& network) {
  const bool recall = network.mode == Mode::kRecall;
  RequireValues(network.layers[0].activations.All(), network.pat_norm != 0, recall);
  RequireValues(network.targets.All(), network.targ_norm != 0, recall);
  if (network.pat_norm != 0) RequireMeasured(network.input_limits);
  if (network.targ_norm != 0) RequireMeasured(network.target_limits);
  RequireNames(network.input_names, network.layers[0].nUnits);
  RequireNames(network.output_names, OutputLayer(network).nUnits);
}

void RequireTestSet(const Network& network) {
  std::vector<int32_t> all(network.train_list);
  if (network.mode == Mode::kTraining) {
    all.insert(all.end(), network.test_list.begin(), network.test_list.end());
  }
  std::ranges::sort(all);
  Require(all.size() == static_cast<size_t>(network.nPats), "every pattern is in a list");
  for (size_t p = 0; p < all.size(); ++p) {
    Require(all[p] == static_cast<int32_t>(p), "every pattern is in one list");
  }
  Require(std::ranges::is_sorted(network.train_list), "training list rises");
  Require(std::ranges::is_sorted(network.test_list), "test list rises");
  Require(network.train_list.size() == static_cast<size_t>(network.nTrain), "nTrain");
  Require(network.test_list.size() == static_cast<size_t>(network.testPats), "testPats");
}

void Read(Network& network, std::string_view input_file, std::string_view target_file) {
  const std::vector<std::string_view> inputs = Records(input_file);
  const std::vector<std::string_view> targets = Records(target_file);
  PatternCount count;
  Notices notices;
  const Status counted = CountPatterns(network, count, notices);
  if (!counted.ok()) return RequireReason(counted, network, inputs, targets);
  Require(count.records == static_cast<int32_t>(inputs.size()), "count of records");
  network.nPats = count.records;
  SizeTestSet(network, notices);
  Require(AllocateArrays(network).ok(), "allocation");
  const Status read = ReadPatterns(network, count.buffer_size);
  if (read.ok()) {
    RequireData(network);
  } else {
    Require(read.message().starts_with("Insufficient "), "reason for: " + read.message());
  }
  // The stored split is missing, which is no failure.
  Require(BuildTestSet(network, 1).ok(), "test set");
  RequireTestSet(network);
}

}  // namespace

// A record of n characters holds at most n / 2 values, and a network at most 15 inputs and outputs.
const Bounds kBounds = {{1 << 20, 256}, {1 << 12, 16}, {0, 0}};

void Run(FuzzFiles& files, std::string_view input) {
  const Settings settings = TakeSettings(input);
  const size_t divider = input.find(kDivider);
  const bool two_files = divider != std::string_view::npos;
  const std::string_view input_file = input.substr(0, divider);
  const std::string_view target_file =
      two_files ? input.substr(divider + kDivider.size()) : input_file;
  files.Put("in.dat", input_file);
  if (two_files) files.Put("targ.dat", target_file);
  files.Put("fuzz.net", NormalizeSection(settings));
  Network network = MakeNetwork(settings, two_files);
  Read(network, input_file, target_file);
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 12> kWords = {
      "1 2 3",      "0.1,0.2,0.3", "#",    "# \"a\" \"b\" \"c\"", "=====",    "\t", ",,",
      "0.5 0.25 1", "-1 0 1e30",   "\r\n", "1 2 3 4 5 6 7 8 9",   "@14211110"};
  return kWords;
}

}  // namespace tarn::fuzz
