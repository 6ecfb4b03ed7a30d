#include "browser/print_pages.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

TEST(PrintPages, FillsAPageFromTheHeightOfALine) {
  const PrintPages pages(100, 640.0, 10.0);
  EXPECT_EQ(pages.lines_per_page(), 62);
  EXPECT_EQ(pages.page_count(), 2);
  EXPECT_EQ(pages.FirstLine(1), 0);
  EXPECT_EQ(pages.LineCount(1), 62);
  EXPECT_EQ(pages.FirstLine(2), 62);
  EXPECT_EQ(pages.LineCount(2), 38);
  EXPECT_EQ(PrintPages(100, 639.9, 10.0).lines_per_page(), 61);
}

TEST(PrintPages, TakesNoPageMoreThanItNeeds) {
  EXPECT_EQ(PrintPages(62, 640.0, 10.0).page_count(), 1);
  EXPECT_EQ(PrintPages(63, 640.0, 10.0).page_count(), 2);
  EXPECT_EQ(PrintPages(124, 640.0, 10.0).page_count(), 2);
}

TEST(PrintPages, AnEmptyReportHasOneEmptyPage) {
  const PrintPages pages(0, 640.0, 10.0);
  EXPECT_EQ(pages.page_count(), 1);
  EXPECT_EQ(pages.LineCount(1), 0);
}

TEST(PrintPages, HasRoomForALineAtLeast) {
  const PrintPages pages(3, 20.0, 10.0);
  EXPECT_EQ(pages.lines_per_page(), 1);
  EXPECT_EQ(pages.page_count(), 3);
  EXPECT_EQ(pages.LineCount(3), 1);
}

TEST(PrintPages, CountsALineThatEndsWithThePage) {
  ASSERT_LT(0.6 / 0.1, 6.0);
  EXPECT_EQ(PrintPages(100, 0.6, 0.1).lines_per_page(), 4);
  EXPECT_EQ(PrintPages(100, 0.59, 0.1).lines_per_page(), 3);
}

TEST(PrintPages, HasALimitToTheLinesOfAPage) {
  EXPECT_EQ(PrintPages(100000, 1e9, 1.0).lines_per_page(), 10000);
  EXPECT_EQ(PrintPages(100000, 1e9, 1.0).page_count(), 10);
  EXPECT_EQ(PrintPages(100000, 1e300, 1e-300).page_count(), 10);
}

TEST(PrintPages, CountsLongReports) {
  const PrintPages pages(10000000, 640.0, 10.0);
  EXPECT_EQ(pages.page_count(), 161291);
  EXPECT_EQ(pages.FirstLine(161291), 9999980);
  EXPECT_EQ(pages.LineCount(161291), 20);
}

TEST(PrintPages, HeadsAPageWithCaptionAndNumber) {
  const PrintPages pages(100, 640.0, 10.0);
  EXPECT_EQ(pages.Header("Network Statistics", 2),
            "Network Statistics" + std::string(51, ' ') + "Page 2 of 2");
  EXPECT_EQ(pages.Header(std::string(100, 'c'), 1), std::string(68, 'c') + " Page 1 of 2");
}

}  // namespace
}  // namespace tarn
