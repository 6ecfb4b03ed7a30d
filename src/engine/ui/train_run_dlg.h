#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/timer.h>

#include "app/dialogs.h"
#include "app/session.h"
#include "app/training_desk.h"
#include "base/clock.h"

namespace tarn {

// The training window: the client of the main frame while a network trains. It shows the live
// figures, works the run in slices from the idle events and carries out the commands of
// TRAIN_MENU, which the frame has by then.
class TrainRunDlg : public wxPanel, private TrainingView {
 public:
  // `figures_shown` is called whenever the figures on the screen are new. Session, dialogs and
  // clock are not owned and outlive the window.
  TrainRunDlg(wxFrame& frame, Session& session, Dialogs& dialogs, const Clock& clock,
              std::function<void()> figures_shown);

  // A command of the menu; false when it is none of the training window's own.
  bool DoCommand(int command);
  // While something else has the network in hand, no slice is worked.
  void Hold(bool hold);
  void StopTraining() { m_desk.Stop(); }
  // The program ends, and nobody could be asked whether to save.
  void LeaveNetwork() { m_desk.LeaveNetwork(); }
  void KeepNetwork() { m_desk.KeepNetwork(); }
  // The program is about to end without a word more.
  void Abandon();
  const TrainingDesk& desk() const { return m_desk; }

 private:
  // TrainingView
  void ShowStatus(std::string_view text) override;
  void Changed() override { m_changed = true; }

  void OnIdle(wxIdleEvent& event);
  bool DoFileCommand(int command);
  bool DoOptionCommand(int command);
  void ShowFigures();
  void ShowProgress();
  void ShowState();
  void EnableButtons(bool under_way);

  wxFrame& m_frame;
  const Clock& m_clock;
  std::function<void()> m_figures_shown;
  TrainingDesk m_desk;
  wxTimer m_halt_timer;
  bool m_changed = true;      // the screen is behind
  int64_t m_shown_at_ms = 0;  // when it was last brought up to date
  bool m_working = false;     // within a slice
  int m_holds = 0;
};

}  // namespace tarn
