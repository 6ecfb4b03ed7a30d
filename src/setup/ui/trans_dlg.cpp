#include "setup/ui/trans_dlg.h"

#include <algorithm>
#include <array>

#include "engine/network.h"
#include "resources/controls.h"

namespace tarn {
namespace {

struct Choice {
  int radio;
  int32_t code;
};
// The order in which OK looks for the one that is checked.
constexpr std::array kChoices = {Choice{11, kGaussian}, Choice{12, kTanh}, Choice{13, kSech},
                                 Choice{10, kSigmoid}};

}  // namespace

TransDlg::TransDlg(wxWindow* parent, int32_t& code, Dialogs& dialogs)
    : SetupDialog(parent, "TRANSFER_DLG", dialogs, HelpTopic::kNetworkDesign, kTransferHelpId),
      m_code(code) {
  OnButton(kOkId, [this] { Accept(); });
  CheckCode();
}

void TransDlg::CheckCode() {
  const auto* current = std::find_if(kChoices.begin(), kChoices.end(),
                                     [this](const Choice& c) { return c.code == m_code; });
  if (current == kChoices.end()) {
    CheckNone(kChoices.front().radio);
    Control(*this, kOkId).SetFocus();
    return;
  }
  SetChecked(*this, current->radio, true);
  Control(*this, current->radio).SetFocus();
}

void TransDlg::Accept() {
  const auto* chosen = std::find_if(kChoices.begin(), kChoices.end(),
                                    [this](const Choice& c) { return IsChecked(*this, c.radio); });
  if (chosen != kChoices.end()) m_code = chosen->code;
  EndModal(kOkId);
}

}  // namespace tarn
