#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/network.h"
#include "setup/draft_result.h"

namespace tarn {

inline constexpr size_t kHiddenRows = 8;

// The layer that a button opens a dialog for, or the messages why it opens none.
struct LayerRequest {
  std::vector<Message> messages;
  int32_t layer = 0;  // 1..9; 0: nothing opens
};

// The design as typed so far: name, layer count, node counts, transfer functions, edit marks and
// the file whose CONNECTIONS section holds. No arrays. With messages it is not to be used.
struct DesignRequest {
  std::vector<Message> messages;
  Network design;
};

// The same for the connection editor.
struct ConnectionsRequest : DesignRequest {
  int32_t receiving_layer = 0;  // 1..9; 0: nothing opens
};

// The network design dialog (`NetDesignDlg`) without its window: every field as text.
struct NetDesignDraft {
  enum Id : int {
    kLayerCountEdit = 101,
    kInputNodesEdit = 102,
    kHiddenNodesEdit = 103,  // of hidden layer 1; the others follow
    kOutputNodesEdit = 111,
    kNameEdit = 148,
  };

  std::string name;
  std::string layer_count;
  std::string input_nodes;
  std::array<std::string, kHiddenRows> hidden_nodes;  // [0] is hidden layer 1
  std::string output_nodes;
  std::array<int32_t, kMaxLayers> transfer{};         // working codes, by layer
  std::array<bool, kMaxLayers> connections_edited{};  // by receiving layer
  int32_t loaded_layers = 0;                          // the layers that Load found

  void Load(const Network& network);

  // Checks every field and stores each that passes, whatever becomes of the others. An empty
  // field keeps the old count; one of a hidden layer that is new has none to keep. A layer
  // count out of range is stored as 3. An output count that is left empty follows the output
  // layer when the layer count changes. The edit flags are stored when all fields pass.
  DraftResult Apply(Network& network) const;

  // "Transfer Functions..." of the output row; that of hidden row k always opens for layer k.
  LayerRequest TransferFunctionsOfOutput() const;

  // "Connections..." of hidden row 1..8 and of the output row. The network is only read.
  ConnectionsRequest ConnectionsOfHidden(int32_t row, const Network& network) const;
  ConnectionsRequest ConnectionsOfOutput(const Network& network) const;

  // "View Network". The network is only read.
  DesignRequest DesignToView(const Network& network) const;
};

}  // namespace tarn
