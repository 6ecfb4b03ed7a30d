#include <array>
#include <limits.h>
#include <signal.h>
#include <unistd.h>

#include "cli/console.h"
#include "cli/interrupt.h"

namespace tarn {
namespace {

sigset_t before_holding;

volatile sig_atomic_t noting = 0;
volatile sig_atomic_t interrupts = 0;

// Plain memory: the handler may not touch anything that allocates.
constexpr size_t kMostPaths = 4;
std::array<std::array<char, PATH_MAX>, kMostPaths> paths;
volatile sig_atomic_t path_count = 0;

extern "C" void TakeInterrupt(int) {
  if (noting != 0 && interrupts == 0) {
    interrupts = 1;
    return;
  }
  for (sig_atomic_t i = 0; i < path_count; ++i) {
    const char* path = paths[static_cast<size_t>(i)].data();
    if (::unlink(path) != 0) ::rmdir(path);
  }
  ::_exit(kInterrupted);
}

void Handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  ::sigaction(signal, &action, nullptr);
}

// As nohup leaves it.
bool IsIgnored(int signal) {
  struct sigaction action {};
  return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

void HandleInterrupts() {
  Handle(SIGINT, TakeInterrupt);
  Handle(SIGTERM, TakeInterrupt);
  if (!IsIgnored(SIGHUP)) Handle(SIGHUP, TakeInterrupt);
  Handle(SIGPIPE, SIG_IGN);
}

HoldInterrupts::HoldInterrupts() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
  ::pthread_sigmask(SIG_BLOCK, &held, &before_holding);
}

HoldInterrupts::~HoldInterrupts() {
  ::pthread_sigmask(SIG_SETMASK, &before_holding, nullptr);
}

void RemoveWhenInterrupted(const std::string& path) {
  const auto slot = static_cast<size_t>(path_count);
  if (slot == kMostPaths || path.empty() || path.size() >= PATH_MAX) return;
  path.copy(paths[slot].data(), path.size());
  path_count = path_count + 1;
}

void CatchInterrupts() {
  noting = 1;
}

bool Interrupted() {
  return interrupts > 0;
}

}  // namespace tarn
