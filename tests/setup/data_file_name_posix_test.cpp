// Names that only POSIX systems let a file have.

#include <gtest/gtest.h>
#include <string>

#include "setup/data_file_name.h"
#include "setup/setup_fixture.h"

namespace tarn {
namespace {

TEST(ReadableDataFile, HasANameOfOneLine) {
  const SetupFiles files;
  for (const char* name : {"a\nb", "a\rb",
                           "a\x1A"
                           "b"}) {
    const std::string path = files.Make(name);
    EXPECT_TRUE(IsReadableFile(path));
    EXPECT_FALSE(IsReadableDataFile(path));
  }
}

}  // namespace
}  // namespace tarn
