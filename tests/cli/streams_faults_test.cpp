#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "cli/cli_test.h"

namespace tarn {
namespace {

constexpr const char* kNotWritten = "tarn-cli: the results could not be written\n";

// Standard streams that take nothing, or are not there.
class Streams : public CliTest {
 protected:
  Streams() { PutTrainedNetwork(); }

  // Runs through a shell, with redirections behind the words; the exit status.
  int Shell(const std::string& words) const {
    const std::string command = "cd '" + m_scene.folder + "' && TMPDIR='" +
                                m_scene.environment.at("TMPDIR") + "' '" TARN_CLI "' " + words;
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
};

TEST_F(Streams, ThatAreFullFailHelpAndVersionToo) {
  m_scene.stdout_fd = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
  ASSERT_GE(m_scene.stdout_fd, 0);
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"--help"}, {"--version"}, {"train", "--help"}, {"report", "divergence", "test.net"}}) {
    const RunResult result = Run(words);
    EXPECT_EQ(result.status, 1) << words.front();
    EXPECT_EQ(result.err, kNotWritten);
  }
  ::close(m_scene.stdout_fd);
}

TEST_F(Streams, WhoseReaderHasGoneFailWithoutASignal) {
  int ends[2] = {-1, -1};
  ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  ::close(ends[0]);
  m_scene.stdout_fd = ends[1];
  for (const char* kind : {"information", "weights", "outputs", "statistics"}) {
    const RunResult result = Run({"report", kind, "test.net"});
    EXPECT_EQ(result.status, 1) << kind;
    EXPECT_EQ(result.err, kNotWritten);
  }
  ::close(ends[1]);
}

TEST_F(Streams, ThatAreClosedLeaveTheirNumbersToNoFile) {
  const std::string words =
      "train test.net --seed 1 -o new.net --history a.his --autosave a.store --error-history a.err "
      "--outputs a.out";
  const std::vector<std::string> names = {"new.net", "a.his", "a.store", "a.err", "a.out"};
  ASSERT_EQ(Shell(words + " >figures 2>told"), 0);
  std::vector<std::string> wanted;
  for (const std::string& name : names) wanted.push_back(Read(name));
  EXPECT_EQ(Shell(words + " <&- >&- 2>told"), 1);
  EXPECT_TRUE(Read("told").ends_with(kNotWritten)) << Read("told");
  for (size_t i = 0; i < names.size(); ++i) EXPECT_EQ(Read(names[i]), wanted[i]) << names[i];
  EXPECT_EQ(Shell(words + " <&- >figures 2>&-"), 0);
  for (size_t i = 0; i < names.size(); ++i) EXPECT_EQ(Read(names[i]), wanted[i]) << names[i];
  EXPECT_EQ(Shell(words + " <&- >&- 2>&-"), 1);
  for (size_t i = 0; i < names.size(); ++i) EXPECT_EQ(Read(names[i]), wanted[i]) << names[i];
}

TEST_F(Streams, MissASnapshotThatCannotBeStored) {
  const RunResult result =
      Run({"train", "test.net", "--quiet", "--no-save", "--autosave", "/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "tarn-cli: a snapshot could not be added to '/dev/full'\n");
}

}  // namespace
}  // namespace tarn
