#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/doomed_process.h"
#include "support/doomed_work.h"

namespace tarn {
namespace {

// Tells through the pipe when the work is about to begin.
[[noreturn]] void WorkForEver(std::string_view name, const std::string& folder, int ready) {
  if (::chdir(folder.c_str()) != 0) ::_exit(1);
  const std::function<bool()> work = DoomedWork(name);
  if (!work || ::write(ready, "r", 1) != 1) ::_exit(1);
  while (work()) {
  }
  ::_exit(1);
}

}  // namespace

const int kManyKills = 200;

struct DoomedProcess::Process {
  pid_t number = -1;
  bool begun = false;
  bool ended = false;
};

DoomedProcess::DoomedProcess(std::string_view work, const std::string& folder)
    : m_process(std::make_unique<Process>()) {
  int ends[2] = {};
  if (::pipe(ends) != 0) return;
  m_process->number = ::fork();
  if (m_process->number == 0) WorkForEver(work, folder, ends[1]);
  ::close(ends[1]);
  char ready = 0;
  m_process->begun = ::read(ends[0], &ready, 1) == 1;
  ::close(ends[0]);
}

DoomedProcess::~DoomedProcess() {
  Kill();
}

std::string DoomedProcess::name() const {
  return std::to_string(m_process->number);
}

bool DoomedProcess::Kill() {
  if (m_process->number < 0 || m_process->ended) return false;
  m_process->ended = true;
  ::kill(m_process->number, SIGKILL);
  int status = 0;
  ::waitpid(m_process->number, &status, 0);
  return m_process->begun && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

}  // namespace tarn
