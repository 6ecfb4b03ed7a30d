#include "app/network_loader.h"

#include "app/messages.h"
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

}  // namespace

NetworkShape ShapeOf(const Network& network) {
  NetworkShape shape{};
  for (size_t l = 0; l < shape.size() && static_cast<int32_t>(l) < network.nLayers; ++l) {
    shape[l] = network.layers[l].nUnits;
  }
  return shape;
}

std::span<const NetworkLoader::Step> NetworkLoader::Steps(Kind kind) {
  static constexpr std::array<Step, 7> kSteps = {
      {{kLoadHeader, &NetworkLoader::ReadFile},
       {kLoadCount, &NetworkLoader::Count},
       {kLoadData, &NetworkLoader::ReadData},
       {kLoadWeights, &NetworkLoader::ReadStoredWeights},
       {kLoadConnections, &NetworkLoader::ReadStoredConnections},
       {kLoadTestSet, &NetworkLoader::ChooseTestSet},
       {kLoadRecall, &NetworkLoader::Recall}}};
  const std::span<const Step> all(kSteps);
  return kind == Kind::kRecall ? all : all.first(all.size() - 1);
}

NetworkLoader::NetworkLoader(Session& session, Kind kind, const NetworkShape& stored)
    : m_session(session), m_stored(stored), m_kind(kind) {
  Network& network = session.network;
  network.mode = kind == Kind::kRecall ? Mode::kRecall : Mode::kTraining;
  if (kind != Kind::kRecall) network.RecallTargets = true;
}

std::string_view NetworkLoader::NextStep() const {
  const std::span<const Step> steps = Steps(m_kind);
  return m_step < steps.size() ? steps[m_step].text : std::string_view();
}

Status NetworkLoader::DoStep(Notices& notices) {
  const std::span<const Step> steps = Steps(m_kind);
  const Step& step = steps[m_step++];
  Status status = (this->*step.work)(notices);
  if (!status.ok()) m_step = steps.size();
  return status;
}

Status NetworkLoader::ReadFile(Notices& notices) {
  Network& network = m_session.network;
  const bool edited = m_kind == Kind::kEdited;
  Status status;
  if (!edited) status = ReadHeader(network);
  if (status.ok()) status = CheckShape(network);
  if (!status.ok()) return status;
  CorrectRates(network, notices);
  // Weights of another shape would be read into the wrong places.
  if (edited && ShapeOf(network) != m_stored) network.random_weights = true;
  return status;
}

Status NetworkLoader::Count(Notices& notices) {
  Network& network = m_session.network;
  PatternCount count;
  Status status = CountPatterns(network, count, notices);
  if (!status.ok()) return status;
  network.nPats = count.records;
  m_buffer_size = count.buffer_size;
  return status;
}

Status NetworkLoader::ReadData(Notices& notices) {
  Network& network = m_session.network;
  SizeTestSet(network, notices);
  Status status = AllocateArrays(network);
  if (status.ok()) status = ReadPatterns(network, m_buffer_size);
  return status;
}

Status NetworkLoader::ReadStoredWeights(Notices& notices) {
  Network& network = m_session.network;
  if (m_kind != Kind::kRecall && network.reset_weights) network.random_weights = true;
  Note(ReadWeights(network, m_session.seeds.Next()), notices);
  network.reset_weights = false;
  return {};
}

Status NetworkLoader::ReadStoredConnections(Notices& notices) {
  Note(ReadConnections(m_session.network, m_session.scratch.path()), notices);
  return {};
}

Status NetworkLoader::ChooseTestSet(Notices& notices) {
  Note(BuildTestSet(m_session.network, m_session.seeds.Next()), notices);
  return {};
}

Status NetworkLoader::Recall(Notices& /*notices*/) {
  return RunRecall(m_session.network);
}

}  // namespace tarn
