#include "app/faults_trial.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>

namespace tarn {
namespace {

// Where two states part, by lines.
std::string Difference(const std::string& state, const std::string& wanted) {
  const auto parts = std::ranges::mismatch(state, wanted);
  const auto begin = static_cast<size_t>(parts.in1 - state.begin());
  const size_t line = state.rfind('\n', begin) + 1;
  constexpr size_t kShown = 200;
  return state.substr(line, kShown) + "\nin place of\n" + wanted.substr(line, kShown);
}

void ExpectState(const std::string& state, const std::string& wanted) {
  EXPECT_TRUE(state == wanted) << Difference(state, wanted);
}

}  // namespace

FaultTrial::FaultTrial(FaultOperation operation, std::string folder, int32_t patterns)
    : m_operation(std::move(operation)), m_folder(std::move(folder)), m_patterns(patterns) {
  Open();
  Run();
  EXPECT_EQ(m_scene->dialogs.told, FaultOperation::Told{});
  m_done = m_scene->State();
  EXPECT_NE(m_done, m_before);
}

void FaultTrial::Open() {
  m_scene.reset();
  for (const std::string& name : Files().NamesIn(m_folder)) Files().Remove(m_folder + "/" + name);
  m_scene = std::make_unique<FaultScene>(m_folder, m_patterns);
  if (m_operation.prepare) m_operation.prepare(*m_scene);
  m_before = m_scene->State();
}

void FaultTrial::Run() {
  m_scene->dialogs.told.clear();
  m_operation.run(*m_scene);
}

void FaultTrial::ExpectDone() const {
  EXPECT_EQ(m_scene->dialogs.told, FaultOperation::Told{});
  ExpectState(m_scene->State(), m_done);
}

void FaultTrial::ExpectRightMessage(bool read_failed) const {
  std::vector<FaultOperation::Told> right = m_operation.writing;
  if (read_failed) {
    right.insert(right.end(), m_operation.reading.begin(), m_operation.reading.end());
  }
  const FaultOperation::Told& told = m_scene->dialogs.told;
  EXPECT_NE(std::ranges::find(right, told), right.end()) << testing::PrintToString(told);
  ExpectState(m_scene->State(), m_before);
}

void FaultTrial::Check(bool struck, bool read_failed) {
  const bool silent = m_operation.writing.empty() && m_operation.reading.empty();
  if (!m_scene->dialogs.told.empty()) {
    ExpectRightMessage(read_failed);
  } else if (!silent || !struck || m_scene->State() != m_before) {
    ExpectDone();
  }
  if (m_scene->State() != m_before) return;
  Run();
  ExpectDone();
}

size_t FaultTrial::End() {
  const size_t files = m_scene->Files().size();
  m_scene.reset();
  return files;
}

std::string NameOf(const FaultOperation& operation) {
  std::string name;
  bool begins = true;
  for (const char c : operation.name) {
    const bool letter = std::isalpha(static_cast<unsigned char>(c)) != 0;
    if (letter) name += begins ? static_cast<char>(std::toupper(c)) : c;
    begins = !letter;
  }
  return name;
}

}  // namespace tarn
