#include <array>
#include <fmt/format.h>
#include <string>

#include "windows/boxes.h"
#include "windows/companion.h"
#include "windows/files.h"
#include "windows/place.h"
#include "windows/roads.h"
#include "windows/steps.h"

namespace tarn {
namespace {

constexpr int kHelp = 998;
constexpr std::string_view kFile = "mine.net";

void LookAtStartUp(const Place& start_up) {
  Driver& driver = start_up.driver();
  start_up.Read(107);
  driver.Expect(start_up.IsChecked(107), "neither mode is chosen at first");
  start_up.Tells(105, "Select Mode", "Select Recall or Training Execution Mode!");
  start_up.Check(102);
  const bool gives_way = !start_up.IsChecked(107);
  driver.Expect(gives_way, "then one is");
  if (gives_way) start_up.Count(107, "gives way");
  start_up.Check(106);
  driver.Expect(!start_up.IsChecked(102), "one mode at a time");
  start_up.Tells(105, "Selection Error", "Untrained Networks Cannot be used for Recall!");
  start_up.Helps(108);
  LookAtAbout(start_up, 109);
}

void HandOverTrainingData(const Place& data) {
  Driver& driver = data.driver();
  constexpr std::string_view kRefused = "Invalid Tarn Request";
  data.Tells(115, kRefused, "The data editor cannot be started");
  data.Tells(116, kRefused, "No file saved durring Tabulo session!");
  InstallCompanion(driver);
  data.Does(115, "the data editor has run", [&] { return IsFile(driver.Path("TABULO.TBI")); });
  RemoveCompanion(driver);
  data.Does(116, "its data is taken over", [&] {
    return data.window().Child(113).Text().ends_with("xor.txt") &&
           data.window().Child(112).Text() == std::to_string(kHandedOverColumn);
  });
  driver.Expect(data.window().Child(114).Text().ends_with("xor.txt"), "for the targets as well");
  driver.Expect(!IsFile(driver.Path("TABULO.TBI")), "what was handed over is gone");
}

void ChooseData(const Place& data) {
  Driver& driver = data.driver();
  const std::string path = driver.Path("iris.txt");
  ChooseNothing(data, 101, "Select Input Node Data");
  Choose(data, 101, "Select Input Node Data", path);
  data.Shows(113, "Input Node Data File: " + path);
  Choose(data, 102, "Select Target Data", path);
  data.Shows(114, "Target Data File: " + path);
}

void WalkData(const Place& setup) {
  Driver& driver = setup.driver();
  constexpr std::string_view kCaption = "Training/Test Data";
  constexpr std::string_view kError = "Training Data Error";
  const Place data(driver, setup.Opens(102, kCaption), "TDATA_DLG");
  HandOverTrainingData(data);
  ChooseData(data);
  for (const int box : {109, 109, 110, 110}) data.Toggle(box);
  for (const int radio : {103, 104, 106, 105}) data.Check(radio);
  data.Type(107, "30");
  data.Type(112, "5");
  data.Type(111, "0");
  data.Tells(IDOK, kError, "Invalid start column specified for inputs");
  data.Type(111, "1");
  data.Helps(kHelp);
  data.Closes(IDOK);
  const Place again(driver, setup.Opens(102, kCaption), "TDATA_DLG");
  driver.Expect(again.Read(107) == "30" && again.Read(111) == "1" && again.Read(112) == "5",
                "the numbers are kept");
  driver.Expect(again.IsChecked(105), "the method is kept");
  again.Closes(IDCANCEL);
}

struct Parameter {
  int id;
  std::string_view typed;
  std::string_view shown;
};

constexpr std::array kParameters = {
    Parameter{101, "400", "400"},       Parameter{102, "200", "200"},
    Parameter{103, "100", "100"},       Parameter{104, "10", "10"},
    Parameter{105, "0.5", "0.500000"},  Parameter{106, "0.1", "0.100000"},
    Parameter{107, "0.9", "0.900000"},  Parameter{108, "0.25", "0.250000"},
    Parameter{109, "0.2", "0.200000"},  Parameter{110, "5", "5"},
    Parameter{112, "0.05", "0.050000"},
};

void WalkParameters(const Place& setup) {
  Driver& driver = setup.driver();
  constexpr std::string_view kCaption = "Training Parameters";
  constexpr std::string_view kError = "Training Parameter Error";
  const Place form(driver, setup.Opens(103, kCaption), "TPARAM_DLG");
  for (const Parameter& parameter : kParameters) form.Type(parameter.id, parameter.typed);
  form.Toggle(111);
  form.Toggle(111);
  form.Helps(kHelp);
  form.Type(105, "2");
  form.Tells(IDOK, kError, "Learn rate range is >0. to 1.");
  form.Type(105, "0.5");
  form.Closes(IDOK);
  const Place again(driver, setup.Opens(103, kCaption), "TPARAM_DLG");
  for (const Parameter& parameter : kParameters) {
    driver.Expect(again.Read(parameter.id) == parameter.shown,
                  fmt::format("{} is kept", parameter.shown));
  }
  again.Closes(IDCANCEL);
}

void SaveSetup(const Place& setup) {
  Driver& driver = setup.driver();
  setup.Saves(104, "Save Network As...", driver.Path(kFile));
  const std::string bytes = ReadWhole(driver.Path(kFile));
  driver.Expect(bytes.starts_with("TARNV2.1\r\nDriven\r\n3\r\n4 8 3 "),
                "the file holds the design");
  driver.Expect(HasWindowsLines(bytes), "its lines end with CR LF");
  driver.Expect(bytes.find("CONNECTIONS:READ") != std::string::npos,
                "it holds the connections that were removed");
  driver.ExpectSoon("the caption names it",
                    [&] { return driver.frame().Caption().ends_with(kFile); });
}

}  // namespace

void NewNetworkRoad(Driver& driver) {
  driver.Start();
  const Place start_up = StartUpWindow(driver);
  LookAtStartUp(start_up);
  const Place setup(driver, start_up.Opens(101, "Training Setup"), "TSETUP_DLG");
  driver.Expect(driver.frame().Caption() == "Tarn - UNTITLED", "the new network has no file yet");
  setup.Helps(kHelp);
  WalkDesign(driver, setup.window());
  WalkData(setup);
  WalkParameters(setup);
  SaveSetup(setup);
  setup.Closes(IDCANCEL);
  ChooseNothing(start_up, 103, "Open Tarn Network");
  OpenForTraining(driver, kFile);
  TrainingMenu(driver).Does(129, "the start-up window comes back",
                            [&] { return driver.frame().Child(103).IsShown(); });
  start_up.Ends(110);
}

}  // namespace tarn
