#include "setup/ui/net_view_dlg.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/image.h>
#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include "base/temp_file.h"
#include "resources/controls.h"
#include "setup/setup_fixture.h"
#include "setup/ui/net_design_dlg.h"
#include "support/fake_dialogs.h"
#include "support/temp_folder.h"
#include "ui/driver.h"
#include "ui/pictures.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kViewButton = 149;
// Turns of the event loop in which a window is painted, with some to spare.
constexpr int kTurnsToPaint = 15;

// The view, opened from the network design, which stays open and modal.
class NetViewDlgTest : public testing::Test {
 protected:
  int Run(const std::vector<Step>& steps) {
    NetDesignDlg dialog(nullptr, m_network, m_dialogs, m_scratch.path());
    m_design = &dialog;
    return RunModal(dialog, steps);
  }
  // The view that is open; null when there is none.
  static NetViewDlg* View() {
    for (wxWindow* window : wxTopLevelWindows) {
      auto* view = dynamic_cast<NetViewDlg*>(window);
      if (view != nullptr && !view->IsBeingDeleted()) return view;
    }
    return nullptr;
  }
  static wxWindow& Page() { return *View()->GetChildren().GetLast()->GetData(); }

  Step ClickStep(int id) {
    return [this, id] { Click(*m_design, id); };
  }
  Step TypeStep(int id, const char* text) {
    return [this, id, text] { Type(*m_design, id, text); };
  }
  static Step ExpectViewStep(bool open) {
    return [open] { EXPECT_EQ(View() != nullptr, open); };
  }
  // Steps, with the turns between them in which what they change is painted.
  static std::vector<Step> Painted(const std::vector<Step>& steps) {
    std::vector<Step> all;
    for (const Step& step : steps) {
      all.push_back(step);
      if (&step != &steps.back()) all.insert(all.end(), kTurnsToPaint, [] {});
    }
    return all;
  }

  // Whether something is drawn at a place of the page, as it stands on the screen.
  bool HasInk(wxPoint place) const {
    wxString before;
    const bool was_set = wxGetEnv("TARN_SCREENSHOTS", &before);
    wxSetEnv("TARN_SCREENSHOTS", Wide(m_folder.path()));
    LookAt(*View(), "view");
    if (was_set) {
      wxSetEnv("TARN_SCREENSHOTS", before);
    } else {
      wxUnsetEnv("TARN_SCREENSHOTS");
    }
    const wxImage picture(Wide(m_folder / "view.png"));
    const wxPoint origin = Page().GetScreenPosition() - View()->GetScreenPosition();
    const wxPoint at = origin + place;
    const auto is_white = [&picture](int x, int y) {
      return picture.GetRed(x, y) > 250 && picture.GetGreen(x, y) > 250 &&
             picture.GetBlue(x, y) > 250;
    };
    return !is_white(at.x, at.y) || !is_white(at.x - 1, at.y) || !is_white(at.x + 1, at.y);
  }
  // The middle of the connection between the first nodes of the layers 1 and 2, of two nodes each.
  static wxPoint FirstConnection() {
    const wxSize page = Page().GetClientSize();
    const int spacing = page.y / 4;
    return {page.x / 3, spacing + spacing / 2};
  }
  static Step RemoveFirstStep() {
    return [] {
      Control<wxListBox>(*TopDialog(), 101).SetSelection(0);
      Click(*TopDialog(), 103);
      Click(*TopDialog(), kOkId);
    };
  }

  TempFolder m_folder;
  ScratchFolder m_scratch;
  FakeDialogs m_dialogs;
  Network m_network = MakeNetwork({2, 2, 1});
  NetDesignDlg* m_design = nullptr;  // while it runs
};

TEST_F(NetViewDlgTest, OpensOnceWithItsMenuAndGoesWithTheDesign) {
  (void)Run({ClickStep(kViewButton),
             [] {
               ASSERT_NE(View(), nullptr);
               EXPECT_EQ(Utf8(View()->GetTitle()), "Network Design");
               EXPECT_TRUE(View()->GetIcons().GetIconByIndex(0).IsOk());
               ASSERT_EQ(View()->GetMenuBar()->GetMenuCount(), 1U);
               EXPECT_EQ(Utf8(View()->GetMenuBar()->GetMenuLabelText(0)), "Exit");
               ASSERT_EQ(View()->GetMenuBar()->GetMenu(0)->GetMenuItemCount(), 1U);
               EXPECT_EQ(Utf8(View()->GetMenuBar()->FindItem(101)->GetItemLabelText()), "Exit");
             },
             [this] {
               const NetViewDlg* view = View();
               Click(*m_design, kViewButton);
               EXPECT_EQ(View(), view);
             },
             ClickStep(kCancelId)});
  EXPECT_EQ(View(), nullptr);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(NetViewDlgTest, IsClosedByItsMenu) {
  const auto click_at = [](wxPoint place) {
    return [place] {
      wxUIActionSimulator simulator;
      simulator.MouseMove(View()->GetScreenPosition() + place);
      simulator.MouseClick();
    };
  };
  // The bar, then the one item under it.
  (void)Run(Painted({ClickStep(kViewButton), click_at({12, 8}), click_at({40, 36}),
                     ExpectViewStep(false), [this] { EXPECT_EQ(TopDialog(), m_design); },
                     ClickStep(kViewButton), ExpectViewStep(true), ClickStep(kCancelId)}));
}

TEST_F(NetViewDlgTest, IsClosedByEscapeWhileTheDesignStaysOpen) {
  EXPECT_EQ(Run(Painted({ClickStep(kViewButton), [] { PressOn(Page(), WXK_ESCAPE); },
                         ExpectViewStep(false), [this] { EXPECT_EQ(TopDialog(), m_design); },
                         ClickStep(kOkId)})),
            kOkId);
}

TEST_F(NetViewDlgTest, ShowsOneLineFewerAfterAConnectionWasRemoved) {
  (void)Run(Painted({ClickStep(kViewButton), [this] { EXPECT_TRUE(HasInk(FirstConnection())); },
                     ClickStep(139), RemoveFirstStep(),
                     [this] { EXPECT_FALSE(HasInk(FirstConnection())); }, ClickStep(kCancelId)}));
}

TEST_F(NetViewDlgTest, ShowsConnectionsRemovedBeforeItOpens) {
  (void)Run(Painted({ClickStep(139), RemoveFirstStep(), ClickStep(kViewButton),
                     [this] { EXPECT_FALSE(HasInk(FirstConnection())); }, ClickStep(kCancelId)}));
}

TEST_F(NetViewDlgTest, FollowsTheFieldsThatAreTyped) {
  const auto second_input = [] {
    const wxSize page = Page().GetClientSize();
    return wxPoint(page.x * 2 / 3, page.y / 4);
  };
  (void)Run(Painted({ClickStep(kViewButton), [=, this] { EXPECT_TRUE(HasInk(second_input())); },
                     TypeStep(102, "1"), [=, this] { EXPECT_FALSE(HasInk(second_input())); },
                     TypeStep(102, "0"), [=, this] { EXPECT_FALSE(HasInk(second_input())); },
                     TypeStep(102, "2"), [=, this] { EXPECT_TRUE(HasInk(second_input())); },
                     ClickStep(kCancelId)}));
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_network.layers[0].nUnits, 2);
}

TEST_F(NetViewDlgTest, MarksTheNodesOfALayerWhoseTransferFunctionWasChosen) {
  const auto off_the_node = [] {
    const wxSize page = Page().GetClientSize();
    return wxPoint(page.x / 2, page.y / 4 * 3);
  };
  (void)Run(Painted({ClickStep(kViewButton), ClickStep(120),
                     [] {
                       Click(*TopDialog(), 12);
                       Click(*TopDialog(), kOkId);
                     },
                     [=, this] { EXPECT_TRUE(HasInk(off_the_node())); }, ClickStep(kCancelId)}));
}

TEST_F(NetViewDlgTest, IsDrawnForTheSizeThatItGets) {
  (void)Run(
      Painted({ClickStep(kViewButton), [] { View()->SetSize(900, 700); },
               [this] { EXPECT_TRUE(HasInk(FirstConnection())); }, [] { View()->SetSize(1, 1); },
               [] {
                 EXPECT_GE(Page().GetClientSize().x, 100);
                 EXPECT_GE(Page().GetClientSize().y, 100);
               },
               [this] { EXPECT_TRUE(HasInk(FirstConnection())); }, ClickStep(kCancelId)}));
}

TEST_F(NetViewDlgTest, TellsWhyThereIsNothingToDraw) {
  (void)Run({TypeStep(101, "x"), TypeStep(102, "-1"), ClickStep(kViewButton), ExpectViewStep(false),
             ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Network Design Error|Set number of network layers between 3 and 10",
                          "Network Design Error|Invalid value for input node count"));
}

TEST_F(NetViewDlgTest, SaysThatTheUserHasToWaitForVeryManyLines) {
  m_network = MakeNetwork({300, 300, 1});
  (void)Run(Painted({ClickStep(kViewButton), [] {}, ClickStep(kCancelId)}));
  EXPECT_THAT(m_dialogs.busy_log, testing::StartsWith("+-"));
}

}  // namespace
}  // namespace tarn
