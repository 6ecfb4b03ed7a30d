#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/random.h"
#include "base/status.h"
#include "engine/matrix.h"

namespace tarn {

inline constexpr int32_t kMinLayers = 3;
inline constexpr int32_t kMaxLayers = 10;

// Transfer function codes, as they stand in network files.
enum TransferCode : int32_t { kSigmoid = 0, kGaussian = 1, kTanh = 2, kSech = 3 };
inline constexpr std::array<std::string_view, 4> kTransferNames = {"Sigmoid", "Gaussian", "Tanh",
                                                                   "Sech"};

// The raw range of each node's data, lower and upper limit; upper > lower once measured or
// read, both 0 before.
struct Limits {
  std::vector<float> lower;
  std::vector<float> upper;

  void Resize(size_t nodes) {
    lower.assign(nodes, 0.0F);
    upper.assign(nodes, 0.0F);
  }
  bool Measured(size_t node) const { return upper[node] > lower[node]; }
};

enum class LayerRole : int32_t { kInput = 0, kHidden = 1, kOutput = 2 };

// One layer. Of the input layer (index 0) only nUnits, role and the activations, which are
// the pattern data, are used; its deltas exist and stay 0. "prev" is the layer below.
struct Layer {
  int32_t nUnits = 0;
  int32_t TransFunc = kSigmoid;
  LayerRole role = LayerRole::kInput;
  bool computed = false;  // every layer but the input layer

  Matrix activations;              // nPats x nUnits
  std::vector<float> derivatives;  // nUnits, of the pattern last propagated
  std::vector<float> deltas;       // nUnits, of the pattern last propagated
  Matrix weights;                  // nUnits x (prev + 1), the bias weight last
  Matrix weight_changes;           // nUnits x (prev + 1), of the last update: the momentum
  Matrix masks;                    // nUnits x prev, 1 where the connection exists, else 0
};

enum class Mode : int32_t { kTraining = 1, kRecall = 2 };

// Test pattern selection, as the codes stand in network files.
enum TestMethod : int32_t { kTestNone = 0, kTestBeginning = 1, kTestEnding = 2, kTestRandom = 3 };

// The one record that describes a network, its training parameters, its pattern data and its
// latest statistics. A plain record: readers fill it, drafts edit it, runs compute on it.
// Values that come from a file are not checked there; CheckShape and the code that uses a
// value do that.
struct Network {
  std::string NetName;              // at most 254 characters
  int32_t UpdateRate = 1;           // iterations between screen updates
  int32_t MaxIterations = 0;        // the iteration at which training stops
  int32_t LRC = 0;                  // learn rate control acts from this iteration on
  int32_t WeightRate = 0;           // patterns per weight update; 0: all of them
  int32_t nPats = 0;                // patterns read
  int32_t nTrain = 0;               // patterns of the training list
  int32_t testPats = 0;             // patterns of the test list
  int32_t overMeth = kTestNone;     // a TestMethod
  std::vector<int32_t> train_list;  // nTrain pattern numbers from 0
  std::vector<int32_t> test_list;   // testPats pattern numbers from 0
  float Eta = 0;                    // learn rate, 0..1; learn rate control changes it
  float Alpha = 0;                  // momentum, 0..1
  float EtaMin = 0;                 // of learn rate control, 0..1
  float EtaMax = 0;                 // of learn rate control, 0..1
  float FastProp = 0;               // FAST-Prop coefficient, 0..3
  int32_t iteration = 0;            // iterations completed
  bool fully_connected = true;      // no connection has been removed
  int32_t nLayers = 0;              // 3..10
  float rms_train = 0;              // RMS error
  float rms_test = 0;
  float correlation_train = 0;  // correlation coefficient, -1..1
  float correlation_test = 0;
  float Tolerance = 0;     // in data units; monitored when above 0
  float within_train = 0;  // per cent of the outputs within tolerance, 0..100
  float within_test = 0;
  int32_t pat_norm = 0;   // inputs are normalized when not 0
  int32_t targ_norm = 0;  // targets are normalized when not 0
  Limits input_limits;    // by input node
  Limits target_limits;   // by output node
  std::array<Layer, kMaxLayers> layers;
  int32_t SaveRate = 0;         // iterations between AutoSave snapshots; 0: none
  std::string PatName;          // input node data file, at most 254 characters
  int32_t PatCol = 1;           // its first column, from 1
  std::string TargName;         // target data file, at most 254 characters
  int32_t TargCol = 1;          // its first column, from 1
  int32_t testStart = 0;        // first and last pattern, from 1, of a test set that is
  int32_t testEnd = 0;          //   one block of patterns; both 0 for any other
  Matrix targets;               // nPats x output nodes, as the network is to give them
  std::string file_name;        // the path that it was opened or last saved under
  int32_t version = 3;          // of the file that was read, 0..3
  bool random_weights = false;  // the file asked for random weights, or reading them failed
  bool trained = false;         // the opened file holds weights
  Mode mode = Mode::kTraining;
  std::string RecallPatName;  // the recall data: input file and first column
  int32_t RecallPatCol = 1;
  std::string RecallTargName;                         // empty: no targets
  int32_t RecallTargCol = 0;                          // 0: not set
  bool RecallTargets = false;                         // targets are there; always so in training
  std::array<bool, kMaxLayers> connections_edited{};  // by receiving layer, see netfile
  bool reset_weights = false;                         // random weights are wanted before training
  std::vector<std::string> input_names;   // empty, or one label of at most 25 characters a node
  std::vector<std::string> output_names;  // likewise
  bool results_ready = false;             // a recall run has filled the activations
};

inline Layer& OutputLayer(Network& network) {
  return network.layers[static_cast<size_t>(network.nLayers - 1)];
}
inline const Layer& OutputLayer(const Network& network) {
  return network.layers[static_cast<size_t>(network.nLayers - 1)];
}

// Whether targets are in the record: always in training, in recall when it has them.
inline bool HasTargets(const Network& network) {
  return network.mode == Mode::kTraining || network.RecallTargets;
}

// Answers for a layer count outside 3..10 or a node count below 1 with the design's own
// message, and for sizes that no machine could hold with kOutOfMemory. Everything below, and
// every reader of sections, relies on it.
Status CheckShape(const Network& network);

// Allocates weights (0), weight changes (0), masks (1), derivatives and deltas
// of every layer, the activations of nPats patterns, the targets when HasTargets, and the
// limits. kOutOfMemory, with nothing allocated, when the machine's memory does not hold them.
Status AllocateArrays(Network& network);

// Every weight and bias: (1 - r * 2 / 32767) * 0.3 with r the next value of the generator,
// layer by layer, node by node, the bias last; weight changes 0.
void InitializeRandomWeights(Network& network, uint32_t seed);

// Weight 0 for every connection whose mask is 0.
void ClearRemovedWeights(Network& network);

// All masks 1 and the network marked as fully connected.
void ConnectFully(Network& network);

// Sum of (nUnits(l-1) + 1) * nUnits(l) over the computed layers: bias weights included,
// removed connections too.
int64_t ConnectionCount(const Network& network);
int64_t NodeCount(const Network& network);

// "Sigmoid", "Gaussian", "Tanh" or "Sech" when all computed layers share it, else "Hybrid".
std::string_view TransferFunctionName(const Network& network);

}  // namespace tarn
