#include <limits>

#include "data/pattern_files.h"
#include "data_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Counts how often files are opened.
class CountingFiles : public MemoryFiles {
 public:
  Handle Open(const std::string& path, Mode mode) override {
    ++m_opened;
    return MemoryFiles::Open(path, mode);
  }
  int opened() const { return m_opened; }

 private:
  int m_opened = 0;
};

class PatternReadingTest : public DataTest {
 protected:
  // Reads with the arrays of `patterns` patterns, whatever the files hold.
  Status Read(Network& network, int32_t patterns, size_t buffer_size = 100) {
    network.nPats = patterns;
    EXPECT_TRUE(AllocateArrays(network).ok());
    return ReadPatterns(network, buffer_size);
  }
};

TEST_F(PatternReadingTest, PairsTheRecordsOfTheTwoFiles) {
  m_files.Put("in.dat", "# inputs\n0.1 0.2\n\n0.3 0.4\n");
  m_files.Put("targ.dat", "0.5\n# comment\n   \n0.6\n");
  Network network = MakeNetwork(2, 1);
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_EQ(network.nPats, 2);
  EXPECT_THAT(Inputs(network, 0), ElementsAre(0.1F, 0.2F));
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.3F, 0.4F));
  EXPECT_THAT(Targets(network, 0), ElementsAre(0.5F));
  EXPECT_THAT(Targets(network, 1), ElementsAre(0.6F));
}

TEST_F(PatternReadingTest, ReadsCommasCrLfAndCtrlZ) {
  m_files.Put("in.dat", "0.1,0.2\r\n0.3, 0.4\r\n\x1A");
  m_files.Put("targ.dat",
              "0.5\r\n0.6\r\n\x1A"
              "0.7\r\n");
  Network network = MakeNetwork(2, 1);
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.3F, 0.4F));
  EXPECT_THAT(Targets(network, 1), ElementsAre(0.6F));
}

TEST_F(PatternReadingTest, ReadsPointsUnderADecimalCommaLocale) {
  const CommaLocale locale;
  m_files.Put("in.dat", "0.125,0.25\n");
  m_files.Put("targ.dat", "0.5\n");
  Network network = MakeNetwork(2, 1);
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 0), ElementsAre(0.125F, 0.25F));
}

TEST_F(PatternReadingTest, ReadsInputsAndTargetsOfOneFileWithoutOpeningItTwice) {
  CountingFiles files;
  const ScopedFileLayer layer(files);
  files.Put("/home/in.dat", "# \"a\" \"b\" \"x\" \"c\"\n0.1 0.2 label 0.3\n0.4 0.5 label 0.6\n");
  Network network = MakeNetwork(2, 1);
  network.PatName = network.TargName = "/home/in.dat";
  network.TargCol = 4;
  ASSERT_EQ(Read(network, 2).message(), "");
  EXPECT_EQ(files.opened(), 1);
  EXPECT_EQ(files.OpenHandles(), 0);
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.4F, 0.5F));
  EXPECT_THAT(Targets(network, 1), ElementsAre(0.6F));
  EXPECT_THAT(network.input_names, ElementsAre("a", "b"));
  EXPECT_THAT(network.output_names, ElementsAre("c"));
}

TEST_F(PatternReadingTest, ReadsTargetsRightBehindTheInputs) {
  CountingFiles files;
  const ScopedFileLayer layer(files);
  files.Put("/home/in.dat", "7 0.1 0.2 0.3\n8 0.4 0.5 0.6\n");
  Network network = MakeNetwork(2, 1);
  network.PatName = network.TargName = "/home/in.dat";
  network.PatCol = 2;
  network.TargCol = 4;
  ASSERT_EQ(Read(network, 2).message(), "");
  EXPECT_EQ(files.opened(), 1);
  EXPECT_THAT(Inputs(network, 0), ElementsAre(0.1F, 0.2F));
  EXPECT_THAT(Targets(network, 1), ElementsAre(0.6F));
}

TEST_F(PatternReadingTest, ReadsOverlappingColumnsInASecondPass) {
  m_files.Put("in.dat", "# \"a\" \"b\"\n0.1 0.2\n0.3 0.4\n");
  Network network = MakeNetwork(2, 1);
  network.TargName = "in.dat";
  network.TargCol = 2;
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.3F, 0.4F));
  EXPECT_THAT(Targets(network, 0), ElementsAre(0.2F));
  EXPECT_THAT(Targets(network, 1), ElementsAre(0.4F));
  EXPECT_THAT(network.output_names, ElementsAre("b"));
}

TEST_F(PatternReadingTest, NamesNodesByTheLabelsOfEachFile) {
  m_files.Put("in.dat", "# \"a\" \"b\" \"c\"\n0.1 0.2 0.3\n");
  m_files.Put("targ.dat", "# \"t\"\n0.5\n");
  Network network = MakeNetwork(2, 1);
  network.PatCol = 2;
  network.input_names = network.output_names = {"old"};
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(network.input_names, ElementsAre("b", "c"));
  EXPECT_THAT(network.output_names, ElementsAre("t"));
}

TEST_F(PatternReadingTest, LeavesNodesWithoutNamesWhenLabelsAreMissing) {
  m_files.Put("in.dat", "# \"a\"\n0.1 0.2\n");
  m_files.Put("targ.dat", "0.5\n");
  Network network = MakeNetwork(2, 1);
  network.input_names = network.output_names = {"old", "older"};
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(network.input_names, IsEmpty());
  EXPECT_THAT(network.output_names, IsEmpty());
}

TEST_F(PatternReadingTest, ReadsNoTargetsInRecallWithoutThem) {
  m_files.Put("in.dat", "0.1\n0.2\n");
  Network network = MakeRecall(1, 1);
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.2F));
  EXPECT_EQ(network.targets.rows(), 0U);
}

TEST_F(PatternReadingTest, ReadsTargetsInRecallWithThem) {
  m_files.Put("in.dat", "x 0.1 0.8\nx 0.2 0.9\n");
  Network network = MakeRecall(1, 1);
  network.RecallPatCol = 2;
  network.RecallTargName = "in.dat";
  network.RecallTargCol = 3;
  network.RecallTargets = true;
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.2F));
  EXPECT_THAT(Targets(network, 1), ElementsAre(0.9F));
}

TEST_F(PatternReadingTest, UsesDataOutsideTheBandAsTheyStandInRecall) {
  m_files.Put("in.dat", "-5\n7\n");
  Network network = MakeRecall(1, 1);
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(7));
  EXPECT_EQ(network.pat_norm, 0);
}

TEST_F(PatternReadingTest, FailsAtARecordWithTooFewInputs) {
  m_files.Put("in.dat", "# head\n1 2\n\n3 4\n# more\n5\n");
  m_files.Put("targ.dat", "1\n2\n3\n");
  Network network = MakeNetwork(2, 1);
  EXPECT_EQ(Load(network).message(), "Insufficient input node data - Data record 3");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(3, 4));
}

TEST_F(PatternReadingTest, FailsAtARecordWithAnInputThatIsNotNumeric) {
  m_files.Put("in.dat", "1 2\n3 x\n");
  m_files.Put("targ.dat", "1\n2\n");
  Network network = MakeNetwork(2, 1);
  EXPECT_EQ(Load(network).message(), "Insufficient input node data - Data record 2");
}

TEST_F(PatternReadingTest, FailsAtARecordOfCommasAlone) {
  m_files.Put("in.dat", "1 2\n,,,\n");
  m_files.Put("targ.dat", "1\n2\n");
  Network network = MakeNetwork(2, 1);
  EXPECT_EQ(Load(network).message(), "Insufficient input node data - Data record 2");
}

TEST_F(PatternReadingTest, FailsAtARecordWithTooFewTargets) {
  m_files.Put("in.dat", "1\n2\n");
  m_files.Put("targ.dat", "1 2\n3\n");
  Network network = MakeNetwork(1, 2);
  EXPECT_EQ(Load(network).message(), "Insufficient target node data - Data record 2");
  network.TargName = "in.dat";
  m_files.Put("in.dat", "1 2 3\n4 5 no\n");
  network.TargCol = 2;
  EXPECT_EQ(Load(network).message(), "Insufficient target node data - Data record 2");
  network.TargCol = 1;  // overlapping: read in the second pass
  m_files.Put("in.dat", "1 2\n3 no\n");
  EXPECT_EQ(Load(network).message(), "Insufficient target node data - Data record 2");
}

TEST_F(PatternReadingTest, FailsWithoutABuffer) {
  m_files.Put("in.dat", "1\n");
  Network network = MakeNetwork(1, 1);
  EXPECT_EQ(Read(network, 1, 0).message(), "Invalid or Empty Training Data File");
}

TEST_F(PatternReadingTest, FailsWithABufferThatNoMemoryHolds) {
  Network network = MakeNetwork(1, 1);
  EXPECT_EQ(Read(network, 1, std::numeric_limits<size_t>::max()).message(),
            "OUT OF MEMORY - Reading Input Data");
}

TEST_F(PatternReadingTest, FailsWhenAFileIsGoneSinceTheCount) {
  m_files.Put("targ.dat", "1\n");
  Network network = MakeNetwork(1, 1);
  EXPECT_EQ(Read(network, 1).message(), "Bad Input Training Data File - in.dat");
  m_files.Put("in.dat", "1\n");
  m_files.Remove("targ.dat");
  EXPECT_EQ(Read(network, 1).message(), "Bad Target Training Data File - targ.dat");
}

TEST_F(PatternReadingTest, FailsWhenAFileHasFewerRecordsThanWereCounted) {
  m_files.Put("in.dat", "1\n2\n3");
  m_files.Put("targ.dat", "1\n2\n3\n");
  Network network = MakeNetwork(1, 1);
  EXPECT_EQ(Read(network, 3).message(), "Error - training data files have invalid records");
  m_files.Put("in.dat", "1\n2\n3\n");
  m_files.Put("targ.dat", "1\n2\n");
  EXPECT_EQ(Read(network, 3).message(), "Error - training data files have invalid records");
}

TEST_F(PatternReadingTest, FailsWhenAnUncountedTargetFileHasALineBeyondTheBuffer) {
  m_files.Put("in.dat", "1 2\n3 4\n");
  m_files.Put("in.dat2", "1\n2      \n");  // one character more than fits
  Network network = MakeNetwork(2, 1);
  network.TargName = "in.dat2";
  EXPECT_EQ(Load(network).message(), "Error - training data files have invalid records");
  m_files.Put("in.dat2", "1\n2     \n");
  EXPECT_EQ(Load(network).message(), "");
}

TEST_F(PatternReadingTest, FailsWithoutPatterns) {
  m_files.Put("in.dat", "1\n");
  m_files.Put("targ.dat", "1\n");
  Network network = MakeNetwork(1, 1);
  EXPECT_EQ(Read(network, 0).message(), "No data points found in training data files!");
}

TEST_F(PatternReadingTest, AnswersForStartColumnsBeforeReadingAnything) {
  Network network = MakeNetwork(1, 1);
  network.TargCol = 0;
  EXPECT_EQ(Read(network, 1).message(), "Invalid start column specified for targets");
  network.PatCol = 0;
  EXPECT_EQ(Read(network, 1).message(), "Invalid start column specified for inputs");
}

TEST_F(PatternReadingTest, FailsForTheLargestColumns) {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  m_files.Put("in.dat", "0.1 0.2\n");
  Network network = MakeNetwork(1, 1);
  network.TargName = "in.dat";
  network.TargCol = kMost;
  EXPECT_EQ(Read(network, 1).message(), "Insufficient target node data - Data record 1");
  network.PatCol = kMost;
  EXPECT_EQ(Read(network, 1).message(), "Insufficient input node data - Data record 1");
}

TEST_F(PatternReadingTest, PassesOnTheFailuresOfNormalization) {
  m_files.Put("in.dat", "0.1\n");
  m_files.Put("test.net", "NORMALIZE:NONE\n");
  Network network = MakeRecall(1, 1);
  network.pat_norm = 1;
  EXPECT_EQ(Load(network).message(), "Bad or missing pattern normalization data");
}

TEST_F(PatternReadingTest, ReadsARecordOf999999Characters) {
  std::string record = "0.5" + std::string(999'993, ' ') + "0.2";
  ASSERT_EQ(record.size(), 999'999U);
  m_files.Put("in.dat", "0.1 0.2\n" + record + "\r\n");
  m_files.Put("targ.dat", "0.1\n0.2\n");
  Network network = MakeNetwork(2, 1);
  ASSERT_EQ(Load(network).message(), "");
  EXPECT_THAT(Inputs(network, 1), ElementsAre(0.5F, 0.2F));
}

TEST_F(PatternReadingTest, ReadsMoreThan65536Patterns) {
  constexpr int32_t kPatterns = 65'540;
  std::string text;
  for (int32_t p = 0; p < kPatterns; ++p) text += std::to_string(p) + " 0.5\n";
  m_files.Put("in.dat", text);
  Network network = MakeRecall(1, 1);
  ASSERT_EQ(Load(network).message(), "");
  ASSERT_EQ(network.nPats, kPatterns);
  EXPECT_THAT(Inputs(network, 65'535), ElementsAre(65'535));
  EXPECT_THAT(Inputs(network, 65'539), ElementsAre(65'539));
}

}  // namespace
}  // namespace tarn
