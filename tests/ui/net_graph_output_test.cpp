#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include "netgraph/graph_csv.h"
#include "netgraph/graph_file.h"
#include "netgraph/history_plots.h"
#include "netgraph/ui/graph_printout.h"
#include "ui/net_graph_fixture.h"

// How a graph leaves its window.

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum Command : int {
  kSaveAs = 136,
  kToggleLegend = 139,
  kZoom = 140,
  kExportPicture = 153,
  kExportData = 154,
  kCopyData = 155,
};

class NetGraphOutput : public NetGraphWindow {};

TEST_F(NetGraphOutput, SavesABitmapOnADisplayOf256Colours) {
  Open(HistoryGraph());
  const std::string path = m_folder / "graph.bmp";
  for (const int depth : {1, 4, 8}) {
    m_depth = depth;
    m_dialogs.files = {path};
    Choose(kSaveAs);
    const std::string file = ReadFile(path);
    ASSERT_GT(file.size(), 54U);
    EXPECT_EQ(file[28], depth);
    const wxImage read(Wide(path), wxBITMAP_TYPE_BMP);
    ASSERT_TRUE(read.IsOk()) << depth;
    EXPECT_EQ(read.GetSize(), Panel().Picture().GetSize());
    EXPECT_TRUE(depth == 1 || ColouredPixels(read) > 100) << depth;
  }
  EXPECT_THAT(m_dialogs.file_questions, testing::Each("Save NetGraph Bitmap as...|"
                                                      "bitmap (*.bmp)|*.bmp"));
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_dialogs.busy_log, "+-+-+-");
}

TEST_F(NetGraphOutput, OffersTheClipboardOnADisplayOfMoreColours) {
  Open(HistoryGraph());
  m_depth = 24;
  m_dialogs.answers = {Answer::kNo, Answer::kYes};
  wxTheClipboard->Clear();
  Choose(kSaveAs);
  EXPECT_FALSE(wxTheClipboard->IsSupported(wxDF_BITMAP));
  Choose(kSaveAs);
  EXPECT_TRUE(wxTheClipboard->IsSupported(wxDF_BITMAP));
  const std::string told =
      "Bitmap Save Error|Display mode error: 256 color mode maximum under Tarn!";
  EXPECT_THAT(m_dialogs.told, ElementsAre(told, told));
  EXPECT_EQ(m_dialogs.icons.back(), MessageIcon::kExclamation);
  const std::string asked = "Bitmap Save Error|Copy graph to clipboard instead?";
  EXPECT_THAT(m_dialogs.asked, ElementsAre(asked, asked));
  EXPECT_THAT(m_dialogs.file_questions, IsEmpty());
}

TEST_F(NetGraphOutput, CopiesWhatItShows) {
  Open(HistoryGraph());
  Choose(kToggleLegend);
  Strike('C', wxMOD_CONTROL);
  wxBitmapDataObject copied;
  ASSERT_TRUE(wxTheClipboard->Open());
  ASSERT_TRUE(wxTheClipboard->GetData(copied));
  wxTheClipboard->Close();
  EXPECT_TRUE(SamePixels(copied.GetBitmap(), Panel().Picture()));
}

TEST_F(NetGraphOutput, CopiesItsData) {
  Open(HistoryGraph());
  Choose(kCopyData);
  wxTextDataObject copied;
  ASSERT_TRUE(wxTheClipboard->Open());
  ASSERT_TRUE(wxTheClipboard->GetData(copied));
  wxTheClipboard->Close();
  EXPECT_EQ(Utf8(copied.GetText()), GraphCsv(HistoryGraph()));
}

TEST_F(NetGraphOutput, ExportsItsData) {
  Open(HistoryGraph());
  m_dialogs.files = {m_folder / "graph.csv"};
  Choose(kExportData);
  EXPECT_EQ(ReadFile(m_folder / "graph.csv"), GraphCsv(HistoryGraph()));
  EXPECT_EQ(m_dialogs.busy_log, "+-");
}

TEST_F(NetGraphOutput, ExportsAPictureOfTheSizeAsked) {
  Open(HistoryGraph());
  m_dialogs.values = {"1000x700"};
  m_dialogs.files = {m_folder / "graph.png"};
  Choose(kExportPicture);
  EXPECT_THAT(m_dialogs.entries, ElementsAre("Export Picture|Width x Height in pixels:|" +
                                             std::to_string(Panel().GetClientSize().x) + " x " +
                                             std::to_string(Panel().GetClientSize().y)));
  const wxImage picture(Wide(m_folder / "graph.png"), wxBITMAP_TYPE_PNG);
  ASSERT_TRUE(picture.IsOk());
  EXPECT_EQ(picture.GetSize(), wxSize(1000, 700));
  EXPECT_GT(ColouredPixels(picture), 100U);
}

TEST_F(NetGraphOutput, AsksAgainForASizeThatIsNone) {
  Open(HistoryGraph());
  m_dialogs.values = {"10 x 10", "wide", std::nullopt};
  Choose(kExportPicture);
  const std::string told =
      "NetGraph Error|The size of a picture is two numbers from 300 x 200 to 8000 x 6000";
  EXPECT_THAT(m_dialogs.told, ElementsAre(told, told));
  EXPECT_EQ(m_dialogs.entries.back(), "Export Picture|Width x Height in pixels:|wide");
  EXPECT_THAT(m_dialogs.file_questions, IsEmpty());
}

TEST_F(NetGraphOutput, ExportsNoOtherKindOfPicture) {
  Open(HistoryGraph());
  m_dialogs.values = {"800x600"};
  m_dialogs.files = {m_folder / "graph.jpg", std::nullopt};
  Choose(kExportPicture);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("NetGraph Error|A picture is PNG or SVG: its name has to end in .png or "
                          ".svg"));
  EXPECT_FALSE(std::filesystem::exists(m_folder / "graph.jpg"));
}

TEST_F(NetGraphOutput, ExportsTheViewThatItShows) {
  Open(HistoryGraph());
  Choose(kZoom);
  Drag(PlaceAt(0.2, 0.8), PlaceAt(0.6, 0.4));
  m_dialogs.values = {"800 x 600"};
  m_dialogs.files = {m_folder / "graph.SVG"};
  Choose(kExportPicture);
  ASSERT_TRUE(SavePicture(Panel().graph(), Panel().view(), {800, 600}, m_folder / "view.svg").ok());
  ASSERT_TRUE(SavePicture(Panel().graph(), {800, 600}, m_folder / "whole.svg").ok());
  EXPECT_EQ(ReadFile(m_folder / "graph.SVG"), ReadFile(m_folder / "view.svg"));
  EXPECT_NE(ReadFile(m_folder / "graph.SVG"), ReadFile(m_folder / "whole.svg"));
}

TEST_F(NetGraphOutput, ExportsWhatTheCommandLineDraws) {
  const std::string example = std::string(TARN_SOURCE_DIR) + "/examples/iris/";
  for (const char* name : {"iris.net", "iris.txt"}) {
    std::filesystem::copy_file(example + name, m_folder / name);
  }
  m_folder.Enter();
  const std::string cli = TARN_CLI;
  const std::string command =
      cli + " train iris.net --seed 1 --iterations 50 --history h --no-save > /dev/null 2>&1 && " +
      cli + " plot rms iris.net --history h -o c.svg && " + cli +
      " plot rms iris.net --history h -o c.csv";
  ASSERT_EQ(std::system(command.c_str()), 0);
  Graph graph;
  ASSERT_TRUE(BuildHistoryPlot(HistoryKind::kRms, "h", graph).ok());
  Open(graph);
  m_dialogs.values = {"800 x 600"};
  m_dialogs.files = {m_folder / "w.svg", m_folder / "w.csv"};
  Choose(kExportPicture);
  Choose(kExportData);
  EXPECT_EQ(ReadFile(m_folder / "w.svg"), ReadFile(m_folder / "c.svg"));
  EXPECT_EQ(ReadFile(m_folder / "w.csv"), ReadFile(m_folder / "c.csv"));
}

TEST_F(NetGraphOutput, TellsThatAFileCannotBeWritten) {
  Open(HistoryGraph());
  const std::string none = m_folder / "none/graph.";
  m_dialogs.values = {"800 x 600", "800 x 600"};
  m_dialogs.files = {none + "csv", none + "png", none + "svg", none + "bmp"};
  Choose(kExportData);
  Choose(kExportPicture);
  Choose(kExportPicture);
  Choose(kSaveAs);
  const std::string told = "NetGraph Error|The graph cannot be written";
  EXPECT_THAT(m_dialogs.told, ElementsAre(told, told, told, told));
  EXPECT_EQ(m_dialogs.busy_log, "+-+-+-+-");
}

TEST_F(NetGraphOutput, WritesNothingAfterCancel) {
  Open(HistoryGraph());
  m_dialogs.values = {"800 x 600"};
  m_dialogs.files = {std::nullopt, std::nullopt, std::nullopt};
  Choose(kExportData);
  Choose(kExportPicture);
  Choose(kSaveAs);
  EXPECT_TRUE(std::filesystem::is_empty(m_folder.path()));
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(NetGraphOutput, PrintsItselfWithinTheMargins) {
  Graph graph = HistoryGraph();
  wxBitmap page(600, 800, 24);
  wxMemoryDC dc(page);
  dc.SetBackground(*wxWHITE_BRUSH);
  dc.Clear();
  GraphPrintout printout(graph, GraphView(graph), {640, 480});
  printout.SetDC(&dc);
  printout.SetPPIScreen(96, 96);
  printout.SetPPIPrinter(72, 72);
  printout.SetPageSizePixels(600, 800);
  printout.SetPageSizeMM(212, 282);
  printout.SetPaperRectPixels({0, 0, 600, 800});
  int first = 0, last = 0, from = 0, to = 0;
  printout.GetPageInfo(&first, &last, &from, &to);
  EXPECT_EQ(last, 1);
  EXPECT_TRUE(printout.HasPage(1));
  EXPECT_FALSE(printout.HasPage(2));
  ASSERT_TRUE(printout.OnPrintPage(1));
  EXPECT_FALSE(printout.refused());
  dc.SelectObject(wxNullBitmap);
  EXPECT_GT(ColouredPixels(page), 100U);
  const wxImage image = page.ConvertToImage();
  EXPECT_EQ(image.GetRed(1, 1), 255);
  if (const char* folder = std::getenv("TARN_SCREENSHOTS")) {
    image.SaveFile(Wide(folder) + "/graph-page.png", wxBITMAP_TYPE_PNG);
  }
}

}  // namespace
}  // namespace tarn
