// Drives the desktop program as a user does, from outside: by the numbers of its windows.
//
//   tarn-driver PROGRAM FOLDER [--pictures FOLDER] [ROAD...]
//
// FOLDER holds copies of the files of the examples iris and xor; the program runs in it, and leaves
// its files there. The exit status is 1 when anything failed, and 2 for wrong usage.

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <vector>

#include "base/wide_text.h"
#include "windows/companion.h"
#include "windows/driver.h"
#include "windows/files.h"
#include "windows/log.h"
#include "windows/roads.h"

namespace tarn {
namespace {

struct Road {
  std::string_view name;
  void (*walk)(Driver&);
};

constexpr std::array kRoads = {
    Road{"new", NewNetworkRoad},  Road{"training", TrainingRoad}, Road{"studies", StudiesRoad},
    Road{"browser", BrowserRoad}, Road{"graph", GraphRoad},       Road{"recall", RecallRoad},
    Road{"leaving", LeavingRoad},
};

struct Arguments {
  Surroundings surroundings;
  std::vector<std::string> roads;  // none: all of them
};

std::string FullPath(const std::string& path) {
  return Narrow(std::filesystem::absolute(Widen(path)).make_preferred().native());
}

bool IsRoad(const std::string& name) {
  return std::ranges::find(kRoads, name, &Road::name) != kRoads.end();
}

std::optional<Arguments> Read(std::vector<std::string> words) {
  Arguments arguments;
  const auto pictures = std::ranges::find(words, "--pictures");
  if (pictures != words.end()) {
    if (pictures + 1 == words.end()) return std::nullopt;
    arguments.surroundings.pictures = FullPath(pictures[1]);
    words.erase(pictures, pictures + 2);
  }
  if (words.size() < 2) return std::nullopt;
  arguments.surroundings.program = FullPath(words[0]);
  arguments.surroundings.folder = FullPath(words[1]);
  arguments.roads.assign(words.begin() + 2, words.end());
  if (!std::ranges::all_of(arguments.roads, IsRoad)) return std::nullopt;
  return arguments;
}

void Walk(const Road& road, Driver& driver, Log& log) {
  log.Road(road.name);
  try {
    road.walk(driver);
  } catch (const std::exception& error) {
    log.Failed(fmt::format("the road {} ends here: {}", road.name, error.what()));
  }
  driver.End();
}

int Run(const Arguments& arguments) {
  if (!arguments.surroundings.pictures.empty()) MakeFolder(arguments.surroundings.pictures);
  Log log;
  Driver driver(log, arguments.surroundings);
  for (const Road& road : kRoads) {
    const bool wanted = arguments.roads.empty() ||
                        std::ranges::find(arguments.roads, road.name) != arguments.roads.end();
    if (wanted) Walk(road, driver, log);
  }
  log.Summarize(arguments.roads.empty());
  return log.failures() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tarn

int wmain(int count, wchar_t** words) {
  if (tarn::IsCompanion()) return tarn::HandOver();
  // Pictures are of the dots of the screen.
  ::SetProcessDPIAware();
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(tarn::Narrow(words[i]));
  const auto read = tarn::Read(arguments);
  if (!read) {
    fmt::print(stderr, "usage: tarn-driver PROGRAM FOLDER [--pictures FOLDER] [ROAD...]\n");
    return 2;
  }
  return tarn::Run(*read);
}
