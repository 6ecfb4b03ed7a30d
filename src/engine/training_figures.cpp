#include "engine/training_figures.h"

#include <fmt/printf.h>

namespace tarn {
namespace {

std::string Figure(double value) {
  return fmt::sprintf("%8.6f", value);
}

std::string Percent(double value) {
  return fmt::sprintf("%5.1f%%", value);
}

}  // namespace

TrainingFigures FiguresOf(const Network& network, const RunFigures& run) {
  const bool test = network.testPats > 0;
  const bool tolerance = network.Tolerance > 0;
  TrainingFigures figures;
  figures.rms_train = Figure(network.rms_train);
  figures.eta = Figure(network.Eta);
  figures.percent_complete = Percent(run.fraction_complete * 100.0);
  figures.speed = fmt::sprintf("%.0f", run.speed);
  figures.correlation_train = Figure(network.correlation_train);
  if (test) figures.rms_test = Figure(network.rms_test);
  if (test) figures.correlation_test = Figure(network.correlation_test);
  if (tolerance) figures.within_train = Percent(network.within_train);
  if (tolerance && test) figures.within_test = Percent(network.within_test);
  if (network.iteration > kNoEstimateTo) {
    figures.time_remaining = TimeRemainingText(run.seconds_remaining);
  }
  return figures;
}

std::string MinimizedTitle(const Network& network) {
  return fmt::sprintf("Tarn: Iteration - %d; Error %7.5f", network.iteration,
                      double{network.rms_train});
}

}  // namespace tarn
