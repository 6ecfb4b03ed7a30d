#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "app/session.h"
#include "base/status.h"
#include "engine/network.h"

namespace tarn {

// Layers and nodes of a network: whether weights that were stored fit it.
using NetworkShape = std::array<int32_t, kMaxLayers>;  // nodes by layer, 0 where there is none
NetworkShape ShapeOf(const Network& network);

// Loads the opened network and its data, one step at a time, so that a window can show each.
class NetworkLoader {
 public:
  enum class Kind {
    kTraining,  // from the file
    kEdited,    // the setup stands in the record, edited since ReadSetup
    kRecall,    // from the file, with the recall data named in the record, and runs the recall
  };

  // `stored` is the shape that the file has; of kEdited alone. Weights in the file are passed
  // over without a notice when the record has another. The session is not owned.
  NetworkLoader(Session& session, Kind kind, const NetworkShape& stored = {});

  // The text of the step that comes next; empty when all are done.
  std::string_view NextStep() const;
  // Does it. Notices are added for every fallback taken. After a failure the network can be
  // neither trained nor recalled, and no step is left.
  Status DoStep(Notices& notices);

 private:
  struct Step {
    std::string_view text;
    Status (NetworkLoader::*work)(Notices& notices);
  };
  static std::span<const Step> Steps(Kind kind);

  Status ReadFile(Notices& notices);
  Status Count(Notices& notices);
  Status ReadData(Notices& notices);
  Status ReadStoredWeights(Notices& notices);
  Status ReadStoredConnections(Notices& notices);
  Status ChooseTestSet(Notices& notices);
  Status Recall(Notices& notices);

  Session& m_session;
  NetworkShape m_stored;
  Kind m_kind;
  size_t m_step = 0;
  size_t m_buffer_size = 0;  // for the longest record of the data files
};

}  // namespace tarn
