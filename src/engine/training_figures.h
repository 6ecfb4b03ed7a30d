#pragma once

#include <string>

#include "engine/network.h"
#include "engine/training_run.h"

namespace tarn {

// What a window shows of a training run, as texts; empty where a figure is not shown.
struct TrainingFigures {
  std::string rms_train;
  std::string rms_test;  // with a test set, as all of the test set
  std::string eta;
  std::string percent_complete;
  std::string speed;         // thousands of connections a second
  std::string within_train;  // with a tolerance, as within_test
  std::string within_test;
  std::string correlation_train;
  std::string correlation_test;
  std::string time_remaining;  // from the sixth iteration on
};

TrainingFigures FiguresOf(const Network& network, const RunFigures& run);

// The title of the main window while it is minimized.
std::string MinimizedTitle(const Network& network);

}  // namespace tarn
