#include <algorithm>
#include <array>
#include <string>

#include "windows/boxes.h"
#include "windows/companion.h"
#include "windows/files.h"
#include "windows/place.h"
#include "windows/roads.h"
#include "windows/steps.h"
#include "windows/studies.h"

namespace tarn {
namespace {

constexpr std::string_view kFile = "xor.net";
constexpr std::string_view kSomeFile = "some.txt";
constexpr int kSome = 400;
// Enough for the status box to be seen.
constexpr std::string_view kManyFile = "many.txt";
constexpr int kMany = 3'000'000;
constexpr std::string_view kError = "Recall Data Error";

void WritePatterns(Driver& driver, std::string_view file, int patterns) {
  std::string text = "# \"First\" \"Second\" \"Either But Not Both\"\r\n";
  for (int pattern = 0; pattern < patterns / 4; ++pattern) {
    text += "0 0 0\r\n0 1 1\r\n1 0 1\r\n1 1 0\r\n";
  }
  driver.Expect(WriteWhole(driver.Path(file), text), "the patterns are written");
}

// Ends in the start-up window with the trained network.
void TrainAndSave(Driver& driver) {
  OpenForTraining(driver, kFile);
  TrainALittle(driver);
  const Place menu = TrainingMenu(driver);
  menu.Does(101, "the network is saved", [&] {
    return ReadWhole(driver.Path(kFile)).find("WEIGHTS:READ") != std::string::npos;
  });
  menu.Does(129, "the start-up window comes back",
            [&] { return driver.frame().Child(103).IsShown(); });
}

void HandOverRecallData(const Place& data) {
  Driver& driver = data.driver();
  data.Tells(115, "Invalid Tarn Request", "The data editor cannot be started");
  data.Tells(103, "Invalid Tarn Request", "No file saved durring Tabulo session!");
  InstallCompanion(driver);
  data.Does(115, "the data editor has run", [&] { return IsFile(driver.Path("TABULO.TBI")); });
  RemoveCompanion(driver);
  data.Does(103, "its data is taken over", [&] {
    return data.Read(113).ends_with("xor.txt") && data.Read(114).ends_with("xor.txt") &&
           data.Read(112) == std::to_string(kHandedOverColumn);
  });
}

void AcceptData(Driver& driver, std::string_view file) {
  const Place data(driver, StartUpWindow(driver).Opens(105, "Recall Setup"), "RDATA_DLG");
  driver.Expect(!data.Read(111).empty(), "the first column is shown");
  HandOverRecallData(data);
  const std::string path = driver.Path(file);
  Choose(data, 101, "Select Input Node Data", path);
  Choose(data, 102, "Select Target Data", path);
  data.Shows(113, "Input Node Data File: " + path);
  data.Shows(114, "Target Data File: " + path);
  data.Helps(998);
  data.Type(112, "2");
  data.Type(112, "3");
  data.Type(111, "0");
  data.Tells(IDOK, kError, "Invalid start column specified for inputs");
  data.Type(111, "1");
  data.Closes(IDOK);
}

void CancelData(Driver& driver) {
  const Place start_up = StartUpWindow(driver);
  start_up.Check(106);
  const Place data(driver, start_up.Opens(105, "Recall Setup"), "RDATA_DLG");
  data.Closes(IDCANCEL);
}

// Of loading a network that is trained, with what it is to recall.
constexpr std::array<std::string_view, 6> kSteps = {
    "Reading Network File", "Counting Patterns",   "Reading Patterns",
    "Reading Weights",      "Reading Connections", "Processing Recall Inputs...",
};

void WatchLoading(Driver& driver) {
  const Place box(driver, driver.Await("Network Load Status"), "STATUS_DLG");
  box.Shows(101, "a step", [](const std::string& step) {
    return std::ranges::find(kSteps, step) != kSteps.end();
  });
  driver.AwaitEndOf(box.window());
}

struct Fact {
  int id;
  std::string value;
};

void LookAtSummary(Driver& driver, int patterns) {
  const Place window(driver, driver.frame(), "RECALL_DLG");
  // Weights of the biases are connections too: 3 x 3 and 4 x 1.
  const std::array facts = {Fact{101, "Exclusive Or"},
                            Fact{102, "3"},
                            Fact{104, "2"},
                            Fact{105, "1"},
                            Fact{106, "3"},
                            Fact{107, "13"},
                            Fact{108, std::to_string(patterns)}};
  for (const Fact& fact : facts) window.Shows(fact.id, fact.value);
  driver.TakePicture(driver.frame(), "recall");
}

void LookAtStudies(const Place& menu) {
  Driver& driver = menu.driver();
  LookAtGraph(menu, 218);
  LookAtOutputGraphs(menu, 219, "Output/Target Comparison Plots", 1);
  LookAtOutputGraphs(menu, 220, "Output/Target Error Plots", 1);
  LookAtInputGraphs(menu, 222);
  LookAtReport(menu, 233, "Network Information");
  LookAtReport(menu, 223, "Network Outputs and Targets");
  LookAtReport(menu, 225, "Network Statistics");
  LookAtToleranceReport(menu, 226);
  LookAtThresholdReport(menu, 227);
  const std::string path = driver.Path("recall.out");
  menu.Saves(202, "Save Net Outputs/Targets As ASCII File...", path);
  driver.ExpectSoon("a line for every pattern",
                    [&] { return LineCount(ReadWhole(path)) == static_cast<size_t>(kSome); });
}

}  // namespace

void RecallRoad(Driver& driver) {
  driver.Start();
  WritePatterns(driver, kSomeFile, kSome);
  WritePatterns(driver, kManyFile, kMany);
  TrainAndSave(driver);
  CancelData(driver);
  AcceptData(driver, kSomeFile);
  LookAtSummary(driver, kSome);
  const Place menu(driver, driver.frame(), "RECALL_MENU");
  LookAtStudies(menu);
  menu.Helps(24341);
  LookAtAbout(menu, 24346);
  menu.Does(229, "the start-up window comes back",
            [&] { return driver.frame().Child(103).IsShown(); });
  StartUpWindow(driver).Check(106);
  AcceptData(driver, kManyFile);
  WatchLoading(driver);
  LookAtSummary(driver, kMany);
  menu.Ends(230);
}

}  // namespace tarn
