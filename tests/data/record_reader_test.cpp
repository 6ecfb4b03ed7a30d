#include "data/record_reader.h"

#include <limits>

#include "data_test.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordReaderTest : public DataTest {
 protected:
  void Open(std::string_view content, size_t buffer_size = 100) {
    m_files.Put("data", content);
    ASSERT_TRUE(m_reader.Reserve(buffer_size));
    ASSERT_TRUE(m_reader.Open("data"));
  }
  std::vector<std::string> Records() {
    std::vector<std::string> records;
    std::string_view record;
    while (m_reader.NextRecord(record)) records.emplace_back(record);
    return records;
  }
  std::vector<std::string> Comments() {
    std::vector<std::string> comments;
    std::string_view comment;
    while (m_reader.NextComment(comment)) comments.emplace_back(comment);
    return comments;
  }

  RecordReader m_reader;
};

TEST_F(RecordReaderTest, TellsTheKindOfALineByItsFirstCharacter) {
  EXPECT_EQ(KindOfLine(""), LineKind::kBlank);
  EXPECT_EQ(KindOfLine(" \t\v\f\r"), LineKind::kBlank);
  EXPECT_EQ(KindOfLine("#"), LineKind::kComment);
  EXPECT_EQ(KindOfLine(" \t# 1 2"), LineKind::kComment);
  EXPECT_EQ(KindOfLine("1 # 2"), LineKind::kRecord);
  EXPECT_EQ(KindOfLine("  x"), LineKind::kRecord);
  EXPECT_EQ(KindOfLine(","), LineKind::kRecord);
  EXPECT_EQ(KindOfLine(",#"), LineKind::kRecord);
  EXPECT_EQ(KindOfLine(std::string_view("\0", 1)), LineKind::kRecord);
}

TEST_F(RecordReaderTest, SkipsBlankLinesAndComments) {
  Open("# head\n\n1\n  \t\n2\n#3\n 4\n");
  EXPECT_THAT(Records(), ElementsAre("1", "2", " 4"));
}

TEST_F(RecordReaderTest, ReadsLinesThatEndWithCrLf) {
  Open("# head\r\n\r\n1 2\r\n3 4\r\n");
  EXPECT_THAT(Records(), ElementsAre("1 2", "3 4"));
}

TEST_F(RecordReaderTest, EndsAtALineWithoutALineEnd) {
  Open("1\n2");
  EXPECT_THAT(Records(), ElementsAre("1"));
}

TEST_F(RecordReaderTest, EndsAtACtrlZ) {
  Open(
      "1\n2\n\x1A"
      "3\n4\n");
  EXPECT_THAT(Records(), ElementsAre("1", "2"));
}

TEST_F(RecordReaderTest, EndsAtALineThatDoesNotFitTheBuffer) {
  // Room for three characters, the line feed and a terminator.
  Open("123\n4567\n8\n", 5);
  EXPECT_THAT(Records(), ElementsAre("123"));
}

TEST_F(RecordReaderTest, EndsAtACommentThatDoesNotFitTheBuffer) {
  Open("1\n# no\n2\n", 5);
  EXPECT_THAT(Records(), ElementsAre("1"));
}

TEST_F(RecordReaderTest, FindsNothingInABufferWithoutRoom) {
  for (size_t size : {0U, 1U, 2U}) {
    Open("1\n2\n", size);
    EXPECT_THAT(Records(), IsEmpty());
  }
}

TEST_F(RecordReaderTest, GivesTheCommentsBeforeTheFirstRecord) {
  Open("\n  # a\n#b\n\n1 2\n# c\n");
  EXPECT_THAT(Comments(), ElementsAre("# a", "#b"));
}

TEST_F(RecordReaderTest, StartsOverAfterRewind) {
  Open("# a\n1\n2\n");
  EXPECT_THAT(Records(), ElementsAre("1", "2"));
  m_reader.Rewind();
  EXPECT_THAT(Comments(), ElementsAre("# a"));
}

TEST_F(RecordReaderTest, RefusesABufferThatNoMemoryHolds) {
  EXPECT_FALSE(m_reader.Reserve(std::numeric_limits<size_t>::max()));
}

}  // namespace
}  // namespace tarn
