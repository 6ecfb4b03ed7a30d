#pragma once

#include <string>

#include "engine/network.h"
#include "setup/draft_result.h"
#include "setup/handover_file.h"

namespace tarn {

// The recall data dialog (`RecDataDlg`) without its window: every field as text.
struct RecallDataDraft {
  enum Id : int {
    kInputFileButton = 101,
    kTargetFileButton = 102,
    kInputColumnEdit = 111,
    kTargetColumnEdit = 112,
  };

  std::string input_path;
  std::string input_column;   // from 1
  std::string target_path;    // empty: no targets
  std::string target_column;  // from 1; anything else is ignored

  void Load(const Network& network);
  // Inputs from column 1 of the file, when there is one; targets from the handed column, when
  // it holds some.
  void Take(const HandOver& handover);

  // Checks every field and stores each that passes, whatever becomes of the others. An empty
  // column keeps the old one. Targets without a column are refused. may_close is also what the
  // dialog reports as acceptance.
  DraftResult Apply(Network& network) const;
};

}  // namespace tarn
