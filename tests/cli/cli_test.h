#pragma once

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "cli/program.h"
#include "support/temp_folder.h"

namespace tarn {

inline constexpr std::string_view kFiguresHeader =
    "iteration rms-train rms-test eta correlation-train correlation-test within-train "
    "within-test\n";

inline const std::string kNotReadBackText =
    "The file of this network could not be read back: a value of it is infinite or not a number, "
    "or a name begins like a section or a snapshot";

// Runs tarn-cli in a folder of its own, with temporary files in another; that one has to be
// empty when a test ends.
class CliTest : public testing::Test {
 protected:
  CliTest() {
    for (const char* name : {"work", "temporary", "output"}) {
      std::filesystem::create_directory(m_all / name);
    }
    m_scene.folder = m_all / "work";
    m_scene.output_folder = m_all / "output";
    m_scene.environment["TMPDIR"] = m_all / "temporary";
  }
  ~CliTest() override { EXPECT_EQ(NamesIn(m_all / "temporary"), m_left_over); }

  RunResult Run(const std::vector<std::string>& arguments) {
    return Program(arguments, m_scene).Wait();
  }
  // A run that has to do its work without a word on stderr.
  void Do(const std::vector<std::string>& arguments) {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
  }

  std::string Path(std::string_view name) const { return m_scene.folder + "/" + std::string(name); }
  std::string Read(std::string_view name) const { return ReadFile(Path(name)); }
  void Write(std::string_view name, std::string_view bytes) const { WriteFile(Path(name), bytes); }
  // Of test.net, counted from 1.
  void SetLine(int number, const std::string& line) const {
    std::string text = Read("test.net");
    size_t begin = 0;
    for (int i = 1; i < number; ++i) begin = text.find('\n', begin) + 1;
    Write("test.net", text.replace(begin, text.find('\n', begin) - begin, line));
  }
  bool Exists(std::string_view name) const { return std::filesystem::exists(Path(name)); }

  static std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  // data.txt and a network of 2-3-1 nodes over it: 20 iterations, figures every 10, snapshots
  // every 5, 3 of 10 patterns as the test set.
  void PutNetwork(const std::string& name = "test.net") {
    Write("data.txt", "0 0 1\n1 0 2\n0 1 3\n1 1 4\n2 0 5\n0 2 6\n2 1 7\n1 2 8\n2 2 9\n3 0 10\n");
    Write(name,
          "TARNV2.1\nTest\n3\n2 3 1 0 0 \n0.000000 0.100000 0.010000 0.300000 0.500000 "
          "2.000000\n20\n100 10\n5 0\ndata.txt\n1\n1 1\ndata.txt\n3\n3 3\n"
          "WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n");
  }
  void PutTrainedNetwork(const std::string& name = "test.net") {
    PutNetwork(name);
    Do({"train", name, "--seed", "1", "--quiet"});
  }

  static int Lines(std::string_view text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  }

  Program::Scene m_scene;
  std::vector<std::string> m_left_over;  // names that may stay among the temporary files

 private:
  TempFolder m_all;
};

}  // namespace tarn
