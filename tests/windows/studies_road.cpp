#include <string_view>

#include "windows/boxes.h"
#include "windows/place.h"
#include "windows/roads.h"
#include "windows/steps.h"
#include "windows/studies.h"

namespace tarn {
namespace {

constexpr int kOutputs = 3;

void LookAtHistories(const Place& menu) {
  for (const int id : {116, 144, 148, 121, 145, 149, 117}) LookAtGraph(menu, id);
}

// With a tolerance, or its history would be of zeros.
void SetTolerance(const Place& menu) {
  Enter(menu.driver(), menu.Opens(147, "Set Tolerance"), "Tolerance Monitor Value:", "0.4");
}

void LookAtContours(const Place& menu) {
  Driver& driver = menu.driver();
  const auto ask = [&](std::string_view second) {
    Enter(driver, menu.Opens(146, "Select First Input Node"),
          "First input node to investigate:", "1");
    Enter(driver, driver.Await("Select Second Input Node"),
          "Second input node to investigate:", second);
  };
  ask("1");
  Answer(driver, driver.Await("Tarn Contour Plot"), "Input node selection error - aborting!");
  ask("3");
  Enter(driver, driver.Await("Select Output Node"), "Output node number to plot:", "1");
  LookAtNextGraph(driver, 146);
}

void LookAtReports(const Place& menu) {
  LookAtReport(menu, 133, "Network Information");
  LookAtReport(menu, 123, "Network Outputs and Targets");
  LookAtReport(menu, 124, "Weight Information");
  LookAtReport(menu, 125, "Network Statistics");
  LookAtToleranceReport(menu, 126);
  LookAtThresholdReport(menu, 127);
  menu.Tells(128, "No Training Divergences Found", "No Divergences Found");
}

}  // namespace

void StudiesRoad(Driver& driver) {
  driver.Start();
  OpenForTraining(driver, "iris.net");
  const Place menu = TrainingMenu(driver);
  SetTolerance(menu);
  TrainALittle(driver);
  LookAtHistories(menu);
  LookAtGraph(menu, 118);
  LookAtOutputGraphs(menu, 119, "Output/Target Comparison Plots", kOutputs);
  LookAtOutputGraphs(menu, 120, "Output/Target Error Plots", kOutputs);
  LookAtInputGraphs(menu, 122);
  LookAtOutputGraphs(menu, 131, "Input Node Interrogator", kOutputs);
  LookAtGraph(menu, 132);
  LookAtContours(menu);
  LookAtReports(menu);
  menu.Tells(130, "Network File Not Saved!", "Save Network File?", IDNO);
  driver.AwaitEndOfProgram();
}

}  // namespace tarn
