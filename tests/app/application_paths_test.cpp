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

TEST(HelpFilePlaces, AreTheFolderOfTheStartThatOfTheProgramAndItsSharedData) {
  ApplicationPaths paths;
  paths.help_file = "/home/me/TARN.HLP";
  const auto [start, program, shared] = HelpFilePlaces(paths, "/usr/bin");
  EXPECT_EQ(start, "/home/me/TARN.HLP");
  EXPECT_EQ(Slashes(program), "/usr/bin/TARN.HLP");
  EXPECT_EQ(Slashes(shared), "/usr/bin/../share/tarn/TARN.HLP");
}

}  // namespace
}  // namespace tarn
