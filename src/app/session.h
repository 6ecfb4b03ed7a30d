#pragma once

#include <string>

#include "base/random.h"
#include "base/status.h"
#include "base/temp_file.h"
#include "engine/network.h"

namespace tarn {

// The one network at hand and what belongs to it.
struct Session {
  Network network;
  SeedSource seeds;
  ScratchFolder scratch;
  bool saved = false;  // the file holds the network as it is
};

// The Open command: checks the file and takes its name, from the root on, as the network's.
// network.trained tells whether it holds weights. The folder of a file that can be read is the
// current directory afterwards: relative names of data files are looked up there. The scratch file
// of the untitled network is refused without a text.
Status OpenNetwork(Session& session, const std::string& path);

// Takes the scratch file of an untitled network as the network's, without the check.
void TakeUntitled(Session& session, const std::string& path);

// The New command: the network is the scratch file of the current directory from now on. A file of
// that name is deleted; reading the setup makes a new one.
void StartNewNetwork(Session& session);

// Reads the header of the opened network into the record, where the setup dialogs edit it.
// Connection edits of an earlier setup are forgotten.
Status ReadSetup(Session& session);

// Writes the setup of an untitled network into its scratch file: should the load fail, the next
// setup begins with what was entered. A network that the user has named is not touched.
void KeepUntitledSetup(Session& session);

// Reads the opened network and its training data: header, patterns, normalization, test set,
// weights, connections. Notices are added for every fallback taken. After a failure the
// network cannot be trained.
Status LoadForTraining(Session& session, Notices& notices);

// Reads the opened network with the recall data named in the record and runs the recall. The
// network must be trained. After success the activations of all layers are those of the recall
// patterns.
Status LoadAndRecall(Session& session, Notices& notices);

}  // namespace tarn
