#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>
#include <wx/window.h>

#include "app/application_paths.h"
#include "app/dialogs.h"
#include "setup/handover_file.h"
#include "setup/ui/setup_dialog.h"

namespace tarn {

// What the two dialogs that name data files share.
class DataDialog : public SetupDialog {
 protected:
  DataDialog(wxWindow* parent, const char* resource, Dialogs& dialogs, HelpTopic topic,
             const ApplicationPaths& paths);

  // Ties both rows to the draft's paths, which are not owned.
  void TieFiles(std::string& input_path, std::string& target_path);
  // The button that takes over the file of the companion data editor: `take` puts it into the
  // draft, which holds the fields as they stand.
  void OnHandOver(int button, std::function<void(const HandOver&)> take);

 private:
  // The static shows the path behind its prefix.
  struct TiedFile {
    int text;
    std::string_view prefix;
    std::string& path;
  };

  void TieFile(int button, const FileQuestion& question, const TiedFile& file);
  void Choose(const FileQuestion& question, const TiedFile& file);
  void ShowFile(const TiedFile& file);
  void TakeOver(const std::function<void(const HandOver&)>& take);

  const std::string m_handover_path;
  std::vector<TiedFile> m_files;
};

}  // namespace tarn
