#pragma once

#include <string>

#include "engine/network.h"
#include "setup/draft_result.h"
#include "setup/handover_file.h"

namespace tarn {

// The radio buttons of the inclusion method. A window checks one of them, or none when the
// network's code is unknown.
struct InclusionMethod {
  bool none = false;
  bool beginning = false;
  bool end = false;
  bool random = false;
};

// The training data dialog (`TrnDataDlg`) without its window: every field as text.
struct TrainingDataDraft {
  enum Id : int {
    kInputFileButton = 101,
    kTargetFileButton = 102,
    kRandomRadio = 103,
    kBeginningRadio = 104,
    kEndRadio = 105,
    kNoneRadio = 106,
    kTestCasesEdit = 107,
    kNormalizeInputsBox = 109,
    kNormalizeOutputsBox = 110,
    kInputColumnEdit = 111,
    kTargetColumnEdit = 112,
  };

  std::string input_path;
  std::string input_column;  // from 1
  bool normalize_inputs = false;
  std::string target_path;
  std::string target_column;  // from 1
  bool normalize_outputs = false;
  std::string test_cases;  // >= 0, else 0
  InclusionMethod method;
  // The dialog opens both files. A file that is not checked keeps its name as it stands.
  bool check_inputs = true;
  bool check_targets = true;

  void Load(const Network& network);
  // Inputs from column 1 and targets from the handed column of the one file.
  void Take(const HandOver& handover);

  // Checks every field and stores each that passes, whatever becomes of the others. An empty
  // number keeps the old value.
  DraftResult Apply(Network& network) const;
};

}  // namespace tarn
