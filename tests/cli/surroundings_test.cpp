#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "cli/cli_test.h"

namespace tarn {
namespace {

namespace fs = std::filesystem;

// What stands around a run: folders, names, links, locale, other runs.
class Surroundings : public CliTest {
 protected:
  // The network and its data in a folder of their own.
  void PutNetworkIn(const std::string& folder) {
    PutNetwork();
    fs::create_directories(Path(folder));
    fs::rename(Path("test.net"), Path(folder + "/test.net"));
    fs::rename(Path("data.txt"), Path(folder + "/data.txt"));
  }
};

TEST_F(Surroundings, PathsBelongToTheUsersFolderAndDataToThatOfTheNetwork) {
  PutNetworkIn("nets");
  Do({"train", "nets/test.net", "-o", "trained.net", "--quiet", "--outputs", "a.out",
      "--error-history", "a.err", "--history", "a.hst", "--autosave", "a.store"});
  for (const char* name : {"trained.net", "a.out", "a.err", "a.hst", "a.store"}) {
    EXPECT_TRUE(Exists(name)) << name;
  }
  EXPECT_EQ(NamesIn(Path("nets")).size(), 2U);
  Write("new.txt", "1 1\n");
  Do({"recall", "./trained.net", "--inputs", "new.txt", "--outputs", "new.out"});
  EXPECT_TRUE(Exists("new.out"));
  Do({"train", "nets/test.net", "--quiet"});
  Do({"recall", "nets/../nets/test.net", "--inputs", "new.txt", "--outputs", "nets/new.out"});
  EXPECT_TRUE(Exists("nets/new.out"));
  Do({"set", "nets/test.net", "--inputs", "data.txt", "-o", "set.net"});
  EXPECT_TRUE(Exists("set.net"));
  Do({"restore", "a.store", "10", "nets/restored.net"});
  EXPECT_TRUE(Exists("nets/restored.net"));
}

TEST_F(Surroundings, NamesMayHaveBlanksAndUmlauts) {
  const std::string folder = "Größe und Maß";
  PutNetworkIn(folder);
  fs::rename(Path(folder + "/data.txt"), Path(folder + "/Maße 1.txt"));
  fs::rename(Path(folder + "/test.net"), Path(folder + "/Blüten netz.net"));
  const std::string net = folder + "/Blüten netz.net";
  Do({"set", net, "--inputs", "Maße 1.txt", "--targets", "Maße 1.txt", "--name", "Blüte"});
  Do({"train", net, "--quiet", "--outputs", "Größen.out"});
  EXPECT_EQ(Lines(Read("Größen.out")), 10);
  EXPECT_THAT(Read(net), testing::HasSubstr("\nMaße 1.txt\n"));
}

TEST_F(Surroundings, ALinkStaysALink) {
  PutNetworkIn("nets");
  fs::create_symlink(Path("nets/test.net"), Path("nets/link.net"));
  Do({"train", "nets/link.net", "--quiet"});
  EXPECT_TRUE(fs::is_symlink(Path("nets/link.net")));
  EXPECT_THAT(Read("nets/test.net"), testing::HasSubstr("WEIGHTS:READ\n"));
  Do({"set", "nets/link.net", "--name", "Linked"});
  EXPECT_TRUE(fs::is_symlink(Path("nets/link.net")));
  EXPECT_THAT(Read("nets/test.net"), testing::HasSubstr("\nLinked\n"));
}

TEST_F(Surroundings, AccessRightsAreKept) {
  PutNetwork();
  fs::permissions(Path("test.net"), fs::perms(0640));
  Do({"train", "test.net", "--quiet"});
  EXPECT_EQ(fs::status(Path("test.net")).permissions(), fs::perms(0640));
}

TEST_F(Surroundings, NumbersDoNotFollowTheLocale) {
  PutNetwork("plain.net");
  PutNetwork("german.net");
  const RunResult plain = Run({"train", "plain.net", "--seed", "1"});
  m_scene.environment["LC_ALL"] = "de_DE.UTF-8";
  m_scene.environment["LANG"] = "de_DE.UTF-8";
  const RunResult german = Run({"train", "german.net", "--seed", "1"});
  EXPECT_EQ(german.status, 0);
  EXPECT_EQ(german.out, plain.out);
  EXPECT_EQ(Read("german.net"), Read("plain.net"));
  Do({"set", "german.net", "--eta", "0.25"});
  EXPECT_THAT(Read("german.net"), testing::HasSubstr("\n0.000000 0.250000 "));
}

TEST_F(Surroundings, TwoRunsAtWorkAtOnceDoNotMeet) {
  PutNetwork("a.net");
  PutNetwork("b.net");
  PutNetwork("c.net");
  const std::vector<std::string> options = {"--iterations", "20000", "--seed", "1", "--quiet"};
  const auto train = [&](const std::string& name) {
    std::vector<std::string> arguments = {"train", name};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
  };
  Program first(train("a.net"), m_scene);
  Program second(train("b.net"), m_scene);
  EXPECT_EQ(first.Wait().status, 0);
  EXPECT_EQ(second.Wait().status, 0);
  Do(train("c.net"));
  EXPECT_EQ(Read("a.net"), Read("c.net"));
  EXPECT_EQ(Read("b.net"), Read("c.net"));
}

TEST_F(Surroundings, WorkWithoutATemporaryFolder) {
  PutNetwork();
  m_scene.environment["TMPDIR"] = Path("gone");
  Do({"train", "test.net", "--quiet"});
  EXPECT_THAT(Read("test.net"), testing::HasSubstr("WEIGHTS:READ\n"));
}

TEST_F(Surroundings, TheExamplesTrain) {
  for (const char* name : {"iris", "xor", "surface"}) {
    const std::string network =
        std::string(TARN_SOURCE_DIR) + "/examples/" + name + "/" + name + ".net";
    const std::string before = ReadFile(network);
    Do({"train", network, "--no-save", "--quiet", "--seed", "1", "--iterations", "20"});
    EXPECT_EQ(ReadFile(network), before);
  }
}

}  // namespace
}  // namespace tarn
