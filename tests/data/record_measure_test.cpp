#include "data/record_measure.h"

#include <algorithm>
#include <cstring>

#include "data_test.h"

namespace tarn {
namespace {

class RecordMeasureTest : public DataTest {
 protected:
  MeasureResult Measure(std::string_view content) {
    m_files.Put("data", content);
    return MeasureRecords("data", m_measure);
  }

  FileMeasure m_measure;
};

// A layer in which every file is one line of the same character without an end.
class EndlessFiles : public MemoryFiles {
 public:
  explicit EndlessFiles(char c) : m_c(c) {}
  int64_t Read(Handle, void* data, size_t size) override {
    std::memset(data, m_c, size);
    m_read += size;
    return static_cast<int64_t>(size);
  }
  size_t BytesRead() const { return m_read; }

 private:
  char m_c;
  size_t m_read = 0;
};

TEST_F(RecordMeasureTest, CountsDataRecordsOnly) {
  ASSERT_EQ(Measure("# head\n1 2\n\n  \n3 4\n # end\n5 6\n"), MeasureResult::kDone);
  EXPECT_EQ(m_measure.records, 3);
  EXPECT_FALSE(m_measure.unended_record);
}

TEST_F(RecordMeasureTest, FindsNoRecordInAnEmptyFileOrInCommentsAlone) {
  for (const char* content : {"", "\n", "# only\n\n", "#", "   ",
                              "\x1A"
                              "1 2\n"}) {
    ASSERT_EQ(Measure(content), MeasureResult::kDone);
    EXPECT_EQ(m_measure.records, 0) << content;
    EXPECT_FALSE(m_measure.unended_record) << content;
  }
}

TEST_F(RecordMeasureTest, LeavesOutALastRecordWithoutALineEnd) {
  for (const char* content : {"1\n2\n3", "1\n2\n  3",
                              "1\n2\n3\x1A"
                              "4\n"}) {
    ASSERT_EQ(Measure(content), MeasureResult::kDone);
    EXPECT_EQ(m_measure.records, 2) << content;
    EXPECT_TRUE(m_measure.unended_record) << content;
  }
}

TEST_F(RecordMeasureTest, TakesNoNoteOfALastCommentOrBlankLineWithoutALineEnd) {
  for (const char* content : {"1\n2\n# 3", "1\n2\n  ",
                              "1\n2\n\x1A"
                              "3"}) {
    ASSERT_EQ(Measure(content), MeasureResult::kDone);
    EXPECT_EQ(m_measure.records, 2) << content;
    EXPECT_FALSE(m_measure.unended_record) << content;
  }
}

TEST_F(RecordMeasureTest, MeasuresTheLongestLineUpToTheLastRecord) {
  ASSERT_EQ(Measure("1 2\n# comment\n3 4 5\n# a long last comment\n"), MeasureResult::kDone);
  EXPECT_EQ(m_measure.longest_line, 9U);
  EXPECT_EQ(m_measure.longest_record, 5U);
}

TEST_F(RecordMeasureTest, MeasuresCrLfFilesLikeOthers) {
  ASSERT_EQ(Measure("# comment\r\n1 2\r\n\r\n3 4 5\r\n"), MeasureResult::kDone);
  EXPECT_EQ(m_measure.records, 2);
  EXPECT_EQ(m_measure.longest_line, 9U);
  EXPECT_EQ(m_measure.longest_record, 5U);
}

TEST_F(RecordMeasureTest, TakesLinesUpTo999999Characters) {
  const std::string fill(999'998, '1');
  for (const std::string& line : {"1" + fill, "#" + fill, " " + std::string(999'998, ' ')}) {
    for (const char* end : {"\n", "\r\n"}) {
      ASSERT_EQ(Measure(line + end + "1\n"), MeasureResult::kDone);
      EXPECT_EQ(m_measure.longest_line, 999'999U);
      EXPECT_EQ(m_measure.records, line[0] == '1' ? 2 : 1);
    }
    EXPECT_EQ(Measure("1\n" + line), MeasureResult::kDone);
    EXPECT_EQ(m_measure.records, 1);
  }
}

TEST_F(RecordMeasureTest, RefusesALineOfAMillionCharacters) {
  const std::string fill(999'999, '1');
  for (const std::string& line : {"1" + fill, "#" + fill, " " + std::string(999'999, ' ')}) {
    for (const char* end : {"\n", "\r\n", ""}) {
      EXPECT_EQ(Measure("1\n" + line + end), MeasureResult::kLineTooLong);
    }
  }
}

TEST_F(RecordMeasureTest, SaysWhenTheFileCannotBeOpened) {
  EXPECT_EQ(MeasureRecords("missing", m_measure), MeasureResult::kNotRead);
}

TEST_F(RecordMeasureTest, StopsEarlyInALineThatNeverEnds) {
  for (char c : {'1', '#', ' ', '\0', '\r'}) {
    EndlessFiles files(c);
    files.Put("/endless", "");
    const ScopedFileLayer layer(files);
    EXPECT_EQ(MeasureRecords("/endless", m_measure), MeasureResult::kLineTooLong);
    EXPECT_LT(files.BytesRead(), 4'000'000U);
  }
}

TEST_F(RecordMeasureTest, CountsMoreThan65536Records) {
  std::string content;
  for (int i = 0; i < 70'000; ++i) content += "1 2 3\n";
  ASSERT_EQ(Measure(content), MeasureResult::kDone);
  EXPECT_EQ(m_measure.records, 70'000);
}

}  // namespace
}  // namespace tarn
