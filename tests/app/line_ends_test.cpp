// Everything that the program writes, where lines end with "\n" and where they end otherwise: the
// texts differ in that alone, and what is no text does not differ.

#include "support/line_ends.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/session.h"
#include "browser/report.h"
#include "browser/report_file.h"
#include "browser/report_text.h"
#include "data/outputs_export.h"
#include "engine/error_history.h"
#include "engine/training_run.h"
#include "netfile/autosave_store.h"
#include "netfile/connections_section.h"
#include "netfile/network_writer.h"
#include "netfile/setup_save.h"
#include "netgraph/graph_file.h"
#include "netgraph/pattern_plots.h"
#include "setup/connections_draft.h"
#include "support/memory_files.h"
#include "support/set_clock.h"
#include "support/slashes.h"

namespace tarn {
namespace {

constexpr std::string_view kNetwork =
    "TARNV2.1\nTest\n3\n2 3 1 0 0 \n0.000000 0.100000 0.010000 0.300000 0.500000 0.000000\n20\n"
    "100 5\n1 2\ndata.txt\n1\n1 1\ndata.txt\n3\n0 0\n"
    "WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n";
constexpr std::string_view kData =
    "0 0 1 a\n1 0 2 b\n0 1 3 c\n1 1 4 d\n2 0 5 e\n0 2 6 f\n2 1 7 g\n1 2 8 h\n2 2 9 i\n3 0 10 j\n";

// One after the other what a user does, on a system with that line end.
class Work {
 public:
  explicit Work(std::string_view line_end) {
    m_files.EndLinesWith(line_end);
    m_files.Put("/home/a.net", Stored(kNetwork, line_end));
    m_files.Put("/home/data.txt", Stored(kData, line_end));
    m_session.seeds = SeedSource(1);
    Train();
    SaveNetwork();
    SaveSetups();
    ExportAll();
  }

  std::map<std::string, std::string> Files() const {
    std::map<std::string, std::string> files;
    for (const std::string& path : m_files.Paths()) files[path] = m_files.Get(path).value();
    return files;
  }

 private:
  void Expect(const Status& status) { EXPECT_TRUE(status.ok()) << status.message(); }

  void Train() {
    Expect(OpenNetwork(m_session, "/home/a.net"));
    Notices notices;
    Expect(LoadForTraining(m_session, notices));
    EXPECT_EQ(notices, Notices());
    const SetClock clock;
    TrainingObserver nobody;
    TrainingRun run(m_network, clock, nobody, "/home/history");
    EXPECT_TRUE(run.Start().ok());
    EXPECT_EQ(run.RunFor(1000), RunState::kComplete);
  }

  // As it is, into a store, and back from there: read and written again.
  void SaveNetwork() {
    Expect(WriteNetworkFile(m_network.file_name, m_network));
    Expect(CreateStore("/home/store"));
    EXPECT_TRUE(AppendSnapshot("/home/store", m_network));
    ++m_network.iteration;
    EXPECT_TRUE(AppendSnapshot("/home/store", m_network));
    const std::string iteration = std::to_string(m_network.iteration);
    Expect(RestoreSnapshot("/home/store", "/home/restored.net", iteration).status);
    Expect(RestoreSnapshot("/home/store", "/home/again.net", iteration).status);
    Session session;
    Expect(OpenNetwork(session, "/home/again.net"));
    Notices notices;
    Expect(LoadForTraining(session, notices));
    EXPECT_EQ(notices, Notices());
    Expect(WriteNetworkFile(session.network.file_name, session.network));
  }

  // Sections go from file to file, once with connections that were edited.
  void SaveSetups() {
    Network design = m_network;
    ConnectionsDraft draft(design, 1, "/home");
    Expect(draft.Load());
    EXPECT_TRUE(draft.Remove(std::vector<int>{0, 3}));
    Expect(draft.Save(design.connections_edited[1]));
    Expect(SaveSetup(design, "/home/edited.net", "/home"));
    design.file_name = "/home/edited.net";
    Expect(SaveSetup(design, "/home/spliced.net", "/home"));
    design.file_name = "/home/spliced.net";
    Expect(SaveSetup(design, "/home/spliced.net", "/home"));
  }

  void ExportAll() {
    Expect(ExportErrorHistory("/home/history", "/home/a.err"));
    Expect(ExportOutputs(m_network, "/home/a.out"));
    ReportFile report;
    Expect(MakeReport(ReportKind::kOutputs, m_network, {}, "/tmp", report));
    TVirtText text;
    ASSERT_TRUE(text.Open(report.path()));
    EXPECT_TRUE(SaveReportText(text, "/home/report.txt"));
    const Graph graph = OutputsPlot(m_network, 0);
    Expect(SaveTable(graph, "/home/a.csv"));
    Expect(SavePicture(graph, kPictureSize, "/home/a.svg"));
    Expect(SaveGraphBytes("\n\r\n\r\r\n", "/home/a.bmp"));
  }

  MemoryFiles m_files{"/home"};
  ScopedFileLayer m_layer{m_files};
  Session m_session;
  Network& m_network = m_session.network;
};

const std::set<std::string> kNoTexts = {"/home/history", "/home/a.bmp",
                                        Slashes(ConnectionFilePath("/home", 1))};

TEST(LineEnds, AreThoseOfTheSystemInEveryTextAndNoneInAnythingElse) {
  const auto plain = Work("\n").Files();
  const auto stored = Work("\r\n").Files();
  std::set<std::string> paths;
  for (const auto& [path, bytes] : stored) {
    SCOPED_TRACE(path);
    paths.insert(path);
    const bool text = kNoTexts.count(path) == 0;
    ASSERT_TRUE(plain.contains(path));
    EXPECT_TRUE(bytes == (text ? Stored(plain.at(path), "\r\n") : plain.at(path)));
    if (!text) continue;
    EXPECT_TRUE(bytes.ends_with("\r\n"));
    EXPECT_EQ(bytes.find("\r\r"), std::string::npos);
    EXPECT_EQ(plain.at(path).find('\r'), std::string::npos);
  }
  std::set<std::string> expected = kNoTexts;
  for (const char* name : {"a.csv", "a.err", "a.net", "a.out", "a.svg", "again.net", "data.txt",
                           "edited.net", "report.txt", "restored.net", "spliced.net", "store"}) {
    expected.insert(std::string("/home/") + name);
  }
  EXPECT_EQ(paths, expected);
}

TEST(LineEnds, AreTheSameAfterEveryWayOfANetwork) {
  const auto stored = Work("\r\n").Files();
  const std::string& network = stored.at("/home/restored.net");
  EXPECT_TRUE(stored.at("/home/store").ends_with(network));
  EXPECT_EQ(stored.at("/home/again.net"), network);
  EXPECT_EQ(stored.at("/home/spliced.net"), stored.at("/home/edited.net"));
  EXPECT_NE(stored.at("/home/edited.net").find("\r\nCONNECTIONS:READ\r\n2\r\n1 0 0\r\n"),
            std::string::npos)
      << stored.at("/home/edited.net");
}

}  // namespace
}  // namespace tarn
