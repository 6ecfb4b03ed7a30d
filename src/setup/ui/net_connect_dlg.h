#pragma once

#include <string>
#include <wx/event.h>
#include <wx/listbox.h>
#include <wx/window.h>

#include "app/dialogs.h"
#include "setup/connections_draft.h"
#include "setup/net_design_draft.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// The connections between two adjacent layers, some of which can be removed. OK writes the pending
// connection file and sets `edited` when something was changed. Neither the request, the mark nor
// the dialogs are owned.
class NetConnectDlg : public SetupDialog {
 public:
  NetConnectDlg(wxWindow* parent, const ConnectionsRequest& request, bool& edited,
                const std::string& scratch_folder, Dialogs& dialogs);

  // Connections that memory does not hold are told, and the dialog counts as cancelled without
  // being shown.
  int ShowModal() override;

 private:
  using List = ConnectionsDraft::List;

  wxListBox& Box(List list) const;
  void BindList(List list);
  void OnKey(wxKeyEvent& event, List list);
  void OnDoubleClick(wxMouseEvent& event, List list);

  // Empties both lists and fills them; what they show stays in its place.
  Status ShowLists();
  void Fill(List list);
  void Move(List from);
  // Goes on with the item behind.
  void MoveByKey(List from);
  void Accept();

  ConnectionsDraft m_draft;
  bool& m_edited;
};

}  // namespace tarn
