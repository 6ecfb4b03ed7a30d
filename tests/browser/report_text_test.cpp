#include "browser/report_text.h"

#include "browser/report_test.h"

namespace tarn {
namespace {

class ReportTextTest : public ReportTest {
 protected:
  void MakeReport(const std::vector<std::string>& lines) {
    ASSERT_TRUE(m_report.Create("/tmp").ok());
    for (const std::string& line : lines) m_report.Write(line);
    ASSERT_TRUE(m_report.Finish().ok());
    ASSERT_TRUE(m_text.Open(m_report.path()));
  }

  ReportFile m_report;
  TVirtText m_text;
};

TEST_F(ReportTextTest, ReadsAnyLineByItsNumber) {
  MakeReport({"zero", "one", "two"});
  EXPECT_EQ(m_text.line_count(), 3);
  EXPECT_EQ(m_text.Line(2), "two" + std::string(77, ' '));
  EXPECT_EQ(m_text.Line(0), "zero" + std::string(76, ' '));
  EXPECT_EQ(m_text.Line(1), "one" + std::string(77, ' '));
  EXPECT_EQ(m_text.Line(-1), "");
  EXPECT_EQ(m_text.Line(3), "");
}

TEST_F(ReportTextTest, CountsWholeRecordsOnly) {
  m_files.Put("/tmp/report", std::string(80, 'a') + std::string(79, 'b'));
  ASSERT_TRUE(m_text.Open("/tmp/report"));
  EXPECT_EQ(m_text.line_count(), 1);
  EXPECT_EQ(m_text.Line(1), "");
  EXPECT_FALSE(m_text.Open("/tmp/none"));
  EXPECT_EQ(m_text.line_count(), 0);
}

// Counts the bytes that are asked for.
class CountingFiles : public MemoryFiles {
 public:
  int64_t Read(Handle file, void* data, size_t size) override {
    const int64_t count = MemoryFiles::Read(file, data, size);
    bytes += count;
    return count;
  }

  int64_t bytes = 0;
};

TEST_F(ReportTextTest, ReadsNothingToOpenAndOneRecordForALine) {
  CountingFiles files;
  const ScopedFileLayer layer(files);
  files.Put("/tmp/report", std::string(80 * 10000, 'x'));
  TVirtText text;
  ASSERT_TRUE(text.Open("/tmp/report"));
  EXPECT_EQ(text.line_count(), 10000);
  EXPECT_EQ(files.bytes, 0);
  EXPECT_EQ(text.Line(9999), std::string(80, 'x'));
  EXPECT_EQ(files.bytes, 80);
}

TEST_F(ReportTextTest, ScrollsWithinTheReport) {
  MakeReport(std::vector<std::string>(50, "line"));
  EXPECT_EQ(m_text.ScrollRange(20), 30);
  EXPECT_EQ(m_text.ScrollRange(50), 0);
  EXPECT_EQ(m_text.ScrollRange(80), 0);
  m_text.ScrollTo(10, 20);
  EXPECT_EQ(m_text.first_visible(), 10);
  m_text.ScrollTo(49, 20);
  EXPECT_EQ(m_text.first_visible(), 30);
  m_text.ScrollTo(-5, 20);
  EXPECT_EQ(m_text.first_visible(), 0);
  m_text.ScrollTo(7, 80);
  EXPECT_EQ(m_text.first_visible(), 0);
}

TEST_F(ReportTextTest, IsSavedWithoutTrailingBlanks) {
  MakeReport({" a  b  ", " ", "", std::string(80, 'c')});
  ASSERT_TRUE(SaveReportText(m_text, "/home/saved.txt"));
  EXPECT_EQ(m_files.Get("/home/saved.txt").value(), " a  b\n\n\n" + std::string(80, 'c') + "\n");
}

TEST_F(ReportTextTest, LeavesTheOldFileWhereItCannotBeSaved) {
  MakeReport({"line", "line"});
  EXPECT_FALSE(SaveReportText(m_text, "/nowhere/saved.txt"));
  m_files.Put("/home/saved.txt", "old");
  // The report loses its second line behind the reader's back.
  const FileLayer::Handle file = Files().Open(m_report.path(), FileLayer::Mode::kAppend);
  ASSERT_TRUE(Files().Truncate(file, 80));
  Files().Close(file);
  EXPECT_EQ(m_text.line_count(), 2);
  EXPECT_FALSE(SaveReportText(m_text, "/home/saved.txt"));
  EXPECT_EQ(m_files.Get("/home/saved.txt").value(), "old");
}

TEST_F(ReportTextTest, StopsWhereItsTextIsRefused) {
  MakeReport({"one", "two", "three"});
  int taken = 0;
  EXPECT_FALSE(WriteReportText(m_text, [&taken](std::string_view) { return ++taken < 2; }));
  EXPECT_EQ(taken, 2);
}

}  // namespace
}  // namespace tarn
