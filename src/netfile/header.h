#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/output_file.h"
#include "base/status.h"
#include "engine/network.h"

// The fourteen header lines of a network file. Four versions are read, told apart by line 1;
// the last one is written:
//
//   line  contents                                               older versions
//   1     TARNV2.1 (code 3)                                      TARNV2.x 2, TARNV1.5 1, TARNV1.0 0
//   2     NetName
//   3     nLayers
//   4     nUnits of every layer, TransFunc of every layer but the first   0: no TransFunc
//   5     FastProp Eta EtaMin EtaMax Alpha Tolerance             0, 1, 2: no Tolerance
//   6     MaxIterations
//   7     LRC UpdateRate                                         UpdateRate may be missing: 1
//   8     SaveRate WeightRate                                    0, 1: SaveRate alone
//   9     PatName
//   10    PatCol
//   11    pat_norm targ_norm
//   12    TargName
//   13    TargCol
//   14    overMeth testPats                                      0: first and last test pattern
//   15    the key line of the weights

namespace tarn {

// Lines of a header.
inline constexpr int kHeaderLineCount = 14;

// The version that is written.
inline constexpr int32_t kCurrentVersion = 3;

// Text lines of the header hold at most this many characters.
inline constexpr size_t kHeaderLineLimit = 254;

// Reads the header of network.file_name into the record and makes the file's folder the
// current directory. A missing file is first created as a new network. Sets the version, the
// random_weights flag and each layer's role. Values are not checked beyond nLayers <= 10.
// After a failure the fields of the lines before the failing one have changed, the others not.
Status ReadHeader(Network& network);

enum class HeaderKind {
  kNetwork,  // an LRC that training has passed is written as 1: control goes on at once
  kSetup,    // LRC as it stands
};

// Writes lines 1 to 14 in the current version.
bool WriteHeader(OutputFile& file, const Network& network, HeaderKind kind);

// The text of a new network: 2-2-1 nodes, no data files, random weights.
std::string_view NewNetworkText();

// Creates the file `path` as a new network; an existing file of that name is left alone. That
// it could not be created shows when it is opened.
void CreateNewNetwork(const std::string& path);

// Whether a line of the file tells that weights follow; nothing when it cannot be read.
std::optional<bool> HoldsWeights(const std::string& path);

// The quick check of a file that the user opens: `path` is brought into the form that the
// system keeps it in, the magic line is looked at, and the file's folder becomes the current
// directory. On success the network has the file's name and version, and `trained` tells
// whether the file holds weights. A refusal without text stands for the scratch file of the
// untitled network. The check knows less than the reader: any "TARNV1..." passes it.
Status CheckNetworkFile(std::string& path, Network& network);

}  // namespace tarn
