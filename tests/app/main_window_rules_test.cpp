#include "app/main_window_rules.h"

#include <gtest/gtest.h>
#include <string>

namespace tarn {
namespace {

TEST(FrameCaption, NamesTheNetworkFile) {
  EXPECT_EQ(FrameCaption("/home/me/iris.net"), "Tarn - /home/me/iris.net");
  EXPECT_EQ(FrameCaption("/home/me/UNTITLED.NE_"), "Tarn - UNTITLED");
  EXPECT_EQ(FrameCaption("untitled.ne_"), "Tarn - UNTITLED");
}

TEST(FrameCaption, KeepsFrontAndEndOfALongPath) {
  const std::string exact = "/home/" + std::string(49, 'n') + ".net/";
  ASSERT_EQ(exact.size(), 60U);
  EXPECT_EQ(FrameCaption(exact), "Tarn - " + exact);
  const std::string longer = "/home/" + std::string(100, 'n') + "/iris.net";
  const std::string caption = FrameCaption(longer);
  EXPECT_EQ(caption.size(), 7U + 60U);
  EXPECT_TRUE(caption.starts_with("Tarn - /home/...nnn")) << caption;
  EXPECT_TRUE(caption.ends_with("nnn/iris.net")) << caption;
  EXPECT_TRUE(FrameCaption("C:\\Users\\" + longer).starts_with("Tarn - C:\\Users\\..."));
}

TEST(FrameCaption, ShortensAPathWithoutFoldersAtItsEnd) {
  const std::string caption = FrameCaption(std::string(100, 'n') + ".net");
  EXPECT_EQ(caption, "Tarn - ..." + std::string(53, 'n') + ".net");
  const std::string folder = FrameCaption("/" + std::string(100, 'f') + "/iris.net");
  EXPECT_EQ(folder, "Tarn - ..." + std::string(48, 'f') + "/iris.net");
}

TEST(FrameCaption, CutsNoCharacterInHalf) {
  std::string name = "/home/";
  for (int i = 0; i < 100; ++i) name += "ß";
  std::string end;
  for (int i = 0; i < 51; ++i) end += "ß";
  EXPECT_EQ(FrameCaption(name), "Tarn - /home/..." + end);
}

TEST(SavePrompt, AsksForUnsavedTrainingOfTwoIterationsAtLeast) {
  Network network;
  network.iteration = 2;
  EXPECT_TRUE(AsksToSave(network, false));
  EXPECT_FALSE(AsksToSave(network, true));
  network.iteration = 1;
  EXPECT_FALSE(AsksToSave(network, false));
  network.iteration = 5;
  network.mode = Mode::kRecall;
  EXPECT_FALSE(AsksToSave(network, false));
}

TEST(RunCheck, WantsAMode) {
  const std::optional<Message> message = CheckRun(RunMode::kNone, {});
  ASSERT_TRUE(message);
  EXPECT_EQ(message->caption, "Select Mode");
  EXPECT_EQ(message->text, "Select Recall or Training Execution Mode!");
  EXPECT_FALSE(CheckRun(RunMode::kTraining, {}));
}

TEST(RunCheck, WantsATrainedNetworkForRecall) {
  Network network;
  const std::optional<Message> message = CheckRun(RunMode::kRecall, network);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->caption, "Selection Error");
  EXPECT_EQ(message->text, "Untrained Networks Cannot be used for Recall!");
  network.trained = true;
  EXPECT_FALSE(CheckRun(RunMode::kRecall, network));
}

}  // namespace
}  // namespace tarn
