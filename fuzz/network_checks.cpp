#include "network_checks.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fmt/printf.h>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "base/output_file.h"
#include "data/normalization.h"
#include "data/test_set.h"
#include "fuzz_target.h"
#include "netfile/connections_section.h"
#include "netfile/network_writer.h"
#include "netfile/setup_save.h"
#include "netfile/weights_section.h"

namespace tarn::fuzz {
namespace {

const std::string kCopy = "/fuzz/copy.net";
const std::string kSetup = "/fuzz/setup.net";
constexpr int64_t kMostConnections = 1000;

// A CR at the end of a text is taken for a part of the line end when it is read again.
std::string_view WithoutCr(std::string_view text) {
  while (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

void RequireSameLayers(const Network& read, const Network& again) {
  Require(again.nLayers == read.nLayers, "nLayers");
  for (size_t l = 0; l < static_cast<size_t>(std::max(read.nLayers, 0)); ++l) {
    Require(again.layers[l].nUnits == read.layers[l].nUnits, "nUnits");
    Require(again.layers[l].role == read.layers[l].role, "role");
    Require(l == 0 || again.layers[l].TransFunc == read.layers[l].TransFunc, "TransFunc");
  }
}

bool HasAllConnections(const Network& network) {
  return std::ranges::all_of(network.layers, [](const Layer& layer) {
    return std::ranges::count(layer.masks.All(), 0.0F) == 0;
  });
}

void RequireList(const std::vector<int32_t>& list, int32_t size, int32_t patterns) {
  Require(list.size() == static_cast<size_t>(size), "list size");
  for (int32_t p : list) Require(p >= 0 && p < patterns, "pattern number");
}

void RequireMeasured(const Limits& limits, int32_t nodes) {
  Require(limits.lower.size() == static_cast<size_t>(nodes), "limit count");
  for (size_t i = 0; i < limits.lower.size(); ++i) Require(limits.Measured(i), "limit order");
}

void RequireSameLimits(const Limits& read, const Limits& again, bool taken) {
  bool ordered = true;
  for (size_t i = 0; i < read.lower.size(); ++i) {
    ordered = ordered && ThroughText("%f", read.upper[i]) > ThroughText("%f", read.lower[i]);
  }
  Require(taken == ordered, "limits are read when they differ in six decimals");
  for (size_t i = 0; i < read.lower.size() && taken; ++i) {
    Require(again.lower[i] == ThroughText("%f", read.lower[i]), "lower limits");
    Require(again.upper[i] == ThroughText("%f", read.upper[i]), "upper limits");
  }
}

void RequireSameSections(const Network& read, Network& again) {
  again.nPats = kPatterns;
  Notices notices;
  SizeTestSet(again, notices);
  Require(notices.empty(), "a written test set size is in its bounds");
  Require(AllocateArrays(again).ok(), "allocation");
  Require(ReadWeights(again, 3).ok() && !again.random_weights, "written weights can be read");
  Require(ReadConnections(again, kScratch).ok(), "written connections can be read");
  Require(BuildTestSet(again, 4).ok(), "a written test set can be read");
  Require(again.fully_connected == HasAllConnections(read), "fully connected flag");
  for (size_t l = 1; l < static_cast<size_t>(read.nLayers); ++l) {
    const std::span<const float> weights = read.layers[l].weights.All();
    const std::span<const float> weights_again = again.layers[l].weights.All();
    for (size_t i = 0; i < weights.size(); ++i) {
      Require(weights_again[i] == ThroughText("%g", weights[i]), "weights");
    }
    Require(std::ranges::equal(again.layers[l].masks.All(), read.layers[l].masks.All()), "masks");
  }
  Require(again.train_list == read.train_list, "training list");
  Require(again.test_list == read.test_list, "test list");
  if (read.pat_norm != 0) {
    RequireSameLimits(read.input_limits, again.input_limits, ReadInputLimits(again).ok());
  }
  if (read.targ_norm != 0) {
    RequireSameLimits(read.target_limits, again.target_limits, ReadTargetLimits(again).ok());
  }
}

size_t Count(std::string_view text, std::string_view part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// Readers look for the limits as far as the end of the file, a copy ends where the section does.
bool HasLimitsBehindTheirEnd(std::string_view text) {
  const std::string_view behind = text.substr(std::min(text.size(), text.find("NORMALIZE:STOP")));
  return behind.find("\nINPUT") != std::string_view::npos ||
         behind.find("\nOUTPU") != std::string_view::npos;
}

// A copy of the one has lines of the other, then.
bool HasSectionsWithinEachOther(std::string_view text) {
  std::map<size_t, std::string_view> keys;
  for (const std::string_view key : {"WEIGHTS:", "CONNECTIONS:", "TESTPATTERNS:", "NORMALIZE:"}) {
    for (size_t at = text.find(key); at != std::string_view::npos; at = text.find(key, at + 1)) {
      keys[at] = key;
    }
  }
  std::string_view open;
  for (const auto& [at, key] : keys) {
    if (!open.empty() && key != open) return true;
    open = text.substr(at + key.size()).starts_with("READ") ? key : std::string_view();
  }
  return false;
}

// Whether each section stands there once and has its end: then a copy is the same as it is.
bool HasPlainSections(std::string_view text) {
  if (HasLimitsBehindTheirEnd(text) || HasSectionsWithinEachOther(text)) return false;
  return std::ranges::all_of(std::array{"WEIGHTS:", "TESTPATTERNS:", "NORMALIZE:"},
                             [text](const std::string key) {
                               const size_t ends = Count(text, key + "STOP");
                               return Count(text, key) == 1 + ends &&
                                      Count(text, key + "READ") == Count(text, key + "READ\n") &&
                                      Count(text, key + "READ\n") == ends && ends <= 1;
                             });
}

// What stands in the file of this header, apart from the connections.
void ReadCopied(Network& network) {
  network.nPats = kPatterns;
  Notices notices;
  SizeTestSet(network, notices);
  Require(AllocateArrays(network).ok(), "allocation");
  (void)ReadWeights(network, 1);
  (void)BuildTestSet(network, 2);
  (void)ReadInputLimits(network);
  (void)ReadTargetLimits(network);
}

bool SameValues(std::span<const float> a, std::span<const float> b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size_bytes()) == 0;
}

void RequireSameCopies(const Network& old, const Network& copy) {
  for (size_t l = 1; l < static_cast<size_t>(old.nLayers); ++l) {
    Require(SameValues(old.layers[l].weights.All(), copy.layers[l].weights.All()),
            "weights of a saved setup");
  }
  Require(old.train_list == copy.train_list && old.test_list == copy.test_list,
          "test set of a saved setup");
  for (Limits Network::*limits : {&Network::input_limits, &Network::target_limits}) {
    Require(SameValues((old.*limits).lower, (copy.*limits).lower) &&
                SameValues((old.*limits).upper, (copy.*limits).upper),
            "limits of a saved setup");
  }
}

// A name that begins like a section is taken for it.
bool HidesSections(const Network& network) {
  for (std::string_view name :
       {std::string_view(network.NetName), std::string_view(network.PatName),
        std::string_view(network.TargName)}) {
    for (const char* key : {"WEIGHTS:", "CONNECTIONS:", "TESTPATTERNS:", "NORMALIZE:"}) {
      if (name.starts_with(key)) return true;
    }
  }
  return false;
}

}  // namespace

float ThroughText(const char* format, float value) {
  return std::strtof(fmt::sprintf(format, double{value}).c_str(), nullptr);
}

void RequireSameHeader(const Network& read, const Network& again, HeaderKind kind) {
  const bool started = kind == HeaderKind::kNetwork && read.LRC < read.iteration;
  Require(again.version == 3, "version");
  Require(WithoutCr(again.NetName) == WithoutCr(read.NetName.empty() ? "NO NAME" : read.NetName),
          "NetName");
  RequireSameLayers(read, again);
  for (float Network::*field : {&Network::FastProp, &Network::Eta, &Network::EtaMin,
                                &Network::EtaMax, &Network::Alpha, &Network::Tolerance}) {
    Require(again.*field == ThroughText("%f", read.*field), "rates");
  }
  Require(again.LRC == (started ? 1 : read.LRC), "LRC");
  for (int32_t Network::*field :
       {&Network::MaxIterations, &Network::UpdateRate, &Network::SaveRate, &Network::WeightRate,
        &Network::PatCol, &Network::pat_norm, &Network::targ_norm, &Network::TargCol,
        &Network::overMeth, &Network::testPats}) {
    Require(again.*field == read.*field, "whole numbers of the header");
  }
  Require(WithoutCr(again.PatName) == WithoutCr(read.PatName), "PatName");
  Require(WithoutCr(again.TargName) == WithoutCr(read.TargName), "TargName");
}

Network ReadAgain(const std::string& path) {
  Network again;
  again.file_name = path;
  const Status status = ReadHeader(again);
  Require(status.ok(), "a written header can be read: " + status.message());
  return again;
}

void RequireUsable(Network& network) {
  Network fresh;
  for (Network* record : {&fresh, &network}) {
    record->file_name = "/fuzz/new.net";
    Require(ReadHeader(*record).ok(), "the new network can be read");
  }
  RequireSameHeader(fresh, network, HeaderKind::kSetup);
}

void TrySetupSave(Network network, std::string_view text) {
  const bool copies =
      network.version > 0 && IsSmall(network) && !HidesSections(network) && HasPlainSections(text);
  Network old = network;
  Require(SaveSetup(network, kSetup, kScratch).ok(), "setup save");
  Network saved = ReadAgain(kSetup);
  RequireSameHeader(network, saved, HeaderKind::kSetup);
  if (!copies) return;
  ReadCopied(old);
  ReadCopied(saved);
  RequireSameCopies(old, saved);
}

bool IsSmall(const Network& network) {
  return CheckShape(network).ok() && ConnectionCount(network) <= kMostConnections &&
         network.layers[0].nUnits <= kMostConnections;
}

void ReadSections(Network& network) {
  network.nPats = kPatterns;
  Notices notices;
  SizeTestSet(network, notices);
  Require(AllocateArrays(network).ok(), "allocation");
  const bool weights_read = ReadWeights(network, 1).ok();
  Require(weights_read || network.random_weights, "fallback of the weights is marked");
  (void)ReadConnections(network, kScratch);
  (void)BuildTestSet(network, 2);
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.masks.rows(); ++j) {
      for (size_t i = 0; i < layer.masks.columns(); ++i) {
        const float mask = layer.masks.Row(j)[i];
        Require(mask == 1.0F || (mask == 0.0F && layer.weights.Row(j)[i] == 0.0F), "masks");
      }
    }
  }
  // A pending file that brings all connections back leaves the flag of the section.
  Require(!network.fully_connected || HasAllConnections(network), "fully connected flag");
  RequireList(network.train_list, network.nTrain, kPatterns);
  RequireList(network.test_list, network.testPats, kPatterns);
  if (ReadInputLimits(network).ok()) {
    RequireMeasured(network.input_limits, network.layers[0].nUnits);
  }
  if (ReadTargetLimits(network).ok()) {
    RequireMeasured(network.target_limits, OutputLayer(network).nUnits);
  }
}

void WriteAndRead(Network& network) {
  OutputFile copy;
  Require(copy.OpenReplacing(kCopy) && WriteNetwork(copy, network) && copy.Commit(), "write");
  Network again = ReadAgain(kCopy);
  RequireSameHeader(network, again, HeaderKind::kNetwork);
  if (HidesSections(network)) {
    ReadSections(again);
  } else {
    RequireSameSections(network, again);
  }
}

}  // namespace tarn::fuzz
