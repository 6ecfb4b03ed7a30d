#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

#include "base/temp_file.h"
#include "support/doomed_process.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

mode_t RightsOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_mode & 0777;
}

TEST(TempFile, IsTheUsersAlone) {
  const TempFolder folder;
  TempFile file;
  ASSERT_TRUE(file.Create(folder.path()));
  EXPECT_TRUE(file.path().starts_with(folder / "Tarn"));
  EXPECT_EQ(RightsOf(file.path()), 0600U);
}

TEST(ScratchFolder, IsTheUsersAlone) {
  const ScratchFolder folder;
  EXPECT_EQ(RightsOf(folder.path()), 0700U);
}

TEST(AbandonedFiles, LeaveWhatALinkPointsTo) {
  const TempFolder folder;
  const std::string kept = folder / "kept";
  fs::create_directory(kept);
  WriteFile(kept + "/file", "");
  const std::string link = folder / ("Tarn" + EndedProcess() + "-abcdef");
  fs::create_directory_symlink(kept, link);
  RemoveAbandonedFiles(folder.path());
  EXPECT_FALSE(fs::is_symlink(link));
  EXPECT_TRUE(fs::exists(kept + "/file"));
}

}  // namespace
}  // namespace tarn
