#include "support/doomed_work.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <thread>

#include "base/file_layer.h"
#include "base/output_file.h"
#include "base/paths.h"
#include "base/temp_file.h"
#include "netfile/autosave_store.h"
#include "netfile/network_writer.h"

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

std::function<bool()> StoringSnapshots() {
  Network network = DoomedNetwork(3);
  network.iteration = 1000;
  return [path = FullPath("store"), network]() mutable {
    ++network.iteration;
    return AppendSnapshot(path, network);
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

}  // namespace tarn
