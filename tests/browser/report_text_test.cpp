#include "browser/report_text.h"

#include "browser/report_test.h"
#include "support/faulty_files.h"

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

  // The report loses all but its first line behind the reader's back.
  void CutToOneLine() {
    const FileLayer::Handle file = Files().Open(m_report.path(), FileLayer::Mode::kAppend);
    ASSERT_TRUE(Files().Truncate(file, 80));
    Files().Close(file);
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

TEST_F(ReportTextTest, IsShownAsValidText) {
  EXPECT_EQ(DisplayText(" Net a\t\x01  "), " Net a  ");
  EXPECT_EQ(DisplayText("Gr\xC3\xB6\xC3\x9Fn"), "Gr\xC3\xB6\xC3\x9Fn");
  EXPECT_EQ(DisplayText("Gr\xF6\xDFn"), "Gr\xEF\xBF\xBD\xEF\xBF\xBDn");
  EXPECT_EQ(DisplayText(std::string_view("a\0b", 3)), "a b");
  EXPECT_EQ(DisplayText("   "), "");
}

TEST_F(ReportTextTest, LeavesTheOldFileWhereItCannotBeSaved) {
  MakeReport({"line", "line"});
  EXPECT_FALSE(SaveReportText(m_text, "/nowhere/saved.txt"));
  m_files.Put("/home/saved.txt", "old");
  CutToOneLine();
  EXPECT_EQ(m_text.line_count(), 2);
  EXPECT_FALSE(SaveReportText(m_text, "/home/saved.txt"));
  EXPECT_EQ(m_files.Get("/home/saved.txt").value(), "old");
}

TEST_F(ReportTextTest, StopsWhereItsTextIsRefused) {
  MakeReport({"one", "two", "three"});
  int taken = 0;
  EXPECT_TRUE(WriteReportText(m_text, [&taken](std::string_view) { return ++taken < 2; }).ok());
  EXPECT_EQ(taken, 2);
}

TEST_F(ReportTextTest, IsReadInBlocksWithoutLosingALine) {
  std::vector<std::string> lines;
  std::string expected;
  for (int i = 0; i < 2000; ++i) {
    lines.push_back(std::to_string(i));
    expected += lines.back() + "\n";
  }
  MakeReport(lines);
  EXPECT_EQ(m_text.Lines(1998, 5).size(), 160U);
  EXPECT_EQ(m_text.Lines(2000, 1), "");
  EXPECT_EQ(m_text.Lines(5, 0), "");
  std::string text;
  EXPECT_TRUE(WriteReportText(m_text, [&text](std::string_view line) {
                text += line;
                return true;
              }).ok());
  EXPECT_EQ(text, expected);
}

TEST_F(ReportTextTest, IsNotOpenedWhenItsLengthCannotBeTold) {
  m_files.Put("/tmp/report", std::string(80, 'a'));
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  faulty.FailAt(2, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
  EXPECT_FALSE(m_text.Open("/tmp/report"));
  EXPECT_EQ(faulty.Failures(), 1);
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(ReportTextTest, TellsThatAReportCannotBeRead) {
  MakeReport({"line", "line"});
  CutToOneLine();
  const Status written = WriteReportText(m_text, [](std::string_view) { return true; });
  EXPECT_EQ(written.message(), "The report file cannot be read");
}

}  // namespace
}  // namespace tarn
