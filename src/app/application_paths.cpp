#include "app/application_paths.h"

#include "base/file_layer.h"
#include "base/paths.h"

namespace tarn {
namespace {

constexpr const char* kHelpFile = "TARN.HLP";

}  // namespace

ApplicationPaths FormApplicationPaths() {
  return {FullPath(kHelpFile), FullPath("TABULO.EXE"), FullPath("TABULO.TBI"),
          Files().CurrentDirectory()};
}

std::array<std::string, 3> HelpFilePlaces(const ApplicationPaths& paths,
                                          std::string_view program_folder) {
  std::string shared(program_folder);
  for (const char* const step : {"..", "share", "tarn"}) shared = JoinPath(shared, step);
  return {paths.help_file, JoinPath(program_folder, kHelpFile), JoinPath(shared, kHelpFile)};
}

}  // namespace tarn
