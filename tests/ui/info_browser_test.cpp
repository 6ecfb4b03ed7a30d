#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>
#include <wx/menu.h>
#include <wx/uiaction.h>

#include "browser/report_text.h"
#include "ui/info_browser_fixture.h"
#include "ui/pictures.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(InfoBrowserTest, ShowsItsCaptionAndItsMenu) {
  InfoBrowser& browser = Open({"line"}, "Weight Information");
  EXPECT_EQ(browser.GetTitle(), "Info Browser - Weight Information");
  const wxMenuBar& bar = *browser.GetMenuBar();
  ASSERT_EQ(bar.GetMenuCount(), 3U);
  EXPECT_EQ(bar.GetMenuLabel(0), "&File");
  EXPECT_EQ(bar.GetMenuLabel(1), "&Edit");
  EXPECT_EQ(bar.GetMenuLabel(2), "&Help");
  std::vector<std::string> items;
  for (size_t menu = 0; menu < bar.GetMenuCount(); ++menu) {
    for (const wxMenuItem* item : bar.GetMenu(menu)->GetMenuItems()) {
      items.push_back(item->IsSeparator() ? "-"
                                          : fmt::sprintf("%d %s", item->GetId(),
                                                         item->GetItemLabel().utf8_string()));
    }
  }
  EXPECT_THAT(items,
              ElementsAre("136 &Save As...\tCtrl+S", "137 &Print...\tCtrl+P", "143 E&xit\tCtrl+W",
                          "-", "151 Print Pre&view...", "152 Page Set&up...", "138 &Copy\tCtrl+C",
                          "156 Select &All\tCtrl+A", "24341 &Help\tF1"));
}

TEST_F(InfoBrowserTest, LooksAsItShould) {
  wxUIActionSimulator().MouseMove(1279, 1023);
  std::vector<std::string> lines;
  const std::string golden =
      ReadFile(std::string(TARN_SOURCE_DIR) + "/tests/data/golden/report_iris_outputs.txt");
  for (size_t start = 0; start < golden.size(); start = golden.find('\n', start) + 1) {
    lines.push_back(golden.substr(start, golden.find('\n', start) - start));
  }
  InfoBrowser& browser = Open(lines, "Network Outputs and Targets");
  Strike(browser, WXK_DOWN);
  Strike(browser, WXK_DOWN, wxMOD_SHIFT);
  wxUIActionSimulator().MouseMove(1279, 1023);
  Turn();
  LookAt(browser, "information-browser");
  m_asked.files = {m_folder / "saved.txt"};
  Choose(browser, kSaveAs);
  EXPECT_EQ(ReadFile(m_folder / "saved.txt"), golden);
}

TEST_F(LongInfoBrowserTest, DoesNotCopyMoreThanAClipboardTakes) {
  InfoBrowser& browser = Open({});
  Choose(browser, kSelectAll);
  Choose(browser, kCopy);
  EXPECT_THAT(m_asked.told, ElementsAre("Tarn Error|Too many lines to copy: save the report as a "
                                        "text file instead"));
  EXPECT_EQ(m_asked.busy_log, "+-");
}

TEST_F(InfoBrowserTest, CopiesWhatIsSelected) {
  InfoBrowser& browser = Open({"one", " two  ", " ",
                               "Gr\xC3\xB6\xC3\x9F"
                               "e",
                               "five"});
  EXPECT_FALSE(CanCopy(browser));
  Strike(browser, WXK_DOWN);
  EXPECT_TRUE(CanCopy(browser));
  Strike(browser, WXK_DOWN, wxMOD_SHIFT);
  Strike(browser, 'C', wxMOD_CONTROL);
  EXPECT_EQ(Clipboard(), " two\n\n");
  Strike(browser, 'A', wxMOD_CONTROL);
  Strike(browser, 'C', wxMOD_CONTROL);
  EXPECT_EQ(Clipboard(),
            "one\n two\n\nGr\xC3\xB6\xC3\x9F"
            "e\nfive\n");
}

TEST_F(InfoBrowserTest, SavesItsTextWhereItIsTold) {
  InfoBrowser& browser = Open({" a  b  ", " ", std::string(80, 'c')});
  m_asked.files = {m_folder / "saved.txt", std::nullopt, m_folder / "nowhere/saved.txt"};
  Choose(browser, kSaveAs);
  EXPECT_EQ(ReadFile(m_folder / "saved.txt"), " a  b\n\n" + std::string(80, 'c') + "\n");
  EXPECT_EQ(m_asked.busy_log, "+-");
  Choose(browser, kSaveAs);
  EXPECT_EQ(m_asked.busy_log, "+-");
  EXPECT_THAT(m_asked.told, IsEmpty());
  Choose(browser, kSaveAs);
  EXPECT_THAT(m_asked.told, ElementsAre("Tarn Error|The report cannot be written"));
  const std::string question = "Save Information as...|bitmap (*.txt)|*.txt";
  EXPECT_THAT(m_asked.file_questions, ElementsAre(question, question, question));
}

TEST_F(InfoBrowserTest, LivesWithItsFileBesideOthers) {
  InfoBrowser& first = Open({"first"});
  const std::string first_path = m_last_path;
  InfoBrowser& second = Open({"second"});
  EXPECT_NE(m_last_path, first_path);
  EXPECT_TRUE(std::filesystem::exists(first_path));
  Close(first);
  EXPECT_FALSE(std::filesystem::exists(first_path));
  EXPECT_TRUE(std::filesystem::exists(m_last_path));
  EXPECT_EQ(WithoutTrailingBlanks(second.list().text().Line(0)), "second");
  Choose(second, kExit);
  Until([this] { return m_browsers.empty(); });
  EXPECT_FALSE(std::filesystem::exists(m_last_path));
}

TEST_F(InfoBrowserTest, GoesWithItsOwner) {
  Open({"line"});
  OpenFrame();
  EXPECT_THAT(m_browsers, IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(m_last_path));
}

TEST_F(InfoBrowserTest, IsLeftAndHelpedByKeys) {
  InfoBrowser& browser = Open({"line"});
  Strike(browser, WXK_F1);
  EXPECT_THAT(m_asked.help, ElementsAre(HelpTopic::kInformationBrowser));
  Strike(browser, WXK_ESCAPE);
  Until([this] { return m_browsers.empty(); });
  Strike(Open({"line"}), 'W', wxMOD_CONTROL);
  Until([this] { return m_browsers.empty(); });
}

TEST_F(InfoBrowserTest, IsEmptyWhenItsReportCannotBeRead) {
  m_browsers.push_back(new InfoBrowser(&Frame(), std::make_unique<ReportFile>(), "x", m_asked));
  InfoBrowser& browser = *m_browsers.back();
  browser.Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
    m_browsers.clear();
    event.Skip();
  });
  browser.Show();
  Turn();
  EXPECT_THAT(m_asked.told, ElementsAre("Tarn Error|The report file cannot be read"));
  Strike(browser, WXK_END);
  Choose(browser, kSelectAll);
  EXPECT_FALSE(CanCopy(browser));
}

TEST_F(InfoBrowserTest, IsOpenedAndClosedManyTimes) {
  for (int i = 0; i < 200; ++i) {
    auto report = std::make_unique<ReportFile>();
    ASSERT_TRUE(report->Create(m_folder.path()).ok());
    report->Write("line");
    ASSERT_TRUE(report->Finish().ok());
    auto* browser = new InfoBrowser(&Frame(), std::move(report), "x", m_asked);
    browser->Show();
    if (i % 20 == 0) Turn(2);
    browser->Close();
  }
  Turn();
  const auto is_report = [](const auto& entry) {
    return entry.path().filename().string().starts_with("Tarn");
  };
  EXPECT_TRUE(std::none_of(std::filesystem::directory_iterator(m_folder.path()),
                           std::filesystem::directory_iterator(), is_report));
}

}  // namespace
}  // namespace tarn
