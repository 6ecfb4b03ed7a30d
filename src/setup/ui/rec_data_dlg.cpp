#include "setup/ui/rec_data_dlg.h"

#include "resources/controls.h"
#include "setup/edit_text.h"

namespace tarn {
namespace {

constexpr int kHandOverButton = 103;

}  // namespace

RecDataDlg::RecDataDlg(wxWindow* parent, Network& network, Dialogs& dialogs,
                       const ApplicationPaths& paths)
    : DataDialog(parent, "RDATA_DLG", dialogs, HelpTopic::kRecallData, paths), m_network(network) {
  m_draft.Load(network);
  Tie(RecallDataDraft::kInputColumnEdit, m_draft.input_column, kEditLimit);
  Tie(RecallDataDraft::kTargetColumnEdit, m_draft.target_column, kEditLimit);
  TieFiles(m_draft.input_path, m_draft.target_path);
  OnHandOver(kHandOverButton, [this](const HandOver& handover) { m_draft.Take(handover); });
  OnButton(kOkId, [this] { Accept(); });
  FocusEdit(*this, RecallDataDraft::kInputColumnEdit);
}

void RecDataDlg::Accept() {
  ReadFields();
  Finish(m_draft.Apply(m_network));
}

}  // namespace tarn
