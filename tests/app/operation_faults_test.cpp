// Every operation of the program with files, on disks that fail in every way at every moment.

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "app/faults_trial.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"

namespace tarn {
namespace {

constexpr const char* kFolder = "/home/nets";
constexpr int32_t kPatterns = 10;

bool IsReading(const std::string& failed) {
  return failed.starts_with("read") || failed == "seek" || failed == "size";
}

bool IsRemoving(const std::string& failed) {
  return failed.starts_with("remove ");
}

class OperationFaults : public testing::TestWithParam<FaultOperation> {
 protected:
  // Nothing but the user's files outlives the scene, save what could not be removed.
  void ExpectNothingLeft(size_t files) {
    const auto unremoved = std::ranges::count_if(m_faulty.Failed(), IsRemoving);
    EXPECT_LE(m_files.Paths().size(), files + static_cast<size_t>(unremoved))
        << testing::PrintToString(m_files.Paths());
    EXPECT_EQ(m_files.OpenHandles(), 0);
    for (const std::string& path : m_files.Paths()) m_files.Remove(path);
  }

  MemoryFiles m_files{kFolder};
  FaultyFiles m_faulty{m_files};
  ScopedFileLayer m_layer{m_faulty};
};

TEST_P(OperationFaults, AreToldAndLeaveEverythingAsItWas) {
  FaultTrial trial(GetParam(), kFolder, kPatterns);
  int handles = 0;
  const int64_t faults = ForAllFaults(
      m_faulty, GetParam().name,
      [&] {
        trial.Open();
        handles = m_files.OpenHandles();
      },
      [&] { trial.Run(); },
      [&](bool struck) {
        SCOPED_TRACE(testing::PrintToString(m_faulty.Failed()));
        EXPECT_EQ(m_files.OpenHandles(), handles);
        trial.Check(struck, std::ranges::any_of(m_faulty.Failed(), IsReading));
        ExpectNothingLeft(trial.End());
      });
  EXPECT_GE(faults, 2);
}

INSTANTIATE_TEST_SUITE_P(Of, OperationFaults, testing::ValuesIn(FaultOperations()),
                         [](const auto& of) { return NameOf(of.param); });

}  // namespace
}  // namespace tarn
