#include "data/data_source.h"

#include "data/messages.h"

namespace tarn {

DataSource SourceOf(const Network& network) {
  if (network.mode == Mode::kTraining) {
    return {network.PatName, network.PatCol, network.TargName, network.TargCol, true};
  }
  return {network.RecallPatName, network.RecallPatCol, network.RecallTargName,
          network.RecallTargCol, network.RecallTargets};
}

Status CheckColumns(const DataSource& source) {
  if (source.input_column < 1) return Status::Failure(kInputColumnInvalid);
  if (source.targets && source.target_column < 1) return Status::Failure(kTargetColumnInvalid);
  return {};
}

}  // namespace tarn
