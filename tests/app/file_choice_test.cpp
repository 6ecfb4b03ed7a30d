#include "app/file_choice.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

TEST(FileExtension, IsAddedToANameThatHasNone) {
  EXPECT_EQ(WithExtension("/home/me/iris", ".net"), "/home/me/iris.net");
  EXPECT_EQ(WithExtension("/home/me/iris.txt", ".net"), "/home/me/iris.txt");
  EXPECT_EQ(WithExtension("/home/my.nets/iris", ".net"), "/home/my.nets/iris.net");
  EXPECT_EQ(WithExtension("/home/me/ö", ".out"), "/home/me/ö.out");
}

TEST(FileExtension, IsThatOfTheFilterChosen) {
  EXPECT_EQ(ExtensionUnder(kExportPictureQuestion, 0), ".png");
  EXPECT_EQ(ExtensionUnder(kExportPictureQuestion, 1), ".svg");
  EXPECT_EQ(ExtensionUnder(kExportPictureQuestion, 2), ".png") << "there is no such filter";
  EXPECT_EQ(ExtensionUnder(kSaveReportQuestion, 0), ".txt");
}

TEST(FileExtension, IsTheQuestionsForAllFiles) {
  EXPECT_EQ(ExtensionUnder(kExportDataQuestion, 1), ".csv");
  EXPECT_EQ(ExtensionUnder(kInputDataQuestion, 0), "");
}

}  // namespace
}  // namespace tarn
