#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// The outputs export: one line a pattern, in pattern order, values separated by tabs. The
// pattern number from 1; in training with a test set, 1 for a training pattern and 0 for a
// test pattern; then for every output node its target, where there are targets, and its
// output, both in data units.

// Takes one line with its line end; false ends the export.
using LineSink = std::function<bool(std::string_view line)>;

// False when the sink has refused a line.
bool WriteOutputs(const Network& network, const LineSink& sink);

// Writes the file `path`; it is as it was after a failure.
Status ExportOutputs(const Network& network, const std::string& path);

}  // namespace tarn
