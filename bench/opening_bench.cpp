#include "opening_bench.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <unistd.h>
#include <wx/app.h>
#include <wx/frame.h>

#include "app/ui/window_dialogs.h"
#include "base/paths.h"
#include "base/temp_file.h"
#include "browser/report_file.h"
#include "browser/ui/info_browser.h"
#include "netgraph/graph.h"
#include "netgraph/ui/net_graph_dlg.h"
#include "setup/ui/net_view_dlg.h"

namespace tarn {
namespace {

constexpr int kFirst = 100;  // until caches of toolkit and fonts are full
constexpr int kOpens = 1000;

Graph Line() {
  Graph graph;
  graph.title = "Root Mean Square Error of Training Set";
  graph.curves.emplace_back();
  for (int i = 0; i < 500; ++i) {
    graph.curves[0].x.push_back(static_cast<float>(i));
    graph.curves[0].y.push_back(1.0F / static_cast<float>(1 + i));
  }
  return graph;
}

Graph Contours() {
  Graph graph;
  graph.title = "Input nodes 1, 2 Influence on Output node 1";
  graph.contours.emplace();
  for (size_t row = 0; row < kContourSteps; ++row) {
    for (size_t column = 0; column < kContourSteps; ++column) {
      graph.contours->At(row, column) = static_cast<float>(row * column);
    }
  }
  graph.range = {0, 1, 0, 1};
  return graph;
}

std::unique_ptr<ReportFile> Lines() {
  auto report = std::make_unique<ReportFile>();
  if (!report->Create(TemporaryFolder()).ok()) std::abort();
  for (int i = 0; i < 1000; ++i) report->Printf(" Line %d", i);
  if (!report->Finish().ok()) std::abort();
  return report;
}

int64_t ResidentKilobytes() {
  std::ifstream pages("/proc/self/statm");
  int64_t size = 0;
  int64_t resident = 0;
  pages >> size >> resident;
  return resident * ::sysconf(_SC_PAGESIZE) / 1024;
}

void OpenAndClose(const std::function<wxTopLevelWindow*()>& open, int times) {
  for (int i = 0; i < times; ++i) {
    wxTopLevelWindow* window = open();
    window->Show();
    wxTheApp->Yield();
    window->Update();
    window->Destroy();
    wxTheApp->Yield();
    wxTheApp->ProcessIdle();
  }
}

void Measure(const char* name, const std::function<wxTopLevelWindow*()>& open) {
  OpenAndClose(open, kFirst);
  const int64_t before = ResidentKilobytes();
  const auto start = std::chrono::steady_clock::now();
  OpenAndClose(open, kOpens);
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  std::printf("%-22s %10.1f %12lld %18lld\n", name, taken.count() / kOpens,
              static_cast<long long>(before), static_cast<long long>(ResidentKilobytes() - before));
  std::fflush(stdout);
}

// Three layers of 20 nodes.
Network Design() {
  Network design;
  design.nLayers = 3;
  for (size_t layer = 0; layer < 3; ++layer) design.layers[layer].nUnits = 20;
  return design;
}

}  // namespace

void MeasureOpening() {
  WindowDialogs dialogs{ApplicationPaths{}};
  auto* owner = new wxFrame(nullptr, wxID_ANY, "bench");
  owner->Show();
  std::printf("%-22s %10s %12s %18s\n", "window", "ms each", "resident KB", "KB more after 1000");
  Measure("an empty frame", [&] { return new wxFrame(owner, wxID_ANY, "empty"); });
  Measure("a graph", [&] { return new NetGraphDlg(owner, Line(), dialogs); });
  Measure("colour contours", [&] { return new NetGraphDlg(owner, Contours(), dialogs); });
  Measure("a report", [&] { return new InfoBrowser(owner, Lines(), "Statistics", dialogs); });
  const Network design = Design();
  const ScratchFolder scratch;
  Measure("the network view",
          [&] { return new NetViewDlg(owner, design, scratch.path(), dialogs); });
  owner->Destroy();
  wxTheApp->ProcessIdle();
}

}  // namespace tarn
