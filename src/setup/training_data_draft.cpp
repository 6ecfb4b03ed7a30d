#include "setup/training_data_draft.h"

#include <cstdint>
#include <fmt/printf.h>
#include <string_view>

#include "base/text_numbers.h"
#include "setup/data_file_name.h"
#include "setup/edit_text.h"
#include "setup/messages.h"

namespace tarn {
namespace {

int32_t Convert(const std::string& field) {
  return ToInt(EditText(field, kEditLimit));
}

void StoreTestCases(const std::string& field, Network& network, DraftResult& result) {
  if (field.empty()) return;
  network.testPats = Convert(field);
  if (network.testPats >= 0) return;
  result.Tell(kTrainingDataError, kTestCountInvalid);
  network.testPats = 0;
}

void StoreColumn(const std::string& field, std::string_view message, int edit, int32_t& column,
                 DraftResult& result) {
  if (field.empty()) return;
  const int32_t value = Convert(field);
  if (value > 0) {
    column = value;
  } else {
    result.Refuse(kTrainingDataError, message, edit);
  }
}

int32_t MethodCode(const InclusionMethod& method) {
  if (method.none) return kTestNone;
  if (method.end) return kTestEnding;
  if (method.random) return kTestRandom;
  if (method.beginning) return kTestBeginning;
  return kTestEnding;
}

// False when the file is checked and does not open.
bool StoreFile(const std::string& path, bool check, std::string& name) {
  if (check && !IsReadableDataFile(path)) return false;
  if (!path.empty()) name = path;
  return true;
}

}  // namespace

void TrainingDataDraft::Load(const Network& network) {
  *this = {};
  input_path = network.PatName;
  input_column = fmt::sprintf("%d", network.PatCol);
  normalize_inputs = network.pat_norm != 0;
  target_path = network.TargName;
  target_column = fmt::sprintf("%d", network.TargCol);
  normalize_outputs = network.targ_norm != 0;
  test_cases = fmt::sprintf("%d", network.testPats);
  method.none = network.overMeth == kTestNone;
  method.beginning = network.overMeth == kTestBeginning;
  method.end = network.overMeth == kTestEnding;
  method.random = network.overMeth == kTestRandom;
}

void TrainingDataDraft::Take(const HandOver& handover) {
  input_path = handover.path;
  input_column = "1";
  target_path = handover.path;
  target_column = fmt::sprintf("%d", handover.target_column);
}

DraftResult TrainingDataDraft::Apply(Network& network) const {
  DraftResult result;
  result.may_close = true;
  StoreTestCases(test_cases, network, result);
  StoreColumn(input_column, kInputColumnInvalid, kInputColumnEdit, network.PatCol, result);
  StoreColumn(target_column, kTargetColumnInvalid, kTargetColumnEdit, network.TargCol, result);
  network.pat_norm = normalize_inputs ? 1 : 0;
  network.targ_norm = normalize_outputs ? 1 : 0;
  network.overMeth = MethodCode(method);

  const bool inputs_found = StoreFile(input_path, check_inputs, network.PatName);
  if (!inputs_found) result.Refuse(kTrainingDataError, kInputFileNotFound, kInputFileButton);
  if (!StoreFile(target_path, check_targets, network.TargName)) {
    // One missing file that holds both has been reported already.
    const bool reported = !inputs_found && target_path == input_path;
    if (!reported) result.Refuse(kTrainingDataError, kTargetFileNotFound, kTargetFileButton);
  }
  return result;
}

}  // namespace tarn
