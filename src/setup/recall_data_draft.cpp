#include "setup/recall_data_draft.h"

#include <cstdint>
#include <fmt/printf.h>

#include "base/text_numbers.h"
#include "setup/data_file_name.h"
#include "setup/edit_text.h"
#include "setup/messages.h"

namespace tarn {
namespace {

// 0, which is no column, for an empty field.
int32_t Convert(const std::string& field) {
  return ToInt(EditText(field, kEditLimit));
}

void StoreTargets(const std::string& path, Network& network, DraftResult& result) {
  if (path.empty()) {
    network.RecallTargName.clear();
  } else if (!IsReadableFile(path)) {
    result.Refuse(kRecallDataError, kTargetFileNotFound, RecallDataDraft::kTargetFileButton);
  } else if (network.RecallTargCol <= 0) {
    result.Refuse(kRecallDataError, kTargetColumnInvalid, RecallDataDraft::kTargetColumnEdit);
  } else {
    network.RecallTargName = path;
    network.RecallTargets = true;
  }
}

}  // namespace

void RecallDataDraft::Load(const Network& network) {
  input_path = network.RecallPatName;
  input_column = fmt::sprintf("%d", network.RecallPatCol);
  target_path = network.RecallTargName;
  target_column = fmt::sprintf("%d", network.RecallTargCol);
}

void RecallDataDraft::Take(const HandOver& handover) {
  if (!handover.path.empty()) {
    input_path = handover.path;
    input_column = "1";
  }
  if (handover.target_column != 0) {
    target_path = handover.path;
    target_column = fmt::sprintf("%d", handover.target_column);
  }
}

DraftResult RecallDataDraft::Apply(Network& network) const {
  DraftResult result;
  result.may_close = true;
  if (Convert(input_column) > 0) {
    network.RecallPatCol = Convert(input_column);
  } else if (!input_column.empty()) {
    result.Refuse(kRecallDataError, kInputColumnInvalid, kInputColumnEdit);
  }
  if (Convert(target_column) > 0) network.RecallTargCol = Convert(target_column);

  if (IsReadableFile(input_path)) {
    network.RecallPatName = input_path;
    network.RecallTargets = false;
  } else {
    result.Refuse(kRecallDataError, kInputFileNotFound, kInputFileButton);
  }
  StoreTargets(target_path, network, result);
  return result;
}

}  // namespace tarn
