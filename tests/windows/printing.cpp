#include "windows/printing.h"

#include <fmt/format.h>
#include <string>
#include <windows.h>
#include <winspool.h>

#include "windows/boxes.h"

namespace tarn {
namespace {

struct Command {
  int id;
  std::string_view window;
  // Without a printer.
  std::string_view caption;
  std::string_view text;
};

bool HasPrinter() {
  DWORD length = 0;
  ::GetDefaultPrinterW(nullptr, &length);
  return length > 0;
}

// The dialogs have the printers or the paper in a list, the preview the zoom; messages have none.
bool IsWindowFor(const Command& command, const Window& shown) {
  return shown.Caption() == command.window && shown.ChildOfClass("ComboBox").Exists();
}

bool IsRefusalOf(const Command& command, const Window& shown) {
  return shown.Caption() == command.caption && BoxText(shown) == command.text;
}

void LookAt(const Place& place, const Command& command) {
  Driver& driver = place.driver();
  place.Begin(command.id);
  const Window shown = driver.AwaitAny();
  const bool printer = HasPrinter();
  const bool right = printer ? IsWindowFor(command, shown) : IsRefusalOf(command, shown);
  const std::string told = fmt::format("\"{}\" {}", shown.Caption(), BoxText(shown));
  driver.Expect(right,
                fmt::format("{}: {}", printer ? "a printer is here" : "no printer here", told));
  if (right) place.Count(command.id, (printer ? "-> window " : "-> no printer here: ") + told);
  Dismiss(driver, shown);
  // Answered when the program is done with the command, or shows another one.
  place.window().Send(WM_NULL);
  driver.Expect(!driver.HasNews() && place.window().IsEnabled(), "nothing else comes");
}

}  // namespace

void LookAtPrinting(const Place& place, std::string_view error_caption) {
  LookAt(place, {152, "Page Setup", "Error", "No default printer defined."});
  LookAt(place, {151, "Print Preview", error_caption, "The pages cannot be shown"});
  LookAt(place, {137, "Print", "Print",
                 "Before you can perform printer-related tasks such as page setup or printing a "
                 "document, you need to install a printer. Please install one and retry."});
}

}  // namespace tarn
