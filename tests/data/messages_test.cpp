#include "data/messages.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

namespace tarn {
namespace {

// The sources of this module's tests but for this one.
std::string TestSources() {
  std::string text;
  const std::filesystem::path folder = std::filesystem::path(TARN_SOURCE_DIR) / "tests" / "data";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".cpp" || entry.path().filename() == "messages_test.cpp") {
      continue;
    }
    std::ifstream file(entry.path(), std::ios::binary);
    text.append(std::istreambuf_iterator<char>(file), {});
  }
  return text;
}

TEST(DataMessages, AreAllDifferent) {
  const std::set<std::string_view> different(kDataMessages.begin(), kDataMessages.end());
  EXPECT_EQ(different.size(), kDataMessages.size());
}

TEST(DataMessages, AreEachExpectedByATest) {
  const std::string sources = TestSources();
  for (std::string_view message : kDataMessages) {
    const std::string_view fixed = message.substr(0, message.find("%d"));
    EXPECT_NE(sources.find("\"" + std::string(fixed)), std::string::npos) << message;
  }
}

TEST(DataMessages, NameTheFileWhoseLastLineIsNotRead) {
  EXPECT_EQ(LastLineNotRead("a b.dat"), "The last line of a b.dat has no line end and is not read");
}

}  // namespace
}  // namespace tarn
