#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "app/application_paths.h"
#include "app/session.h"
#include "app/ui/main_frame.h"
#include "app/ui/window_dialogs.h"
#include "support/temp_folder.h"
#include "support/temporary_folder_is.h"
#include "ui/driver.h"
#include "ui/native_answers.h"

namespace tarn {

// The main window on the screen, in a folder of its own that holds the iris and the xor example.
// The settings of the user are kept away.
class MainWindowFixture : public testing::Test {
 protected:
  MainWindowFixture();
  ~MainWindowFixture() override;

  TMain& Frame() { return *m_frame; }
  wxWindow& Client();
  // Closes the window that is there and opens another one, as the program does when it starts.
  void OpenFrame();
  bool FrameIsOpen() const { return m_frame != nullptr; }

  std::string Caption() { return m_frame->GetTitle().utf8_string(); }
  std::string Text(int id);
  std::string StatusText();
  bool IsEnabled(int id) { return Client().FindWindow(id)->IsThisEnabled(); }

  // Chooses a command from the menu; one that is disabled fails the test.
  void Choose(int command);
  // The same for a command that opens dialogs of ours, which the steps answer.
  void Choose(int command, const std::vector<Step>& steps);
  // Lets the window live until then; fails the test after 60 seconds.
  void Until(const std::function<bool()>& done);

  // From the start-up window: opens the file, takes training mode, accepts the setup after the
  // steps, and waits for the training window.
  void OpenForTraining(const std::string& name, std::vector<Step> setup_steps = {});
  // Presses Start and waits for the end of the run.
  void Train();

  // What the command line writes for the same steps, in the same folder; its results go to the file
  // `output` there.
  static void RunCommandLine(const std::string& arguments, const std::string& output = "/dev/null");

  TempFolder m_folder;
  TempFolder m_temporary;  // of the program
  TemporaryFolderIs m_temporary_is{m_temporary.path()};
  ApplicationPaths m_paths;
  std::unique_ptr<Session> m_session;
  std::unique_ptr<AnsweredDialogs> m_dialogs;
  NativeAnswers m_native;

 private:
  TMain* m_frame = nullptr;  // destroys itself
};

}  // namespace tarn
