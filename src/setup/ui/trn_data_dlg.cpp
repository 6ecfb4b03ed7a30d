#include "setup/ui/trn_data_dlg.h"

#include "resources/controls.h"
#include "setup/edit_text.h"

namespace tarn {
namespace {

constexpr int kHandOverButton = 116;

using Draft = TrainingDataDraft;

bool HasMethod(const InclusionMethod& method) {
  return method.none || method.beginning || method.end || method.random;
}

}  // namespace

TrnDataDlg::TrnDataDlg(wxWindow* parent, Network& network, Dialogs& dialogs,
                       const ApplicationPaths& paths)
    : DataDialog(parent, "TDATA_DLG", dialogs, HelpTopic::kTrainingData, paths),
      m_network(network) {
  m_draft.Load(network);
  TieFields();
  TieFiles(m_draft.input_path, m_draft.target_path);
  OnHandOver(kHandOverButton, [this](const HandOver& handover) { m_draft.Take(handover); });
  OnButton(kOkId, [this] { Accept(); });
  FocusEdit(*this, Draft::kInputColumnEdit);
}

void TrnDataDlg::TieFields() {
  Tie(Draft::kInputColumnEdit, m_draft.input_column, kEditLimit);
  Tie(Draft::kNormalizeInputsBox, m_draft.normalize_inputs);
  Tie(Draft::kTargetColumnEdit, m_draft.target_column, kEditLimit);
  Tie(Draft::kNormalizeOutputsBox, m_draft.normalize_outputs);
  Tie(Draft::kTestCasesEdit, m_draft.test_cases, kEditLimit);
  Tie(Draft::kRandomRadio, m_draft.method.random);
  Tie(Draft::kBeginningRadio, m_draft.method.beginning);
  Tie(Draft::kEndRadio, m_draft.method.end);
  Tie(Draft::kNoneRadio, m_draft.method.none);
  if (!HasMethod(m_draft.method)) CheckNone(Draft::kRandomRadio);
}

void TrnDataDlg::Accept() {
  ReadFields();
  Finish(m_draft.Apply(m_network));
}

}  // namespace tarn
