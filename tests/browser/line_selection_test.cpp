#include "browser/line_selection.h"

#include "browser/report_test.h"

namespace tarn {
namespace {

TEST(LineSelection, IsEmptyAtFirst) {
  const LineSelection selection;
  EXPECT_EQ(selection.count(), 0);
  EXPECT_EQ(selection.first(), 0);
  EXPECT_FALSE(selection.Contains(0));
}

TEST(LineSelection, IsTheLineThatTheCaretGoesTo) {
  LineSelection selection;
  MoveCaret(selection, 7, 10, false);
  EXPECT_EQ(selection, (LineSelection{7, 7}));
  EXPECT_EQ(selection.count(), 1);
  EXPECT_TRUE(selection.Contains(7));
  EXPECT_FALSE(selection.Contains(6));
  EXPECT_FALSE(selection.Contains(8));
}

TEST(LineSelection, IsExtendedFromItsAnchorInBothDirections) {
  LineSelection selection;
  MoveCaret(selection, 5, 10, false);
  MoveCaret(selection, 8, 10, true);
  EXPECT_EQ(selection.first(), 5);
  EXPECT_EQ(selection.count(), 4);
  MoveCaret(selection, 3, 10, true);
  EXPECT_EQ(selection.first(), 3);
  EXPECT_EQ(selection.count(), 3);
  EXPECT_TRUE(selection.Contains(5));
  EXPECT_FALSE(selection.Contains(6));
  MoveCaret(selection, 5, 10, true);
  EXPECT_EQ(selection.count(), 1);
}

TEST(LineSelection, BeginsAtTheCaretWhenItIsExtendedFirst) {
  LineSelection selection;
  MoveCaret(selection, 2, 10, true);
  EXPECT_EQ(selection, (LineSelection{0, 2}));
}

TEST(LineSelection, StaysWithinTheReport) {
  LineSelection selection;
  MoveCaret(selection, 10, 10, false);
  EXPECT_EQ(selection, (LineSelection{9, 9}));
  MoveCaret(selection, -3, 10, true);
  EXPECT_EQ(selection, (LineSelection{9, 0}));
  LineSelection none;
  MoveCaret(none, 3, 0, false);
  SelectAllLines(none, 0);
  EXPECT_EQ(none, LineSelection());
}

TEST(LineSelection, TakesAllLines) {
  LineSelection selection;
  SelectAllLines(selection, 5000000000);
  EXPECT_EQ(selection.count(), 5000000000);
  EXPECT_TRUE(selection.Contains(4999999999));
}

class SelectedText : public ReportTest {
 protected:
  // A report of that many lines, each filled with the letter.
  void MakeReport(size_t count, size_t length) {
    ASSERT_TRUE(m_report.Create("/tmp").ok());
    for (size_t i = 0; i < count; ++i) m_report.Write(std::string(length, 'x'));
    ASSERT_TRUE(m_report.Finish().ok());
    ASSERT_TRUE(m_text.Open(m_report.path()));
  }

  ReportFile m_report;
  TVirtText m_text;
  std::string m_copied = "before";
};

TEST_F(SelectedText, HasNoTrailingBlanks) {
  ASSERT_TRUE(m_report.Create("/tmp").ok());
  for (const char* line : {"one", " two  ", " ", "four"}) m_report.Write(line);
  ASSERT_TRUE(m_report.Finish().ok());
  ASSERT_TRUE(m_text.Open(m_report.path()));
  EXPECT_TRUE(ReadSelectedText(m_text, {2, 1}, m_copied).ok());
  EXPECT_EQ(m_copied, " two\n\n");
  EXPECT_TRUE(ReadSelectedText(m_text, {0, 3}, m_copied).ok());
  EXPECT_EQ(m_copied, "one\n two\n\nfour\n");
  EXPECT_TRUE(ReadSelectedText(m_text, {}, m_copied).ok());
  EXPECT_EQ(m_copied, "");
}

TEST_F(SelectedText, HasALimit) {
  const auto fitting = static_cast<int64_t>(kMostCopied / 81);
  MakeReport(kMostCopied / 81 + 1, 80);
  EXPECT_TRUE(ReadSelectedText(m_text, {0, fitting - 1}, m_copied).ok());
  EXPECT_EQ(m_copied.size(), kMostCopied / 81 * 81);
  EXPECT_EQ(ReadSelectedText(m_text, {0, fitting}, m_copied).message(),
            "Too many lines to copy: save the report as a text file instead");
  EXPECT_EQ(m_copied, "");
}

TEST_F(SelectedText, IsNoneWhenTheReportCannotBeRead) {
  MakeReport(3, 10);
  EXPECT_EQ(ReadSelectedText(m_text, {3, 3}, m_copied).message(), "The report file cannot be read");
  EXPECT_EQ(m_copied, "");
}

}  // namespace
}  // namespace tarn
