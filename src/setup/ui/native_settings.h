#pragma once

#include <wx/frame.h>
#include <wx/listbox.h>
#include <wx/menu.h>

// Settings of the system's windows that wxWidgets does not pass on. Nothing where none is needed.

namespace tarn {

// Keeps a list box from measuring its rows one by one, all of which show a text alone: 10,000 of
// them took GTK 190 ms, now 2.
void MakeRowsAlike(wxListBox& box);

// Empties a list box. GTK follows each row as it goes, in a time that grows with the square of
// their number: 40,000 took 4 seconds.
void ClearAtOnce(wxListBox& box);

// Lets a window be used, with the menu bar that it has, although a modal dialog that was there
// before it is open.
void UseBesideModalDialogs(wxFrame& frame);

// Lets F1 in an open menu of the menu bar send the frame wxEVT_HELP.
void SendHelpOfMenus(wxFrame& frame);

// Closes a menu of a menu bar that is open.
void CloseMenu(const wxMenu& menu);

}  // namespace tarn
