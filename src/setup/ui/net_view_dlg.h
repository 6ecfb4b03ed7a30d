#pragma once

#include <string>
#include <wx/bitmap.h>
#include <wx/event.h>
#include <wx/frame.h>
#include <wx/graphics.h>
#include <wx/window.h>

#include "app/dialogs.h"
#include "engine/network.h"
#include "setup/network_drawing.h"

namespace tarn {

// A drawing of a network: its layers, nodes and the connections that are present. Neither the
// network, which has passed CheckShape, nor the dialogs are owned.
class NetViewDlg : public wxFrame {
 public:
  // The window can be used while a modal `parent` is open, and goes with it.
  NetViewDlg(wxWindow* parent, const Network& network, std::string scratch_folder,
             Dialogs& dialogs);

  // Draws the network anew, which has changed or whose connections have.
  void Redraw();

 private:
  void MakePage();
  void OnKey(wxKeyEvent& event);
  void Paint();
  void DrawPicture(wxSize size);
  void Draw(wxGraphicsContext& canvas, PageSize page);
  void DrawConnections(wxGraphicsContext& canvas, PageSize page, int32_t layer);

  const Network& m_network;
  const std::string m_scratch_folder;
  Dialogs& m_dialogs;
  wxWindow* m_page;
  wxBitmap m_picture;  // of the page; not ok when it has to be drawn anew
};

}  // namespace tarn
