#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fmt/printf.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <limits>
#include <numeric>
#include <string>
#include <unistd.h>
#include <vector>

#include "browser/ui/info_browser.h"
#include "engine/ui/auto_save_dlg.h"
#include "netfile/autosave_store.h"
#include "netgraph/ui/net_graph_dlg.h"
#include "resources/controls.h"
#include "ui/main_window_fixture.h"

// What the program holds after hundreds of windows and hours of training: memory, open files,
// temporary files. TARN_LOAD_WINDOWS and TARN_LOAD_SNAPSHOTS tell how many, TARN_LOAD_SECONDS how
// long, TARN_LOAD_EXAMPLE which network trains; scripts/load sets them.

namespace tarn {
namespace {

using std::chrono::duration;
using std::chrono::milliseconds;
using SteadyTime = std::chrono::steady_clock;

constexpr int kStart = 215;
constexpr int kRmsPlot = 116;

// What the toolkit and the allocator need to settle; a leak of a window or of a screen update
// passes it soon.
#ifdef __SANITIZE_ADDRESS__
// What was given back is kept for a while.
constexpr int64_t kSlackKilobytes = 300 * 1024;
#else
constexpr int64_t kSlackKilobytes = 2048;
#endif
// The toolkit keeps a little of every window that was open.
constexpr int64_t kKilobytesOfWindow = 24;

int Setting(const char* name, int otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::atoi(value) : otherwise;
}

double Milliseconds(SteadyTime::duration time) {
  return duration<double, std::milli>(time).count();
}

size_t FilesIn(const std::string& folder) {
  const std::filesystem::directory_iterator begin(folder);
  return static_cast<size_t>(std::distance(begin, std::filesystem::directory_iterator()));
}

int64_t ResidentKilobytes() {
  int64_t size = 0;
  int64_t resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * ::sysconf(_SC_PAGESIZE) / 1024;
}

struct Holding {
  int64_t kilobytes = 0;
  size_t open_files = 0;
  size_t temporary_files = 0;
};

std::ostream& operator<<(std::ostream& out, const Holding& holding) {
  return out << holding.kilobytes << " KB, " << holding.open_files << " open files, "
             << holding.temporary_files << " temporary files";
}

// The change for every step from one value to the next, by least squares.
double Slope(const std::vector<int64_t>& values) {
  const auto count = static_cast<double>(values.size());
  const double middle = (count - 1) / 2;
  const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
  double shared = 0;
  double squares = 0;
  for (size_t i = 0; i < values.size(); ++i) {
    const double x = static_cast<double>(i) - middle;
    shared += x * (static_cast<double>(values[i]) - mean);
    squares += x * x;
  }
  return squares > 0 ? shared / squares : 0;
}

// A graph or report command and the answers that it asks for.
struct Study {
  int command;
  bool asks_for_all = false;  // answered No
  std::vector<std::string> entries{};
};

const std::vector<Study>& Studies() {
  static const std::vector<Study> kStudies = {{kRmsPlot},
                                              {121},
                                              {117},
                                              {144},
                                              {145},
                                              {148},
                                              {149},
                                              {118},
                                              {132},
                                              {133},
                                              {123},
                                              {124},
                                              {125},
                                              {119, true, {"2"}},
                                              {120, true, {"1"}},
                                              {122, true, {"1"}},
                                              {131, true, {"3"}},
                                              {146, false, {"1", "3", "2"}},
                                              {126, false, {"0.25"}},
                                              {127, false, {"", "0.5"}}};
  return kStudies;
}

class Load : public MainWindowFixture {
 protected:
  void StartEndlessRun() {
    const char* example = std::getenv("TARN_LOAD_EXAMPLE");
    OpenForTraining(std::string(example != nullptr ? example : "iris") + ".net");
    m_session->network.MaxIterations = std::numeric_limits<int32_t>::max();
    Click(Client(), kStart);
    Until([this] { return m_session->network.iteration > 100; });
  }

  Holding Held() const {
    return {ResidentKilobytes(), FilesIn("/proc/self/fd"), FilesIn(m_temporary.path())};
  }

  static std::vector<wxTopLevelWindow*> StudyWindows() {
    std::vector<wxTopLevelWindow*> open;
    for (NetGraphDlg* graph : OpenWindows<NetGraphDlg>()) open.push_back(graph);
    for (InfoBrowser* report : OpenWindows<InfoBrowser>()) open.push_back(report);
    return open;
  }

  void OpenAndClose(const Study& study) {
    if (study.asks_for_all) m_native.answers = {wxID_NO};
    std::vector<Step> steps;
    for (const std::string& entry : study.entries) {
      steps.emplace_back([entry] {
        Type(*TopDialog(), 101, entry);
        Click(*TopDialog(), kOkId);
      });
    }
    Choose(study.command, steps);
    Until([] { return !StudyWindows().empty(); });
    for (wxTopLevelWindow* window : StudyWindows()) {
      window->Update();
      window->Close();
    }
    // The last of a window, its files too, goes when the loop is idle.
    Until([] { return StudyWindows().empty() && wxPendingDelete.IsEmpty(); });
  }

  void OpenAndCloseWindows(int count) {
    for (int i = 0; i < count; ++i) {
      OpenAndClose(Studies()[static_cast<size_t>(i) % Studies().size()]);
    }
  }

  // A loop that lives for so long.
  void LiveFor(milliseconds time) {
    const auto end = SteadyTime::now() + time;
    Until([end] { return SteadyTime::now() >= end; });
  }

  std::string TemporaryKilobytes() const {
    uintmax_t bytes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_temporary.path())) {
      if (entry.is_regular_file()) bytes += entry.file_size();
    }
    return std::to_string(bytes / 1024) + " KB on the disk";
  }
};

TEST_F(Load, LeavesNothingOfTheWindowsThatWereOpenWhileANetworkTrains) {
  StartEndlessRun();
  const int count = Setting("TARN_LOAD_WINDOWS", 20);
  OpenAndCloseWindows(std::max(static_cast<int>(Studies().size()), count / 5));
  const Holding before = Held();
  const int32_t iteration = m_session->network.iteration;
  OpenAndCloseWindows(count);
  const Holding after = Held();
  std::cout << "before " << before << "\nafter " << count << " windows " << after << "\n";
  EXPECT_EQ(after.open_files, before.open_files);
  EXPECT_EQ(after.temporary_files, before.temporary_files);
  EXPECT_LE(after.kilobytes - before.kilobytes, kSlackKilobytes + count * kKilobytesOfWindow);
  EXPECT_GT(m_session->network.iteration, iteration) << "it did not train beside them";
}

TEST_F(Load, TrainsInTheSameMemoryForHours) {
  constexpr int kMostMilliseconds = 10000;
  constexpr int kFewestSamples = 10;
  StartEndlessRun();
  Choose(kRmsPlot);
  const int whole = Setting("TARN_LOAD_SECONDS", 3) * 1000;
  const milliseconds pause(std::min(kMostMilliseconds, whole / kFewestSamples));
  const auto samples = static_cast<size_t>(whole / pause.count());
  const size_t warm = samples / 5;
  std::vector<int64_t> resident;
  const Holding before = Held();
  Holding held = before;
  for (size_t i = 0; i < samples; ++i) {
    LiveFor(pause);
    held = Held();
    if (i >= warm) resident.push_back(held.kilobytes);
    std::cout << static_cast<double>(i + 1) * duration<double>(pause).count() << " s, iteration "
              << m_session->network.iteration << ": " << held << ", " << TemporaryKilobytes()
              << std::endl;
  }
  const double steps_an_hour = 3600 / duration<double>(pause).count();
  std::cout << fmt::sprintf(
      "resident after the warm-up: first %d KB, last %d KB, most %d KB, slope %.0f KB an hour\n",
      resident.front(), resident.back(), *std::ranges::max_element(resident),
      Slope(resident) * steps_an_hour);
  EXPECT_EQ(held.open_files, before.open_files);
  EXPECT_EQ(held.temporary_files, before.temporary_files);
  EXPECT_LE(*std::ranges::max_element(resident) - resident.front(), kSlackKilobytes);
  EXPECT_TRUE(Frame().training()->desk().IsUnderWay());
}

TEST_F(Load, OffersEverySnapshotOfALongRun) {
  const int count = Setting("TARN_LOAD_SNAPSHOTS", 1000);
  const std::string network = ReadFile(m_folder / "iris.net");
  std::ofstream store(m_folder / "store");
  for (int i = 1; i <= count; ++i) store << "ITERATION " << i * 500 << "\n" << network;
  store.close();
  std::vector<std::string> iterations;
  const auto begun = SteadyTime::now();
  ASSERT_TRUE(ListSnapshots(m_folder / "store", iterations).ok());
  const auto listed = SteadyTime::now();
  AutoSaveDlg dialog(&Frame(), iterations, *m_dialogs);
  const auto offered = SteadyTime::now();
  EXPECT_EQ(RunModal(dialog, {[&] { Click(dialog, kOkId); }}), kOkId);
  EXPECT_EQ(iterations.size(), static_cast<size_t>(count));
  EXPECT_EQ(dialog.choice(), std::to_string(count * 500));
  std::cout << fmt::sprintf(
      "%d snapshots: listed in %.1f ms, offered in %.1f ms, shown and chosen in %.1f ms\n", count,
      Milliseconds(listed - begun), Milliseconds(offered - listed),
      Milliseconds(SteadyTime::now() - offered));
}

}  // namespace
}  // namespace tarn
