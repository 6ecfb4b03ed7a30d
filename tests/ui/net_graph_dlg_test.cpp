#include "netgraph/ui/net_graph_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>
#include <wx/menu.h>
#include <wx/print.h>
#include <wx/stopwatch.h>
#include <wx/uiaction.h>

#include "netgraph/graph_shapes.h"
#include "ui/driver.h"
#include "ui/net_graph_fixture.h"
#include "ui/pictures.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum Command : int {
  kPreview = 151,
  kToggleLegend = 139,
  kZoom = 140,
  kResetZoom = 141,
  kExit = 143,
  kHelp = 24341,
};

TEST_F(NetGraphWindow, ShowsTheGraph) {
  Open(HistoryGraph());
  EXPECT_EQ(Utf8(m_window->GetTitle()), "NetGraph");
  EXPECT_FALSE(m_window->GetIcons().IsEmpty());
  EXPECT_EQ(m_window->GetClientSize(), wxSize(640, 480));
  EXPECT_GT(ColouredPixels(Panel().Picture()), 100U);
  LookAt(*m_window, "graph-history");
}

struct Item {
  int id;  // 0: a separator
  const char* label;
};

void ExpectMenu(const wxMenuBar& bar, size_t place, const char* label,
                const std::vector<Item>& items) {
  EXPECT_EQ(Utf8(bar.GetMenuLabel(place)), label);
  const wxMenu& menu = *bar.GetMenu(place);
  ASSERT_EQ(menu.GetMenuItemCount(), items.size());
  for (size_t i = 0; i < items.size(); ++i) {
    const wxMenuItem& item = *menu.FindItemByPosition(i);
    EXPECT_EQ(item.IsSeparator(), items[i].id == 0);
    if (item.IsSeparator()) continue;
    EXPECT_EQ(item.GetId(), items[i].id);
    EXPECT_EQ(Utf8(item.GetItemLabel().BeforeFirst('\t')), items[i].label);
    EXPECT_FALSE(item.GetHelp().empty()) << items[i].label;
  }
}

TEST_F(NetGraphWindow, HasItsMenu) {
  const wxMenuBar& bar = *Open(HistoryGraph()).GetMenuBar();
  ASSERT_EQ(bar.GetMenuCount(), 4U);
  ExpectMenu(bar, 0, "&File",
             {{136, "&Save As..."},
              {137, "&Print..."},
              {143, "E&xit"},
              {0, ""},
              {151, "Print Pre&view..."},
              {152, "Page Set&up..."},
              {153, "Export &Picture..."},
              {154, "Export &Data..."}});
  ExpectMenu(bar, 1, "&Edit", {{138, "&Copy"}, {155, "Copy &Data"}});
  ExpectMenu(bar, 2, "&View", {{139, "&Legend Toggle"}, {140, "&Zoom"}, {141, "&Reset Zoom"}});
  ExpectMenu(bar, 3, "&Help", {{24341, "&Help"}});
}

TEST_F(NetGraphWindow, AsksForItsTopicOfTheHelp) {
  Open(HistoryGraph());
  Choose(kHelp);
  Strike(WXK_F1);
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kNetGraph, HelpTopic::kNetGraph));
}

TEST_F(NetGraphWindow, ClosesAtItsCommandAndKeys) {
  Open(HistoryGraph());
  Choose(kExit);
  EXPECT_EQ(m_window, nullptr);
  Open(HistoryGraph());
  Strike(WXK_ESCAPE);
  EXPECT_EQ(m_window, nullptr);
  Open(HistoryGraph());
  Strike('W', wxMOD_CONTROL);
  EXPECT_EQ(m_window, nullptr);
}

TEST_F(NetGraphWindow, KeepsItsCommandsFromItsOwner) {
  auto* owner = new wxFrame(nullptr, wxID_ANY, "Owner");
  int commands = 0;
  owner->Bind(wxEVT_MENU, [&](wxCommandEvent&) { ++commands; });
  Open(HistoryGraph(), owner);
  Choose(kToggleLegend);
  m_window->ProcessCommand(101);
  EXPECT_EQ(commands, 0);
  owner->Destroy();
  Turn();
  EXPECT_EQ(m_window, nullptr) << "it goes with its owner";
}

TEST_F(NetGraphWindow, DrawsAnewAtItsNewSize) {
  Open(HistoryGraph());
  const wxRect before = Panel().PlotArea();
  m_window->SetClientSize(900, 500);
  Turn();
  EXPECT_EQ(Panel().Picture().GetLogicalSize(), Panel().GetClientSize());
  EXPECT_GT(Panel().PlotArea().width, before.width);
}

TEST_F(NetGraphWindow, IsLegibleAtItsSmallest) {
  Open(HistoryGraph());
  EXPECT_EQ(m_window->GetMinClientSize(), wxSize(300, 200));
  m_window->SetClientSize(300, 200);
  Turn();
  EXPECT_EQ(Panel().GetClientSize(), wxSize(300, 200));
  LookAt(*m_window, "graph-small");
}

TEST_F(NetGraphWindow, TurnsTheLegendOnAndOff) {
  Open(HistoryGraph());
  const wxBitmap with = Panel().Picture();
  Choose(kToggleLegend);
  EXPECT_FALSE(SamePixels(Panel().Picture(), with));
  Choose(kToggleLegend);
  EXPECT_TRUE(SamePixels(Panel().Picture(), with));
}

TEST_F(NetGraphWindow, ShowsTheDataUnderThePointer) {
  Open(HistoryGraph());
  PointAt(PlaceAt(0.5, 0.5));
  EXPECT_THAT(Status(1), testing::MatchesRegex("x = 7(4|5)[0-9]\\.[0-9]+, y = 0\\.[45][0-9]+"));
  PointAt({3, 3});
  EXPECT_EQ(Status(1), "");
  PointAt(PlaceAt(0.5, 0.5));
  wxUIActionSimulator().MouseMove(1279, 1023);
  Turn();
  EXPECT_EQ(Status(1), "");
}

TEST_F(NetGraphWindow, ZoomsToTheRectangleThatIsDragged) {
  Open(HistoryGraph());
  const wxBitmap whole = Panel().Picture();
  Choose(kZoom);
  EXPECT_TRUE(Panel().IsZooming());
  EXPECT_EQ(Status(0), "Drag from TOP/LEFT to BOTTOM/RIGHT");
  Drag(PlaceAt(0.2, 0.8), PlaceAt(0.6, 0.4));
  EXPECT_FALSE(Panel().IsZooming());
  EXPECT_EQ(Status(0), "");
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_NEAR(Range().x_min, 300, 10);
  EXPECT_NEAR(Range().x_max, 900, 10);
  EXPECT_NEAR(Range().y_min, 0.4, 0.01);
  EXPECT_NEAR(Range().y_max, 0.8, 0.01);
  EXPECT_FALSE(SamePixels(Panel().Picture(), whole));
  EXPECT_THAT(Status(1), testing::StartsWith("x = 6")) << "the pointer is over other data now";
  LookAt(*m_window, "graph-zoomed");
  Choose(kResetZoom);
  EXPECT_EQ(Range(), OpeningRange(Panel().graph()));
  EXPECT_TRUE(SamePixels(Panel().Picture(), whole));
}

TEST_F(NetGraphWindow, RefusesARectangleThatIsNoAreaAndEndsZoomMode) {
  Open(HistoryGraph());
  const std::vector<std::pair<wxPoint, wxPoint>> drags = {{PlaceAt(0.6, 0.4), PlaceAt(0.2, 0.8)},
                                                          {PlaceAt(0.6, 0.8), PlaceAt(0.2, 0.4)},
                                                          {PlaceAt(0.2, 0.4), PlaceAt(0.6, 0.8)},
                                                          {PlaceAt(0.5, 0.5), PlaceAt(0.5, 0.5)}};
  for (const auto& [from, to] : drags) {
    m_dialogs.told.clear();
    Choose(kZoom);
    Drag(from, to);
    EXPECT_THAT(m_dialogs.told,
                ElementsAre("Invalid Zoom Area|Define Zoom Area TOP/LEFT to BOTTOM/RIGHT"));
    EXPECT_EQ(m_dialogs.icons.back(), MessageIcon::kExclamation);
    EXPECT_FALSE(Panel().IsZooming());
    EXPECT_EQ(Range(), OpeningRange(Panel().graph()));
  }
}

TEST_F(NetGraphWindow, ZoomsWithinThePlot) {
  Open(HistoryGraph());
  Choose(kZoom);
  Drag(PlaceAt(0.5, 0.5), PlaceAt(0.5, 0.5) + wxPoint(1000, 1000));
  EXPECT_FLOAT_EQ(Range().x_max, 1500);
  EXPECT_FLOAT_EQ(Range().y_min, 0);
}

TEST_F(NetGraphWindow, ZoomsOnlyInZoomMode) {
  Open(HistoryGraph());
  Drag(PlaceAt(0.2, 0.8), PlaceAt(0.6, 0.4));
  EXPECT_EQ(Range(), OpeningRange(Panel().graph()));
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(NetGraphWindow, EndsZoomModeAtEscapeWithoutAWord) {
  Open(HistoryGraph());
  Choose(kZoom);
  PointAt(PlaceAt(0.2, 0.8));
  wxUIActionSimulator().MouseDown();
  Turn();
  PointAt(PlaceAt(0.6, 0.4));
  EXPECT_TRUE(Panel().HasCapture());
  LookAt(*m_window, "graph-zooming");
  // While the mouse is held the display gives its keys to nobody.
  wxKeyEvent escape(wxEVT_CHAR_HOOK);
  escape.m_keyCode = WXK_ESCAPE;
  Panel().ProcessWindowEvent(escape);
  EXPECT_FALSE(Panel().IsZooming());
  EXPECT_FALSE(Panel().HasCapture());
  wxUIActionSimulator().MouseUp();
  Turn();
  EXPECT_EQ(Range(), OpeningRange(Panel().graph()));
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_NE(m_window, nullptr);
}

TEST_F(NetGraphWindow, EndsZoomModeWhenTheMouseIsTakenAway) {
  Open(HistoryGraph());
  Choose(kZoom);
  wxMouseCaptureLostEvent lost(Panel().GetId());
  Panel().ProcessWindowEvent(lost);
  EXPECT_FALSE(Panel().IsZooming());
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(NetGraphWindow, CanBeClosedWhileARectangleIsDragged) {
  Open(HistoryGraph());
  Choose(kZoom);
  PointAt(PlaceAt(0.2, 0.8));
  wxUIActionSimulator().MouseDown();
  Turn();
  EXPECT_TRUE(Panel().HasCapture());
  m_window->Close(true);
  Turn();
  EXPECT_EQ(m_window, nullptr);
  wxUIActionSimulator().MouseUp();
  Turn();
}

TEST_F(NetGraphWindow, FollowsNewDataAndKeepsWhatWasZoomedTo) {
  Open(HistoryGraph());
  Graph next = HistoryGraph();
  next.curves[0] = WaveCurve({0, 3000}, {0, 2});
  m_window->Replace(next);
  EXPECT_EQ(Range(), (GraphRange{0, 3000, 0, 2}));
  Turn();
  Choose(kZoom);
  Drag(PlaceAt(0.2, 0.8), PlaceAt(0.6, 0.4));
  const GraphRange zoomed = Range();
  Choose(kToggleLegend);
  const wxBitmap before = Panel().Picture();
  m_window->Replace(HistoryGraph());
  Turn();
  EXPECT_EQ(Range(), zoomed);
  EXPECT_FALSE(Panel().view().legend());
  EXPECT_FALSE(SamePixels(Panel().Picture(), before));
}

TEST_F(NetGraphWindow, ShowsContoursWhileTheUserWaits) {
  Graph graph = ContourGraph({0, 1}, {0, 10}, {-1, 1});
  graph.title = "Input nodes 1, 2 Influence on Output node 1";
  graph.x_label = "Input Node 1";
  graph.y_label = "Input Node 2";
  Open(graph);
  LookAt(*m_window, "graph-contours");
  const size_t drawn = m_dialogs.busy_log.size();
  EXPECT_GE(drawn, 2U);
  PointAt(PlaceAt(0.5, 0.5));
  EXPECT_THAT(Status(1), testing::ContainsRegex("x = 0\\.[45].*, y = [45].*, value = "));
  Panel().Refresh();
  Turn();
  EXPECT_EQ(m_dialogs.busy_log.size(), drawn) << "what is drawn is painted again";
}

TEST_F(NetGraphWindow, TellsThatMemoryIsTooShortForContoursAndCloses) {
  // The cursor of those who wait is shown where contours are about to be traced.
  m_dialogs.out_of_memory = true;
  Show(ContourGraph({0, 1}, {0, 10}, {-1, 1}));
  EXPECT_THAT(m_dialogs.told, ElementsAre("NetGraph Error|Memory Error generating Contours"));
  EXPECT_EQ(m_dialogs.icons.back(), MessageIcon::kExclamation);
  EXPECT_EQ(m_window, nullptr);
}

TEST_F(NetGraphWindow, ZoomsToWhatWasOnTheScreenWhileNewDataCame) {
  Open(HistoryGraph());
  Choose(kZoom);
  PointAt(PlaceAt(0.2, 0.8));
  wxUIActionSimulator().MouseDown();
  Turn();
  PointAt(PlaceAt(0.6, 0.4));
  Graph next = HistoryGraph();
  next.curves[0] = WaveCurve({0, 3000}, {0, 2});
  m_window->Replace(next);
  Turn();
  wxUIActionSimulator().MouseUp();
  Turn();
  EXPECT_NEAR(Range().x_min, 300, 10);
  EXPECT_NEAR(Range().x_max, 900, 10);
  EXPECT_EQ(Panel().graph().curves[0].x.back(), 3000) << "they are there, too";
}

TEST_F(NetGraphWindow, ShowsItsPageBeforeItIsPrinted) {
  Open(HistoryGraph());
  Choose(kPreview);
  ASSERT_EQ(OpenWindows<wxPreviewFrame>().size(), 1U);
  OpenWindows<wxPreviewFrame>().front()->Close();
  Turn();
  EXPECT_TRUE(OpenWindows<wxPreviewFrame>().empty());
}

TEST_F(NetGraphWindow, ShowsMarkersWithTheirLegend) {
  Graph graph = GraphOf({WaveCurve({0, 1}, {0.2F, 0.9F}, 40), WaveCurve({0, 1}, {0.1F, 0.7F}, 30),
                         WaveCurve({0, 1}, {0, 1}, 2)});
  graph.title = "Targets vs Network Outputs";
  graph.x_label = "Targets";
  graph.y_label = "Network Outputs";
  graph.curves[0].mode = kMarkersOnly;
  graph.curves[0].colour = kGreen;
  graph.curves[0].name = "Training Set";
  graph.curves[1].mode = kMarkersOnly;
  graph.curves[1].style = kDashedDiamond;
  graph.curves[1].name = "Test Set";
  graph.curves[2].colour = kRed;
  graph.curves[2].style = kDashedDiamond;
  graph.curves[2].name = "Optimal Agreement";
  Open(graph);
  LookAt(*m_window, "graph-scatter");
  EXPECT_GT(ColouredPixels(Panel().Picture()), 20U);
}

TEST_F(NetGraphWindow, PaintsManyPointsFromWhatItHasDrawn) {
  Graph graph = HistoryGraph();
  graph.curves[0] = WaveCurve({0, 1}, {0, 1}, 100000);
  Open(graph);
  wxStopWatch watch;
  for (int i = 0; i < 50; ++i) {
    Panel().Refresh();
    Panel().Update();
  }
  EXPECT_LT(watch.Time(), 1000);
}

TEST_F(NetGraphWindow, LeavesNothingBehind) {
  const size_t before = wxTopLevelWindows.GetCount();
  for (int i = 0; i < 200; ++i) {
    auto* window = new NetGraphDlg(nullptr, HistoryGraph(), m_dialogs);
    window->Show();
    if (i % 20 == 0) Turn();
    window->Close();
  }
  Turn();
  EXPECT_EQ(wxTopLevelWindows.GetCount(), before);
}

}  // namespace
}  // namespace tarn
