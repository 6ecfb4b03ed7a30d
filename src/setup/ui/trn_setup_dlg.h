#pragma once

#include <functional>
#include <wx/window.h>

#include "app/application_paths.h"
#include "app/dialogs.h"
#include "app/network_loader.h"
#include "app/session.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// The training setup: loads the network's setup from its file and opens the dialogs that edit it.
class TrnSetupDlg : public SetupDialog {
 public:
  // `file_changed` is called after the setup was saved under a name. Neither session, dialogs nor
  // paths are owned.
  TrnSetupDlg(wxWindow* parent, Session& session, Dialogs& dialogs, const ApplicationPaths& paths,
              std::function<void()> file_changed);

  // A setup that cannot be loaded is told, and the dialog counts as cancelled without being shown.
  int ShowModal() override;

  // The shape that the file has: of the network as it was loaded.
  NetworkShape stored_shape() const { return m_stored_shape; }

 private:
  bool Load();
  void Save();

  Session& m_session;
  const std::function<void()> m_file_changed;
  NetworkShape m_stored_shape{};
};

}  // namespace tarn
