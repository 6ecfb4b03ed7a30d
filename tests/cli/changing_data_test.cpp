#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "cli/cli_test.h"

// Data files that change or go while a network lives by them.

namespace tarn {
namespace {

class ChangingData : public CliTest {
 protected:
  void PutSplitNetwork() {
    PutNetwork();
    Do({"set", "test.net", "--test-method", "random", "--test-patterns", "3"});
    Do({"train", "test.net", "--seed", "1", "--quiet"});
  }
  RunResult Train() { return Run({"train", "test.net", "--seed", "1", "--quiet"}); }
  void Fails(const std::string& message) {
    const std::string before = Read("test.net");
    const RunResult result = Train();
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tarn-cli: " + message + "\n");
    EXPECT_EQ(Read("test.net"), before);
  }
};

TEST_F(ChangingData, HaveTheTestSetDrawnAnewWhenRecordsComeOrGo) {
  PutSplitNetwork();
  const std::string data = Read("data.txt");
  for (const std::string& changed : {data + "3 1 11\n", data.substr(0, data.rfind("2 2 9"))}) {
    Write("data.txt", changed);
    const RunResult result = Train();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tarn-cli: notice: Train set has changed - resetting test cases!\n");
    EXPECT_THAT(Read("test.net"),
                testing::HasSubstr("\nTESTPATTERNS:READ\n" + std::to_string(Lines(changed)) + " "));
  }
}

TEST_F(ChangingData, FailWhenColumnsGo) {
  PutSplitNetwork();
  Write("data.txt", "0 0\n1 0\n0 1\n");
  Fails("Insufficient target node data - Data record 1");
  Write("data.txt", "0 0 1\n1 0\n0 1 2\n");
  Fails("Insufficient target node data - Data record 2");
  Write("data.txt", "0\n1\n");
  Fails("Insufficient input node data - Data record 1");
}

TEST_F(ChangingData, FailWhenTheyGoOrBecomeAFolder) {
  PutSplitNetwork();
  std::filesystem::remove(Path("data.txt"));
  Fails("Invalid Input Node Training File - data.txt");
  std::filesystem::create_directory(Path("data.txt"));
  Fails("Invalid Input Node Training File - data.txt");
}

TEST_F(ChangingData, AreNotLookedAtAgainWhileTheNetworkTrains) {
  PutNetwork();
  PutNetwork("same.net");
  const std::vector<std::string> options = {"--iterations", "3000", "--seed", "1"};
  const auto arguments = [&](const char* name, const char* outputs) {
    std::vector<std::string> all = {"train", name, "--outputs", outputs};
    all.insert(all.end(), options.begin(), options.end());
    return all;
  };
  EXPECT_EQ(Run(arguments("same.net", "same.out")).status, 0);
  Program training(arguments("test.net", "test.out"), m_scene);
  ASSERT_TRUE(training.WaitForOutput("\n10 "));
  Write("data.txt", "no data\n");
  std::filesystem::remove(Path("data.txt"));
  EXPECT_EQ(training.Wait().status, 0);
  EXPECT_EQ(Read("test.net"), Read("same.net"));
  EXPECT_EQ(Read("test.out"), Read("same.out"));
}

}  // namespace
}  // namespace tarn
