#include "engine/pattern_sets.h"

namespace tarn {

std::vector<PatternSet> PatternSets(const Network& network) {
  if (network.mode != Mode::kTraining || network.testPats <= 0) {
    return {{{}, network.nPats, true, false}};
  }
  return {{network.train_list, network.nTrain, false, false},
          {network.test_list, network.testPats, false, true}};
}

}  // namespace tarn
