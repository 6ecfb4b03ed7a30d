#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <string>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#include <vector>

#include "base/output_file.h"
#include "base/random.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr int kKills = 200;
constexpr int32_t kLongestWaitMicroseconds = 8000;

bool Save(const std::string& path, const std::string& text) {
  OutputFile file;
  return file.OpenReplacing(path) && file.Write(text) && file.Commit();
}

// Saves one content after the other until it is killed; tells through the pipe when the
// first is about to be written.
[[noreturn]] void SaveForEver(const std::string& path, const std::string& first,
                              const std::string& second, int ready) {
  if (::write(ready, "r", 1) != 1) ::_exit(1);
  while (Save(path, first) && Save(path, second)) {
  }
  ::_exit(1);
}

// Starts a process that saves, kills it after a while and tells whether it ran until then.
bool KillWhileSaving(const std::string& path, const std::string& first, const std::string& second,
                     int32_t microseconds) {
  int ends[2] = {};
  if (::pipe(ends) != 0) return false;
  const pid_t child = ::fork();
  if (child < 0) return false;
  if (child == 0) SaveForEver(path, first, second, ends[1]);
  ::close(ends[1]);
  char ready = 0;
  const bool started = ::read(ends[0], &ready, 1) == 1;
  ::close(ends[0]);
  const timespec wait = {0, microseconds * 1000L};
  ::nanosleep(&wait, nullptr);
  ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
  return started && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

TEST(OutputFile, LeavesOneWholeContentWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  const std::string first(300000, '1');
  const std::string second(170001, '2');
  ASSERT_TRUE(Save(path, first));
  Random random(20240229);
  int leftovers = 0;
  for (int i = 0; i < kKills; ++i) {
    SCOPED_TRACE(i);
    const int32_t wait = random.Next() % kLongestWaitMicroseconds;
    ASSERT_TRUE(KillWhileSaving(path, first, second, wait));
    const std::string found = ReadFile(path);
    ASSERT_TRUE(found == first || found == second) << found.size() << " bytes";
    // The killed process can have left the one file that it was writing.
    const std::vector<std::string> names = SystemFiles().NamesIn(folder.path());
    ASSERT_LE(names.size(), 2U);
    if (names.size() == 1) continue;
    ++leftovers;
    ASSERT_TRUE(Save(path, i % 2 == 0 ? first : second));
    ASSERT_EQ(SystemFiles().NamesIn(folder.path()), std::vector<std::string>{"a.net"});
  }
  // Else no kill has struck during a save and nothing was shown.
  EXPECT_GT(leftovers, kKills / 10);
}

}  // namespace
}  // namespace tarn
