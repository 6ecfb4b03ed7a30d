#include <fmt/format.h>
#include <string>
#include <string_view>

#include "windows/boxes.h"
#include "windows/clipboard.h"
#include "windows/files.h"
#include "windows/picture.h"
#include "windows/place.h"
#include "windows/printing.h"
#include "windows/roads.h"
#include "windows/steps.h"
#include "windows/studies.h"

namespace tarn {
namespace {

// A place within a window, as parts of its width and height.
struct Spot {
  double across;
  double down;
};

LPARAM At(const Window& window, const Spot& spot) {
  const RECT place = window.Place();
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  return Halves(static_cast<int>(width * spot.across), static_cast<int>(height * spot.down));
}

// With the left button held.
void Drag(const Window& window, const Spot& from, const Spot& to) {
  window.Post(WM_LBUTTONDOWN, MK_LBUTTON, At(window, from));
  window.Post(WM_MOUSEMOVE, MK_LBUTTON, At(window, to));
  window.Post(WM_LBUTTONUP, 0, At(window, to));
}

void ToggleLegend(const Place& graph) {
  const Window panel = PanelOf(graph.window());
  const Picture before = SettledPictureOf(panel);
  graph.Does(139, "the legend changes the picture", [&] { return PictureOf(panel) != before; });
  graph.Does(139, "the second toggle puts it back", [&] { return PictureOf(panel) == before; });
}

void BeginZoom(const Place& graph) {
  Driver& driver = graph.driver();
  const Window bar = graph.window().ChildOfClass("msctls_statusbar32");
  graph.Does(140, "the status bar tells how to zoom", [&] {
    return driver.program().StatusText(bar, 0) == "Drag from TOP/LEFT to BOTTOM/RIGHT";
  });
}

void Zoom(const Place& graph) {
  Driver& driver = graph.driver();
  const Window panel = PanelOf(graph.window());
  const Picture before = SettledPictureOf(panel);
  BeginZoom(graph);
  Drag(panel, {0.6, 0.6}, {0.4, 0.4});
  Answer(driver, driver.Await("Invalid Zoom Area"), "Define Zoom Area TOP/LEFT to BOTTOM/RIGHT");
  driver.ExpectSoon("the view is as before", [&] { return PictureOf(panel) == before; });
  BeginZoom(graph);
  Drag(panel, {0.4, 0.4}, {0.6, 0.6});
  driver.ExpectSoon("a part of the graph is shown", [&] { return PictureOf(panel) != before; });
  graph.Does(141, "all of it is shown again", [&] { return PictureOf(panel) == before; });
}

// Each kind has a filter of its own.
void ExportPicture(const Place& graph, std::string_view file, int filter, std::string_view begin) {
  Driver& driver = graph.driver();
  const std::string path = driver.Path(file);
  const Place size(driver, graph.Opens(153, "Export Picture"), "DATAENT_DLG");
  size.Type(101, "640 x 480");
  size.Closes(IDOK);
  const Window dialog = driver.Await("Export Picture...");
  ChooseFile(driver, dialog, path, filter);
  driver.AwaitEndOf(dialog);
  driver.ExpectSoon(fmt::format("{} is such a picture", file),
                    [&] { return ReadWhole(path).starts_with(begin); });
}

int ColourDepth() {
  const HDC screen = ::GetDC(nullptr);
  const int depth = ::GetDeviceCaps(screen, BITSPIXEL);
  ::ReleaseDC(nullptr, screen);
  return depth;
}

// Files have up to 256 colours; displays mostly have more, and the graph is copied there.
void SaveBitmapFile(const Place& graph) {
  Driver& driver = graph.driver();
  constexpr int kDeepestPalette = 8;
  if (ColourDepth() <= kDeepestPalette) {
    const std::string bitmap = driver.Path("graph.bmp");
    graph.Saves(136, "Save NetGraph Bitmap as...", bitmap);
    driver.Expect(ReadWhole(bitmap).starts_with("BM"), "it is a bitmap");
    return;
  }
  constexpr std::string_view kCaption = "Bitmap Save Error";
  EmptyTheClipboard();
  graph.Tells(136, kCaption, "Display mode error: 256 color mode maximum under Tarn!");
  Answer(driver, driver.Await(kCaption), "Copy graph to clipboard instead?", IDYES);
  driver.ExpectSoon("the clipboard holds it", ClipboardHoldsPicture);
}

void Export(const Place& graph) {
  Driver& driver = graph.driver();
  ExportPicture(graph, "graph.png", 0, "\x89PNG");
  ExportPicture(graph, "graph.svg", 1, "<");
  const std::string table = driver.Path("graph.csv");
  graph.Saves(154, "Export Data...", table);
  driver.Expect(HasWindowsLines(ReadWhole(table)), "its lines end with CR LF");
}

void Copy(const Place& graph) {
  EmptyTheClipboard();
  graph.Does(138, "the clipboard holds a picture", ClipboardHoldsPicture);
  EmptyTheClipboard();
  graph.Does(155, "the clipboard holds text", ClipboardHoldsText);
  const std::string table = ReadWhole(graph.driver().Path("graph.csv"));
  graph.driver().Expect(!table.empty() && ClipboardText() == table, "it is what was exported");
}

}  // namespace

void GraphRoad(Driver& driver) {
  driver.Start();
  OpenForTraining(driver, "iris.net");
  TrainALittle(driver);
  const Place menu = TrainingMenu(driver);
  const Place graph(driver, menu.Opens(118, "NetGraph"), "GRAPH_MENU");
  ToggleLegend(graph);
  Zoom(graph);
  SaveBitmapFile(graph);
  Export(graph);
  Copy(graph);
  LookAtPrinting(graph, "NetGraph Error");
  graph.Helps(24341);
  graph.Closes(143);
  menu.Tells(130, "Network File Not Saved!", "Save Network File?", IDNO);
  driver.AwaitEndOfProgram();
}

}  // namespace tarn
