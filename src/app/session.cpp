#include "app/session.h"

#include "app/messages.h"
#include "base/paths.h"
#include "data/pattern_files.h"
#include "data/test_set.h"
#include "engine/recall_run.h"
#include "netfile/connections_section.h"
#include "netfile/header.h"
#include "netfile/weights_section.h"
#include "setup/messages.h"

namespace tarn {
namespace {

// A fallback lets the work go on: its text becomes a notice.
void Note(const Status& status, Notices& notices) {
  if (!status.ok()) notices.push_back(status.message());
}

// The file may hold rates that no dialog lets through.
void CorrectRates(Network& network, Notices& notices) {
  if (network.UpdateRate < 1) {
    network.UpdateRate = 1;
    notices.emplace_back(kUpdateRateRange);
  }
  if (network.SaveRate < 0) {
    network.SaveRate = 0;
    notices.emplace_back(kAutoSaveRateRange);
  }
}

Status Load(Session& session, Notices& notices) {
  Network& network = session.network;
  Status status = ReadHeader(network);
  if (status.ok()) status = CheckShape(network);
  if (!status.ok()) return status;
  CorrectRates(network, notices);
  PatternCount count;
  status = CountPatterns(network, count, notices);
  if (!status.ok()) return status;
  network.nPats = count.records;
  SizeTestSet(network, notices);
  status = AllocateArrays(network);
  if (status.ok()) status = ReadPatterns(network, count.buffer_size);
  if (!status.ok()) return status;
  Note(ReadWeights(network, session.seeds.Next()), notices);
  Note(ReadConnections(network, session.scratch.path()), notices);
  Note(BuildTestSet(network, session.seeds.Next()), notices);
  return {};
}

}  // namespace

Status OpenNetwork(Session& session, const std::string& path) {
  std::string full_path = FullPath(path);
  return CheckNetworkFile(full_path, session.network);
}

Status LoadForTraining(Session& session, Notices& notices) {
  Network& network = session.network;
  network.mode = Mode::kTraining;
  network.RecallTargets = true;
  Status status = Load(session, notices);
  if (status.ok() && network.reset_weights) {
    InitializeRandomWeights(network, session.seeds.Next());
    network.reset_weights = false;
  }
  return status;
}

Status LoadAndRecall(Session& session, Notices& notices) {
  Network& network = session.network;
  if (!network.trained) return Status::Failure(kUntrainedRecall);
  network.mode = Mode::kRecall;
  Status status = Load(session, notices);
  if (status.ok()) status = RunRecall(network);
  return status;
}

}  // namespace tarn
