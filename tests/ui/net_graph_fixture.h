#pragma once

#include <cstddef>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <utility>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/menu.h>
#include <wx/statusbr.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include "netgraph/graph_shapes.h"
#include "netgraph/ui/graph_bitmap.h"
#include "netgraph/ui/net_graph_dlg.h"
#include "resources/controls.h"
#include "support/fake_dialogs.h"
#include "support/temp_folder.h"

namespace tarn {

inline Graph HistoryGraph() {
  Graph graph = GraphOf({WaveCurve({0, 1500}, {0, 1})});
  graph.title = "Training RMS Error History";
  graph.x_label = "Iterations";
  graph.y_label = "RMS Error";
  graph.curves[0].name = "Training Set";
  return graph;
}

// Of curves: texts and axes are grey.
inline size_t ColouredPixels(const wxBitmap& bitmap) {
  const Raster raster = RasterOf(bitmap);
  size_t count = 0;
  for (size_t i = 0; i < raster.rgb.size(); i += 3) {
    const bool grey = raster.rgb[i] == raster.rgb[i + 1] && raster.rgb[i] == raster.rgb[i + 2];
    if (!grey) ++count;
  }
  return count;
}

inline bool SamePixels(const wxBitmap& one, const wxBitmap& other) {
  return RasterOf(one).rgb == RasterOf(other).rgb;
}

// A graph window on the screen, driven by the mouse and the keys.
class NetGraphWindow : public testing::Test {
 protected:
  ~NetGraphWindow() override {
    if (m_window != nullptr) m_window->Close(true);
    Turn();
    EXPECT_EQ(m_window, nullptr);
  }

  NetGraphDlg& Open(Graph graph, wxWindow* owner = nullptr) {
    Show(std::move(graph), owner);
    return *m_window;
  }
  // The same for one that may have closed by itself.
  void Show(Graph graph, wxWindow* owner = nullptr) {
    m_window = new NetGraphDlg(owner, std::move(graph), m_dialogs, [this] { return m_depth; });
    m_window->Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
      if (event.GetEventObject() == m_window) m_window = nullptr;
      event.Skip();
    });
    m_window->Show();
    // The pointer stands where it is in nobody's way.
    wxUIActionSimulator().MouseMove(1279, 1023);
    Turn();
  }
  GraphPanel& Panel() { return m_window->panel(); }
  const GraphRange& Range() { return Panel().view().range(); }

  // What the loop has to do: painting included, which takes it some turns.
  static void Turn() {
    wxGUIEventLoop loop;
    const wxEventLoopActivator active(&loop);
    for (int i = 0; i < 20; ++i) {
      while (loop.Pending()) loop.Dispatch();
      wxTheApp->ProcessPendingEvents();
      loop.ProcessIdle();
      wxMilliSleep(3);
    }
  }

  void Choose(int command) {
    const wxMenuItem* item = m_window->GetMenuBar()->FindItem(command);
    ASSERT_NE(item, nullptr) << command;
    ASSERT_TRUE(item->IsEnabled()) << command;
    m_window->ProcessCommand(command);
    Turn();
  }

  // A place of the plot, by shares from its lower left corner.
  wxPoint PlaceAt(double across, double up) {
    const wxRect plot = Panel().PlotArea();
    return plot.GetBottomLeft() + wxPoint(static_cast<int>(across * (plot.width - 1)),
                                          -static_cast<int>(up * (plot.height - 1)));
  }
  void PointAt(const wxPoint& place) {
    wxUIActionSimulator().MouseMove(Panel().ClientToScreen(place));
    Turn();
  }
  void Drag(const wxPoint& from, const wxPoint& to) {
    wxUIActionSimulator simulator;
    PointAt(from);
    simulator.MouseDown();
    Turn();
    PointAt((from + to) / 2);
    PointAt(to);
    simulator.MouseUp();
    Turn();
  }
  // The window with the pointer gets the keys.
  void Strike(int key, int modifiers = wxMOD_NONE) {
    PointAt({5, 5});
    wxUIActionSimulator().Char(key, modifiers);
    Turn();
  }
  std::string Status(int field) { return Utf8(m_window->GetStatusBar()->GetStatusText(field)); }

  class Asked : public FakeDialogs {
   public:
    void ShowBusy(bool busy) override {
      if (out_of_memory) throw std::bad_alloc();
      FakeDialogs::ShowBusy(busy);
    }
    bool out_of_memory = false;
  };

  Asked m_dialogs;
  TempFolder m_folder;
  int m_depth = 8;
  NetGraphDlg* m_window = nullptr;
};

}  // namespace tarn
