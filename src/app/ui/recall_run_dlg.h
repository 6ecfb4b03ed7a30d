#pragma once

#include <wx/panel.h>

#include "engine/network.h"

namespace tarn {

// The recall window: the client of the main frame after a recall run. It sums up the network.
class RecallRunDlg : public wxPanel {
 public:
  RecallRunDlg(wxWindow* parent, const Network& network);
};

}  // namespace tarn
