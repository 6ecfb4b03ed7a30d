#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "windows/log.h"
#include "windows/program.h"
#include "windows/window.h"

namespace tarn {

struct Surroundings {
  std::string program;
  std::string folder;    // where it runs
  std::string pictures;  // of all windows; none when empty
};

// Starts the program, waits for its windows, and knows which of them have been seen.
class Driver {
 public:
  Driver(Log& log, Surroundings surroundings);

  // The main window, with the start-up window in it.
  Window Start();
  // The program ends by itself, as it should.
  void AwaitEndOfProgram();
  // Ends it when it runs.
  void End() { m_program.reset(); }

  Log& log() { return m_log; }
  const Program& program() const { return *m_program; }
  const Window& frame() const { return m_frame; }
  // In the folder in which the program runs.
  std::string Path(std::string_view name) const;

  // Looks again and again until the condition holds; false when it does not come to that in time,
  // which is soon when the road has taken too long.
  bool Until(const std::function<bool()>& holds) const;
  // The window of this caption that has come since. Throws Lost.
  Window Await(std::string_view caption);
  // Whatever window has come since.
  Window AwaitAny();
  bool HasNews() { return !NewWindows().empty(); }
  // The window closes. Throws Lost.
  void AwaitEndOf(const Window& window);
  // When pictures are wanted, the first one of that name.
  void TakePicture(const Window& window, const std::string& name);
  // Tells whether it is so; it has to be.
  void Expect(bool holds, std::string_view what);
  // The same for what takes its time.
  void ExpectSoon(std::string_view what, const std::function<bool()>& holds);

 private:
  // Those that have come since.
  std::vector<Window> NewWindows();
  Window AwaitWhere(std::string_view wanted, const std::function<bool(const Window&)>& is);

  Log& m_log;
  Surroundings m_surroundings;
  ULONGLONG m_start_ms = 0;  // of the program, and so of the road
  std::optional<Program> m_program;
  Window m_frame;
  std::vector<Window> m_known;
  std::set<std::string> m_pictured;
};

}  // namespace tarn
