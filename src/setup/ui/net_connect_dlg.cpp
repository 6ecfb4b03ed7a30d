#include "setup/ui/net_connect_dlg.h"

#include <algorithm>
#include <new>
#include <vector>
#include <wx/arrstr.h>
#include <wx/wupdlock.h>

#include "resources/controls.h"
#include "setup/messages.h"
#include "setup/ui/native_settings.h"

namespace tarn {
namespace {

constexpr int kInNetworkList = 101;
constexpr int kRemovedList = 102;
constexpr int kRemoveButton = 103;
constexpr int kAddButton = 104;

}  // namespace

NetConnectDlg::NetConnectDlg(wxWindow* parent, const ConnectionsRequest& request, bool& edited,
                             const std::string& scratch_folder, Dialogs& dialogs)
    : SetupDialog(parent, "TCONNECT_DLG", dialogs, HelpTopic::kConnections, kHelpId),
      m_draft(request.design, request.receiving_layer, scratch_folder),
      m_edited(edited) {
  SetTitle(Wide(m_draft.Caption()));
  BindList(List::kInNetwork);
  BindList(List::kRemoved);
  OnButton(kRemoveButton, [this] { Move(List::kInNetwork); });
  OnButton(kAddButton, [this] { Move(List::kRemoved); });
  OnButton(kOkId, [this] { Accept(); });
  Box(List::kInNetwork).SetFocus();
}

int NetConnectDlg::ShowModal() {
  const Status shown = WhileBusy(dialogs(), [this] {
    const Status loaded = m_draft.Load();
    return loaded.ok() ? ShowLists() : loaded;
  });
  if (shown.ok()) return SetupDialog::ShowModal();
  dialogs().Tell(kErrorCaption, shown.message());
  return kCancelId;
}

wxListBox& NetConnectDlg::Box(List list) const {
  return Control<wxListBox>(*this, list == List::kInNetwork ? kInNetworkList : kRemovedList);
}

void NetConnectDlg::BindList(List list) {
  MakeRowsAlike(Box(list));
  Box(list).Bind(wxEVT_KEY_DOWN, [this, list](wxKeyEvent& event) { OnKey(event, list); });
  Box(list).Bind(wxEVT_LEFT_DCLICK,
                 [this, list](wxMouseEvent& event) { OnDoubleClick(event, list); });
}

void NetConnectDlg::OnKey(wxKeyEvent& event, List list) {
  const int key = event.GetKeyCode();
  const bool moves = list == List::kInNetwork ? key == WXK_DELETE || key == WXK_NUMPAD_DELETE
                                              : key == WXK_INSERT || key == WXK_NUMPAD_INSERT;
  if (moves) {
    MoveByKey(list);
  } else if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
    // A list keeps it for itself on GTK.
    Accept();
  } else {
    event.Skip();
  }
}

void NetConnectDlg::MoveByKey(List from) {
  wxListBox& box = Box(from);
  wxArrayInt selected;
  if (box.GetSelections(selected) == 0) return;
  const int first = *std::min_element(selected.begin(), selected.end());
  Move(from);
  const int last = static_cast<int>(box.GetCount()) - 1;
  if (last >= 0) box.SetSelection(std::min(first, last));
}

void NetConnectDlg::OnDoubleClick(wxMouseEvent& event, List list) {
  event.Skip();
  // Its first click has selected the item. The list is still at work on the second.
  if (Box(list).HitTest(event.GetPosition()) != wxNOT_FOUND)
    CallAfter([this, list] { Move(list); });
}

Status NetConnectDlg::ShowLists() {
  try {
    Fill(List::kInNetwork);
    Fill(List::kRemoved);
  } catch (const std::bad_alloc&) {
    return Status::Failure(kConnectionsMemory);
  }
  return {};
}

void NetConnectDlg::Fill(List list) {
  wxListBox& box = Box(list);
  const wxWindowUpdateLocker frozen(&box);
  const int top = box.GetTopItem();
  wxArrayString texts;
  texts.Alloc(m_draft.Count(list));
  m_draft.ForEachText(list, [&texts](const std::string& text) { texts.push_back(Wide(text)); });
  ClearAtOnce(box);
  box.Set(texts);
  const int last = static_cast<int>(texts.size()) - 1;
  if (top > 0 && last > 0) box.SetFirstItem(std::min(top, last));
}

void NetConnectDlg::Move(List from) {
  wxArrayInt selected;
  Box(from).GetSelections(selected);
  std::sort(selected.begin(), selected.end());
  const std::vector<int> selection(selected.begin(), selected.end());
  const bool moved = from == List::kInNetwork ? m_draft.Remove(selection) : m_draft.Add(selection);
  if (!moved) return;
  const Status shown = WhileBusy(dialogs(), [this] { return ShowLists(); });
  if (shown.ok()) return;
  dialogs().Tell(kErrorCaption, shown.message());
  EndModal(kCancelId);
}

void NetConnectDlg::Accept() {
  const Status saved = WhileBusy(dialogs(), [this] { return m_draft.Save(m_edited); });
  if (saved.ok()) {
    EndModal(kOkId);
  } else {
    dialogs().Tell(kErrorCaption, saved.message());
  }
}

}  // namespace tarn
