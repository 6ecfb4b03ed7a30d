#include "data/outputs_export.h"

#include <algorithm>

#include "data_test.h"
#include "support/comma_locale.h"
#include "support/faulty_files.h"

namespace tarn {
namespace {

class OutputsExportTest : public DataTest {
 protected:
  // Three patterns, two output nodes; outputs 0.15, 0.25, ... and targets 0.5.
  static Network MakeRun() {
    Network network = MakeNetwork(1, 2);
    network.nPats = network.nTrain = 3;
    network.train_list = {0, 1, 2};
    network.RecallTargets = true;
    EXPECT_TRUE(AllocateArrays(network).ok());
    std::ranges::fill(network.targets.All(), 0.5F);
    float value = 0.15F;
    for (float& output : network.layers[2].activations.All()) {
      output = value;
      value += 0.1F;
    }
    return network;
  }
  static std::string Text(const Network& network) {
    std::string text;
    EXPECT_TRUE(WriteOutputs(network, [&text](std::string_view line) {
      text += line;
      return true;
    }));
    return text;
  }
};

constexpr const char* kPlain =
    "1\t0.500000\t0.150000\t0.500000\t0.250000\n"
    "2\t0.500000\t0.350000\t0.500000\t0.450000\n"
    "3\t0.500000\t0.550000\t0.500000\t0.650000\n";

TEST_F(OutputsExportTest, WritesTargetAndOutputOfEveryNode) {
  EXPECT_EQ(Text(MakeRun()), kPlain);
}

TEST_F(OutputsExportTest, ShowsMembershipWhenThereAreTestPatterns) {
  Network network = MakeRun();
  network.nTrain = 2;
  network.testPats = 1;
  network.train_list = {0, 2};
  network.test_list = {1};
  EXPECT_EQ(Text(network),
            "1\t1\t0.500000\t0.150000\t0.500000\t0.250000\n"
            "2\t0\t0.500000\t0.350000\t0.500000\t0.450000\n"
            "3\t1\t0.500000\t0.550000\t0.500000\t0.650000\n");
}

TEST_F(OutputsExportTest, ShowsNoMembershipInRecall) {
  Network network = MakeRun();
  network.mode = Mode::kRecall;
  network.testPats = 3;
  network.test_list = {0, 1, 2};
  EXPECT_EQ(Text(network), kPlain);
}

TEST_F(OutputsExportTest, LeavesTargetsOutInRecallWithoutThem) {
  Network network = MakeRun();
  network.mode = Mode::kRecall;
  network.RecallTargets = false;
  network.targets.Resize(0, 0);
  EXPECT_EQ(Text(network), "1\t0.150000\t0.250000\n2\t0.350000\t0.450000\n3\t0.550000\t0.650000\n");
}

TEST_F(OutputsExportTest, WritesDataUnitsWhenTargetsAreNormalized) {
  Network network = MakeRun();
  network.targ_norm = 1;
  network.target_limits = {{-3, 100}, {7, 200}};
  EXPECT_EQ(Text(network).substr(0, Text(network).find('\n')),
            "1\t2.000000\t-3.000000\t150.000000\t114.285713");
}

TEST_F(OutputsExportTest, WritesPointsUnderADecimalCommaLocale) {
  const CommaLocale locale;
  EXPECT_EQ(Text(MakeRun()), kPlain);
}

TEST_F(OutputsExportTest, WritesNothingWithoutPatterns) {
  Network network = MakeRun();
  network.nPats = 0;
  EXPECT_EQ(Text(network), "");
}

TEST_F(OutputsExportTest, StopsWhenTheSinkRefusesALine) {
  int lines = 0;
  EXPECT_FALSE(WriteOutputs(MakeRun(), [&lines](std::string_view) { return ++lines < 2; }));
  EXPECT_EQ(lines, 2);
}

TEST_F(OutputsExportTest, ReplacesAFile) {
  m_files.Put("run.out", "old");
  ASSERT_EQ(ExportOutputs(MakeRun(), "run.out").message(), "");
  EXPECT_EQ(m_files.Get("run.out"), kPlain);
  EXPECT_EQ(m_files.Paths().size(), 1U);
}

TEST_F(OutputsExportTest, FailsWhenTheFileCannotBeOpened) {
  EXPECT_EQ(ExportOutputs(MakeRun(), "/no/such/folder/run.out").message(),
            "File Error Writting Outputs");
}

TEST_F(OutputsExportTest, LeavesTheOldFileWhenTheDiskFails) {
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  Status status;
  const int64_t runs = ForEveryFault(
      faulty, FaultyFiles::Fault::kDiskFull, FaultyFiles::Kinds::kMutating,
      [this] { m_files.Put("run.out", "old"); },
      [&status] { status = ExportOutputs(MakeRun(), "run.out"); },
      [this, &status](bool struck) {
        EXPECT_EQ(m_files.Get("run.out"), status.ok() ? kPlain : "old");
        EXPECT_EQ(m_files.OpenHandles(), 0);
        EXPECT_EQ(status.message(), status.ok() ? "" : "File Error Writting Outputs");
        EXPECT_TRUE(struck || status.ok());
      });
  EXPECT_GT(runs, 1);
  EXPECT_TRUE(status.ok());
}

}  // namespace
}  // namespace tarn
