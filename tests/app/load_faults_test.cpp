// What the steps of a load, the run and what else reads tell of a disk that cannot be read.

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/faults_scene.h"
#include "app/network_loader.h"
#include "base/paths.h"
#include "netfile/netfile_test.h"
#include "setup/handover_file.h"
#include "support/faulty_files.h"

namespace tarn {
namespace {

using testing::AnyOf;

constexpr const char* kFolder = "/home/nets";
constexpr const char* kPath = "/home/nets/test.net";
constexpr int32_t kPatterns = 900;  // no file comes in one read

using Texts = std::vector<std::string>;

// What each step may tell of a file that cannot be read.
const std::map<std::string_view, Texts>& FailuresOfSteps() {
  static const std::map<std::string_view, Texts> failures = {
      {"Reading Network File",
       {"ERROR - Unable to access network file!",
        "Input error reading NET file - Invalid learning rates!"}},
      {"Counting Patterns",
       {"Invalid Input Node Training File - data.txt", "Invalid Target/Output Node Training File"}},
      {"Reading Patterns",
       {"Bad Input Training Data File - data.txt", "Bad Target Training Data File - targets.txt",
        "Bad or missing pattern normalization data", "Bad or missing target normalization data"}},
      {"Reading Weights", {}},
      {"Reading Connections", {}},
      {"Selecting Test Set", {}},
      {"Processing Recall Inputs...", {}}};
  return failures;
}

// And the fallbacks that a step may take.
const std::map<std::string_view, Texts>& NoticesOfSteps() {
  static const std::map<std::string_view, Texts> notices = {
      {"Reading Weights", {"Error reading weights - Random initialization"}},
      {"Reading Connections", {"Error Reading Connections - Fully Connecting Network"}},
      {"Selecting Test Set",
       {"Tarn setting random test set cases!", "Train set has changed - resetting test cases!",
        "Test set information invalid - resetting test cases!"}}};
  return notices;
}

bool Holds(const std::map<std::string_view, Texts>& texts, std::string_view step,
           const std::string& text) {
  const auto of_step = texts.find(step);
  return of_step != texts.end() &&
         std::ranges::find(of_step->second, text) != of_step->second.end();
}

class LoadFaults : public testing::Test {
 protected:
  // A trained network with stored weights, removed connections, a random test set and limits, its
  // targets in a file of their own.
  LoadFaults() {
    m_files.AddFolder(kFolder);
    std::string targets;
    for (int i = 0; i < kPatterns; ++i) targets += fmt::sprintf("%d\n", i % 100);
    PutBytes("/home/nets/targets.txt", targets);
    FaultScene scene(kFolder, kPatterns);
    Network& network = scene.session.network;
    network.TargName = "targets.txt";
    network.TargCol = 1;
    network.overMeth = kTestRandom;
    network.layers[1].masks.Row(1)[0] = 0.0F;
    network.layers[1].weights.Row(1)[0] = 0.0F;
    EXPECT_TRUE(WriteNetworkFile(kPath, network).ok());
    m_user_files = scene.Files();
  }

  void OpenSession() {
    m_session = std::make_unique<Session>();
    m_session->seeds = SeedSource(1);
    EXPECT_EQ(OpenNetwork(*m_session, kPath).message(), "");
    Network& network = m_session->network;
    network.RecallPatName = "data.txt";
    network.RecallTargName = "targets.txt";
    network.RecallPatCol = network.RecallTargCol = 1;
    network.RecallTargets = true;
  }

  // Loads step by step. Every failure and every notice has to be one of its step.
  void Load(NetworkLoader::Kind kind) {
    NetworkLoader loader(*m_session, kind);
    m_status = {};
    m_notices.clear();
    while (m_status.ok() && !loader.NextStep().empty()) {
      const std::string_view step = loader.NextStep();
      const size_t known = m_notices.size();
      m_status = loader.DoStep(m_notices);
      if (!m_status.ok()) {
        EXPECT_TRUE(Holds(FailuresOfSteps(), step, m_status.message()))
            << step << ": " << m_status.message();
      }
      for (size_t i = known; i < m_notices.size(); ++i) {
        EXPECT_TRUE(Holds(NoticesOfSteps(), step, m_notices[i])) << step << ": " << m_notices[i];
      }
    }
  }

  // The record with all that was read into it.
  std::string Loaded() const {
    const Network& network = m_session->network;
    std::string text = TextOf(network);
    const auto add = [&text](const auto& values) {
      for (const auto value : values) text += fmt::sprintf("%g ", double(value));
      text += '\n';
    };
    add(network.layers[0].activations.All());
    add(network.targets.All());
    add(network.train_list);
    add(network.test_list);
    for (const std::string& name : network.input_names) text += name + ",";
    return text;
  }

  void TryAll(NetworkLoader::Kind kind, const std::string& name) {
    OpenSession();
    Load(kind);
    ASSERT_EQ(m_status.message(), "");
    ASSERT_EQ(m_notices, Notices());
    const std::string wanted = Loaded();
    const int64_t faults = ForAllFaults(
        m_faulty, name, [this] { OpenSession(); }, [&] { Load(kind); },
        [&](bool struck) {
          SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
          const bool whole = m_status.ok() && m_notices.empty();
          EXPECT_TRUE(struck || whole);
          EXPECT_TRUE(!whole || Loaded() == wanted);
          EXPECT_EQ(m_files.OpenHandles(), 0);
          for (const auto& [file, bytes] : m_user_files) {
            EXPECT_TRUE(m_files.Get(std::string(kFolder) + "/" + file) == bytes) << file;
          }
          Load(kind);
          EXPECT_TRUE(m_status.ok() && m_notices.empty() && Loaded() == wanted);
        });
    EXPECT_GT(faults, 10);
  }

  MemoryFiles m_files{kFolder};
  FaultyFiles m_faulty{m_files};
  ScopedFileLayer m_layer{m_faulty};
  std::map<std::string, std::string> m_user_files;
  std::unique_ptr<Session> m_session;
  Status m_status;
  Notices m_notices;
};

TEST_F(LoadFaults, OfTrainingAreToldByTheStepThatTheyStrike) {
  TryAll(NetworkLoader::Kind::kTraining, "load for training");
}

TEST_F(LoadFaults, OfRecallAreToldByTheStepThatTheyStrike) {
  TryAll(NetworkLoader::Kind::kRecall, "load and recall");
}

TEST_F(LoadFaults, OfANewNetworkNeverOpenTheOldOne) {
  const std::string path = "/home/nets/UNTITLED.NE_";
  const std::string whole(NewNetworkText());
  std::string old = whole;
  old.replace(old.find("NO NAME"), 7, "Old one");
  ForAllFaults(
      m_faulty, "new network",
      [&] {
        // A setup that was read has made its own folder the current one.
        m_files.EnterDirectory(kFolder);
        OpenSession();
        m_files.Put(path, old);
      },
      [&] {
        StartNewNetwork(*m_session);
        m_status = ReadSetup(*m_session);
      },
      [&](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        EXPECT_TRUE(struck || m_status.ok());
        EXPECT_TRUE(IsUntitled(m_session->network.file_name));
        EXPECT_THAT(m_files.Get(path).value_or(whole), AnyOf(whole, old));
        EXPECT_TRUE(!m_status.ok() || m_files.Exists(m_session->network.file_name));
        EXPECT_THAT(
            m_status.message(),
            AnyOf("", "Tarn Network File Not Found", "ERROR - Unable to access network file!",
                  "Input error reading NET file - Invalid learning rates!"));
        EXPECT_EQ(m_files.OpenHandles(), 0);
        EXPECT_EQ(ReadSetup(*m_session).message(), "");
        EXPECT_NE(m_session->network.NetName, "Old one");
      });
}

TEST_F(LoadFaults, OfWhatIsHandedOverLeaveItWhereItIs) {
  const std::string path = "/home/TABULO.TBI";
  std::optional<HandOver> taken;
  Message message;
  ForAllFaults(
      m_faulty, "hand-over file", [&] { m_files.Put(path, "/home/nets/data.txt\n3\n"); },
      [&] { taken = TakeHandOver(path, message); },
      [&](bool struck) {
        EXPECT_TRUE(struck || taken.has_value());
        EXPECT_EQ(m_files.OpenHandles(), 0);
        if (taken) {
          EXPECT_EQ(taken->path, "/home/nets/data.txt");
          EXPECT_EQ(taken->target_column, 3);
        } else {
          EXPECT_EQ(message.text, "No file saved durring Tabulo session!");
          EXPECT_TRUE(m_files.Exists(path));
        }
      });
}

}  // namespace
}  // namespace tarn
