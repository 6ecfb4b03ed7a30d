#pragma once

#include "browser/report_file.h"
#include "engine/network.h"

namespace tarn {

// What the network is: its layers and, in training, which connections have been removed and how it
// is being trained.
void WriteInformation(const Network& network, ReportFile& report);

// Every weight with its change of the last update; without the bias weights. Layers are numbered
// from 1, the input layer.
void WriteWeights(const Network& network, ReportFile& report);

}  // namespace tarn
