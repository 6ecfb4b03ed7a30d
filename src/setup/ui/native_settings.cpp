#include "setup/ui/native_settings.h"

#ifdef __WXGTK__

#include <wx/event.h>

// The library's headers need not be there where those of wxWidgets are.
extern "C" {
void* gtk_tree_view_get_column(_GtkTreeView* view, int place);
void gtk_tree_view_column_set_sizing(void* column, int sizing);
void gtk_tree_view_set_fixed_height_mode(_GtkTreeView* view, int on);
void* gtk_tree_view_get_model(_GtkTreeView* view);
void gtk_tree_view_set_model(_GtkTreeView* view, void* model);
void* gtk_window_group_new();
void gtk_window_group_add_window(void* group, void* window);
unsigned long g_signal_connect_data(void* object, const char* signal, void (*handler)(), void* data,
                                    void (*destroy)(), int flags);
int gdk_event_get_keyval(const void* event, unsigned int* key);
void gtk_menu_shell_cancel(_GtkWidget* menu);
void* g_object_ref(void* object);
void g_object_unref(void* object);
}

namespace tarn {
namespace {

void SendCommand(void*, void* data) {
  const auto* item = static_cast<const wxMenuItem*>(data);
  wxFrame* frame = item->GetMenu()->GetMenuBar()->GetFrame();
  wxCommandEvent command(wxEVT_MENU, item->GetId());
  command.SetEventObject(frame);
  frame->ProcessWindowEvent(command);
}

// While a dialog is modal wxWidgets keeps the commands of every menu bar to itself.
void SendCommandsOf(const wxMenuBar& bar) {
  for (size_t place = 0; place < bar.GetMenuCount(); ++place) {
    for (wxMenuItem* item : bar.GetMenu(place)->GetMenuItems()) {
      g_signal_connect_data(item->GetMenuItem(), "activate",
                            reinterpret_cast<void (*)()>(SendCommand), item, nullptr, 0);
    }
  }
}

// True when the key needs no other answer.
int OnKeyInMenu(void*, const void* event, void* data) {
  constexpr unsigned int kF1 = 0xffbe;
  unsigned int key = 0;
  if (gdk_event_get_keyval(event, &key) == 0 || key != kF1) return 0;
  auto* frame = static_cast<wxFrame*>(data);
  wxHelpEvent help(wxEVT_HELP, frame->GetId(), wxDefaultPosition, wxHelpEvent::Origin_Keyboard);
  help.SetEventObject(frame);
  return frame->ProcessWindowEvent(help) ? 1 : 0;
}

}  // namespace

void MakeRowsAlike(wxListBox& box) {
  constexpr int kFixedSizing = 2;
  gtk_tree_view_column_set_sizing(gtk_tree_view_get_column(box.m_treeview, 0), kFixedSizing);
  gtk_tree_view_set_fixed_height_mode(box.m_treeview, 1);
}

void ClearAtOnce(wxListBox& box) {
  // It would look for its selection while the rows are away from their window.
  box.GTKDisableEvents();
  void* rows = g_object_ref(gtk_tree_view_get_model(box.m_treeview));
  gtk_tree_view_set_model(box.m_treeview, nullptr);
  box.Clear();
  gtk_tree_view_set_model(box.m_treeview, rows);
  g_object_unref(rows);
  box.GTKEnableEvents();
}

void UseBesideModalDialogs(wxFrame& frame) {
  // A modal dialog takes the input of its own group of windows.
  void* group = gtk_window_group_new();
  gtk_window_group_add_window(group, frame.GetHandle());
  // The window keeps it.
  g_object_unref(group);
  // Its title bar closes it as well, whatever dialog is open.
  frame.SetExtraStyle(frame.GetExtraStyle() | wxTOPLEVEL_EX_DIALOG);
  if (frame.GetMenuBar() != nullptr) SendCommandsOf(*frame.GetMenuBar());
}

void SendHelpOfMenus(wxFrame& frame) {
  const wxMenuBar& bar = *frame.GetMenuBar();
  for (size_t place = 0; place < bar.GetMenuCount(); ++place) {
    g_signal_connect_data(bar.GetMenu(place)->m_menu, "key-press-event",
                          reinterpret_cast<void (*)()>(OnKeyInMenu), &frame, nullptr, 0);
  }
}

void CloseMenu(const wxMenu& menu) {
  gtk_menu_shell_cancel(menu.m_menu);
}

}  // namespace tarn

#else

#include <wx/msw/wrapwin.h>

namespace tarn {

void MakeRowsAlike(wxListBox&) {}
void ClearAtOnce(wxListBox& box) {
  box.Clear();
}
void UseBesideModalDialogs(wxFrame&) {}
void SendHelpOfMenus(wxFrame&) {}
void CloseMenu(const wxMenu&) {
  EndMenu();
}

}  // namespace tarn

#endif
