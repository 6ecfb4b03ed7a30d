#pragma once

#include <string>

#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// Of a setup: those of the old file, or none, when they fit the record no longer; they are random
// at the next load then.
enum class SetupWeights { kAsStored, kLeftOut };

// Saves the setup of a network: header and connections from the record, weights, test set and
// normalization limits as they stand in network.file_name, untouched. The parts wait in the
// scratch folder as "~tarn.wts", "~tarn.cnx", "~tarn.pat" and "~tarn.nrm" until the old file
// has been read whole, so `destination` may be the old file; it is replaced in one step. Clears
// the marks of edited connections. After a failure nothing has changed.
Status SaveSetup(Network& network, const std::string& destination,
                 const std::string& scratch_folder, SetupWeights which = SetupWeights::kAsStored);

}  // namespace tarn
