#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "message_tests.h"

namespace tarn {
namespace {

// Every text that a user can be shown, of all modules.
std::vector<std::string_view> AllMessages() {
  std::vector<std::string_view> all;
  const auto add = [&](const auto& table) {
    for (const std::string_view message : table) all.push_back(message);
  };
  add(kEngineMessages);
  add(kNetFileMessages);
  add(kDataMessages);
  add(kSetupMessages);
  add(kBrowserMessages);
  add(kNetGraphMessages);
  add(kAppMessages);
  return all;
}

const testing::TestInfo* FindTest(std::string_view name) {
  const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
  for (int i = 0; i < tests.total_test_suite_count(); ++i) {
    const testing::TestSuite& suite = *tests.GetTestSuite(i);
    for (int j = 0; j < suite.total_test_count(); ++j) {
      const testing::TestInfo* test = suite.GetTestInfo(j);
      if (name == std::string(suite.name()) + "." + test->name()) return test;
    }
  }
  return nullptr;
}

// The source of a test up to the next one, with literals that go on in the next line joined.
std::string BodyOf(const testing::TestInfo& test) {
  std::ifstream file(test.file());
  EXPECT_TRUE(file.is_open()) << test.file();
  std::string body, line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (number < test.line()) continue;
    if (number > test.line() && line.starts_with("TEST")) break;
    const size_t text = std::min(line.find_first_not_of(' '), line.size());
    if (body.ends_with('"') && text < line.size() && line[text] == '"') {
      body.pop_back();
      body.append(line, text + 1);
    } else {
      body.append("\n").append(line);
    }
  }
  return body;
}

// What of a message stands in every source that quotes it: the longest piece between two
// conversions of a format, with quotes and backslashes escaped.
std::string QuotedPart(std::string_view message) {
  std::string_view longest;
  while (true) {
    const size_t percent = std::min(message.find('%'), message.size());
    if (percent > longest.size()) longest = message.substr(0, percent);
    if (percent == message.size()) break;
    const size_t end = message.find_first_of("dsfc%", percent + 1);
    message.remove_prefix(end == std::string_view::npos ? message.size() : end + 1);
  }
  std::string quoted;
  for (const char c : longest) {
    if (c == '"' || c == '\\') quoted.push_back('\\');
    quoted.push_back(c);
  }
  return quoted;
}

TEST(MessageTable, NamesATestForEveryMessage) {
  for (const std::string_view message : AllMessages()) {
    const bool named = std::any_of(kMessageTests.begin(), kMessageTests.end(),
                                   [&](const MessageTest& row) { return row.message == message; });
    EXPECT_TRUE(named) << message;
  }
}

TEST(MessageTable, NamesNoMessageThatNoModuleHas) {
  const std::vector<std::string_view> all = AllMessages();
  for (const MessageTest& row : kMessageTests) {
    EXPECT_NE(std::find(all.begin(), all.end(), row.message), all.end()) << row.message;
  }
}

TEST(MessageTable, NamesOnlyTestsThatExist) {
  for (const MessageTest& row : kMessageTests) {
    EXPECT_NE(FindTest(row.test), nullptr) << row.test << " for: " << row.message;
  }
}

TEST(MessageTable, NamesTestsThatQuoteTheirMessage) {
  for (const MessageTest& row : kMessageTests) {
    const testing::TestInfo* test = FindTest(row.test);
    if (test == nullptr) continue;
    const std::string quoted = QuotedPart(row.message);
    ASSERT_FALSE(quoted.empty()) << row.message;
    EXPECT_NE(BodyOf(*test).find(quoted), std::string::npos) << row.test << " for: " << row.message;
  }
}

TEST(MessageTable, TellsTheQuotedPartOfAFormat) {
  EXPECT_EQ(QuotedPart("File Not Found!"), "File Not Found!");
  EXPECT_EQ(QuotedPart("Data record %d"), "Data record ");
  EXPECT_EQ(QuotedPart("--%s takes on or off, not \"%s\""), " takes on or off, not \\\"");
  EXPECT_EQ(QuotedPart("%ld of all"), " of all");
}

}  // namespace
}  // namespace tarn
