#include <string>

#include "windows/boxes.h"
#include "windows/files.h"
#include "windows/place.h"
#include "windows/roads.h"
#include "windows/steps.h"

namespace tarn {
namespace {

constexpr int kRestart = 129;
constexpr int kExit = 130;
constexpr std::string_view kCaption = "Network File Not Saved!";
constexpr std::string_view kQuestion = "Save Network File?";
constexpr std::string_view kFile = "xor.net";

std::string FileBytes(const Driver& driver) {
  return ReadWhole(driver.Path(kFile));
}

// Leaves without saving, by way of the start-up window.
void LeaveForTheStartUpWindow(Driver& driver, const Place& menu) {
  const std::string before = FileBytes(driver);
  menu.Tells(kRestart, kCaption, kQuestion, IDCANCEL);
  driver.Expect(driver.frame().Child(215).IsShown(), "the training window stays");
  menu.Tells(kRestart, kCaption, kQuestion, IDNO);
  driver.ExpectSoon("the start-up window comes back",
                    [&] { return driver.frame().Child(103).IsShown(); });
  driver.Expect(FileBytes(driver) == before, "nothing is saved");
}

}  // namespace

void LeavingRoad(Driver& driver) {
  driver.Start();
  OpenForTraining(driver, kFile);
  const Place menu = TrainingMenu(driver);
  TrainALittle(driver);
  LeaveForTheStartUpWindow(driver, menu);
  OpenForTraining(driver, kFile);
  TrainALittle(driver);
  const std::string before = FileBytes(driver);
  menu.Tells(kExit, kCaption, kQuestion, IDCANCEL);
  driver.Expect(!driver.program().HasEnded(), "the program goes on");
  menu.Tells(kExit, kCaption, kQuestion, IDYES);
  driver.AwaitEndOfProgram();
  const std::string now = FileBytes(driver);
  driver.Expect(now != before && now.find("WEIGHTS:READ") != std::string::npos,
                "the network is saved");
}

}  // namespace tarn
