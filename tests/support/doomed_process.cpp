#include "support/doomed_process.h"

#include <chrono>
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
