#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/html/helpwnd.h>
#include <wx/html/htmlwin.h>
#include <wx/treectrl.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include "app/ui/help_window.h"
#include "resources/controls.h"
#include "ui/main_window_fixture.h"
#include "ui/pictures.h"

// The library's headers need not be there where those of wxWidgets are.
extern "C" void gtk_window_close(void* window);

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Turns of the event loop in which a window is painted, with some to spare.
constexpr int kTurnsToPaint = 10;
// In which a link is followed, on a machine with other work.
constexpr int kTurnsToFollow = 60;

struct Topic {
  int number;
  const char* title;
};
constexpr std::array kTopics = {Topic{0, "AutoSave selection"},
                                Topic{4, "Start-up window"},
                                Topic{13, "Information Browser"},
                                Topic{25, "NetGraph"},
                                Topic{39, "Recall data and recall window"},
                                Topic{40, "Training window"},
                                Topic{61, "Connection editor"},
                                Topic{62, "Network design"},
                                Topic{63, "Training data"},
                                Topic{64, "Training parameters"},
                                Topic{65, "Training setup"},
                                Topic{67, "Menus of the training window"}};

// The book that is built beside the program.
std::filesystem::path Book() {
  return std::filesystem::path(TARN_PROGRAM).parent_path() / "TARN.HLP";
}

class HelpTest : public MainWindowFixture {
 protected:
  // Puts the book into a folder of the test.
  void PutBook(const std::string& folder) {
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(Book(), std::filesystem::path(folder) / "TARN.HLP");
  }
  void ShowHelp(int topic) { m_system.ShowHelp(static_cast<HelpTopic>(topic)); }
  // The help window that is open; null when there is none, or more than one.
  static HelpWindow* Help() {
    const std::vector<HelpWindow*> open = OpenWindows<HelpWindow>();
    return open.size() == 1 ? open.front() : nullptr;
  }
  static wxHtmlHelpWindow& Parts() { return *Help()->controller().GetHelpWindow(); }
  static wxHtmlWindow& Page() { return *Parts().GetHtmlWindow(); }
  static std::string Title() { return Utf8(Page().GetOpenedPageTitle()); }
  static std::string Text() { return Utf8(Page().ToText()); }
  template <typename Control>
  static Control* Find(wxWindow& window) {
    if (auto* control = dynamic_cast<Control*>(&window)) return control;
    for (wxWindow* child : window.GetChildren()) {
      if (Control* control = Find<Control>(*child)) return control;
    }
    return nullptr;
  }
  // A picture that cannot be read is shown as an icon.
  static bool ShowsAPicture() {
    constexpr int kIcon = 50;
    const wxHtmlContainerCell& page = *Page().GetInternalRepresentation();
    for (wxHtmlTerminalCellsInterator cell(page.GetFirstTerminal(), page.GetLastTerminal()); cell;
         ++cell) {
      const bool is_text = !cell->ConvertToText(nullptr).empty();
      if (!is_text && cell->GetWidth() > kIcon && cell->GetHeight() > kIcon) return true;
    }
    return false;
  }
  // What the mouse does in the contents.
  static void ClickInContents(const char* title) {
    auto& tree = *Find<wxTreeCtrl>(*Help());
    wxTreeItemIdValue cookie = nullptr;
    const wxTreeItemId book = tree.GetFirstChild(tree.GetRootItem(), cookie);
    wxTreeItemId item = tree.GetFirstChild(book, cookie);
    while (item.IsOk() && Utf8(tree.GetItemText(item)) != title) item = tree.GetNextSibling(item);
    ASSERT_TRUE(item.IsOk()) << title;
    wxRect place;
    ASSERT_TRUE(tree.GetBoundingRect(item, place, true)) << title;
    wxUIActionSimulator simulator;
    simulator.MouseMove(tree.ClientToScreen(place.GetPosition() + place.GetSize() / 2));
    simulator.MouseClick();
  }
  void WaitToPaint() {
    int turns = 0;
    Until([&] { return ++turns > kTurnsToPaint; });
  }

  WindowDialogs m_system{m_paths, m_folder / "bin"};
};

TEST_F(HelpTest, ShowsThePageOfEveryContextNumberWithItsPicture) {
  PutBook(m_folder.path());
  for (const Topic& topic : kTopics) {
    ShowHelp(topic.number);
    ASSERT_NE(Help(), nullptr) << topic.number;
    EXPECT_EQ(Title(), topic.title) << topic.number;
    EXPECT_EQ(Utf8(Help()->GetTitle()), std::string("Tarn Help: ") + topic.title);
    EXPECT_THAT(Text(), HasSubstr(topic.title));
    EXPECT_TRUE(ShowsAPicture()) << topic.number;
  }
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(HelpTest, FindsTheBookBesideTheProgramAndInItsSharedData) {
  for (const std::string& folder : {m_folder / "share/tarn", m_folder / "bin"}) {
    std::filesystem::create_directories(std::filesystem::path(m_folder / "bin"));
    PutBook(folder);
    ShowHelp(4);
    ASSERT_NE(Help(), nullptr) << folder;
    EXPECT_EQ(Title(), "Start-up window");
    Help()->Close();
    Until([] { return OpenWindows<HelpWindow>().empty(); });
    std::filesystem::remove(std::filesystem::path(folder) / "TARN.HLP");
  }
  ShowHelp(4);
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Warning|The help file is missing: " + m_paths.help_file));
}

TEST_F(HelpTest, SaysThatAFileHoldsNoBook) {
  WriteFile(m_paths.help_file, "no archive");
  ShowHelp(4);
  EXPECT_EQ(Help(), nullptr);
  EXPECT_THAT(m_native.boxes,
              ElementsAre("Tarn Warning|The help file cannot be read: " + m_paths.help_file));
}

TEST_F(HelpTest, TakesTheBookInTheFolderOfTheStartFirst) {
  PutBook(m_folder / "bin");
  // No book: the next place has one.
  WriteFile(m_paths.help_file, "no archive");
  ShowHelp(4);
  ASSERT_NE(Help(), nullptr);
  const wxString place = Page().GetOpenedPage();
  EXPECT_TRUE(place.Contains("bin/TARN.HLP#zip:")) << Utf8(place);
  Help()->Close();
  Until([] { return OpenWindows<HelpWindow>().empty(); });
  std::filesystem::remove(m_paths.help_file);
  PutBook(m_folder.path());
  ShowHelp(4);
  EXPECT_FALSE(Page().GetOpenedPage().Contains("bin/"));
  EXPECT_THAT(m_native.boxes, IsEmpty());
}

TEST_F(HelpTest, OpensABookWhereverItLies) {
  const std::string folder = m_folder / "a #1 100% %41 na\xC3\xAFve folder";
  PutBook(folder);
  ApplicationPaths paths = m_paths;
  paths.help_file = folder + "/TARN.HLP";
  WindowDialogs dialogs(paths, "");
  dialogs.ShowHelp(HelpTopic::kNetworkDesign);
  ASSERT_NE(Help(), nullptr);
  EXPECT_EQ(Title(), "Network design");
}

TEST_F(HelpTest, ComesToTheFrontAgainWithAnotherTopic) {
  PutBook(m_folder.path());
  ShowHelp(4);
  HelpWindow* first = Help();
  ASSERT_NE(first, nullptr);
  first->Iconize();
  ShowHelp(62);
  EXPECT_EQ(Help(), first);
  EXPECT_FALSE(first->IsIconized());
  EXPECT_EQ(Title(), "Network design");
  // One that is being closed is not taken for one that is open.
  first->Close();
  ShowHelp(61);
  ASSERT_NE(Help(), nullptr);
  EXPECT_NE(Help(), first);
  EXPECT_EQ(Title(), "Connection editor");
}

TEST_F(HelpTest, ClosesByEscapeAndWithTarn) {
  PutBook(m_folder.path());
  ShowHelp(4);
  ASSERT_NE(Help(), nullptr);
  WaitToPaint();
  PressOn(*Help(), WXK_ESCAPE);
  Until([] { return OpenWindows<HelpWindow>().empty(); });
  ShowHelp(4);
  ASSERT_NE(Help(), nullptr);
  Frame().Close();
  Until([this] { return !FrameIsOpen(); });
  EXPECT_THAT(OpenWindows<HelpWindow>(), IsEmpty());
}

TEST_F(HelpTest, HasContentsAnIndexAndASearch) {
  PutBook(m_folder.path());
  ShowHelp(4);
  wxTreeCtrl* contents = Find<wxTreeCtrl>(*Help());
  ASSERT_NE(contents, nullptr);
  EXPECT_GT(contents->GetCount(), kTopics.size());
  const wxHtmlHelpData& book = *Help()->controller().GetHelpData();
  EXPECT_GT(book.GetIndexArray().size(), 100U);
  EXPECT_TRUE(Help()->controller().KeywordSearch("momentum", wxHELP_SEARCH_INDEX));
  EXPECT_TRUE(Help()->controller().KeywordSearch("corrections", wxHELP_SEARCH_ALL));
  EXPECT_THAT(Text(), HasSubstr("corrections"));
  EXPECT_FALSE(Help()->controller().KeywordSearch("xyzzy", wxHELP_SEARCH_ALL));
}

TEST_F(HelpTest, IsReadBesideADialogThatIsModal) {
  PutBook(m_folder.path());
  std::vector<Step> steps = {[] { Click(*TopDialog(), kHelpId); }};
  steps.insert(steps.end(), kTurnsToPaint, [] {});
  steps.emplace_back([] {
    ASSERT_NE(Help(), nullptr);
    EXPECT_EQ(Title(), "Training setup");
    ClickInContents("NetGraph");
  });
  steps.insert(steps.end(), kTurnsToFollow, [] {});
  steps.emplace_back([] { EXPECT_EQ(Title(), "NetGraph"); });
  // The dialog of a dialog: the window that is there shows its page.
  steps.emplace_back([] { Click(*TopDialog(), 103); });
  steps.emplace_back([] { Click(*TopDialog(), kHelpId); });
  steps.emplace_back([] {
    ASSERT_NE(Help(), nullptr);
    EXPECT_EQ(Title(), "Training parameters");
  });
  steps.insert(steps.end(), kTurnsToPaint, [] {});
  steps.emplace_back([] { ClickInContents("Glossary"); });
  steps.insert(steps.end(), kTurnsToFollow, [] {});
  steps.emplace_back([] { EXPECT_EQ(Title(), "Glossary"); });
  steps.emplace_back([] { gtk_window_close(Help()->GetHandle()); });
  steps.insert(steps.end(), kTurnsToPaint, [] {});
  steps.emplace_back([] { EXPECT_EQ(Help(), nullptr) << "its title bar closes it"; });
  steps.emplace_back([] { Click(*TopDialog(), kHelpId); });
  steps.emplace_back([] { Click(*TopDialog(), kCancelId); });
  OpenForTraining("iris.net", steps);
  ASSERT_NE(Help(), nullptr);
  EXPECT_EQ(Title(), "Training parameters");
}

TEST_F(HelpTest, TellsOfTheMenusWhenOneIsOpen) {
  PutBook(m_folder.path());
  OpenForTraining("iris.net");
  bool open = false;
  const auto note = [&](wxMenuEvent& event) {
    open = event.GetEventType() == wxEVT_MENU_OPEN;
    event.Skip();
  };
  Frame().Bind(wxEVT_MENU_OPEN, note);
  Frame().Bind(wxEVT_MENU_CLOSE, note);
  WaitToPaint();
  wxUIActionSimulator simulator;
  simulator.MouseMove(Frame().GetScreenPosition() + wxPoint(20, 12));
  simulator.MouseClick();
  Until([&] { return open; });
  WaitToPaint();
  simulator.Char(WXK_F1);
  Until([] { return Help() != nullptr; });
  EXPECT_EQ(Title(), "Menus of the training window");
  EXPECT_FALSE(open);
  simulator.MouseMove(wxPoint(0, 0));
}

TEST_F(HelpTest, StaysEnabledWhenADialogDisablesTheWindows) {
  PutBook(m_folder.path());
  ShowHelp(4);
  ASSERT_NE(Help(), nullptr);
  const wxWindowDisabler all;
  EXPECT_FALSE(Help()->GetParent()->IsEnabled());
  EXPECT_TRUE(Help()->IsEnabled());
}

// A message box that belonged to it would let the main window be used beneath it.
TEST_F(HelpTest, OwnsNoDialogs) {
  PutBook(m_folder.path());
  ShowHelp(4);
  ASSERT_NE(Help(), nullptr);
  WaitToPaint();
  Help()->SetFocus();
  Find<wxTreeCtrl>(*Help())->SetFocus();
  Until([] { return wxGetTopLevelParent(wxGetActiveWindow()) == Help(); });
  EXPECT_EQ(DialogParent(), &Frame());
}

TEST_F(HelpTest, LooksWell) {
  PutBook(m_folder.path());
  for (const int topic : {4, 62, 40}) {
    ShowHelp(topic);
    ASSERT_NE(Help(), nullptr);
    WaitToPaint();
    LookAt(*Help(), "help-" + std::to_string(topic));
  }
}

}  // namespace
}  // namespace tarn
