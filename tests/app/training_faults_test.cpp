#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "app/faults_scene.h"
#include "netfile/netfile_test.h"
#include "support/faulty_files.h"

namespace tarn {
namespace {

constexpr const char* kFolder = "/home/nets";
constexpr const char* kStoreNotMade = "Tarn Error|Cannot Create AutoSave File Storage";
constexpr const char* kHistoryLost = "Tarn Error|File Error Writting Error History";

class TrainingFaults : public testing::Test {
 protected:
  TrainingFaults() { m_files.AddFolder(kFolder); }

  void OpenScene() {
    m_scene.reset();
    for (const std::string& path : m_files.Paths()) m_files.Remove(path);
    m_scene = std::make_unique<FaultScene>(kFolder, 10);
  }
  void Train() {
    m_scene->OpenDesk();
    m_scene->desk->TellPending();
  }
  bool Told(const std::string& text) const {
    const std::vector<std::string>& told = m_scene->dialogs.told;
    return std::ranges::find(told, text) != told.end();
  }

  // Each snapshot that the store lists, as it is restored.
  std::map<std::string, std::string> Snapshots() {
    std::map<std::string, std::string> restored;
    FakeDialogs& dialogs = m_scene->dialogs;
    const auto restore = [&](const std::optional<std::string>& choice) {
      dialogs.files = {*m_scene / "restored.net"};
      dialogs.snapshots = {choice};
      m_scene->desk->SaveSnapshotAs();
    };
    restore(std::nullopt);
    for (const std::string& iteration : dialogs.snapshot_lists.back()) {
      restore(iteration);
      restored[iteration] = BytesOf(*m_scene / "restored.net");
    }
    return restored;
  }

  MemoryFiles m_files{kFolder};
  FaultyFiles m_faulty{m_files};
  ScopedFileLayer m_layer{m_faulty};
  std::unique_ptr<FaultScene> m_scene;
};

TEST_F(TrainingFaults, TakeNothingFromTheRunAndWholePartsFromItsFiles) {
  OpenScene();
  Train();
  const std::string trained = TextOf(m_scene->session.network);
  const std::string history = BytesOf(m_scene->desk->history_path());
  const std::map<std::string, std::string> snapshots = Snapshots();
  ASSERT_EQ(history.size(), 20U * 32);
  ASSERT_EQ(snapshots.size(), 4U);
  ForAllFaults(
      m_faulty, "training run with its history and snapshots", [this] { OpenScene(); },
      [this] { Train(); },
      [&](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        EXPECT_EQ(m_scene->session.network.iteration, 20);
        EXPECT_EQ(TextOf(m_scene->session.network), trained);
        const std::string recorded = BytesOf(m_scene->desk->history_path());
        EXPECT_EQ(recorded, history.substr(0, recorded.size() / 32 * 32));
        EXPECT_EQ(Told(kHistoryLost), recorded != history);
        if (Told(kStoreNotMade)) {
          EXPECT_TRUE(struck);
        } else {
          const std::map<std::string, std::string> kept = Snapshots();
          EXPECT_TRUE(std::ranges::includes(snapshots, kept));
          EXPECT_TRUE(struck || kept == snapshots);
        }
        m_scene.reset();
        EXPECT_EQ(m_files.OpenHandles(), 0);
      });
}

}  // namespace
}  // namespace tarn
