#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <vector>

#include "app/application_paths.h"
#include "resources/controls.h"
#include "setup/setup_fixture.h"
#include "support/fake_dialogs.h"
#include "ui/driver.h"

namespace tarn {

// What the two dialogs show before the names of their files.
inline constexpr char kInputsLabel[] = "Input Node Data File: ";
inline constexpr char kTargetsLabel[] = "Target Data File: ";

// A dialog that names data files, over a network of 2-2-1 nodes.
template <typename Dialog>
class DataDialogFixture : public testing::Test {
 protected:
  using DialogStep = std::function<void(Dialog&)>;

  DataDialogFixture() { m_paths.hand_over = m_files.Missing("TABULO.TBI"); }

  int Run(const std::vector<DialogStep>& steps) {
    Dialog dialog(nullptr, m_network, m_dialogs, m_paths);
    std::vector<Step> bound;
    for (const DialogStep& step : steps) bound.push_back([&dialog, step] { step(dialog); });
    return RunModal(dialog, bound);
  }
  static DialogStep ClickStep(int id) {
    return [id](Dialog& dialog) { Click(dialog, id); };
  }

  SetupFiles m_files;
  ApplicationPaths m_paths;
  FakeDialogs m_dialogs;
  Network m_network = MakeNetwork({2, 2, 1});
};

}  // namespace tarn
