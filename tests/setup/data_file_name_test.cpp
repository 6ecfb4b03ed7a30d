#include "setup/data_file_name.h"

#include <gtest/gtest.h>
#include <string>

#include "setup/setup_fixture.h"
#include "support/slashes.h"

namespace tarn {
namespace {

// A path of exactly `size` bytes that the system takes for the same file.
std::string Lengthened(const std::string& path, size_t size) {
  std::string longer = Slashes(path);
  const size_t slash = longer.find_last_of('/');
  while (longer.size() + 2 <= size) longer.insert(slash, "/.");
  if (longer.size() < size) longer.insert(slash, "/");
  return longer;
}

TEST(ReadableFile, IsOneThatOpens) {
  const SetupFiles files;
  EXPECT_TRUE(IsReadableFile(files.Make("a.txt")));
  EXPECT_TRUE(IsReadableFile(files.Make("empty.txt", "")));
  EXPECT_FALSE(IsReadableFile(files.Missing("b.txt")));
  EXPECT_FALSE(IsReadableFile(""));
}

TEST(ReadableFile, IsNoFolder) {
  const SetupFiles files;
  EXPECT_FALSE(IsReadableFile(files.Missing("")));
}

TEST(ReadableFile, IsNotTheFileThatANameWithAZeroByteBeginsWith) {
  const SetupFiles files;
  EXPECT_FALSE(IsReadableFile(files.Make("a.txt") + std::string("\0x", 2)));
}

TEST(ReadableDataFile, HasANameOfAtMost254Bytes) {
  const SetupFiles files;
  const std::string path = files.Make("a.txt");
  ASSERT_EQ(Lengthened(path, 254).size(), 254U);
  EXPECT_TRUE(IsReadableDataFile(path));
  EXPECT_TRUE(IsReadableDataFile(Lengthened(path, 254)));
  EXPECT_TRUE(IsReadableFile(Lengthened(path, 255)));
  EXPECT_FALSE(IsReadableDataFile(Lengthened(path, 255)));
}

}  // namespace
}  // namespace tarn
