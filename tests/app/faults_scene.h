#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "app/session.h"
#include "app/training_desk.h"
#include "browser/report_file.h"
#include "browser/report_text.h"
#include "setup/connections_draft.h"
#include "support/fake_dialogs.h"
#include "support/set_clock.h"

namespace tarn {

// What stands in the files that are to be replaced.
inline constexpr std::string_view kOldText = "what stood there\n";

// A trained network of 2-3-1 nodes in a folder, with its data, an AutoSave store, an error history
// and an edit of its connections that waits in the scratch folder. The record is a little ahead of
// the file.
class FaultScene : private TrainingView {
 public:
  // Everything is made through the current file layer. The folder exists.
  FaultScene(std::string folder, int32_t patterns);

  std::string operator/(std::string_view name) const { return m_folder + "/" + std::string(name); }
  // Trains at a desk to the last iteration; its temporary files live as long as the scene.
  void OpenDesk();
  // Makes a report, to be saved as text.
  void OpenReport();
  // The files of the folder by name, without what a save has put beside them for a while.
  std::map<std::string, std::string> Files() const;
  // All that an operation may change for the user: files, record, flags, what was shown.
  std::string State() const;

  Session session;
  FakeDialogs dialogs;
  std::string shown;  // by operations that do not write files
  std::unique_ptr<TrainingDesk> desk;
  TVirtText report_text;
  std::optional<ConnectionsDraft> connections;  // a second edit, not kept yet

 private:
  void ShowStatus(std::string_view) override {}
  void Changed() override {}
  void EditConnections();

  std::string m_folder;
  SetClock m_clock;
  ReportFile m_report;
};

// The bytes of a file; empty when there is none.
std::string BytesOf(const std::string& path);
void PutBytes(const std::string& path, std::string_view bytes);

}  // namespace tarn
