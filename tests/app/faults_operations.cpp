#include "app/faults_operations.h"

#include <array>

#include "app/saving.h"
#include "base/paths.h"
#include "browser/report.h"
#include "netfile/autosave_store.h"
#include "netfile/configuration_file.h"
#include "netgraph/bitmap_file.h"
#include "netgraph/graph_csv.h"
#include "netgraph/graph_file.h"
#include "netgraph/history_plots.h"
#include "netgraph/pattern_plots.h"

namespace tarn {
namespace {

using Told = FaultOperation::Told;
using Operations = std::vector<FaultOperation>;

const Told kNotSaved = {"File Save Error - FILE NOT SAVED!|Cannot Write to Network File"};
const Told kSetupNotSaved = {"Network Error|Tarn Network File Error Detected"};
const Told kNoOldFile = {"Network Error|Error openning old network file - save aborted"};
const Told kNotExported = {"Error History Save Aborted|File Error Writting Error History"};
const Told kGraphFailed = {"The graph cannot be written"};

void Tell(FaultScene& scene, const Status& status) {
  if (!status.ok()) scene.dialogs.told.push_back(status.message());
}

Raster SmallRaster() {
  Raster raster{40, 30, {}};
  for (int i = 0; i < 40 * 30 * 3; ++i) raster.rgb.push_back(static_cast<uint8_t>(i % 5 * 60));
  return raster;
}

void Report(FaultScene& scene, ReportKind kind) {
  CheckValues values;
  values.tolerance = 0.5F;
  values.thresholds.upper = 3.0F;
  ReportFile report;
  TVirtText text;
  std::string lines;
  Status made = MakeReport(kind, scene.session.network, values, TemporaryFolder(), report);
  if (made.ok() && !text.Open(report.path())) made = Status::Failure("not opened");
  if (made.ok()) {
    made = WriteReportText(text, [&lines](std::string_view line) {
      lines += line;
      return true;
    });
  }
  Tell(scene, made);
  if (made.ok()) scene.shown = lines;
}

void AddSaves(Operations& operations) {
  const auto save_as = [](const char* name) {
    return [name](FaultScene& scene) {
      scene.dialogs.files = {scene / name};
      SaveNetworkAs(scene.session, scene.dialogs);
    };
  };
  const auto save_setup = [](const char* name) {
    return [name](FaultScene& scene) {
      scene.dialogs.files = {scene / name};
      SaveSetupAs(scene.session, scene.dialogs);
    };
  };
  operations.push_back(
      {"save", [](FaultScene& scene) { SaveNetwork(scene.session, scene.dialogs); }, {kNotSaved}});
  operations.push_back({"save as a new file", save_as("new.net"), {kNotSaved}});
  operations.push_back({"save as over an old file", save_as("old.net"), {kNotSaved}});
  operations.push_back(
      {"setup save in place", save_setup("test.net"), {kSetupNotSaved}, {kNoOldFile}});
  operations.push_back(
      {"setup save over an old file", save_setup("old.net"), {kSetupNotSaved}, {kNoOldFile}});
  operations.push_back({"setup of an untitled network",
                        [](FaultScene& scene) { KeepUntitledSetup(scene.session); },
                        {},
                        {},
                        [](FaultScene& scene) {
                          const std::string named = scene.session.network.file_name;
                          scene.session.network.file_name = scene / "UNTITLED.NE_";
                          PutBytes(scene.session.network.file_name, BytesOf(named));
                        }});
}

void AddStore(Operations& operations) {
  const Told aborted = {"Network AutoSave Aborted|File Not Saved"};
  const Told not_written = {"AutoSave Error|Error Writing Network File", aborted.front()};
  const Told not_found = {"AutoSave Error|AutoSave File Not Found", aborted.front()};
  operations.push_back({"AutoSave snapshot",
                        [](FaultScene& scene) {
                          scene.session.network.iteration = 10;
                          (void)AppendSnapshot(scene / "a.store", scene.session.network);
                        },
                        {}});
  operations.push_back({"AutoSave store",
                        [](FaultScene& scene) { Tell(scene, CreateStore(scene / "new.store")); },
                        {{"Cannot Create AutoSave File Storage"}}});
  operations.push_back({"restore of a snapshot",
                        [](FaultScene& scene) {
                          scene.dialogs.files = {scene / "old.net"};
                          scene.dialogs.snapshots = {"10"};
                          scene.desk->SaveSnapshotAs();
                        },
                        {not_written},
                        {not_found, {not_found.front()}},
                        &FaultScene::OpenDesk});
}

void AddExports(Operations& operations) {
  operations.push_back({"error history export",
                        [](FaultScene& scene) {
                          scene.dialogs.files = {scene / "a.err"};
                          scene.desk->SaveErrorHistoryAs();
                        },
                        {kNotExported},
                        {},
                        &FaultScene::OpenDesk});
  operations.push_back({"outputs export",
                        [](FaultScene& scene) {
                          scene.dialogs.files = {scene / "a.out"};
                          SaveOutputs(scene.session, scene.dialogs);
                        },
                        {{"Output/Target Save Aborted|File Error Writting Outputs"}}});
  operations.push_back({"configuration file",
                        [](FaultScene& scene) {
                          Files().EnterDirectory(scene / "");
                          WriteConfigurationFile();
                        },
                        {}});
  operations.push_back({"connections of the editor",
                        [](FaultScene& scene) {
                          bool& edited = scene.session.network.connections_edited[1];
                          Tell(scene, scene.connections->Save(edited));
                        },
                        {{"The connections could not be written into the temporary folder"}}});
}

void AddReports(Operations& operations) {
  constexpr std::array kKinds = {ReportKind::kInformation, ReportKind::kWeights,
                                 ReportKind::kOutputs,     ReportKind::kStatistics,
                                 ReportKind::kTolerance,   ReportKind::kThreshold};
  for (const ReportKind kind : kKinds) {
    operations.push_back({"report: " + std::string(ReportCaption(kind)),
                          [kind](FaultScene& scene) { Report(scene, kind); },
                          {{"File Creation Access Denied"}},
                          {{"The report file cannot be read"}, {"not opened"}}});
  }
  operations.push_back({"report as text",
                        [](FaultScene& scene) {
                          if (SaveReportText(scene.report_text, scene / "a.txt")) return;
                          scene.dialogs.told.emplace_back("The report cannot be written");
                        },
                        {{"The report cannot be written"}},
                        {},
                        &FaultScene::OpenReport});
}

void AddGraphs(Operations& operations) {
  operations.push_back({"bitmap",
                        [](FaultScene& scene) {
                          const std::string bytes = BitmapFile(SmallRaster(), 8);
                          Tell(scene, SaveGraphBytes(bytes, scene / "a.bmp"));
                        },
                        {kGraphFailed}});
  operations.push_back({"SVG picture",
                        [](FaultScene& scene) {
                          const Graph graph = ScatterPlot(scene.session.network);
                          Tell(scene, SavePicture(graph, kPictureSize, scene / "a.svg"));
                        },
                        {kGraphFailed}});
  operations.push_back({"CSV table",
                        [](FaultScene& scene) {
                          const Graph graph = ScatterPlot(scene.session.network);
                          Tell(scene, SaveTable(graph, scene / "a.csv"));
                        },
                        {kGraphFailed}});
  operations.push_back({"plot of an error history",
                        [](FaultScene& scene) {
                          Graph graph;
                          const Status built =
                              BuildHistoryPlot(HistoryKind::kRms, scene / "a.his", graph);
                          Tell(scene, built);
                          if (built.ok()) scene.shown = GraphCsv(graph);
                        },
                        {},
                        {{"The error history cannot be read"}}});
}

}  // namespace

const std::vector<FaultOperation>& FaultOperations() {
  static const Operations all = [] {
    Operations operations;
    AddSaves(operations);
    AddStore(operations);
    AddExports(operations);
    AddReports(operations);
    AddGraphs(operations);
    operations.push_back(
        {"open",
         [](FaultScene& scene) { Tell(scene, OpenNetwork(scene.session, scene / "test.net")); },
         {},
         {{"File Not Found!"}, {"Not a valid Tarn Network Definition File!"}}});
    return operations;
  }();
  return all;
}

}  // namespace tarn
