#include "windows/steps.h"

#include <fmt/format.h>
#include <string>

#include "windows/boxes.h"

namespace tarn {
namespace {

constexpr int kStartButton = 215;
constexpr int kHaltButton = 216;
constexpr int kStopButton = 217;
constexpr int kMostIterationsCommand = 111;
constexpr int kStopCommand = 134;
constexpr int kStartCommand = 135;
constexpr int kIterationText = 207;

}  // namespace

Place StartUpWindow(Driver& driver) {
  return {driver, driver.frame(), "TARN"};
}

Place TrainingWindow(Driver& driver) {
  return {driver, driver.frame(), "TRAIN_DLG"};
}

Place TrainingMenu(Driver& driver) {
  return {driver, driver.frame(), "TRAIN_MENU"};
}

void Choose(const Place& place, int id, std::string_view title, std::string_view path) {
  const Window dialog = place.Opens(id, title);
  ChooseFile(place.driver(), dialog, path);
  place.driver().AwaitEndOf(dialog);
}

void ChooseNothing(const Place& place, int id, std::string_view title) {
  const Window dialog = place.Opens(id, title);
  PressIn(dialog, IDCANCEL);
  place.driver().AwaitEndOf(dialog);
}

void LookAtAbout(const Place& place, int id) {
  const Place about(place.driver(), place.Opens(id, "Tarn for Windows"), "ABOUT_DLG");
  about.Shows(101, "Tarn for Windows\nVersion 2.1\n32-bit Neural Network Modeling");
  about.ShowsPicture(102);
  about.Closes(IDOK);
}

namespace {

void Open(Driver& driver, std::string_view file) {
  Choose(StartUpWindow(driver), 103, "Open Tarn Network", driver.Path(file));
  driver.ExpectSoon(fmt::format("the caption names {}", file), [&] {
    const std::string caption = driver.frame().Caption();
    return caption.starts_with("Tarn - ") && caption.ends_with(file);
  });
}

void AwaitTraining(Driver& driver) {
  const bool come = driver.Until(
      [&] { return driver.frame().IsEnabled() && driver.frame().Child(kStartButton).IsShown(); });
  if (!come) throw Lost("no training window has come");
}

}  // namespace

void OpenForTraining(Driver& driver, std::string_view file) {
  Open(driver, file);
  const Place start_up = StartUpWindow(driver);
  start_up.Check(102);
  const Place setup(driver, start_up.Opens(105, "Training Setup"), "TSETUP_DLG");
  setup.Closes(IDOK);
  AwaitTraining(driver);
}

bool IsUnderWay(const Driver& driver) {
  const Window& frame = driver.frame();
  return !frame.Child(kStartButton).IsEnabled() && frame.Child(kHaltButton).IsEnabled() &&
         frame.Child(kStopButton).IsEnabled();
}

bool IsAtRest(const Driver& driver) {
  const Window& frame = driver.frame();
  return frame.Child(kStartButton).IsEnabled() && !frame.Child(kHaltButton).IsEnabled() &&
         !frame.Child(kStopButton).IsEnabled();
}

void TrainALittle(Driver& driver) {
  const Place menu = TrainingMenu(driver);
  // The examples would come to their end before anybody could stop them.
  Enter(driver, menu.Opens(kMostIterationsCommand, "Set Max Iterations"),
        "Maximum Iterations:", "1000000000");
  driver.Expect(IsAtRest(driver), "training is at rest");
  const Window iteration = driver.frame().Child(kIterationText);
  const std::string before = iteration.Text();
  menu.Does(kStartCommand, "iterations go on", [&] {
    const std::string now = iteration.Text();
    return now != before && now.size() > 1 && IsUnderWay(driver);
  });
  menu.Does(kStopCommand, "training stops", [&] { return IsAtRest(driver); });
}

void Enter(Driver& driver, const Window& entry, std::string_view prompt, std::string_view text) {
  const Place value(driver, entry, "DATAENT_DLG");
  value.Shows(102, prompt);
  value.Type(101, text);
  value.Closes(IDOK);
}

}  // namespace tarn
