#include "app/session.h"

#include <utility>

#include "app/messages.h"
#include "app/network_loader.h"
#include "base/file_layer.h"
#include "base/paths.h"
#include "netfile/connections_section.h"
#include "netfile/header.h"
#include "netfile/setup_save.h"

namespace tarn {
namespace {

Status Load(Session& session, NetworkLoader::Kind kind, Notices& notices) {
  NetworkLoader loader(session, kind);
  Status status;
  while (status.ok() && !loader.NextStep().empty()) status = loader.DoStep(notices);
  return status;
}

}  // namespace

Status OpenNetwork(Session& session, const std::string& path) {
  std::string full_path = FullPath(path);
  Network network;
  Status opened = CheckNetworkFile(full_path, network);
  if (opened.ok()) session.network = std::move(network);
  return opened;
}

void TakeUntitled(Session& session, const std::string& path) {
  session.network = {};
  session.network.file_name = OpenedPath(FullPath(path));
  session.network.trained = HoldsWeights(session.network.file_name).value_or(false);
  EnterFolderOf(session.network.file_name);
}

void StartNewNetwork(Session& session) {
  std::string path = JoinPath(Files().CurrentDirectory(), kUntitledName);
  Files().Remove(path);
  // One that cannot be removed would be opened in its place.
  if (Files().WriteTime(path)) path = JoinPath(session.scratch.path(), kUntitledName);
  session.network = {};
  session.network.file_name = std::move(path);
}

Status ReadSetup(Session& session) {
  Network& network = session.network;
  Status status = ReadHeader(network);
  if (!status.ok()) return status;
  for (int32_t layer = 0; layer < network.nLayers; ++layer) {
    Files().Remove(ConnectionFilePath(session.scratch.path(), layer));
  }
  network.connections_edited.fill(false);
  network.reset_weights = false;
  return status;
}

void KeepUntitledSetup(Session& session) {
  Network& network = session.network;
  if (!IsUntitled(network.file_name)) return;
  // Without it the record holds the setup all the same.
  (void)SaveSetup(network, network.file_name, session.scratch.path());
}

Status LoadForTraining(Session& session, Notices& notices) {
  return Load(session, NetworkLoader::Kind::kTraining, notices);
}

Status LoadAndRecall(Session& session, Notices& notices) {
  if (!session.network.trained) return Status::Failure(kUntrainedRecall);
  return Load(session, NetworkLoader::Kind::kRecall, notices);
}

}  // namespace tarn
