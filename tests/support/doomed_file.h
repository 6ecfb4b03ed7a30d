#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// A file that processes are killed over while they replace it.
struct DoomedFile {
  std::string_view work;  // of doomed_work.h
  std::string folder;     // where it is done
  std::string path;       // the file
  // What it may hold, as stored. The first one it holds before each kill where `restart` is set,
  // else before the first one alone.
  std::vector<std::string> contents;
  bool restart = false;
  // A whole save, which clears away what the killed process has left beside the file.
  std::function<bool()> save;
  int percent_of_kills = 60;
};

// What was seen after the kills.
struct KillFigures {
  int kills = 0;
  int leftovers = 0;  // the kill struck within a save
  int changes = 0;    // the file was another one than before
};

// Kills a process at a random moment of its first few saves, many times, and expects one whole
// content each time, and nothing but leftovers beside it, that are gone after a save. The figures
// are printed where TARN_KILLS is set.
KillFigures KillOver(const DoomedFile& file);

// Prints a line of figures where TARN_KILLS is set.
void TellKills(std::string_view name, const std::string& figures);

}  // namespace tarn
