#include "app/application_paths.h"

#include <gtest/gtest.h>

#include "support/memory_files.h"
#include "support/slashes.h"

namespace tarn {
namespace {

TEST(ApplicationPaths, LieInTheFolderOfTheStart) {
  MemoryFiles files("/home/me");
  const ScopedFileLayer layer(files);
  const ApplicationPaths paths = FormApplicationPaths();
  files.AddFolder("/home/you");
  files.EnterDirectory("/home/you");
  EXPECT_EQ(Slashes(paths.help_file), "/home/me/TARN.HLP");
  EXPECT_EQ(Slashes(paths.data_editor), "/home/me/TABULO.EXE");
  EXPECT_EQ(Slashes(paths.hand_over), "/home/me/TABULO.TBI");
  EXPECT_EQ(Slashes(paths.start_folder), "/home/me");
}

}  // namespace
}  // namespace tarn
