#include "windows/studies.h"

#include <fmt/format.h>
#include <string>

#include "windows/boxes.h"
#include "windows/picture.h"
#include "windows/steps.h"

namespace tarn {
namespace {

constexpr int kExit = 143;
constexpr std::string_view kGraphCaption = "NetGraph";

void LookAt(Driver& driver, const Window& graph, const std::string& name) {
  const Window panel = PanelOf(graph);
  driver.ExpectSoon("something is drawn", [&] { return HasColours(PictureOf(panel)); });
  driver.ExpectSoon("its title is written", [&] { return HasInkAtTop(PictureOf(panel)); });
  driver.TakePicture(graph, "graph-" + name);
  CloseGraph(driver, graph);
}

std::string ReportCaption(std::string_view caption) {
  return fmt::format("Info Browser - {}", caption);
}

void CloseReport(Driver& driver, const Window& report) {
  Place(driver, report, "INFO_MENU").Closes(kExit);
}

}  // namespace

void CloseGraph(Driver& driver, const Window& graph) {
  Place(driver, graph, "GRAPH_MENU").Closes(kExit);
}

void LookAtGraph(const Place& menu, int id) {
  LookAt(menu.driver(), menu.Opens(id, kGraphCaption), std::to_string(id));
}

void LookAtNextGraph(Driver& driver, int command) {
  LookAt(driver, driver.Await(kGraphCaption), std::to_string(command));
}

void LookAtOutputGraphs(const Place& menu, int id, std::string_view question, int outputs) {
  Driver& driver = menu.driver();
  menu.Tells(id, question, "Plot all output nodes?", IDNO);
  Enter(driver, driver.Await("Select Output Node"), "Output node number to plot:", "1");
  LookAtNextGraph(driver, id);
  menu.Tells(id, question, "Plot all output nodes?", IDYES);
  std::vector<Window> graphs;
  for (int output = 0; output < outputs; ++output) graphs.push_back(driver.Await(kGraphCaption));
  for (const Window& graph : graphs) CloseGraph(driver, graph);
}

void LookAtInputGraphs(const Place& menu, int id) {
  Driver& driver = menu.driver();
  constexpr std::string_view kCaption = "Input Node Plots";
  constexpr std::string_view kQuestion = "Plot all input nodes?";
  menu.Tells(id, kCaption, kQuestion, IDNO);
  Enter(driver, driver.Await("Select Input Node"), "Input node number to plot:", "2");
  LookAtNextGraph(driver, id);
  menu.Tells(id, kCaption, kQuestion, IDYES);
  const auto go_on = [&](int answer) {
    Answer(driver, driver.Await("Tarn"), "Continue plotting inputs?", answer);
  };
  // The graph opens beneath the question.
  go_on(IDYES);
  go_on(IDNO);
  for (int graph = 0; graph < 2; ++graph) CloseGraph(driver, driver.Await(kGraphCaption));
}

void LookAtReport(const Place& menu, int id, std::string_view caption) {
  CloseReport(menu.driver(), menu.Opens(id, ReportCaption(caption)));
}

void LookAtToleranceReport(const Place& menu, int id) {
  Driver& driver = menu.driver();
  Enter(driver, menu.Opens(id, "Select Tolerance"), "Tolerance Value:", "0.4");
  CloseReport(driver, driver.Await(ReportCaption("Network Tolerance Check")));
}

void LookAtThresholdReport(const Place& menu, int id) {
  Driver& driver = menu.driver();
  Enter(driver, menu.Opens(id, "Select Upper Threshold Value"),
        "Upper threshold (optional):", "0.6");
  Enter(driver, driver.Await("Select Lower Threshold Value"), "Lower threshold (optional):", "0.2");
  CloseReport(driver, driver.Await(ReportCaption("Network Threshold Check")));
}

}  // namespace tarn
