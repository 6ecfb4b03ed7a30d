#include "netgraph/messages.h"

#include <gtest/gtest.h>

namespace tarn {
namespace {

TEST(NetGraphMessages, OfTheWindowAreItsWords) {
  EXPECT_EQ(kNetGraphCaption, "NetGraph");
  EXPECT_EQ(kNetGraphErrorCaption, "NetGraph Error");
  EXPECT_EQ(kZoomHint, "Drag from TOP/LEFT to BOTTOM/RIGHT");
  EXPECT_EQ(kGraphNotCopied, "The graph cannot be copied");
  EXPECT_EQ(kPictureSizeCaption, "Export Picture");
  EXPECT_EQ(kPictureSizePrompt, "Width x Height in pixels:");
}

}  // namespace
}  // namespace tarn
