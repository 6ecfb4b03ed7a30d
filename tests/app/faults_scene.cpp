#include "app/faults_scene.h"

#include <array>
#include <gtest/gtest.h>
#include <utility>

#include "base/output_file.h"
#include "base/paths.h"
#include "browser/report.h"
#include "engine/error_history.h"
#include "engine/recall_run.h"
#include "netfile/autosave_store.h"
#include "netfile/connections_section.h"
#include "netfile/netfile_test.h"
#include "support/slashes.h"

namespace tarn {
namespace {

constexpr std::string_view kNetwork =
    "TARNV2.1\nTest\n3\n2 3 1 0 0 \n0.000000 0.100000 0.010000 0.300000 0.500000 2.000000\n20\n"
    "100 1\n5 0\ndata.txt\n1\n1 1\ndata.txt\n3\n3 3\n"
    "WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n";

std::string Data(int32_t patterns) {
  std::string text = "# \"a\" \"b\" \"sum\"\n";
  for (int32_t i = 0; i < patterns; ++i) text += fmt::sprintf("%d %d %d\n", i % 7, i % 5, i);
  return text;
}

void PutHistory(const std::string& path) {
  ErrorHistory history(path);
  EXPECT_TRUE(history.Restart());
  for (int32_t i = 1; i <= 20; ++i) {
    HistoryRecord record;
    record.iteration = i;
    record.rms_train = 1.0F / static_cast<float>(i);
    EXPECT_TRUE(history.Append(record));
  }
}

}  // namespace

std::string BytesOf(const std::string& path) {
  std::string bytes;
  const FileLayer::Handle file = Files().Open(path, FileLayer::Mode::kRead);
  if (file == FileLayer::kNoFile) return bytes;
  std::array<char, 4096> block{};
  for (int64_t count = 1; count > 0;) {
    count = Files().Read(file, block.data(), block.size());
    if (count > 0) bytes.append(block.data(), static_cast<size_t>(count));
  }
  Files().Close(file);
  return bytes;
}

void PutBytes(const std::string& path, std::string_view bytes) {
  OutputFile file;
  EXPECT_TRUE(file.OpenReplacing(path, OutputFile::Content::kBytes) && file.Write(bytes) &&
              file.Commit())
      << path;
}

FaultScene::FaultScene(std::string folder, int32_t patterns) : m_folder(std::move(folder)) {
  session.seeds = SeedSource(1);
  PutBytes(*this / "data.txt", Data(patterns));
  PutBytes(*this / "test.net", kNetwork);
  for (const char* name : {"old.net", "a.out", "a.err", "a.txt", "a.bmp", "a.svg", "a.csv"}) {
    PutBytes(*this / name, kOldText);
  }
  PutHistory(*this / "a.his");
  Network& network = session.network;
  Notices notices;
  EXPECT_EQ(OpenNetwork(session, *this / "test.net").message(), "");
  EXPECT_EQ(LoadForTraining(session, notices).message(), "");
  EXPECT_EQ(PropagateAll(network, 1).message(), "");
  EXPECT_EQ(WriteNetworkFile(network.file_name, network).message(), "");
  network.trained = true;
  EXPECT_EQ(CreateStore(*this / "a.store").message(), "");
  for (const int32_t iteration : {5, 10}) {
    network.iteration = iteration;
    EXPECT_TRUE(AppendSnapshot(*this / "a.store", network));
  }
  network.layers[1].weights.Row(0)[0] += 0.25F;
  EditConnections();
}

void FaultScene::EditConnections() {
  Network& network = session.network;
  constexpr std::array kFirst = {0};
  ConnectionsDraft kept(network, 1, session.scratch.path());
  EXPECT_TRUE(kept.Load().ok() && kept.Remove(kFirst));
  EXPECT_TRUE(kept.Save(network.connections_edited[1]).ok());
  connections.emplace(network, 1, session.scratch.path());
  EXPECT_TRUE(connections->Load().ok() && connections->Remove(kFirst));
}

void FaultScene::OpenDesk() {
  desk = std::make_unique<TrainingDesk>(session, dialogs, static_cast<TrainingView&>(*this),
                                        m_clock, size_t{1});
  desk->Start();
  while (desk->Work(1000)) {
  }
}

void FaultScene::OpenReport() {
  const Status made =
      MakeReport(ReportKind::kOutputs, session.network, {}, TemporaryFolder(), m_report);
  EXPECT_TRUE(made.ok() && report_text.Open(m_report.path()));
}

std::map<std::string, std::string> FaultScene::Files() const {
  std::map<std::string, std::string> files;
  for (const std::string& name : tarn::Files().NamesIn(m_folder)) {
    const bool beside = name.find(".tarn-save-") != std::string::npos;
    if (!beside && !tarn::Files().IsDirectory(*this / name)) files[name] = BytesOf(*this / name);
  }
  return files;
}

std::string FaultScene::State() const {
  const Network& network = session.network;
  std::string state;
  for (const auto& [name, bytes] : Files()) state += "[" + name + "]\n" + bytes;
  state += "[record]\n" + TextOf(network);
  state += fmt::sprintf("%s %d %d %d %d\n", Slashes(network.file_name), network.version,
                        network.iteration, network.trained, session.saved);
  for (int32_t layer = 1; layer < kMaxLayers; ++layer) {
    const std::string pending = BytesOf(ConnectionFilePath(session.scratch.path(), layer));
    state += network.connections_edited[static_cast<size_t>(layer)] ? 'e' : '-';
    for (const char c : pending) state += fmt::sprintf("%02x", static_cast<unsigned char>(c));
  }
  return state + "[shown]\n" + shown;
}

}  // namespace tarn
