#include "setup/ui/trn_setup_dlg.h"

#include <utility>

#include "app/messages.h"
#include "app/saving.h"
#include "resources/controls.h"
#include "setup/ui/net_design_dlg.h"
#include "setup/ui/trn_data_dlg.h"
#include "setup/ui/trn_param_dlg.h"

namespace tarn {
namespace {

constexpr int kDesignButton = 101;
constexpr int kDataButton = 102;
constexpr int kParametersButton = 103;
constexpr int kSaveButton = 104;

}  // namespace

TrnSetupDlg::TrnSetupDlg(wxWindow* parent, Session& session, Dialogs& dialogs,
                         const ApplicationPaths& paths, std::function<void()> file_changed)
    : SetupDialog(parent, "TSETUP_DLG", dialogs, HelpTopic::kTrainingSetup, kHelpId),
      m_session(session),
      m_file_changed(std::move(file_changed)) {
  Network& network = session.network;
  OnButton(kDesignButton, [this, &network, &dialogs] {
    NetDesignDlg(this, network, dialogs, m_session.scratch.path()).ShowModal();
  });
  OnButton(kDataButton, [this, &network, &dialogs, &paths] {
    TrnDataDlg(this, network, dialogs, paths).ShowModal();
  });
  OnButton(kParametersButton,
           [this, &network, &dialogs] { TrnParamDlg(this, network, dialogs).ShowModal(); });
  OnButton(kSaveButton, [this] { Save(); });
  OnButton(kOkId, [this] { EndModal(kOkId); });
  Control(*this, kDesignButton).SetFocus();
}

int TrnSetupDlg::ShowModal() {
  return Load() ? SetupDialog::ShowModal() : kCancelId;
}

bool TrnSetupDlg::Load() {
  const Status read = ReadSetup(m_session);
  if (!read.ok()) {
    dialogs().Tell(kNetworkErrorCaption, read.message());
    return false;
  }
  m_stored_shape = ShapeOf(m_session.network);
  return true;
}

void TrnSetupDlg::Save() {
  if (SaveSetupAs(m_session, dialogs()) && m_file_changed) m_file_changed();
}

}  // namespace tarn
