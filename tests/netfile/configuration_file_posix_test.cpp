#include <filesystem>
#include <gtest/gtest.h>

#include "netfile/configuration_file.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

// As an archive from elsewhere may bring it along.
TEST(ConfigurationFileOnDisk, ReplacesALinkThatHasItsName) {
  const TempFolder folder;
  folder.Enter();
  WriteFile(folder / "profile", "settings");
  std::filesystem::create_symlink("profile", folder / "tarn.cfg");
  WriteConfigurationFile();
  EXPECT_EQ(ReadFile(folder / "tarn.cfg"), folder.path() + "\n");
  EXPECT_FALSE(std::filesystem::is_symlink(folder / "tarn.cfg"));
  EXPECT_EQ(ReadFile(folder / "profile"), "settings");
}

}  // namespace
}  // namespace tarn
