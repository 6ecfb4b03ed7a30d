#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/session_fixture.h"
#include "app/training_desk.h"
#include "base/paths.h"
#include "support/fake_dialogs.h"
#include "support/set_clock.h"
#include "support/slashes.h"

namespace tarn {

class RecordingView : public TrainingView {
 public:
  void ShowStatus(std::string_view text) override { statuses.emplace_back(text); }
  void Changed() override { ++changes; }

  std::vector<std::string> statuses;
  int changes = 0;
};

inline bool IsTemporary(const std::string& path) {
  return path.starts_with(Slashes(JoinPath(TemporaryFolder(), "Tarn")));
}

// The fixture's network, loaded; 10 patterns, 20 iterations unless a test says otherwise.
class TrainingDeskTest : public SessionFixture {
 protected:
  TrainingDesk& Desk() {
    if (m_desk == nullptr) {
      SetLine(6, "20");
      EXPECT_EQ(Train(), "");
      Open();
    }
    return *m_desk;
  }
  void Open() {
    m_desk = std::make_unique<TrainingDesk>(m_session, m_dialogs, m_view, m_clock, size_t{1});
  }
  void RunToTheEnd() {
    Desk().Start();
    while (Desk().Work(1000)) {
    }
  }

  FakeDialogs m_dialogs;
  RecordingView m_view;
  SetClock m_clock;
  std::unique_ptr<TrainingDesk> m_desk;
};

}  // namespace tarn
