#include "cli/program.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "support/temp_folder.h"

namespace tarn {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPoll{2};
constexpr milliseconds kOutputPatience{60000};
constexpr milliseconds kEndPatience{120000};

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::string OpenCapture(const std::string& folder, int& descriptor) {
  std::string path = folder + "/XXXXXX";
  descriptor = ::mkostemp(path.data(), O_CLOEXEC);
  EXPECT_GE(descriptor, 0) << path;
  return path;
}

}  // namespace

Program::Program(const std::vector<std::string>& arguments, const Scene& scene) {
  int out = -1;
  int err = -1;
  m_out_path = OpenCapture(scene.output_folder, out);
  m_err_path = OpenCapture(scene.output_folder, err);
  std::vector<std::string> words = arguments;
  words.insert(words.begin(), TARN_CLI);
  std::vector<std::string> settings = {std::string("PATH=") + ::getenv("PATH")};
  for (const auto& [name, value] : scene.environment) settings.push_back(name + "=" + value);
  const std::vector<char*> argv = Pointers(words);
  const std::vector<char*> envp = Pointers(settings);
  m_process = ::fork();
  if (m_process == 0) {
    const bool ready = ::chdir(scene.folder.c_str()) == 0 &&
                       ::dup2(scene.stdout_fd < 0 ? out : scene.stdout_fd, STDOUT_FILENO) >= 0 &&
                       ::dup2(scene.stderr_fd < 0 ? err : scene.stderr_fd, STDERR_FILENO) >= 0;
    if (ready) ::execve(TARN_CLI, argv.data(), envp.data());
    ::_exit(99);
  }
  EXPECT_GT(m_process, 0);
  ::close(out);
  ::close(err);
}

Program::~Program() {
  int status = 0;
  if (!HasEnded(status)) {
    Signal(SIGKILL);
    ::waitpid(m_process, &status, 0);
  }
}

bool Program::HasEnded(int& status) {
  if (!m_ended && ::waitpid(m_process, &m_status, WNOHANG) == m_process) m_ended = true;
  status = m_status;
  return m_ended;
}

void Program::Signal(int signal) const {
  ::kill(m_process, signal);
}

std::string Program::Output() const {
  return ReadFile(m_out_path);
}

bool Program::WaitForOutput(const std::string& text) {
  int status = 0;
  for (milliseconds waited{0}; waited < kOutputPatience; waited += kPoll) {
    const bool ended = HasEnded(status);
    if (Output().find(text) != std::string::npos) return true;
    if (ended) return false;
    std::this_thread::sleep_for(kPoll);
  }
  return false;
}

RunResult Program::Wait() {
  int status = 0;
  for (milliseconds waited{0}; !HasEnded(status); waited += kPoll) {
    if (waited > kEndPatience) {
      ADD_FAILURE() << "tarn-cli hangs";
      Signal(SIGKILL);
    }
    std::this_thread::sleep_for(kPoll);
  }
  RunResult result;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  result.out = ReadFile(m_out_path);
  result.err = ReadFile(m_err_path);
  return result;
}

}  // namespace tarn
