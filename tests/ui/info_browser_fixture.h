#pragma once

#include <algorithm>
#include <fmt/printf.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/menu.h>
#include <wx/uiaction.h>

#include "browser/ui/info_browser.h"
#include "support/fake_dialogs.h"
#include "support/memory_files.h"
#include "ui/main_window_fixture.h"

namespace tarn {

// Commands of INFO_MENU.
enum InfoCommand : int {
  kSaveAs = 136,
  kCopy = 138,
  kExit = 143,
  kPreview = 151,
  kSelectAll = 156,
};

// Above the main window, which is its owner.
class InfoBrowserTest : public MainWindowFixture {
 protected:
  ~InfoBrowserTest() override {
    while (!m_browsers.empty()) Close(*m_browsers.back());
  }

  // The report is written to the fixture's folder unless the files are replaced.
  InfoBrowser& Open(const std::vector<std::string>& lines,
                    const std::string& caption = "Network Statistics") {
    auto report = std::make_unique<ReportFile>();
    EXPECT_TRUE(report->Create(m_report_folder).ok());
    for (const std::string& line : lines) report->Write(line);
    EXPECT_TRUE(report->Finish().ok());
    m_last_path = report->path();
    auto* browser = new InfoBrowser(&Frame(), std::move(report), caption, m_asked);
    m_browsers.push_back(browser);
    browser->Bind(wxEVT_DESTROY, [this, browser](wxWindowDestroyEvent& event) {
      if (event.GetEventObject() == browser) std::erase(m_browsers, browser);
      event.Skip();
    });
    browser->Show();
    Until([browser] { return browser->list().IsShownOnScreen(); });
    Turn();
    return *browser;
  }

  // Until it is gone.
  void Close(InfoBrowser& browser) {
    browser.Close(true);
    Until([&] { return !IsOpen(browser); });
  }
  bool IsOpen(const InfoBrowser& browser) const {
    return std::find(m_browsers.begin(), m_browsers.end(), &browser) != m_browsers.end();
  }

  // Some turns of the event loop: what was asked for is painted.
  void Turn(int turns = 12) {
    Until([&turns] { return turns-- == 0; });
  }

  // Strikes a real key on the list.
  void Strike(InfoBrowser& browser, int key, int modifiers = wxMOD_NONE) {
    wxUIActionSimulator simulator;
    simulator.MouseMove(browser.list().GetScreenRect().GetTopLeft() + wxPoint(30, 30));
    simulator.Char(key, modifiers);
    Turn(2);
  }

  static void Choose(InfoBrowser& browser, int command) {
    const wxMenuItem* item = browser.GetMenuBar()->FindItem(command);
    ASSERT_NE(item, nullptr) << command;
    ASSERT_TRUE(item->IsEnabled()) << command;
    browser.ProcessCommand(command);
  }
  static bool CanCopy(InfoBrowser& browser) { return browser.GetMenuBar()->IsEnabled(kCopy); }

  static std::vector<std::string> Numbered(int count) {
    std::vector<std::string> lines(static_cast<size_t>(count));
    for (size_t i = 0; i < lines.size(); ++i) lines[i] = fmt::sprintf("Line %d", i);
    return lines;
  }

  static std::string Clipboard() {
    wxTextDataObject text;
    EXPECT_TRUE(wxTheClipboard->Open());
    wxTheClipboard->GetData(text);
    wxTheClipboard->Close();
    return text.GetText().utf8_string();
  }

  FakeDialogs m_asked;
  std::string m_report_folder = m_folder.path();
  std::string m_last_path;
  std::vector<InfoBrowser*> m_browsers;
};

// Every file that is read is a report of ten million lines.
class LongReport : public MemoryFiles {
 public:
  static constexpr int64_t kLines = 10000000;

  int64_t Size(Handle) override { return 80 * kLines; }
  bool Seek(Handle, int64_t position) override {
    m_line = position / 80;
    return true;
  }
  int64_t Read(Handle, void* data, size_t size) override {
    std::string text;
    while (text.size() < size) text += fmt::sprintf("%-80d", m_line++);
    std::copy(text.begin(), text.end(), static_cast<char*>(data));
    lines_read += static_cast<int64_t>(size / 80);
    last_read = m_line - 1;
    return static_cast<int64_t>(size);
  }

  int64_t lines_read = 0;
  int64_t last_read = -1;

 private:
  int64_t m_line = 0;
};

class LongInfoBrowserTest : public InfoBrowserTest {
 protected:
  LongInfoBrowserTest() { m_report_folder = "/tmp"; }
  ~LongInfoBrowserTest() override {
    while (!m_browsers.empty()) Close(*m_browsers.back());
  }

  LongReport m_files;
  ScopedFileLayer m_layer{m_files};
};

}  // namespace tarn
