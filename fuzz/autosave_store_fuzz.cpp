#include <algorithm>
#include <array>
#include <fmt/printf.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_numbers.h"
#include "bounded_run.h"
#include "netfile/autosave_store.h"
#include "netfile/find_section.h"
#include "netfile/header.h"
#include "network_checks.h"
#include "restated_lines.h"

// The first line of the input is what the user chose, the rest an AutoSave store. The list of the
// store and what is restored are as they are restated here; a restore that finds nothing leaves
// its destination alone; a snapshot that is appended is in the list and can be restored.

namespace tarn::fuzz {
namespace {

const std::string kStore = "/fuzz/input.sto";
const std::string kNewest = "/fuzz/newest.net";
const std::string kDestination = "/fuzz/restored.net";
constexpr std::string_view kOld = "what was there before";

std::vector<std::string> RestatedList(std::string_view store) {
  constexpr std::string_view kEntry = "ITERATION ";
  std::vector<std::string> list;
  for (std::string_view rest = TextOf(store); !rest.empty();) {
    const std::string_view line = TakeLine(rest, kSectionLineLimit).text;
    if (line.starts_with(kEntry)) list.emplace_back(line.substr(kEntry.size()));
  }
  return list;
}

// The old text of the destination when no snapshot matches.
std::string RestatedRestore(std::string_view store, std::string_view choice) {
  const int32_t iteration = ToInt(choice.substr(0, 511));
  const std::string wanted = fmt::sprintf("ITERATION %d", iteration);
  std::string restored;
  bool copying = false;
  bool found = false;
  for (std::string_view rest = TextOf(store); !rest.empty() && iteration >= 1;) {
    const RestatedLine line = TakeLine(rest, kSectionLineLimit);
    const bool begins = line.text.starts_with("ITERATION");
    if (copying && !begins) restored.append(line.text).append(line.ended ? "\n" : "");
    copying = copying ? !begins : line.text.starts_with(wanted);
    found = found || copying;
  }
  return found ? restored : std::string(kOld);
}

// The number of the last snapshot that is whole: behind the line of its iteration and fourteen
// lines of a header comes the last line of a network. 0 when there is none.
int64_t RestatedNewest(std::string_view store) {
  int64_t begun = 0;
  int64_t whole = 0;
  int to_skip = 0;
  bool inside = false;
  for (std::string_view rest = TextOf(store); !rest.empty();) {
    const RestatedLine line = TakeLine(rest, kSectionLineLimit);
    if (!line.ended) continue;
    if (inside && to_skip > 0) {
      --to_skip;
    } else if (line.text.starts_with("ITERATION")) {
      ++begun;
      inside = true;
      to_skip = 14;
    } else if (inside && (line.text == "NORMALIZE:NONE" || line.text == "NORMALIZE:STOP")) {
      whole = begun;
      inside = false;
    }
  }
  return whole;
}

void CheckList(std::string_view store) {
  std::vector<std::string> list;
  Require(ListSnapshots(kStore, list).ok(), "the store can be listed");
  Require(list == RestatedList(store), "the list of the store");
}

void CheckRestore(const FuzzFiles& files, std::string_view store, std::string_view choice) {
  const RestoreResult result = RestoreSnapshot(kStore, kDestination, choice);
  Require(result.status.ok(), "the store can be read");
  Require(RestoreStatus(result).ok() == (result.iteration >= 1), "what the user is told");
  Require(files.Get(kDestination) == RestatedRestore(store, choice), "what was restored");
  Require(result.iteration >= 1 || files.Get(kDestination) == kOld, "nothing found, nothing done");
}

void CheckNewest(const FuzzFiles& files, std::string_view store) {
  std::optional<StoredSnapshot> newest;
  Require(FindNewestSnapshot(kStore, newest).ok(), "the store can be read");
  Require((newest ? newest->number : 0) == RestatedNewest(store), "the newest whole snapshot");
  if (!newest) return;
  Require(WriteSnapshot(kStore, *newest, kNewest).ok(), "the newest snapshot can be written");
  const std::string_view written = files.Get(kNewest);
  Require(written.ends_with("NORMALIZE:NONE\n") || written.ends_with("NORMALIZE:STOP\n"),
          "it ends with its last line");
  Require(std::ranges::count(written, '\n') >= 15, "it holds a header");
  Require(store.find(written.substr(0, written.find('\n'))) != std::string_view::npos,
          "it is of the store");
}

void CheckAppend(const FuzzFiles& files, std::string_view store) {
  constexpr int32_t kIteration = 2147483647;
  Network network;
  network.file_name = "/fuzz/new.net";
  Require(ReadHeader(network).ok() && AllocateArrays(network).ok(), "the new network");
  network.iteration = kIteration;
  Require(AppendSnapshot(kStore, network), "a snapshot can be appended");
  Require(files.Get(kStore).starts_with(store), "the store keeps what it held");
  CheckList(files.Get(kStore));
  // It is not found behind a Ctrl-Z, and not as a line of its own behind half a line.
  if (TextOf(store).size() < store.size() || (!store.empty() && !store.ends_with('\n'))) return;
  if (store.find("ITERATION 2147483647") != std::string_view::npos) return;
  Require(RestoreSnapshot(kStore, kDestination, "2147483647").iteration == kIteration,
          "the snapshot can be restored");
  RequireSameHeader(network, ReadAgain(kDestination), HeaderKind::kNetwork);
}

}  // namespace

const Bounds kBounds = {{1 << 16, 64}, {1 << 14, 8}, {1 << 13, 4}};

void Run(FuzzFiles& files, std::string_view input) {
  const size_t end = input.find('\n');
  const std::string_view choice = input.substr(0, end);
  const std::string_view store =
      end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
  files.Put(kStore, store);
  files.Put(kDestination, kOld);
  CheckList(store);
  CheckRestore(files, store, choice);
  CheckNewest(files, store);
  Require(files.Get(kStore) == store, "the store is as it was");
  if (IsSample(input, 16)) CheckAppend(files, store);
  Require(files.Count() <= 4, "nothing is left over");
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 13> kWords = {"ITERATION ",
                                                              "ITERATION 5",
                                                              "ITERATION 50",
                                                              "ITERATION 500",
                                                              "ITERATION",
                                                              "5",
                                                              "50",
                                                              "ITERATION 5\nTARNV2.1\nNO NAME",
                                                              "TARNV2.1",
                                                              "3\n2 2 1 0 0",
                                                              "WEIGHTS:RANDOM",
                                                              "ITERATION 2147483647",
                                                              "NORMALIZE:NONE"};
  return kWords;
}

}  // namespace tarn::fuzz
