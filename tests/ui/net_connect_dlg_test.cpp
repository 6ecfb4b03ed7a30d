#include "setup/ui/net_connect_dlg.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/listbox.h>
#include <wx/uiaction.h>

#include "base/temp_file.h"
#include "netfile/connections_section.h"
#include "resources/controls.h"
#include "setup/setup_fixture.h"
#include "support/fake_dialogs.h"
#include "ui/driver.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kInNetwork = 101;
constexpr int kRemoved = 102;

class NetConnectDlgTest : public testing::Test {
 protected:
  using DialogStep = std::function<void(NetConnectDlg&)>;

  NetConnectDlgTest() {
    m_request.design = MakeNetwork({2, 3, 1});
    m_request.receiving_layer = 1;
  }

  int Run(const std::vector<DialogStep>& steps) {
    NetConnectDlg dialog(nullptr, m_request, m_edited, m_scratch.path(), m_dialogs);
    std::vector<Step> bound;
    bound.reserve(steps.size());
    for (const DialogStep& step : steps) bound.emplace_back([&dialog, step] { step(dialog); });
    return RunModal(dialog, bound);
  }
  // With turns of the event loop between the steps in which the display brings what the pointer did
  // and a list that scrolls comes to rest.
  int RunSlowly(const std::vector<DialogStep>& steps) {
    std::vector<DialogStep> all;
    for (const DialogStep& step : steps) {
      if (!all.empty()) all.insert(all.end(), 40, [](NetConnectDlg&) {});
      all.push_back(step);
    }
    return Run(all);
  }
  static DialogStep ClickStep(int id) {
    return [id](NetConnectDlg& dialog) { Click(dialog, id); };
  }
  static DialogStep PressStep(int key) {
    return [key](NetConnectDlg&) { Press(key); };
  }
  static DialogStep SelectStep(int list, const std::vector<int>& places) {
    return [list, places](NetConnectDlg& dialog) {
      auto& box = Control<wxListBox>(dialog, list);
      box.SetFocus();
      for (const int place : places) box.SetSelection(place);
    };
  }
  static std::vector<std::string> Items(const NetConnectDlg& dialog, int list) {
    std::vector<std::string> items;
    for (const wxString& text : Control<wxListBox>(dialog, list).GetStrings()) {
      items.push_back(Utf8(text));
    }
    return items;
  }
  static DialogStep ExpectItems(int list, const std::vector<std::string>& items) {
    return [list, items](NetConnectDlg& dialog) { EXPECT_EQ(Items(dialog, list), items); };
  }
  static std::vector<int> Selected(const NetConnectDlg& dialog, int list) {
    wxArrayInt selected;
    Control<wxListBox>(dialog, list).GetSelections(selected);
    return {selected.begin(), selected.end()};
  }
  bool HasPendingFile() const {
    return std::filesystem::exists(ConnectionFilePath(m_scratch.path(), 1));
  }

  ScratchFolder m_scratch;
  FakeDialogs m_dialogs;
  ConnectionsRequest m_request;
  bool m_edited = false;
};

TEST_F(NetConnectDlgTest, OpensWithEveryConnectionOfAFreshNetwork) {
  EXPECT_EQ(Run({[](NetConnectDlg& dialog) {
                   EXPECT_EQ(Utf8(dialog.GetTitle()), "Connection Editor: From Layer 1 to Layer 2");
                   EXPECT_EQ(FocusedId(), kInNetwork);
                 },
                 ExpectItems(kInNetwork,
                             {"From L1 N1 to L2 N1", "From L1 N2 to L2 N1", "From L1 N1 to L2 N2",
                              "From L1 N2 to L2 N2", "From L1 N1 to L2 N3", "From L1 N2 to L2 N3"}),
                 ExpectItems(kRemoved, {}), ClickStep(kOkId)}),
            kOkId);
  EXPECT_FALSE(m_edited);
  EXPECT_FALSE(HasPendingFile());
  EXPECT_THAT(m_dialogs.told, IsEmpty());
}

TEST_F(NetConnectDlgTest, RemovesTheSelectedOnesAndShowsThemWhenOpenedAgain) {
  EXPECT_EQ(Run({SelectStep(kInNetwork, {0, 2}), ClickStep(103),
                 ExpectItems(kRemoved, {"From L1 N1 to L2 N1", "From L1 N1 to L2 N2"}),
                 ExpectItems(kInNetwork, {"From L1 N2 to L2 N1", "From L1 N2 to L2 N2",
                                          "From L1 N1 to L2 N3", "From L1 N2 to L2 N3"}),
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_TRUE(m_edited);
  EXPECT_TRUE(HasPendingFile());
  m_request.design.connections_edited[1] = m_edited;
  (void)Run({ExpectItems(kRemoved, {"From L1 N1 to L2 N1", "From L1 N1 to L2 N2"}),
             SelectStep(kRemoved, {1}), ClickStep(104),
             ExpectItems(kRemoved, {"From L1 N1 to L2 N1"}), ClickStep(kOkId)});
  (void)Run({ExpectItems(kRemoved, {"From L1 N1 to L2 N1"}), ClickStep(kCancelId)});
}

TEST_F(NetConnectDlgTest, LeavesFileAndMarkAloneWithCancel) {
  EXPECT_EQ(Run({SelectStep(kInNetwork, {0}), ClickStep(103), ClickStep(kCancelId)}), kCancelId);
  EXPECT_EQ(Run({SelectStep(kInNetwork, {0}), ClickStep(103), PressStep(WXK_ESCAPE)}), kCancelId);
  EXPECT_FALSE(m_edited);
  EXPECT_FALSE(HasPendingFile());
}

TEST_F(NetConnectDlgTest, DoesNothingWithoutASelection) {
  EXPECT_EQ(Run({ClickStep(103), ClickStep(104), ExpectItems(kRemoved, {}), ClickStep(kOkId)}),
            kOkId);
  EXPECT_FALSE(m_edited);
}

TEST_F(NetConnectDlgTest, SelectsNothingAfterAMove) {
  (void)Run({SelectStep(kInNetwork, {1, 2, 3}), ClickStep(103),
             [](NetConnectDlg& dialog) {
               EXPECT_THAT(Selected(dialog, kInNetwork), IsEmpty());
               EXPECT_THAT(Selected(dialog, kRemoved), IsEmpty());
             },
             ClickStep(103),
             ExpectItems(kInNetwork,
                         {"From L1 N1 to L2 N1", "From L1 N1 to L2 N3", "From L1 N2 to L2 N3"}),
             ClickStep(kCancelId)});
}

TEST_F(NetConnectDlgTest, MovesTheItemThatIsClickedTwice) {
  const auto click_second_row = [](int list) {
    return [list](NetConnectDlg& dialog) {
      auto& box = Control<wxListBox>(dialog, list);
      int y = 0;
      while (box.HitTest(wxPoint(10, y)) != 1) ASSERT_LT(++y, box.GetClientSize().y);
      wxUIActionSimulator simulator;
      simulator.MouseMove(box.ClientToScreen(wxPoint(10, y + 4)));
      simulator.MouseDblClick();
    };
  };
  (void)RunSlowly({click_second_row(kInNetwork), ExpectItems(kRemoved, {"From L1 N2 to L2 N1"}),
                   SelectStep(kInNetwork, {0}), ClickStep(103), click_second_row(kRemoved),
                   ExpectItems(kRemoved, {"From L1 N1 to L2 N1"}), ClickStep(kCancelId)});
}

TEST_F(NetConnectDlgTest, MovesTheSelectionByKeys) {
  EXPECT_EQ(Run({SelectStep(kInNetwork, {0, 1}), PressStep(WXK_INSERT), ExpectItems(kRemoved, {}),
                 PressStep(WXK_DELETE),
                 ExpectItems(kRemoved, {"From L1 N1 to L2 N1", "From L1 N2 to L2 N1"}),
                 SelectStep(kRemoved, {1}), PressStep(WXK_DELETE), PressStep(WXK_INSERT),
                 ExpectItems(kRemoved, {"From L1 N1 to L2 N1"}), PressStep(WXK_RETURN)}),
            kOkId);
  EXPECT_TRUE(m_edited);
}

TEST_F(NetConnectDlgTest, SelectsByKeysAlone) {
  (void)Run({PressStep(WXK_DOWN), PressStep(WXK_DOWN), PressStep(WXK_DELETE),
             ExpectItems(kRemoved, {"From L1 N2 to L2 N1"}), PressStep(WXK_ESCAPE)});
}

TEST_F(NetConnectDlgTest, GoesOnBehindWhatWasMovedByKey) {
  (void)RunSlowly(
      {PressStep(WXK_DOWN), PressStep(WXK_DOWN), PressStep(WXK_DELETE),
       [](NetConnectDlg& dialog) { EXPECT_THAT(Selected(dialog, kInNetwork), ElementsAre(1)); },
       PressStep(WXK_DOWN),
       [](NetConnectDlg& dialog) { EXPECT_THAT(Selected(dialog, kInNetwork), ElementsAre(2)); },
       PressStep(WXK_UP), PressStep(WXK_SPACE),
       [](NetConnectDlg& dialog) { EXPECT_THAT(Selected(dialog, kInNetwork), ElementsAre(1)); },
       PressStep(WXK_ESCAPE)});
}

TEST_F(NetConnectDlgTest, KeepsItsPlaceInALongList) {
  m_request.design = MakeNetwork({100, 100, 1});
  (void)RunSlowly({[](NetConnectDlg& dialog) {
                     auto& box = Control<wxListBox>(dialog, kInNetwork);
                     EXPECT_EQ(box.GetCount(), 10'000U);
                     box.SetFirstItem(5000);
                     box.SetSelection(5003);
                   },

                   [](NetConnectDlg& dialog) {
                     const int top = Control<wxListBox>(dialog, kInNetwork).GetTopItem();
                     EXPECT_NEAR(top, 5000, 20);
                     Click(dialog, 103);
                   },
                   [](NetConnectDlg& dialog) {
                     EXPECT_EQ(Items(dialog, kRemoved).front(), "From L1 N4 to L2 N51");
                     EXPECT_NEAR(Control<wxListBox>(dialog, kInNetwork).GetTopItem(), 5000, 20);
                   },
                   ClickStep(kCancelId)});
  EXPECT_EQ(m_dialogs.busy_log, "+-+-");
}

TEST_F(NetConnectDlgTest, IsNotShownWhenMemoryIsShort) {
  m_request.design = MakeNetwork({2'000'000'000, 2'000'000'000, 1});
  EXPECT_EQ(Run({}), kCancelId);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Error|Memory insufficient for allocation of connections"));
  EXPECT_FALSE(m_edited);
}

TEST_F(NetConnectDlgTest, StaysOpenWhenTheFileCannotBeWritten) {
  const std::string folder = m_scratch.path();
  EXPECT_EQ(Run({SelectStep(kInNetwork, {0}), ClickStep(103),
                 [this](NetConnectDlg&) { m_scratch.Remove(); }, ClickStep(kOkId),
                 [folder](NetConnectDlg& dialog) {
                   EXPECT_EQ(TopDialog(), &dialog);
                   EXPECT_EQ(Items(dialog, kRemoved).size(), 1U);
                   std::filesystem::create_directory(folder);
                 },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Error|The connections could not be written into the temporary folder"));
  EXPECT_TRUE(m_edited);
  std::filesystem::remove_all(folder);
}

TEST_F(NetConnectDlgTest, OpensItsHelp) {
  (void)Run({ClickStep(kHelpId), PressStep(WXK_F1), ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kConnections, HelpTopic::kConnections));
}

TEST_F(NetConnectDlgTest, IsWalkedThroughInReadingOrder) {
  std::vector<DialogStep> steps;
  for (const int id : {103, 104, kRemoved, kOkId, kCancelId, kHelpId, kInNetwork}) {
    steps.push_back(PressStep(WXK_TAB));
    steps.emplace_back([id](NetConnectDlg&) { EXPECT_EQ(FocusedId(), id); });
  }
  steps.push_back(PressStep(WXK_ESCAPE));
  EXPECT_EQ(Run(steps), kCancelId);
}

TEST_F(NetConnectDlgTest, GivesItsListsTheRoomThatItGets) {
  (void)Run({[](NetConnectDlg& dialog) {
    const wxSize list = Control(dialog, kRemoved).GetSize();
    EXPECT_EQ(Control(dialog, kInNetwork).GetSize(), list);
    dialog.SetSize(dialog.GetSize() + wxSize(200, 100));
    dialog.Layout();
    EXPECT_EQ(Control(dialog, kInNetwork).GetSize(), list + wxSize(100, 100));
    dialog.EndModal(kCancelId);
  }});
}

}  // namespace
}  // namespace tarn
