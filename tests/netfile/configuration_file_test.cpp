#include "netfile/configuration_file.h"

#include "netfile_test.h"

namespace tarn {
namespace {

using ConfigurationFile = NetFileTest;

TEST_F(ConfigurationFile, HoldsTheCurrentDirectoryAndStandsInIt) {
  WriteConfigurationFile();
  EXPECT_EQ(Get("/home/tarn.cfg"), "/home\n");
}

TEST_F(ConfigurationFile, FollowsTheCurrentDirectory) {
  m_files.AddFolder("/elsewhere/deep");
  ASSERT_TRUE(m_files.EnterDirectory("/elsewhere/deep"));
  WriteConfigurationFile();
  EXPECT_EQ(Get("/elsewhere/deep/tarn.cfg"), "/elsewhere/deep\n");
  EXPECT_FALSE(m_files.Exists("/home/tarn.cfg"));
}

TEST_F(ConfigurationFile, ReplacesTheOneBefore) {
  m_files.Put("/home/tarn.cfg", "a longer line than the new one has\nand another\n");
  WriteConfigurationFile();
  EXPECT_EQ(Get("/home/tarn.cfg"), "/home\n");
}

TEST_F(ConfigurationFile, Holds255CharactersAtMost) {
  const std::string folder = "/" + std::string(200, 'a') + "/" + std::string(200, 'b');
  m_files.AddFolder(folder);
  ASSERT_TRUE(m_files.EnterDirectory(folder));
  WriteConfigurationFile();
  EXPECT_EQ(Get(folder + "/tarn.cfg"), folder.substr(0, 255) + "\n");
}

TEST_F(ConfigurationFile, IsWrittenWholeOrNotAtAll) {
  ForAllFaults([&] { m_files.Put("/home/tarn.cfg", "old\n"); }, [] { WriteConfigurationFile(); },
               [&](bool struck) {
                 const std::string text = Get("/home/tarn.cfg");
                 EXPECT_TRUE(text == "/home\n" || (struck && text == "old\n")) << text;
                 EXPECT_EQ(m_files.Paths(), Lines{"/home/tarn.cfg"});
               });
}

}  // namespace
}  // namespace tarn
