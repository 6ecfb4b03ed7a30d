#include <gtest/gtest.h>
#include <utility>
#include <vector>
#include <wx/print.h>
#include <wx/uiaction.h>

#include "browser/ui/info_browser.h"
#include "netgraph/ui/net_graph_dlg.h"
#include "resources/controls.h"
#include "ui/main_window_fixture.h"
#include "ui/pictures.h"

// Opens every window once and looks at it.

namespace tarn {
namespace {

class Gallery : public MainWindowFixture {
 public:
  // The pointer stands where it is in nobody's way.
  Gallery() { wxUIActionSimulator().MouseMove(1279, 1023); }

  // Turns of the event loop in which a window is painted, with some to spare.
  static constexpr int kTurnsToPaint = 12;

  // Waits for the innermost dialog to be painted, then looks at it.
  Gallery& Look(const char* name) {
    for (int i = 0; i < kTurnsToPaint; ++i) m_steps.emplace_back([] {});
    m_steps.emplace_back([name] { LookAt(*TopDialog(), name); });
    return *this;
  }
  // The same for the view of the network.
  Gallery& LookAtView(const char* name) {
    for (int i = 0; i < kTurnsToPaint; ++i) m_steps.emplace_back([] {});
    m_steps.emplace_back([name] { LookAt(*wxTopLevelWindows.GetLast()->GetData(), name); });
    return *this;
  }
  Gallery& Press(int id) {
    m_steps.emplace_back([id] { Click(*TopDialog(), id); });
    return *this;
  }
  std::vector<Step> Steps() { return std::exchange(m_steps, {}); }

  Gallery& Enter(const char* text) {
    m_steps.emplace_back([text] { Type(*TopDialog(), 101, text); });
    return Press(kOkId);
  }

  void LookAtFrame(const char* name) {
    WaitToPaint();
    LookAt(Frame(), name);
  }
  // Waits for the window of that kind, looks at it and closes it.
  template <typename Window>
  void LookAtTheOpen(const char* name) {
    Until([] { return OpenWindows<Window>().size() == 1; });
    WaitToPaint();
    LookAt(*OpenWindows<Window>().front(), name);
    OpenWindows<Window>().front()->Close();
    Until([] { return OpenWindows<Window>().empty(); });
  }
  void WaitToPaint() {
    int turns = 0;
    Until([&] { return ++turns > 2 * kTurnsToPaint; });
  }

  static constexpr int kPreview = 151;

  std::vector<Step> m_steps;
};

TEST_F(Gallery, ShowsTheStartUpWindowAndTheAboutBox) {
  m_dialogs->files.push_back(m_folder / "iris.net");
  Click(Client(), 103);
  Click(Client(), 102);
  LookAtFrame("start-up");
  RunWhile([this] { Click(Client(), 109); }, Look("about").Press(kOkId).Steps());
}

TEST_F(Gallery, ShowsTheSetupDialogs) {
  Look("training-setup").Press(101).Look("network-design");
  Press(113).Look("transfer-functions").Press(kCancelId);
  Press(139).Look("connection-editor").Press(kCancelId);
  Press(149).LookAtView("network-view").Press(kCancelId);
  Press(102).Look("training-data").Press(kCancelId);
  Press(103).Look("training-parameters").Press(kCancelId);
  OpenForTraining("iris.net", Steps());
}

TEST_F(Gallery, ShowsTheTrainingWindowAndItsDialogs) {
  OpenForTraining("iris.net");
  LookAtFrame("training-ready");
  Train();
  LookAtFrame("training-complete");
  Choose(106, Look("learn-rate").Press(kOkId).Steps());
  m_dialogs->files.push_back(m_folder / "snapshot.net");
  Choose(104, Look("autosave").Press(kCancelId).Steps());
}

TEST_F(Gallery, ShowsGraphs) {
  OpenForTraining("iris.net");
  Train();
  m_native.answers = {wxID_NO, wxID_NO};
  Choose(116);
  LookAtTheOpen<NetGraphDlg>("graph-history");
  Choose(118);
  LookAtTheOpen<NetGraphDlg>("graph-scatter");
  Choose(119, Enter("2").Steps());
  LookAtTheOpen<NetGraphDlg>("graph-outputs");
  Choose(131, Enter("2").Steps());
  LookAtTheOpen<NetGraphDlg>("graph-interrogator");
  Choose(146, Enter("3").Enter("4").Enter("2").Steps());
  LookAtTheOpen<NetGraphDlg>("graph-contours");
}

TEST_F(Gallery, ShowsReports) {
  OpenForTraining("iris.net");
  Train();
  Choose(123);
  LookAtTheOpen<InfoBrowser>("report-outputs");
  Choose(125);
  OpenWindows<InfoBrowser>().front()->ProcessCommand(kPreview);
  LookAtTheOpen<wxPreviewFrame>("report-preview");
  LookAtTheOpen<InfoBrowser>("report-statistics");
}

TEST_F(Gallery, ShowsTheRecallDialogAndWindow) {
  OpenForTraining("iris.net");
  Train();
  Choose(101);
  Choose(129);
  Until([this] { return Frame().training() == nullptr; });
  Click(Client(), 106);
  m_dialogs->files = {"iris.txt", "iris.txt"};
  Press(101).Press(102);
  m_steps.emplace_back([] { Type(*TopDialog(), 112, "5"); });
  RunWhile([this] { Click(Client(), 105); }, Look("recall-data").Press(kOkId).Steps());
  Until([this] { return Frame().GetMenuBar() != nullptr; });
  LookAtFrame("recall");
}

}  // namespace
}  // namespace tarn
