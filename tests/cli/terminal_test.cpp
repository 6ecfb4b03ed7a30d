#include <chrono>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <string>
#include <unistd.h>

#include "cli/cli_test.h"

namespace tarn {
namespace {

// A terminal without a screen.
class Terminal {
 public:
  Terminal() { EXPECT_EQ(::openpty(&m_user, &m_program, nullptr, nullptr, nullptr), 0); }
  ~Terminal() {
    Close(m_user);
    Close(m_program);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  int program() const { return m_program; }

  // Reads until `text` has come, a minute at most, and then what is there already.
  bool ReadUntil(const std::string& text) {
    for (int tries = 0; tries < 600 && m_shown.find(text) == std::string::npos; ++tries) Read(100);
    while (Read(0)) {
    }
    return m_shown.find(text) != std::string::npos;
  }
  const std::string& shown() const { return m_shown; }

 private:
  static void Close(int descriptor) {
    if (descriptor >= 0) ::close(descriptor);
  }
  bool Read(int patience_ms) {
    pollfd wanted{m_user, POLLIN, 0};
    if (::poll(&wanted, 1, patience_ms) <= 0) return false;
    char bytes[4096];
    const ssize_t count = ::read(m_user, bytes, sizeof bytes);
    if (count > 0) m_shown.append(bytes, static_cast<size_t>(count));
    return count > 0;
  }

  int m_user = -1;
  int m_program = -1;
  std::string m_shown;
};

class OnTerminal : public CliTest {
 protected:
  OnTerminal() {
    PutNetwork();
    Do({"set", "test.net", "--update-rate", "1000000000"});
    m_scene.stderr_fd = m_terminal.program();
  }

  // Trains without end and waits until `text` is shown; then stops.
  bool ShowsWhileTraining(const std::string& text) {
    Program program({"train", "test.net", "--no-save", "--iterations", "2000000000"}, m_scene);
    const bool shown = m_terminal.ReadUntil(text);
    program.Signal(SIGINT);
    EXPECT_EQ(program.Wait().status, 0);
    EXPECT_TRUE(m_terminal.ReadUntil("correlation, training"));
    return shown;
  }

  Terminal m_terminal;
};

TEST_F(OnTerminal, DrawsAProgressLineAndRemovesItBeforeTheSummary) {
  EXPECT_TRUE(ShowsWhileTraining("remaining"));
  EXPECT_THAT(m_terminal.shown(),
              testing::ContainsRegex("\r\\[[# ]+\\] +[0-9.]+ %  RMS error [0-9.]+  remaining "
                                     "[0-9]+:[0-9][0-9]:[0-9][0-9]"));
  EXPECT_THAT(m_terminal.shown(), testing::HasSubstr("\r\x1b[KTraining Run Stopped"));
}

TEST_F(OnTerminal, DrawsNoProgressLineWhenItIsToBeQuiet) {
  m_scene.stdout_fd = m_terminal.program();
  EXPECT_EQ(Run({"train", "test.net", "--quiet", "--iterations", "200000"}).status, 0);
  m_terminal.ReadUntil("");
  EXPECT_EQ(m_terminal.shown(), "");
}

TEST_F(OnTerminal, KeepsResultsApartFromTheProgressLine) {
  m_scene.stdout_fd = m_terminal.program();
  EXPECT_TRUE(ShowsWhileTraining("remaining"));
  EXPECT_THAT(m_terminal.shown(), testing::StartsWith("iteration rms-train"));
  EXPECT_THAT(m_terminal.shown(), testing::ContainsRegex("\n1 [0-9.]+ [0-9.]+ .*\n"));
}

TEST_F(OnTerminal, ShowsNamesOutOfAFileWithoutSteeringTheTerminal) {
  m_scene.stdout_fd = m_terminal.program();
  std::string text = Read("test.net");
  text.replace(text.find("Test\n"), 4, "\x1b]0;title\x07");
  Write("test.net", text);
  EXPECT_EQ(Run({"report", "information", "test.net"}).status, 0);
  text.replace(text.find("data.txt"), 8, "\x1b[2Jdata.txt");
  Write("test.net", text);
  EXPECT_EQ(Run({"report", "information", "test.net"}).status, 1);
  EXPECT_TRUE(m_terminal.ReadUntil("?[2Jdata.txt"));
  EXPECT_THAT(m_terminal.shown(), testing::HasSubstr("?]0;title?"));
  EXPECT_EQ(m_terminal.shown().find('\x1b'), std::string::npos);
}

class WithoutTerminal : public CliTest {};

TEST_F(WithoutTerminal, KeepsNamesOutOfAFileAsTheyAre) {
  PutNetwork();
  std::string text = Read("test.net");
  text.replace(text.find("Test\n"), 4, "\x1b]0;title\x07");
  Write("test.net", text);
  EXPECT_THAT(Run({"report", "information", "test.net"}).out,
              testing::HasSubstr("\x1b]0;title\x07"));
}

TEST_F(WithoutTerminal, DrawsNoProgressLine) {
  PutNetwork();
  const RunResult result = Run({"train", "test.net", "--no-save", "--iterations", "200000"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err.find('\r'), std::string::npos);
  EXPECT_THAT(result.err, testing::StartsWith("Training Run Complete!\n"));
}

}  // namespace
}  // namespace tarn
