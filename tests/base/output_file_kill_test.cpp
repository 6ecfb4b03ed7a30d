#include <gtest/gtest.h>
#include <string>

#include "base/output_file_test.h"
#include "support/doomed_file.h"
#include "support/doomed_work.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

TEST(OutputFile, LeavesOneWholeContentWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.net";
  const KillFigures figures = KillOver({.work = kSaveTexts,
                                        .folder = folder.path(),
                                        .path = path,
                                        .contents = {DoomedText(1), DoomedText(2)},
                                        .save = [&] { return Save(path, DoomedText(1)); },
                                        .percent_of_kills = 100});
  // Else no kill has struck during a save and nothing was shown.
  EXPECT_GT(figures.leftovers, figures.kills / 10);
}

}  // namespace
}  // namespace tarn
