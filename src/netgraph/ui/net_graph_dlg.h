#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <wx/frame.h>
#include <wx/gdicmn.h>

#include "app/dialogs.h"
#include "netgraph/graph.h"
#include "netgraph/picture_request.h"
#include "netgraph/ui/graph_panel.h"
#include "resources/controls.h"

namespace tarn {

// The graph window, with the commands of GRAPH_MENU. It shows one graph until it is closed.
class NetGraphDlg : public wxFrame {
 public:
  // `owner` may be null. The dialogs are not owned and outlive the window. `colour_depth` gives
  // that of the display in bits per pixel.
  NetGraphDlg(wxWindow* owner, Graph graph, Dialogs& dialogs,
              std::function<int()> colour_depth = wxDisplayDepth);
  ~NetGraphDlg() override;
  NetGraphDlg(const NetGraphDlg&) = delete;
  NetGraphDlg& operator=(const NetGraphDlg&) = delete;

  // New data of the same plot, as a run goes on: what was zoomed to stays, and the legend.
  void Replace(Graph graph) { m_panel->Replace(std::move(graph)); }
  GraphPanel& panel() { return *m_panel; }

 private:
  void OnMenu(wxCommandEvent& event);
  void OnKey(wxKeyEvent& event);
  void OnClose(wxCloseEvent& event);
  void EndWith(const Message& message);
  void ShowZoomHint();

  void SaveBitmap();
  void ExportPicture();
  Status SaveAsPicture(PictureKind kind, const Size& size, const std::string& path);
  void ExportData();
  // Nothing after Cancel.
  std::optional<Size> AskForSize();
  void TellFailure(const Status& status);
  void Copy();
  void CopyData();
  void Print();
  void Preview();

  Dialogs& m_dialogs;
  std::function<int()> m_colour_depth;
  GraphPanel* m_panel;
  OpenMenuWatch m_menus{*this};
};

}  // namespace tarn
