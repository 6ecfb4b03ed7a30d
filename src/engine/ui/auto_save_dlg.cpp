#include "engine/ui/auto_save_dlg.h"

#include <wx/combobox.h>

#include "engine/ui/long_choice.h"
#include "resources/controls.h"

namespace tarn {
namespace {

constexpr int kIterationCombo = 101;
constexpr unsigned kLongestChoice = 511;

}  // namespace

AutoSaveDlg::AutoSaveDlg(wxWindow* parent, const std::vector<std::string>& iterations,
                         Dialogs& dialogs) {
  LoadDialog(*this, parent, "AUTOSAVE_DLG");
  auto& combo = Control<wxComboBox>(*this, kIterationCombo);
  combo.SetMaxLength(kLongestChoice);
  ReadyForManyChoices(combo);
  wxArrayString choices;
  for (const std::string& iteration : iterations) choices.Add(Wide(iteration));
  combo.Append(choices);
  if (!iterations.empty()) combo.SetSelection(static_cast<int>(iterations.size()) - 1);
  combo.SetFocus();
  const auto end_on = [this](int id) {
    Bind(
        wxEVT_BUTTON, [this, id](wxCommandEvent&) { EndModal(id); }, id);
  };
  end_on(kOkId);
  end_on(kCancelId);
  Bind(
      wxEVT_BUTTON, [&dialogs](wxCommandEvent&) { dialogs.ShowHelp(HelpTopic::kAutoSave); },
      kHelpId);
}

std::string AutoSaveDlg::choice() const {
  return TextOf(*this, kIterationCombo);
}

}  // namespace tarn
