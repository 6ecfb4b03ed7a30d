#pragma once

#include <string>

#include "engine/network.h"
#include "setup/draft_result.h"

namespace tarn {

// The training parameters dialog (`TrnParamDlg`) without its window: every field as text.
struct TrainingParametersDraft {
  enum Id : int {
    kMaxIterationsEdit = 101,
    kLrcStartEdit = 102,
    kAutoSaveRateEdit = 103,
    kUpdateRateEdit = 104,
    kEtaEdit = 105,
    kEtaMinEdit = 106,
    kEtaMaxEdit = 107,
    kMomentumEdit = 108,
    kFastPropEdit = 109,
    kPatternsPerUpdateEdit = 110,
    kResetWeightsBox = 111,
    kToleranceEdit = 112,
  };

  std::string max_iterations;       // > 0
  std::string lrc_start;            // > 0
  std::string autosave_rate;        // >= 0, else 0
  std::string update_rate;          // > 0, else 1
  std::string eta;                  // > 0..1
  std::string eta_min;              // > 0..1
  std::string eta_max;              // > 0..1
  std::string momentum;             // 0..1
  std::string fast_prop;            // 0..3
  std::string patterns_per_update;  // >= 0; anything else is ignored
  std::string tolerance;            // > 0, else 0
  bool reset_weights = false;       // never set by Load

  void Load(const Network& network);

  // Empties every field that Apply would answer with a message, so that the value it was
  // loaded from stays as it is. ETA stands: it is converted even when empty.
  void EmptyFieldsOutOfRange();

  // Checks every field and stores each that passes, whatever becomes of the others. An empty
  // field keeps the old value, but for ETA, where it reads as 0.
  DraftResult Apply(Network& network) const;
};

}  // namespace tarn
