#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "base/file_layer.h"
#include "data/outputs_export.h"
#include "support/doomed_file.h"
#include "support/doomed_work.h"
#include "support/line_ends.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

std::string ExportedText(const Network& network) {
  std::string text;
  EXPECT_TRUE(WriteOutputs(network, [&text](std::string_view line) {
    text += line;
    return true;
  }));
  return Stored(text, SystemFiles().LineEnd());
}

TEST(OutputsExport, IsOneOfTwoWholeExportsWheneverTheProcessIsKilled) {
  const TempFolder folder;
  const std::string path = folder / "a.out";
  const Network network = DoomedOutputs(1);
  const KillFigures figures =
      KillOver({.work = kExportOutputs,
                .folder = folder.path(),
                .path = path,
                .contents = {ExportedText(network), ExportedText(DoomedOutputs(2))},
                .save = [&] { return ExportOutputs(network, path).ok(); },
                .percent_of_kills = 20});
  EXPECT_GT(figures.leftovers, 0);
  EXPECT_GT(figures.changes, 0);
}

}  // namespace
}  // namespace tarn
