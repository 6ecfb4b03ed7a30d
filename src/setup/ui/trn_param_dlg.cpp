#include "setup/ui/trn_param_dlg.h"

#include <array>
#include <string>

#include "resources/controls.h"
#include "setup/edit_text.h"

namespace tarn {
namespace {

using Draft = TrainingParametersDraft;

struct Edit {
  int id;
  std::string Draft::*field;
};
constexpr std::array kEdits = {Edit{Draft::kMaxIterationsEdit, &Draft::max_iterations},
                               Edit{Draft::kLrcStartEdit, &Draft::lrc_start},
                               Edit{Draft::kAutoSaveRateEdit, &Draft::autosave_rate},
                               Edit{Draft::kUpdateRateEdit, &Draft::update_rate},
                               Edit{Draft::kEtaEdit, &Draft::eta},
                               Edit{Draft::kEtaMinEdit, &Draft::eta_min},
                               Edit{Draft::kEtaMaxEdit, &Draft::eta_max},
                               Edit{Draft::kMomentumEdit, &Draft::momentum},
                               Edit{Draft::kFastPropEdit, &Draft::fast_prop},
                               Edit{Draft::kPatternsPerUpdateEdit, &Draft::patterns_per_update},
                               Edit{Draft::kToleranceEdit, &Draft::tolerance}};

}  // namespace

TrnParamDlg::TrnParamDlg(wxWindow* parent, Network& network, Dialogs& dialogs)
    : SetupDialog(parent, "TPARAM_DLG", dialogs, HelpTopic::kTrainingParameters, kHelpId),
      m_network(network) {
  m_draft.Load(network);
  for (const Edit& edit : kEdits) Tie(edit.id, m_draft.*edit.field, kEditLimit);
  Tie(Draft::kResetWeightsBox, m_draft.reset_weights);
  OnButton(kOkId, [this] { Accept(); });
  FocusEdit(*this, kEdits.front().id);
}

void TrnParamDlg::Accept() {
  ReadFields();
  Finish(m_draft.Apply(m_network));
}

}  // namespace tarn
