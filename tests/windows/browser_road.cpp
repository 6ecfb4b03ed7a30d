#include <fmt/format.h>
#include <string>

#include "windows/clipboard.h"
#include "windows/files.h"
#include "windows/picture.h"
#include "windows/place.h"
#include "windows/printing.h"
#include "windows/roads.h"
#include "windows/steps.h"
#include "windows/studies.h"

namespace tarn {
namespace {

void SaveReport(const Place& browser) {
  Driver& driver = browser.driver();
  const std::string path = driver.Path("report.txt");
  browser.Saves(136, "Save Information as...", path);
  const std::string text = ReadWhole(path);
  driver.Expect(HasWindowsLines(text) && LineCount(text) > 10, "the report is saved in lines");
  driver.Expect(text.find(" \r\n") == std::string::npos, "no blanks at the ends of lines");
}

void CopyReport(const Place& browser) {
  Driver& driver = browser.driver();
  const Window list = PanelOf(browser.window());
  const Picture before = SettledPictureOf(list);
  browser.Does(156, "the lines are shown selected", [&] { return PictureOf(list) != before; });
  EmptyTheClipboard();
  browser.Does(138, "the clipboard holds text", ClipboardHoldsText);
  const std::string copied = ClipboardText();
  const std::string saved = ReadWhole(driver.Path("report.txt"));
  driver.Expect(!copied.empty() && saved.starts_with(copied), "it is what was saved");
}

}  // namespace

void BrowserRoad(Driver& driver) {
  driver.Start();
  OpenForTraining(driver, "iris.net");
  const Place menu = TrainingMenu(driver);
  const Place browser(driver, menu.Opens(133, "Info Browser - Network Information"), "INFO_MENU");
  SaveReport(browser);
  CopyReport(browser);
  LookAtPrinting(browser, "Tarn Error");
  browser.Helps(24341);
  browser.Closes(143);
  menu.Ends(130);
}

}  // namespace tarn
