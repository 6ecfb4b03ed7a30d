#include "support/doomed_process.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <deque>
#include <thread>

#include "support/doomed_work.h"

namespace tarn {
namespace {

// Windows removes no folder that is the current one of a process.
const std::string kRoot = "/";

}  // namespace

bool DoomedProcess::KillAfter(int microseconds) {
  std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
  return Kill();
}

int ManyKills(int percent) {
  const char* wanted = std::getenv("TARN_KILLS");
  return wanted != nullptr ? std::max(std::atoi(wanted), 1) : kManyKills * percent / 100;
}

std::string EndedProcess() {
  static std::deque<DoomedProcess> ended;
  ended.emplace_back(kWait, kRoot).Kill();
  return ended.back().name();
}

std::string OtherProcess() {
  static const DoomedProcess waiting(kWait, kRoot);
  return waiting.name();
}

}  // namespace tarn
