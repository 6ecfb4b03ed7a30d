#include <array>
#include <fmt/format.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

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
constexpr int kTestOutputs = 90;  // of 30 patterns

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

// Those of the last iteration of an exported history.
std::vector<std::string> LastRecord(const std::string& history) {
  const size_t end = history.rfind("\r\n");
  if (end == std::string::npos || end == 0) return {};
  const size_t line_end = history.rfind('\n', end - 1);
  const size_t begin = line_end == std::string::npos ? 0 : line_end + 1;
  std::istringstream line(history.substr(begin, end - begin));
  std::vector<std::string> fields;
  for (std::string field; std::getline(line, field, ',');) fields.push_back(field);
  return fields;
}

std::string Percent(double value) {
  return fmt::format("{:5.1f}%", value);
}

bool IsShareOfTestSet(const std::string& text) {
  for (int hits = 0; hits <= kTestOutputs; ++hits) {
    if (text == Percent(100.0 * hits / kTestOutputs)) return true;
  }
  return false;
}

// What the history does not hold besides the number of the iteration, as it is at the end.
constexpr std::array<std::pair<int, std::string_view>, 6> kFiguresAtTheEnd = {{
    {207, "1500"},
    {209, "On"},
    {210, "Hybrid"},
    {212, "1000"},
    {213, "100.0%"},
    {214, "0:0:0"},
}};

void LookAtFigures(const Place& window, const std::vector<std::string>& record) {
  window.driver().Expect(record.size() == 7 && record[0] == "1500", "the history ends there");
  if (record.size() != 7) return;
  window.Shows(201, record[1]);
  window.Shows(202, record[2]);
  window.Shows(208, record[3]);
  window.Shows(203, record[4]);
  window.Shows(204, record[5]);
  window.Shows(205, Percent(std::stod(record[6])));
  window.Shows(206, "a share of the test set", IsShareOfTestSet);
  for (const auto& [id, text] : kFiguresAtTheEnd) window.Shows(id, text);
}

// With the options of the example.
void TrainToTheEnd(const Place& window, const Place& menu) {
  Driver& driver = window.driver();
  driver.Expect(IsAtRest(driver), "only Start can be pressed");
  driver.Expect(window.Read(207) == "0" && window.Read(208) == "0.050000", "nothing is trained");
  driver.Expect(window.Read(212) == "0" && window.Read(214).empty(), "no time is estimated");
  window.Does(215, "all iterations are done",
              [&] { return window.window().Child(207).Text() == "1500" && IsAtRest(driver); });
  ExpectStatus(driver, "Training Run Complete!");
  const std::string path = driver.Path("end.err");
  menu.Saves(103, "Save Error History As ASCII File...", path);
  LookAtFigures(window, LastRecord(ReadWhole(path)));
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
  driver.Expect(IsAtRest(driver), "only Start can be pressed");
  window.Does(215, "iterations go on", [&] { return iteration.Text() != first; });
  driver.Expect(IsUnderWay(driver), "only Halt and Stop can be pressed");
  ExpectStatus(driver, "Network Training");
  const Window halt = window.window().Child(216);
  window.Does(216, "the button offers to resume", [&] { return halt.Text() == "R&esume"; });
  const std::string halted = iteration.Text();
  ExpectStatus(driver, "Network Training Halted");
  driver.Expect(iteration.Text() == halted, "no iterations go on");
  driver.Expect(IsUnderWay(driver), "it can be resumed or stopped");
  window.Does(216, "it goes on",
              [&] { return iteration.Text() != halted && halt.Text() == "H&alt"; });
  driver.Expect(IsUnderWay(driver), "it can be stopped");
  window.Does(217, "it stops", [&] { return IsAtRest(driver); });
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
  chosen.Shows(102, "Iteration:");
  driver.Expect(chosen.ItemCount(101) > 1, "there are several snapshots");
  chosen.Pick(101, 0);
  driver.Expect(chosen.Read(101) == "500", "the first one is of iteration 500");
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
  Driver& driver = menu.driver();
  const long first = Iteration(menu);
  menu.Does(135, "2500 iterations", [&] { return Iteration(menu) > first + 2500; });
  driver.Expect(IsUnderWay(driver), "it can be stopped");
  menu.Does(134, "training stops", [&] { return IsAtRest(driver); });
}

}  // namespace

void TrainingRoad(Driver& driver) {
  driver.Start();
  OpenForTraining(driver, kFile);
  driver.TakePicture(driver.frame(), "training");
  const Place window = TrainingWindow(driver);
  const Place menu = TrainingMenu(driver);
  ToggleControl(menu);
  TrainToTheEnd(window, menu);
  for (const Option& option : kOptions) SetOption(menu, option);
  HaltAndResume(window);
  AwaitSnapshots(menu);
  window.Shows(211, "a speed", [](const std::string& text) {
    return text.find_first_not_of("0123456789") == std::string::npos && std::stol("0" + text) > 0;
  });
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
