#include "data/pattern_files.h"

#include <limits>

#include "data_test.h"

// The counting pass; the reading pass is in pattern_reading_test.cpp.

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PatternCountTest : public DataTest {};

TEST_F(PatternCountTest, IsTheNumberOfRecordsOfTheInputFile) {
  m_files.Put("in.dat", "# inputs\n1 2\n3 4\n\n5 6\n");
  m_files.Put("targ.dat", "1\n2\n# between\n3\n");
  ASSERT_TRUE(Count(MakeNetwork(2, 1)).ok());
  EXPECT_EQ(m_count.records, 3);
  EXPECT_THAT(m_notices, IsEmpty());
}

TEST_F(PatternCountTest, BufferIsFiveLongerThanTheLongestLineOfBothFiles) {
  m_files.Put("in.dat", "1 2 3 4\n1\n");
  m_files.Put("targ.dat", "1 2 3 4 5\n1\n");
  ASSERT_TRUE(Count(MakeNetwork(1, 1)).ok());
  EXPECT_EQ(m_count.buffer_size, 9U + 5U);
  m_files.Put("targ.dat", "1\n1\r\n");
  ASSERT_TRUE(Count(MakeNetwork(1, 1)).ok());
  EXPECT_EQ(m_count.buffer_size, 7U + 5U);
  m_files.Put("in.dat", "# a comment\r\n1\r\n1\r\n");
  ASSERT_TRUE(Count(MakeNetwork(1, 1)).ok());
  EXPECT_EQ(m_count.buffer_size, 11U + 5U);
}

TEST_F(PatternCountTest, FailsWithoutTheInputFile) {
  m_files.Put("targ.dat", "1\n");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Invalid Input Node Training File - in.dat");
}

TEST_F(PatternCountTest, FailsWithoutTheTargetFile) {
  m_files.Put("in.dat", "1\n");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Invalid Target/Output Node Training File");
}

TEST_F(PatternCountTest, FailsForAnInputLineThatIsTooLong) {
  m_files.Put("in.dat", "1\n" + std::string(1'000'000, '1') + "\n");
  m_files.Put("targ.dat", "1\n1\n");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Invalid File Format - Input Training Data File");
}

TEST_F(PatternCountTest, FailsForATargetLineThatIsTooLong) {
  m_files.Put("in.dat", "1\n1\n");
  m_files.Put("targ.dat", "1\n# " + std::string(999'998, 'x') + "\n1\n");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Invalid File Format - Target Training Data File");
}

TEST_F(PatternCountTest, FailsWhenTheFilesDiffer) {
  m_files.Put("in.dat", "1\n2\n");
  for (const char* targets : {"1\n", "1\n2\n3\n", ""}) {
    m_files.Put("targ.dat", targets);
    EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Number Inputs and Targets are Not Equal");
  }
  m_files.Put("in.dat", "");
  m_files.Put("targ.dat", "1\n");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Number Inputs and Targets are Not Equal");
}

TEST_F(PatternCountTest, FailsWithoutAnyRecord) {
  m_files.Put("in.dat", "# nothing\n\n");
  m_files.Put("targ.dat", "");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Invalid or Empty Training Data File");
  EXPECT_EQ(Count(MakeRecall(1, 1)).message(), "Invalid or Empty Training Data File");
  EXPECT_EQ(m_count.records, 0);
  EXPECT_EQ(m_count.buffer_size, 0U);
}

TEST_F(PatternCountTest, LeavesATargetFileUncountedWhoseNameBeginsWithTheInputFiles) {
  m_files.Put("in.dat", "1\n2\n");
  Network network = MakeNetwork(1, 1);
  network.TargName = "in.dat.targets";  // it does not even exist
  ASSERT_TRUE(Count(network).ok());
  EXPECT_EQ(m_count.records, 2);
  network.TargName = "in.da";
  EXPECT_EQ(Count(network).message(), "Invalid Target/Output Node Training File");
}

TEST_F(PatternCountTest, CountsTheRecallFilesInRecall) {
  m_files.Put("in.dat", "1\n2\n3\n");
  Network network = MakeRecall(1, 1);
  ASSERT_TRUE(Count(network).ok());
  EXPECT_EQ(m_count.records, 3);
  network.RecallTargName = "targ.dat";  // not looked at as long as targets are not set
  network.RecallTargCol = 1;
  EXPECT_TRUE(Count(network).ok());
  network.RecallTargets = true;
  EXPECT_EQ(Count(network).message(), "Invalid Target/Output Node Training File");
  m_files.Put("targ.dat", "1\n2\n");
  EXPECT_EQ(Count(network).message(), "Number Inputs and Targets are Not Equal");
}

TEST_F(PatternCountTest, TellsOfALastRecordWithoutALineEndInEachFile) {
  m_files.Put("in.dat", "1\n2\n3");
  m_files.Put("targ.dat", "1\n2\n3");
  ASSERT_TRUE(Count(MakeNetwork(1, 1)).ok());
  EXPECT_EQ(m_count.records, 2);
  EXPECT_THAT(m_notices, ElementsAre("The last line of in.dat has no line end and is not read",
                                     "The last line of targ.dat has no line end and is not read"));
}

TEST_F(PatternCountTest, TellsOnceOfAFileThatHoldsInputsAndTargets) {
  m_files.Put("in.dat", "1 2\n3 4");
  Network network = MakeNetwork(1, 1);
  network.TargName = "in.dat";
  network.TargCol = 2;
  ASSERT_TRUE(Count(network).ok());
  EXPECT_THAT(m_notices, ElementsAre("The last line of in.dat has no line end and is not read"));
}

TEST_F(PatternCountTest, TellsOfTheLastRecordAlsoWhenItFails) {
  m_files.Put("in.dat", "1\n2");
  m_files.Put("targ.dat", "1\n2\n");
  EXPECT_EQ(Count(MakeNetwork(1, 1)).message(), "Number Inputs and Targets are Not Equal");
  EXPECT_THAT(m_notices, ElementsAre("The last line of in.dat has no line end and is not read"));
}

TEST_F(PatternCountTest, TellsNothingOfALastCommentWithoutALineEnd) {
  m_files.Put("in.dat", "1\n2\n# end");
  m_files.Put("targ.dat", "1\n2\n   ");
  ASSERT_TRUE(Count(MakeNetwork(1, 1)).ok());
  EXPECT_THAT(m_notices, IsEmpty());
}

TEST_F(PatternCountTest, AnswersForStartColumnsBeforeReadingAnything) {
  Network network = MakeNetwork(1, 1);  // neither file exists
  network.TargCol = 0;
  EXPECT_EQ(Count(network).message(), "Invalid start column specified for targets");
  network.PatCol = -7;
  EXPECT_EQ(Count(network).message(), "Invalid start column specified for inputs");
}

TEST_F(PatternCountTest, FailsForMoreInputNodesThanTheLongestRecordCanHold) {
  m_files.Put("in.dat", "# a comment that is long enough\n1\n1 2 3\n");
  m_files.Put("targ.dat", "1\n1\n");
  EXPECT_TRUE(Count(MakeNetwork(3, 1)).ok());
  EXPECT_EQ(Count(MakeNetwork(4, 1)).message(), "Insufficient input node data - Data record 1");
  Network network = MakeNetwork(2, 1);
  network.PatCol = 2;
  EXPECT_TRUE(Count(network).ok());
  network.PatCol = 3;
  EXPECT_EQ(Count(network).message(), "Insufficient input node data - Data record 1");
}

TEST_F(PatternCountTest, FailsForMoreOutputNodesThanTheLongestRecordCanHold) {
  m_files.Put("in.dat", "1 2 3 4\n");
  m_files.Put("targ.dat", "1 2 3\n");
  EXPECT_TRUE(Count(MakeNetwork(1, 3)).ok());
  EXPECT_EQ(Count(MakeNetwork(1, 4)).message(), "Insufficient target node data - Data record 1");
  Network network = MakeNetwork(1, 3);
  network.TargName = "in.dat";
  network.TargCol = 3;
  EXPECT_EQ(Count(network).message(), "Insufficient target node data - Data record 1");
}

TEST_F(PatternCountTest, StandsTheLargestNodeCountsAndColumns) {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  m_files.Put("in.dat", "1\n");
  m_files.Put("targ.dat", "1\n");
  Network network = MakeNetwork(kMost, 1);
  network.PatCol = kMost;
  EXPECT_EQ(Count(network).message(), "Insufficient input node data - Data record 1");
  network = MakeNetwork(1, kMost);
  network.TargCol = kMost;
  EXPECT_EQ(Count(network).message(), "Insufficient target node data - Data record 1");
  network.mode = Mode::kRecall;  // without targets their count is of no concern
  network.RecallPatName = "in.dat";
  EXPECT_TRUE(Count(network).ok());
}

}  // namespace
}  // namespace tarn
