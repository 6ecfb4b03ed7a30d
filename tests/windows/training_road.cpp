#include <array>
#include <fmt/format.h>
#include <string>

#include "windows/boxes.h"
#include "windows/files.h"
#include "windows/place.h"
#include "windows/roads.h"
#include "windows/steps.h"

namespace tarn {
namespace {

constexpr std::string_view kFile = "iris.net";
constexpr std::string_view kOtherFile = "second.net";
constexpr size_t kPatterns = 150;

struct Option {
  int command;
  std::string_view caption;
  std::string_view prompt;
  std::string_view good;
  std::string_view bad;
  std::string_view refusal;
};

constexpr std::string_view kRefusalCaption = "Training Parameter Error";
constexpr int kToleranceCommand = 147;

constexpr std::array kOptions = {
    Option{106, "Set Learn Rate", "Eta (between 0. and 1.):", "0.250000", "1.1",
           "Learn Rate Eta Invalid"},
    Option{107, "Set LRC Min Learn Rate", "Eta Min (between 0. and 1.):", "0.125000", "-1",
           "LRC Min Eta Invalid"},
    Option{108, "Set LRC Max Learn Rate", "Eta Max (between 0. and 1.):", "0.750000", "2",
           "LRC Max Eta Invalid"},
    Option{109, "Set Momentum Factor", "Alpha (between 0. and 1.):", "0.500000", "1.5",
           "Momentum Factor Invalid"},
    Option{110, "Set Fast-Prop Coefficient", "Coefficient (between 0. and 3.):", "0.100000", "3.01",
           "Fast-Prop Coef Invalid"},
    Option{142, "Set Patterns per Iteration", "Process ? Patterns per Iteration:", "7", "-1",
           "Pats per Iterations Invalid"},
    Option{111, "Set Max Iterations", "Maximum Iterations:", "2000000", "abc",
           "Iteration Value Invalid"},
    Option{113, "Set AutoSave Rate", "AutoSave Iteration Interval:", "1000", "-1",
           "AutoSave Rate Invalid"},
    Option{114, "Set Screen Update Rate", "Screen Update Iteration Interval:", "4", "0",
           "Screen Update Rate Invalid"},
    Option{kToleranceCommand, "Set Tolerance", "Tolerance Monitor Value:", "0.125000", "x",
           "Tolerance Value Invalid"},
};

void SetOption(const Place& menu, const Option& option) {
  Driver& driver = menu.driver();
  const auto open = [&] { return menu.Opens(option.command, option.caption); };
  Enter(driver, open(), option.prompt, option.good);
  const Place refused(driver, open(), "DATAENT_DLG");
  driver.Expect(refused.Read(101) == option.good, fmt::format("{} is kept", option.good));
  refused.Type(101, option.bad);
  refused.Closes(IDOK);
  const bool tolerance = option.command == kToleranceCommand;
  Answer(driver, driver.Await(tolerance ? "Tolerance Monitors" : kRefusalCaption), option.refusal);
  const Place cancelled(driver, open(), "DATAENT_DLG");
  cancelled.Type(101, "1");
  cancelled.Closes(IDCANCEL);
  const Place empty(driver, open(), "DATAENT_DLG");
  driver.Expect(empty.Read(101) == option.good, "a value that is refused or cancelled is none");
  empty.Type(101, "");
  empty.Closes(IDOK);
}

void ExpectStatus(Driver& driver, std::string_view text) {
  const Window bar = driver.frame().ChildOfClass("msctls_statusbar32");
  driver.ExpectSoon(fmt::format("the status bar tells \"{}\"", text),
                    [&] { return driver.program().StatusText(bar, 1) == text; });
}

void LookAtFigures(const Place& window) {
  Driver& driver = window.driver();
  for (int id = 201; id <= 214; ++id) {
    driver.Expect(!window.Read(id).empty(), fmt::format("figure {} is shown", id));
  }
}

void ToggleControl(const Place& menu) {
  const Window control = menu.window().Child(209);
  menu.driver().Expect(control.Text() == "From Iteration 300", "control starts at its iteration");
  menu.Does(105, "control is off", [&] { return control.Text() == "Off"; });
  menu.Does(105, "control is back", [&] { return control.Text() != "Off"; });
}

void HaltAndResume(const Place& window) {
  Driver& driver = window.driver();
  const Window iteration = window.window().Child(207);
  const std::string first = iteration.Text();
  window.Does(215, "iterations go on", [&] { return iteration.Text() != first; });
  ExpectStatus(driver, "Network Training");
  const Window halt = window.window().Child(216);
  window.Does(216, "the button offers to resume", [&] { return halt.Text() == "R&esume"; });
  const std::string halted = iteration.Text();
  window.Does(216, "it goes on", [&] { return iteration.Text() != halted; });
  window.Does(217, "it stops", [&] { return window.window().Child(215).IsEnabled(); });
  ExpectStatus(driver, "Training Run Stopped");
}

void SaveAndReset(const Place& menu) {
  Driver& driver = menu.driver();
  const std::string path = driver.Path(kFile);
  const auto weights_read = [&] {
    return ReadWhole(path).find("WEIGHTS:READ\r\n") != std::string::npos;
  };
  menu.Does(101, "the file holds weights", weights_read);
  const std::string saved = ReadWhole(path);
  driver.Expect(HasWindowsLines(saved), "its lines end with CR LF");
  constexpr std::string_view kSure = "Are You Sure?";
  constexpr std::string_view kQuestion = "Reset Network to Untrained State?";
  menu.Tells(115, kSure, kQuestion, IDNO);
  RemoveFile(path);
  menu.Does(101, "the same weights are saved", [&] { return ReadWhole(path) == saved; });
  menu.Tells(115, kSure, kQuestion, IDYES);
  RemoveFile(path);
  menu.Does(101, "other weights are saved",
            [&] { return weights_read() && ReadWhole(path) != saved; });
}

void Export(const Place& menu) {
  Driver& driver = menu.driver();
  menu.Saves(102, "Save Net Outputs/Targets As ASCII File...", driver.Path("iris.out"));
  const std::string outputs = ReadWhole(driver.Path("iris.out"));
  driver.Expect(LineCount(outputs) == kPatterns, "a line for every pattern");
  driver.Expect(HasWindowsLines(outputs), "its lines end with CR LF");
  menu.Saves(103, "Save Error History As ASCII File...", driver.Path("iris.err"));
  const std::string history = ReadWhole(driver.Path("iris.err"));
  driver.Expect(LineCount(history) > 10 && HasWindowsLines(history), "a line for every iteration");
}

// The file is chosen first, then the snapshot.
Place OpenSnapshots(const Place& menu, std::string_view file) {
  Choose(menu, 104, "Save Tarn Network As...", menu.driver().Path(file));
  return {menu.driver(), menu.driver().Await("Select AutoSave Network"), "AUTOSAVE_DLG"};
}

void SaveSnapshot(const Place& menu) {
  Driver& driver = menu.driver();
  const Place cancelled = OpenSnapshots(menu, "none.net");
  cancelled.Helps(998);
  cancelled.Closes(IDCANCEL);
  const Place none = OpenSnapshots(menu, "none.net");
  none.Type(101, "0");
  none.Closes(IDOK);
  Answer(driver, driver.Await("Network AutoSave Aborted"), "File Not Saved");
  driver.Expect(!IsFile(driver.Path("none.net")), "no file is written");
  const Place chosen = OpenSnapshots(menu, "early.net");
  driver.Expect(chosen.Read(102) == "Iteration:", "the iteration is asked for");
  driver.Expect(chosen.ItemCount(101) > 1, "there are several snapshots");
  chosen.Pick(101, 0);
  driver.Expect(chosen.Read(101) == "1000", "the first one is of iteration 1000");
  chosen.Closes(IDOK);
  driver.ExpectSoon("the snapshot is written", [&] {
    return ReadWhole(driver.Path("early.net")).find("WEIGHTS:READ") != std::string::npos;
  });
}

void SaveElsewhere(const Place& menu) {
  Driver& driver = menu.driver();
  menu.Saves(112, "Save Network As...", driver.Path(kOtherFile));
  driver.ExpectSoon("the caption names the new file",
                    [&] { return driver.frame().Caption().ends_with(kOtherFile); });
}

long Iteration(const Place& window) {
  return std::stol("0" + window.window().Child(207).Text());
}

// Enough for more than one snapshot.
void AwaitSnapshots(const Place& menu) {
  const long first = Iteration(menu);
  menu.Does(135, "2500 iterations", [&] { return Iteration(menu) > first + 2500; });
  menu.Does(134, "training stops", [&] { return menu.window().Child(215).IsEnabled(); });
}

}  // namespace

void TrainingRoad(Driver& driver) {
  driver.Start();
  OpenForTraining(driver, kFile);
  driver.TakePicture(driver.frame(), "training");
  const Place window = TrainingWindow(driver);
  const Place menu = TrainingMenu(driver);
  ToggleControl(menu);
  for (const Option& option : kOptions) SetOption(menu, option);
  HaltAndResume(window);
  AwaitSnapshots(menu);
  LookAtFigures(window);
  driver.TakePicture(driver.frame(), "trained");
  Export(menu);
  SaveSnapshot(menu);
  SaveAndReset(menu);
  SaveElsewhere(menu);
  menu.Helps(24341);
  LookAtAbout(menu, 24346);
  menu.Ends(130);
}

}  // namespace tarn
