#include "data/test_set.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/random.h"
#include "base/text_reader.h"
#include "data/messages.h"
#include "netfile/find_section.h"

namespace tarn {
namespace {

// 60 per cent of the largest count that the generator can draw from.
constexpr float kLargestTestSet = 19660.19921875F;

int32_t TestSetLimit(int32_t patterns) {
  constexpr double kTenths = 6.0;
  constexpr double kTenth = 0.1;
  const float limit = static_cast<float>(patterns * kTenths * kTenth);
  return static_cast<int32_t>(std::min(limit, kLargestTestSet));
}

// The numbers first .. end-1.
std::vector<int32_t> Block(int32_t first, int32_t end) {
  std::vector<int32_t> list(static_cast<size_t>(std::max(end - first, 0)));
  std::iota(list.begin(), list.end(), first);
  return list;
}

void SplitAtBeginning(Network& network) {
  network.test_list = Block(0, network.testPats);
  network.train_list = Block(network.testPats, network.nPats);
  network.testStart = 1;
  network.testEnd = network.testPats;
}

void SplitAtEnd(Network& network) {
  network.train_list = Block(0, network.nTrain);
  network.test_list = Block(network.nTrain, network.nPats);
  network.testStart = network.nTrain + 1;
  network.testEnd = network.nPats;
}

// Patterns beyond the range of the generator are never drawn.
void SplitRandomly(Network& network, uint32_t seed) {
  Random random(seed);
  const int32_t choices = std::min(network.nPats, Random::kLargest);
  std::vector<bool> drawn(static_cast<size_t>(network.nPats), false);
  for (int32_t left = network.testPats; left > 0;) {
    const size_t number = static_cast<size_t>(random.Next() % choices);
    if (drawn[number]) continue;
    drawn[number] = true;
    --left;
  }
  network.train_list.clear();
  network.test_list.clear();
  for (int32_t p = 0; p < network.nPats; ++p) {
    (drawn[static_cast<size_t>(p)] ? network.test_list : network.train_list).push_back(p);
  }
}

bool ReadNumbers(TextReader& file, int32_t count, int32_t patterns, std::vector<int32_t>& list) {
  for (int32_t i = 0; i < count; ++i) {
    int32_t number = 0;
    if (!file.ScanInt(number) || number < 0 || number >= patterns) return false;
    list.push_back(number);
  }
  return true;
}

// Reads the lists behind the key line. On failure the network is as it was.
Status ReadStoredSplit(TextReader& file, Network& network) {
  int32_t patterns = 0;
  int32_t train = 0;
  int32_t test = 0;
  if (!file.ScanInt(patterns) || !file.ScanInt(train) || !file.ScanInt(test) ||
      patterns != network.nPats || train != network.nTrain || test != network.testPats) {
    return Status::Failure(kTrainSetChanged);
  }
  std::vector<int32_t> train_list;
  std::vector<int32_t> test_list;
  if (!ReadNumbers(file, train, patterns, train_list) ||
      !ReadNumbers(file, test, patterns, test_list)) {
    return Status::Failure(kTestSetInvalid);
  }
  network.train_list = std::move(train_list);
  network.test_list = std::move(test_list);
  return {};
}

Status TakeRandomSplit(Network& network, uint32_t seed) {
  TextReader file;
  file.Open(network.file_name);
  const std::string mode = FindSection(file, "TESTPATTERNS:");
  Status status;
  if (mode == "READ") {
    status = ReadStoredSplit(file, network);
    if (status.ok()) return status;
  } else if (file.Failed() || (!mode.empty() && mode != "COMPUTE")) {
    status = Status::Failure(kTestSetRandom);
  }
  SplitRandomly(network, seed);
  return status;
}

}  // namespace

void SizeTestSet(Network& network, Notices& notices) {
  if (network.testPats < 0) {
    network.testPats = 0;
    notices.emplace_back(kTestCountInvalid);
  }
  network.testPats = std::min(network.testPats, network.nPats);
  if (network.mode == Mode::kRecall) {
    network.nTrain = network.testPats = network.nPats;
    return;
  }
  network.testPats =
      network.overMeth == kTestNone ? 0 : std::min(network.testPats, TestSetLimit(network.nPats));
  network.nTrain = network.nPats - network.testPats;
}

Status BuildTestSet(Network& network, uint32_t seed) {
  network.testStart = network.testEnd = 0;
  if (network.mode == Mode::kRecall) {
    network.train_list = network.test_list = Block(0, network.nPats);
    return {};
  }
  if (network.overMeth < kTestNone || network.overMeth > kTestRandom) {
    network.overMeth = network.testPats != 0 ? kTestEnding : kTestNone;
  }
  if (network.testPats == 0 || network.overMeth == kTestNone) {
    network.train_list = Block(0, network.nPats);
    network.test_list.clear();
    return {};
  }
  if (network.overMeth == kTestRandom) return TakeRandomSplit(network, seed);
  if (network.overMeth == kTestBeginning) {
    SplitAtBeginning(network);
  } else {
    SplitAtEnd(network);
  }
  return {};
}

}  // namespace tarn
