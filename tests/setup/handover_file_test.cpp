#include "setup/handover_file.h"

#include <gtest/gtest.h>
#include <string>

#include "setup/data_file_name.h"
#include "setup/setup_fixture.h"

namespace tarn {
namespace {

TEST(HandOverFile, MissingIsAnsweredWithAMessage) {
  const SetupFiles files;
  Message message;
  EXPECT_FALSE(TakeHandOver(files.Missing("TABULO.TBI"), message).has_value());
  EXPECT_EQ(message.caption, "Invalid Tarn Request");
  EXPECT_EQ(message.text, "No file saved durring Tabulo session!");
  EXPECT_EQ(message.icon, MessageIcon::kExclamation);
}

TEST(HandOverFile, GivesPathAndColumnAndIsDeleted) {
  const SetupFiles files;
  const std::string path = files.Make("TABULO.TBI", "c:\\my data\\a.txt\r\n5\r\n");
  Message message;
  const std::optional<HandOver> handover = TakeHandOver(path, message);
  ASSERT_TRUE(handover.has_value());
  EXPECT_EQ(handover->path, "c:\\my data\\a.txt");
  EXPECT_EQ(handover->target_column, 5);
  EXPECT_TRUE(message.text.empty());
  EXPECT_FALSE(IsReadableFile(path));
}

TEST(HandOverFile, WithoutAColumnHoldsNoTargets) {
  const SetupFiles files;
  Message message;
  for (const char* text : {"a.txt", "a.txt\n", "a.txt\nfive\n"}) {
    const std::optional<HandOver> handover = TakeHandOver(files.Make("TABULO.TBI", text), message);
    ASSERT_TRUE(handover.has_value());
    EXPECT_EQ(handover->path, "a.txt");
    EXPECT_EQ(handover->target_column, 0);
  }
}

TEST(HandOverFile, EmptyGivesAnEmptyPath) {
  const SetupFiles files;
  Message message;
  const std::optional<HandOver> handover = TakeHandOver(files.Make("TABULO.TBI", ""), message);
  ASSERT_TRUE(handover.has_value());
  EXPECT_EQ(handover->path, "");
  EXPECT_EQ(handover->target_column, 0);
}

TEST(HandOverFile, ReadsTheColumnBehindALineThatIsTooLong) {
  const SetupFiles files;
  Message message;
  for (const size_t length : {254U, 255U, 1000U}) {
    const std::string text = std::string(length, '7') + "\n3\n";
    const std::optional<HandOver> handover = TakeHandOver(files.Make("TABULO.TBI", text), message);
    ASSERT_TRUE(handover.has_value());
    EXPECT_EQ(handover->path, std::string(254, '7'));
    EXPECT_EQ(handover->target_column, 3);
  }
}

}  // namespace
}  // namespace tarn
