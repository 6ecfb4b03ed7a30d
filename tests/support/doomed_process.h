#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tarn {

// A process of its own that does one of the works of doomed_work.h over and over until it is
// killed.
class DoomedProcess {
 public:
  // In the folder, which becomes its current directory. Returns when it is about to begin.
  DoomedProcess(std::string_view work, const std::string& folder);
  // Kills it.
  ~DoomedProcess();
  DoomedProcess(const DoomedProcess&) = delete;
  DoomedProcess& operator=(const DoomedProcess&) = delete;

  // As ProcessName of that process tells it. No other process gets the number as long as this
  // object lives, where the system can promise that.
  std::string name() const;
  // Whether it had begun, and was at work until now.
  bool Kill();
  // The same after so many microseconds.
  bool KillAfter(int microseconds);

 private:
  struct Process;  // the system's view of it

  std::unique_ptr<Process> m_process;
};

// How many processes can be started and killed within some seconds.
extern const int kManyKills;
// How many a test does: TARN_KILLS when it is set, else `percent` of those.
int ManyKills(int percent = 100);

// The number of a process that has ended.
std::string EndedProcess();
// The number of another process, which runs as long as this one.
std::string OtherProcess();

}  // namespace tarn
