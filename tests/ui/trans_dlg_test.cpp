#include "setup/ui/trans_dlg.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "engine/network.h"
#include "resources/controls.h"
#include "support/fake_dialogs.h"
#include "ui/driver.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TransDlgTest : public testing::Test {
 protected:
  // Opens the dialog on the code and runs the steps, each with the dialog.
  int Run(const std::vector<std::function<void(wxDialog&)>>& steps) {
    TransDlg dialog(nullptr, m_code, m_dialogs);
    std::vector<Step> bound;
    for (const auto& step : steps) bound.push_back([&dialog, step] { step(dialog); });
    return RunModal(dialog, bound);
  }
  static std::vector<int> Checked(const wxDialog& dialog) {
    std::vector<int> checked;
    for (int radio = 10; radio <= 13; ++radio) {
      if (IsChecked(dialog, radio)) checked.push_back(radio);
    }
    return checked;
  }

  FakeDialogs m_dialogs;
  int32_t m_code = kSigmoid;
};

TEST_F(TransDlgTest, OpensWithTheCodesButtonCheckedAndFocused) {
  for (const int32_t code : {kSigmoid, kGaussian, kTanh, kSech}) {
    m_code = code;
    const int result = Run({[code](wxDialog& dialog) {
      EXPECT_THAT(Checked(dialog), ElementsAre(10 + code));
      EXPECT_EQ(FocusedId(), 10 + code);
      Click(dialog, kOkId);
    }});
    EXPECT_EQ(result, kOkId);
    EXPECT_EQ(m_code, code);
  }
}

TEST_F(TransDlgTest, StoresTheCheckedButtonWithOk) {
  for (const int32_t code : {kGaussian, kTanh, kSech, kSigmoid}) {
    EXPECT_EQ(Run({[code](wxDialog& dialog) { Click(dialog, 10 + code); },
                   [](wxDialog& dialog) { Click(dialog, kOkId); }}),
              kOkId);
    EXPECT_EQ(m_code, code);
  }
}

TEST_F(TransDlgTest, ChecksNoneForAnUnknownCodeAndKeepsItWithOk) {
  for (const int32_t code : {-1, 4}) {
    m_code = code;
    EXPECT_EQ(Run({[](wxDialog& dialog) {
                EXPECT_THAT(Checked(dialog), IsEmpty());
                Click(dialog, kOkId);
              }}),
              kOkId);
    EXPECT_EQ(m_code, code);
  }
}

TEST_F(TransDlgTest, ReplacesAnUnknownCodeByTheOneChosen) {
  m_code = 7;
  (void)Run({[](wxDialog& dialog) {
    Click(dialog, 10);
    EXPECT_THAT(Checked(dialog), ElementsAre(10));
    Click(dialog, kOkId);
  }});
  EXPECT_EQ(m_code, kSigmoid);
}

TEST_F(TransDlgTest, KeepsTheCodeWithCancel) {
  m_code = kTanh;
  EXPECT_EQ(Run({[](wxDialog& dialog) {
              Click(dialog, 13);
              Click(dialog, kCancelId);
            }}),
            kCancelId);
  EXPECT_EQ(m_code, kTanh);
}

TEST_F(TransDlgTest, CountsAsCancelledWhenItsWindowIsClosed) {
  EXPECT_EQ(Run({[](wxDialog& dialog) {
              Click(dialog, 13);
              dialog.Close();
            }}),
            kCancelId);
  EXPECT_EQ(m_code, kSigmoid);
}

TEST_F(TransDlgTest, OpensTheHelpOfTheNetworkDesign) {
  (void)Run({[](wxDialog& dialog) { Click(dialog, 9); },
             [](wxDialog& dialog) { Click(dialog, kCancelId); }});
  EXPECT_THAT(m_dialogs.help, ElementsAre(HelpTopic::kNetworkDesign));
}

TEST_F(TransDlgTest, TakesTheNextWithTheArrowKeyAndOkWithEnter) {
  EXPECT_EQ(Run({[](wxDialog&) { Press(WXK_DOWN); },
                 [](wxDialog& dialog) { EXPECT_THAT(Checked(dialog), ElementsAre(11)); },
                 [](wxDialog&) { Press(WXK_RETURN); }}),
            kOkId);
  EXPECT_EQ(m_code, kGaussian);
}

TEST_F(TransDlgTest, IsCancelledWithEscape) {
  EXPECT_EQ(
      Run({[](wxDialog& dialog) { Click(dialog, 12); }, [](wxDialog&) { Press(WXK_ESCAPE); }}),
      kCancelId);
  EXPECT_EQ(m_code, kSigmoid);
}

}  // namespace
}  // namespace tarn
