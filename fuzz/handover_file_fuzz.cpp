#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/text_numbers.h"
#include "bounded_run.h"
#include "restated_lines.h"
#include "setup/handover_file.h"
#include "setup/training_data_draft.h"

// The input is the hand-over file of the companion editor. Its path and column are as they are
// restated here, the file is gone afterwards, and the training data dialog takes what it holds.

namespace tarn::fuzz {
namespace {

const std::string kHandOver = "/fuzz/input.hnd";

HandOver Restated(std::string_view file) {
  constexpr size_t kLimit = 254;
  HandOver handover;
  std::string_view rest = TextOf(file);
  if (rest.empty()) return handover;
  RestatedLine line = TakeLine(rest, kLimit);
  handover.path = line.text;
  while (!line.ended && !rest.empty()) line = TakeLine(rest, kLimit);
  // A digit string is scanned as far as 4096 characters go.
  constexpr size_t kLongestNumber = 4096;
  while (!rest.empty() && IsSpace(rest.front())) rest.remove_prefix(1);
  rest = rest.substr(0, kLongestNumber);
  (void)ScanInt(rest, handover.target_column);
  return handover;
}

// One patterns file for inputs and targets, of which the record keeps what the dialog accepts.
void TakeIntoDialog(const HandOver& handover) {
  Network network;
  network.nLayers = 3;
  for (size_t l = 0; l < 3; ++l) network.layers[l].nUnits = 2;
  TrainingDataDraft draft;
  draft.Load(network);
  draft.Take(handover);
  draft.check_inputs = draft.check_targets = false;
  (void)draft.Apply(network);
  Require(network.PatName.size() <= 254 && network.TargName.size() <= 254, "length of names");
  Require(network.PatCol >= 1 && network.TargCol >= 1, "columns");
}

}  // namespace

const Bounds kBounds = {{1 << 16, 32}, {1 << 12, 8}, {0, 0}};

void Run(FuzzFiles& files, std::string_view input) {
  Message message;
  Require(!TakeHandOver(kHandOver, message).has_value() && !message.text.empty(), "no file");
  files.Put(kHandOver, input);
  message = {};
  const std::optional<HandOver> handover = TakeHandOver(kHandOver, message);
  Require(handover.has_value() && message.text.empty(), "a file is taken");
  const HandOver restated = Restated(input);
  Require(handover->path == restated.path, "path");
  Require(handover->target_column == restated.target_column, "target column");
  Require(files.Count() == 0, "a file that was taken is gone");
  TakeIntoDialog(*handover);
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 6> kWords = {
      "/home/user/data.txt", "C:\\DATA\\IRIS.TXT", "5", "0", "\n\n", "\r\n"};
  return kWords;
}

}  // namespace tarn::fuzz
