#include "setup/ui/net_design_dlg.h"

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/listbox.h>

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

constexpr char kLayerCountTold[] =
    "Network Design Error|Set number of network layers between 3 and 10";
constexpr std::array kTransferButtons = {113, 112, 114, 115, 116, 117, 118, 119};

class NetDesignDlgTest : public testing::Test {
 protected:
  using DialogStep = std::function<void(NetDesignDlg&)>;

  int Run(const std::vector<DialogStep>& steps) {
    NetDesignDlg dialog(nullptr, m_network, m_dialogs, m_scratch.path());
    std::vector<Step> bound;
    for (const DialogStep& step : steps) bound.push_back([&dialog, step] { step(dialog); });
    return RunModal(dialog, bound);
  }
  static DialogStep ClickStep(int id) {
    return [id](NetDesignDlg& dialog) { Click(dialog, id); };
  }
  // In the transfer function dialog that is open.
  static DialogStep ChooseStep(int radio) {
    return [radio](NetDesignDlg&) {
      Click(*TopDialog(), radio);
      Click(*TopDialog(), kOkId);
    };
  }
  // In the connection editor that is open: removes the first connection.
  static DialogStep RemoveStep(std::string caption) {
    return [caption](NetDesignDlg&) {
      wxDialog& editor = *TopDialog();
      EXPECT_EQ(Utf8(editor.GetTitle()), caption);
      Control<wxListBox>(editor, 101).SetSelection(0);
      Click(editor, 103);
      Click(editor, kOkId);
    };
  }
  static std::string EditorCaption(int layer) {
    return "Connection Editor: From Layer " + std::to_string(layer) + " to Layer " +
           std::to_string(layer + 1);
  }
  std::vector<int32_t> Codes() const {
    std::vector<int32_t> codes;
    for (const Layer& layer : m_network.layers) codes.push_back(layer.TransFunc);
    return codes;
  }

  FakeDialogs m_dialogs;
  Network m_network = MakeNetwork({4, 8, 6, 3});
  ScratchFolder m_scratch;
};

TEST_F(NetDesignDlgTest, OpensWithTheDesignAndLeavesMissingRowsEmpty) {
  m_network.NetName = "Übung & more";
  const int result = Run({[](NetDesignDlg& dialog) {
                            EXPECT_EQ(TextOf(dialog, 148), "Übung & more");
                            EXPECT_EQ(TextOf(dialog, 101), "4");
                            EXPECT_EQ(TextOf(dialog, 102), "4");
                            EXPECT_EQ(TextOf(dialog, 103), "8");
                            EXPECT_EQ(TextOf(dialog, 104), "6");
                            for (int edit = 105; edit <= 110; ++edit) {
                              EXPECT_EQ(TextOf(dialog, edit), "") << edit;
                            }
                            EXPECT_EQ(TextOf(dialog, 111), "3");
                            EXPECT_EQ(FocusedId(), 148);
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_THAT(m_dialogs.told, IsEmpty());
  EXPECT_EQ(m_network.NetName, "Übung & more");
}

TEST_F(NetDesignDlgTest, OpensWithEveryRowOfTenLayers) {
  m_network = MakeNetwork({11, 21, 31, 41, 51, 61, 71, 81, 91, 99});
  (void)Run({[](NetDesignDlg& dialog) {
               for (int row = 1; row <= 8; ++row) {
                 EXPECT_EQ(TextOf(dialog, 102 + row), std::to_string(row + 1) + "1");
               }
               EXPECT_EQ(TextOf(dialog, 111), "99");
             },
             ClickStep(kCancelId)});
}

TEST_F(NetDesignDlgTest, StoresEveryFieldWithOk) {
  const int result = Run({[](NetDesignDlg& dialog) {
                            Type(dialog, 148, "wide");
                            Type(dialog, 101, "10");
                            Type(dialog, 102, "1");
                            for (int row = 1; row <= 8; ++row) {
                              Type(dialog, 102 + row, std::to_string(row + 20));
                            }
                            Type(dialog, 111, "9");
                          },
                          ClickStep(kOkId)});
  EXPECT_EQ(result, kOkId);
  EXPECT_EQ(m_network.NetName, "wide");
  EXPECT_EQ(m_network.nLayers, 10);
  EXPECT_EQ(m_network.layers[0].nUnits, 1);
  for (size_t l = 1; l <= 8; ++l) {
    EXPECT_EQ(m_network.layers[l].nUnits, static_cast<int32_t>(l) + 20);
  }
  EXPECT_EQ(m_network.layers[9].nUnits, 9);
}

TEST_F(NetDesignDlgTest, StoresNothingWithCancel) {
  EXPECT_EQ(Run({[](NetDesignDlg& dialog) {
                   Type(dialog, 148, "other");
                   Type(dialog, 101, "3");
                   Type(dialog, 103, "5");
                 },
                 ClickStep(113), ChooseStep(12), ClickStep(kCancelId)}),
            kCancelId);
  EXPECT_EQ(m_network.NetName, "NO NAME");
  EXPECT_EQ(m_network.nLayers, 4);
  EXPECT_EQ(m_network.layers[1].nUnits, 8);
  EXPECT_THAT(Codes(), testing::Each(kSigmoid));
}

TEST_F(NetDesignDlgTest, TellsEveryFieldThatFailsInOrderAndStaysOpenAtTheFirst) {
  EXPECT_EQ(Run({[](NetDesignDlg& dialog) {
                   Type(dialog, 101, "11");
                   for (const int edit : {102, 103, 104, 111}) Type(dialog, edit, "0");
                   Click(dialog, kOkId);
                 },
                 [](NetDesignDlg& dialog) {
                   EXPECT_EQ(TopDialog(), &dialog);
                   EXPECT_EQ(FocusedId(), 101);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  const std::string caption = "Network Design Error|";
  EXPECT_THAT(m_dialogs.told,
              ElementsAre(kLayerCountTold, caption + "Invalid value for input node count",
                          caption + "Invalid value for output node count",
                          caption + "Hidden layer 1 has an invalid node count"));
  EXPECT_THAT(m_dialogs.icons, testing::Each(MessageIcon::kExclamation));
  EXPECT_EQ(m_network.nLayers, 3);
}

TEST_F(NetDesignDlgTest, AsksForTheNodesOfNewLayersAndGoesToTheFirst) {
  EXPECT_EQ(Run({[](NetDesignDlg& dialog) {
                   Type(dialog, 101, "6");
                   Click(dialog, kOkId);
                 },
                 [](NetDesignDlg& dialog) {
                   EXPECT_EQ(FocusedId(), 105);
                   Type(dialog, 105, "7");
                   Type(dialog, 106, "5");
                 },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Network Design Error|Hidden layer 3 has an invalid node count",
                          "Network Design Error|Hidden layer 4 has an invalid node count"));
  EXPECT_EQ(m_network.layers[5].nUnits, 3);
}

TEST_F(NetDesignDlgTest, ChoosesTheTransferFunctionOfEachRowByItsButton) {
  m_network = MakeNetwork({1, 2, 2, 2, 2, 2, 2, 2, 2, 3});
  for (size_t row = 1; row <= 8; ++row) {
    for (Layer& layer : m_network.layers) layer.TransFunc = kSigmoid;
    EXPECT_EQ(Run({ClickStep(kTransferButtons[row - 1]), ChooseStep(12), ClickStep(kOkId)}), kOkId);
    std::vector<int32_t> expected(10, kSigmoid);
    expected[row] = kTanh;
    EXPECT_EQ(Codes(), expected) << row;
  }
}

TEST_F(NetDesignDlgTest, ChoosesTheOutputsTransferFunctionForTheLayersTypedSoFar) {
  EXPECT_EQ(Run({[](NetDesignDlg& dialog) {
                   Type(dialog, 101, "5");
                   Type(dialog, 105, "2");
                   Click(dialog, 120);
                 },
                 ChooseStep(13), ClickStep(kOkId)}),
            kOkId);
  EXPECT_THAT(Codes(), ElementsAre(0, 0, 0, 0, kSech, 0, 0, 0, 0, 0));
}

TEST_F(NetDesignDlgTest, OpensTheTransferFunctionsWithTheOneChosenBefore) {
  m_network.layers[2].TransFunc = kGaussian;
  (void)Run({ClickStep(112),
             [](NetDesignDlg&) {
               EXPECT_TRUE(IsChecked(*TopDialog(), 11));
               Click(*TopDialog(), 13);
               Click(*TopDialog(), kOkId);
             },
             ClickStep(112),
             [](NetDesignDlg&) {
               EXPECT_TRUE(IsChecked(*TopDialog(), 13));
               Click(*TopDialog(), kCancelId);
             },
             ClickStep(kOkId)});
  EXPECT_EQ(m_network.layers[2].TransFunc, kSech);
}

TEST_F(NetDesignDlgTest, OpensNoTransferFunctionsOfOutputsWithoutAUsableLayerCount) {
  (void)Run({[](NetDesignDlg& dialog) {
               Type(dialog, 101, "11");
               Click(dialog, 120);
               EXPECT_EQ(TopDialog(), &dialog);
             },
             ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told, ElementsAre(kLayerCountTold));
}

TEST_F(NetDesignDlgTest, EditsTheConnectionsOfEachRowByItsButton) {
  m_network = MakeNetwork({1, 2, 2, 2, 2, 2, 2, 2, 2, 3});
  std::vector<DialogStep> steps;
  for (int layer = 1; layer <= 9; ++layer) {
    steps.push_back(ClickStep(138 + layer));
    steps.push_back(RemoveStep(EditorCaption(layer)));
  }
  steps.push_back(ClickStep(kOkId));
  EXPECT_EQ(Run(steps), kOkId);
  EXPECT_THAT(m_network.connections_edited,
              ElementsAre(false, true, true, true, true, true, true, true, true, true));
  const RemovedConnection first = {0, 0};
  for (int32_t layer = 1; layer <= 9; ++layer) {
    EXPECT_THAT(RemovedConnections(m_network, layer, m_scratch.path()), ElementsAre(first));
  }
}

TEST_F(NetDesignDlgTest, EditsTheConnectionsOfTheDesignTypedSoFar) {
  EXPECT_EQ(Run({[](NetDesignDlg& dialog) {
                   Type(dialog, 102, "7");
                   Type(dialog, 103, "9");
                   Click(dialog, 139);
                 },
                 [](NetDesignDlg&) {
                   const auto& list = Control<wxListBox>(*TopDialog(), 101);
                   EXPECT_EQ(list.GetCount(), 63U);
                   EXPECT_EQ(Utf8(list.GetString(62)), "From L1 N7 to L2 N9");
                   Click(*TopDialog(), kCancelId);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  EXPECT_EQ(m_network.layers[0].nUnits, 4);
}

TEST_F(NetDesignDlgTest, ShowsConnectionsRemovedBeforeAndMarksTheLayerWithOkAlone) {
  EXPECT_EQ(Run({ClickStep(147), RemoveStep(EditorCaption(3)), ClickStep(147),
                 [](NetDesignDlg&) {
                   const auto& list = Control<wxListBox>(*TopDialog(), 102);
                   EXPECT_THAT(Utf8(list.GetString(0)), "From L3 N1 to L4 N1");
                   Click(*TopDialog(), kOkId);
                 },
                 ClickStep(kCancelId)}),
            kCancelId);
  EXPECT_FALSE(m_network.connections_edited[3]);
}

TEST_F(NetDesignDlgTest, OpensNoConnectionsOfALayerThatIsMissing) {
  (void)Run({[](NetDesignDlg& dialog) {
               Click(dialog, 143);
               EXPECT_EQ(TopDialog(), &dialog);
             },
             ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told, ElementsAre("Error|Insufficient layers for this option"));
}

TEST_F(NetDesignDlgTest, OpensNoConnectionsWhileAFieldFails) {
  (void)Run({[](NetDesignDlg& dialog) {
               Type(dialog, 102, "0");
               Click(dialog, 139);
               Click(dialog, 147);
               EXPECT_EQ(TopDialog(), &dialog);
             },
             ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.told,
              ElementsAre("Network Design Error|Invalid value for input node count",
                          "Network Design Error|Invalid value for input node count"));
}

TEST_F(NetDesignDlgTest, CutsALongNameAtSeventyNineCharacters) {
  m_network.NetName = std::string(100, 'n');
  EXPECT_EQ(Run({[](NetDesignDlg& dialog) { EXPECT_EQ(TextOf(dialog, 148), std::string(79, 'n')); },
                 ClickStep(kOkId)}),
            kOkId);
  EXPECT_EQ(m_network.NetName, std::string(79, 'n'));
}

TEST_F(NetDesignDlgTest, OpensItsHelp) {
  (void)Run({ClickStep(kHelpId), ClickStep(kCancelId)});
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kNetworkDesign));
}

TEST_F(NetDesignDlgTest, IsWalkedThroughInReadingOrder) {
  std::vector<int> order = {101, 102};
  for (int row = 1; row <= 8; ++row) {
    order.insert(order.end(),
                 {102 + row, kTransferButtons[static_cast<size_t>(row - 1)], 138 + row});
  }
  order.insert(order.end(), {111, 120, 147, 149, kOkId, kCancelId, kHelpId, 148});
  std::vector<DialogStep> steps;
  for (const int id : order) {
    steps.emplace_back([](NetDesignDlg&) { Press(WXK_TAB); });
    steps.emplace_back([id](NetDesignDlg&) { EXPECT_EQ(FocusedId(), id); });
  }
  steps.emplace_back([](NetDesignDlg&) { Press(WXK_ESCAPE); });
  EXPECT_EQ(Run(steps), kCancelId);
}

}  // namespace
}  // namespace tarn
