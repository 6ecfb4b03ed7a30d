#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tarn {

// What a run of tarn-cli has left: its exit status (below 0: the signal that ended it) and
// what it wrote.
struct RunResult {
  int status = 0;
  std::string out;
  std::string err;
};

// One run of the real program. Its output goes to files, unless a descriptor is given.
class Program {
 public:
  struct Scene {
    std::string folder;                              // the current directory
    std::map<std::string, std::string> environment;  // beside PATH
    std::string output_folder;                       // where its output is kept
    int stdout_fd = -1;                              // taken in place of a file; stays the caller's
    int stderr_fd = -1;
  };

  Program(const std::vector<std::string>& arguments, const Scene& scene);
  // Kills a program that is still running.
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void Signal(int signal) const;
  // What it has written to stdout so far.
  std::string Output() const;
  // Waits until stdout holds `text`; false when the program ends or a minute passes before.
  bool WaitForOutput(const std::string& text);
  // Waits for its end, at most two minutes; a program that hangs is killed.
  RunResult Wait();

 private:
  bool HasEnded(int& status);

  pid_t m_process = -1;
  bool m_ended = false;
  int m_status = 0;
  std::string m_out_path;
  std::string m_err_path;
};

}  // namespace tarn
