#include "support/doomed_work.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <thread>

#include "app/interrupted_runs.h"
#include "base/file_layer.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/temp_file.h"
#include "data/outputs_export.h"
#include "netfile/autosave_store.h"
#include "netfile/header.h"
#include "netfile/network_writer.h"
#include "netfile/setup_save.h"

namespace tarn {
namespace {

// It ends by itself some day: nobody may be left to kill it.
bool Wait() {
  std::this_thread::sleep_for(std::chrono::minutes(10));
  return false;
}

bool SaveText(const std::string& path, const std::string& text) {
  OutputFile file;
  return file.OpenReplacing(path) && file.Write(text) && file.Commit();
}

std::function<bool()> SavingTexts() {
  return [path = FullPath("a.net"), first = DoomedText(1), second = DoomedText(2)] {
    return SaveText(path, first) && SaveText(path, second);
  };
}

std::function<bool()> SavingNetworks() {
  Network first = DoomedNetwork(1);
  Network second = DoomedNetwork(2);
  first.file_name = second.file_name = FullPath("a.net");
  return [first, second] {
    return WriteNetworkFile(second.file_name, second).ok() &&
           WriteNetworkFile(first.file_name, first).ok();
  };
}

std::function<bool()> SavingSetups() {
  Network network;
  network.file_name = FullPath("a.net");
  const bool read = ReadHeader(network).ok();
  return [network, read, scratch = FullPath("scratch")]() mutable {
    const auto save = [&](int which) {
      network.NetName = DoomedName(which);
      return SaveSetup(network, network.file_name, scratch).ok();
    };
    return read && save(1) && save(2);
  };
}

std::function<bool()> SavingAs() {
  Network network = DoomedNetwork(2);
  network.file_name = FullPath("b.net");
  return [network] { return WriteNetworkFile(network.file_name, network).ok(); };
}

std::function<bool()> ExportingOutputs() {
  return [path = FullPath("a.out"), first = DoomedOutputs(1), second = DoomedOutputs(2)] {
    return ExportOutputs(first, path).ok() && ExportOutputs(second, path).ok();
  };
}

std::function<bool()> StoringSnapshots() {
  Network network = DoomedNetwork(3);
  network.iteration = 1000;
  return [path = FullPath("store"), network]() mutable {
    ++network.iteration;
    return AppendSnapshot(path, network);
  };
}

// The store is made and noted as a training run does it.
std::function<bool()> TrainingWithStore() {
  const auto store = std::make_shared<TempFile>();
  const auto note = std::make_shared<RunNote>();
  const std::string folder = SystemFiles().CurrentDirectory();
  const bool made = store->Create(folder, FileLayer::Lifetime::kLasting);
  if (made) note->Write(FullPath("a.net"), store->path(), 0);
  return [store, note, network = DoomedNetwork(3)]() mutable {
    ++network.iteration;
    return note->IsThere() && AppendSnapshot(store->path(), network);
  };
}

std::function<bool()> KeepingATemporary() {
  const auto file = std::make_shared<TempFile>();
  const bool made = file->Create(SystemFiles().CurrentDirectory());
  return [file, made] { return made && Wait(); };
}

}  // namespace

std::function<bool()> DoomedWork(std::string_view name) {
  if (name == kWait) return Wait;
  if (name == kSaveTexts) return SavingTexts();
  if (name == kSaveNetworks) return SavingNetworks();
  if (name == kStoreSnapshots) return StoringSnapshots();
  if (name == kSaveSetups) return SavingSetups();
  if (name == kSaveAs) return SavingAs();
  if (name == kExportOutputs) return ExportingOutputs();
  if (name == kTrainWithStore) return TrainingWithStore();
  if (name == kKeepTemporary) return KeepingATemporary();
  return {};
}

std::string DoomedText(int which) {
  return which == 1 ? std::string(300000, '1') : std::string(170001, '2');
}

Network DoomedNetwork(int which) {
  constexpr std::array kHidden = {40, 90, 60};
  Network network;
  network.nLayers = 3;
  network.layers[0].nUnits = 20;
  network.layers[1].nUnits = kHidden.at(static_cast<size_t>(which - 1));
  network.layers[2].nUnits = 5;
  network.LRC = 1000000;
  if (AllocateArrays(network).ok()) InitializeRandomWeights(network, static_cast<uint32_t>(which));
  return network;
}

std::string DoomedName(int which) {
  return which == 1 ? "first" : "second with a longer name";
}

Network DoomedOutputs(int which) {
  constexpr int32_t kPatterns = 3000;
  Network network;
  network.nLayers = 3;
  for (size_t l = 0; l < 3; ++l) network.layers[l].nUnits = 2;
  network.nPats = kPatterns + 500 * which;
  if (!AllocateArrays(network).ok()) return network;
  network.target_limits = {{0, 0}, {1, 1}};
  float value = static_cast<float>(which);
  for (float& output : network.layers[2].activations.All()) output = value += 0.5F;
  return network;
}

}  // namespace tarn
