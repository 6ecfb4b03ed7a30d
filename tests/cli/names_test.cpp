#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "cli/cli_test.h"

// Names of files and folders: any bytes that the system takes, links, and what may not be written.

namespace tarn {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

std::string Told(const std::string& message) {
  return "tarn-cli: " + message + "\n";
}

class Names : public CliTest, public testing::WithParamInterface<std::string> {};

TEST_P(Names, AreTakenByteForByteForEveryFileAndFolder) {
  const std::string folder = GetParam();
  const std::string net = folder + "/" + folder + ".net";
  const auto beside = [&](const char* ending) { return folder + "/" + folder + ending; };
  PutNetwork();
  fs::create_directory(Path(folder));
  fs::rename(Path("test.net"), Path(net));
  fs::rename(Path("data.txt"), Path(folder + "/data.txt"));
  // In the working folder a name that begins with a dash follows "--" or has a folder before it.
  Do({"train", "--seed", "1", "--quiet", "--outputs=" + beside(".out"),
      "--error-history=" + beside(".err"), "--history=" + beside(".his"),
      "--autosave=" + beside(".store"), "--", net});
  Do({"restore", "./" + beside(".store"), "10", "./" + beside(" restored.net")});
  Do({"plot", "rms", "./" + net, "--history=" + beside(".his"), "--output=" + beside(".svg")});
  Do({"plot", "scatter", "./" + net, "--output=" + beside(".csv")});
  Do({"recall", "--inputs=" + folder + "/data.txt", "--outputs=" + beside(".recalled"), "--", net});
  Do({"set", "--output=" + beside(" set.net"), "--eta", "0.25", "--", net});
  Do({"new", "./" + beside(" new.net")});
  const RunResult report = Run({"report", "information", "./" + net});
  EXPECT_EQ(report.status, 0);
  EXPECT_EQ(report.err, "");
  std::vector<std::string> names = NamesIn(Path(folder));
  EXPECT_THAT(names,
              testing::UnorderedElementsAre(
                  "data.txt", folder + ".net", folder + ".out", folder + ".err", folder + ".his",
                  folder + ".store", folder + " restored.net", folder + ".svg", folder + ".csv",
                  folder + ".recalled", folder + " set.net", folder + " new.net"));
  EXPECT_EQ(NamesIn(m_scene.folder), std::vector<std::string>{folder});
}

TEST_P(Names, AreToldAsTheyAre) {
  const std::string name = GetParam();
  const RunResult missing = Run({"train", "./" + name});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, Told("File Not Found!"));
  Write(name, "taken");
  const RunResult taken = Run({"new", "./" + name});
  EXPECT_EQ(taken.status, 1);
  EXPECT_EQ(taken.err, Told("'" + Path(name) + "' exists; --force replaces it"));
}

// A name that does not fit a line of the network file counts as one that is not there.
TEST_P(Names, OfDataFilesAreKeptWhenTheyFitALine) {
  const std::string name = GetParam() + ".txt";
  PutNetwork();
  fs::rename(Path("data.txt"), Path(name));
  const std::string before = Read("test.net");
  const RunResult set = Run({"set", "test.net", "--inputs=" + name, "--targets=" + name});
  if (name.find('\n') != std::string::npos) {
    EXPECT_EQ(set.status, 1);
    EXPECT_EQ(set.err, Told("Input node data file not found"));
    EXPECT_EQ(Read("test.net"), before);
    return;
  }
  EXPECT_EQ(set.status, 0);
  EXPECT_EQ(set.err, "");
  EXPECT_THAT(Read("test.net"), HasSubstr("\n" + name + "\n1\n1 1\n" + name + "\n3\n"));
  Do({"train", "test.net", "--quiet"});
  fs::remove(Path(name));
  const RunResult gone = Run({"train", "test.net"});
  EXPECT_EQ(gone.status, 1);
  EXPECT_EQ(gone.err, Told("Invalid Input Node Training File - " + name));
}

INSTANTIATE_TEST_SUITE_P(Files, Names,
                         testing::Values("日本語 網", "🧠 🌸", "-x", "--help", "two\nlines",
                                         "\x01\x1B[31m\x7F", "tab\tand\vothers", "100%s %n %d %%",
                                         R"(it's "so" `here` $HOME \n)",
                                         "\xFF\xFE\xC3 \xED\xA0\x80", " blanks at both ends ",
                                         "*?[a]~#;&|<>", std::string(200, 'x')),
                         [](const auto& name) { return fmt::format("Number{}", name.index); });

class Links : public CliTest {
 protected:
  void PutLink(const std::string& target, const std::string& name) {
    fs::create_symlink(target, Path(name));
  }
  // The command fails with the message, and nothing new stands in the folder.
  void Fails(const std::vector<std::string>& arguments, const std::string& message) {
    const size_t before = NamesIn(m_scene.folder).size();
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, Told(message));
    EXPECT_EQ(NamesIn(m_scene.folder).size(), before);
  }
};

TEST_F(Links, ThatDangleNameTheFileThatIsMade) {
  PutTrainedNetwork();
  fs::create_directory(Path("there"));
  for (const char* ending : {"net", "out", "err", "his", "store"}) {
    PutLink(std::string("there/made.") + ending, std::string("link.") + ending);
  }
  Do({"train", "test.net", "--quiet", "-o", "link.net", "--outputs", "link.out", "--error-history",
      "link.err", "--history", "link.his", "--autosave", "link.store"});
  for (const char* ending : {"net", "out", "err", "his", "store"}) {
    EXPECT_TRUE(fs::is_symlink(Path(std::string("link.") + ending))) << ending;
    EXPECT_TRUE(Exists(std::string("there/made.") + ending)) << ending;
  }
}

TEST_F(Links, ThatDangleIntoAFolderThatIsNotThereFail) {
  PutTrainedNetwork();
  PutLink("missing/made.net", "link.net");
  Fails({"train", "link.net"}, "File Not Found!");
  Fails({"train", "test.net", "-o", "link.net"}, "Cannot Write to Network File");
  Fails({"set", "test.net", "-o", "link.net"}, "Tarn Network File Error Detected");
  Fails({"restore", "test.net", "1", "link.net"}, "Error Writing Network File");
}

TEST_F(Links, ThatRunInACircleFail) {
  PutTrainedNetwork();
  PutLink("b.net", "a.net");
  PutLink("a.net", "b.net");
  Fails({"train", "a.net"}, "File Not Found!");
  Fails({"train", "test.net", "-o", "a.net"}, "Cannot Write to Network File");
  Fails({"set", "test.net", "-o", "a.net"}, "Tarn Network File Error Detected");
  Fails({"new", "a.net"}, "Tarn Network File Error Detected");
  Fails({"set", "test.net", "--inputs", "a.net"}, "Input node data file not found");
  EXPECT_TRUE(fs::is_symlink(Path("a.net")) && fs::is_symlink(Path("b.net")));
}

TEST_F(Links, ToFoldersAreNoFiles) {
  PutTrainedNetwork();
  fs::create_directory(Path("folder"));
  PutLink("folder", "link.net");
  Fails({"train", "link.net"}, "File Not Found!");
  Fails({"train", "test.net", "-o", "link.net"}, "Cannot Write to Network File");
  Fails({"set", "test.net", "--inputs", "link.net"}, "Input node data file not found");
  EXPECT_TRUE(NamesIn(Path("folder")).empty());
}

TEST_F(Links, OfFoldersAreGoneThrough) {
  PutTrainedNetwork();
  fs::create_directory(Path("folder"));
  PutLink("folder", "link");
  fs::rename(Path("test.net"), Path("folder/test.net"));
  fs::rename(Path("data.txt"), Path("folder/data.txt"));
  Do({"train", "link/test.net", "--quiet", "--outputs", "link/a.out"});
  EXPECT_TRUE(Exists("folder/a.out"));
  EXPECT_TRUE(fs::is_symlink(Path("link")));
}

// Access rights hold for a user who is not above them.
class Rights : public CliTest {
 protected:
  RunResult RunWithin(const std::vector<std::string>& arguments) {
    std::string command =
        "cd '" + m_scene.folder + "' && TMPDIR='" + m_scene.environment.at("TMPDIR") + "' exec";
    if (::geteuid() == 0) {
      command +=
          " setpriv --bounding-set -dac_override,-dac_read_search"
          " --inh-caps -dac_override,-dac_read_search";
    }
    command += std::string(" '") + TARN_CLI + "'";
    for (const std::string& argument : arguments) command += " '" + argument + "'";
    const std::string said = m_scene.output_folder + "/said";
    const int status = std::system((command + " > '" + said + "' 2>&1").c_str());
    RunResult result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.err = ReadFile(said);
    return result;
  }
  void Fails(const std::vector<std::string>& arguments, const std::string& message) {
    const RunResult result = RunWithin(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, Told(message));
  }
};

TEST_F(Rights, OfAFileThatMayNotBeWrittenAreRespectedBeforeTheWorkBegins) {
  PutTrainedNetwork();
  const std::string before = Read("test.net");
  Write("kept", "kept");
  fs::permissions(Path("kept"), fs::perms(0444));
  fs::permissions(Path("test.net"), fs::perms(0444));
  Fails({"train", "test.net"}, "Cannot Write to Network File");
  Fails({"set", "test.net", "--eta", "0.5"}, "Tarn Network File Error Detected");
  Fails({"train", "test.net", "--no-save", "--outputs", "kept"}, "File Error Writting Outputs");
  Fails({"train", "test.net", "--no-save", "--history", "kept"},
        "File Error Writting Error History");
  EXPECT_EQ(RunWithin({"train", "test.net", "--quiet", "-o", "other.net"}).status, 0);
  EXPECT_EQ(Read("test.net"), before);
  EXPECT_EQ(Read("kept"), "kept");
}

TEST_F(Rights, OfAFolderThatTakesNoFileAreRespectedBeforeTheWorkBegins) {
  PutTrainedNetwork();
  fs::create_directory(Path("closed"));
  fs::permissions(Path("closed"), fs::perms(0555));
  Fails({"train", "test.net", "-o", "closed/a.net"}, "Cannot Write to Network File");
  Fails({"new", "closed/a.net"}, "Tarn Network File Error Detected");
  Fails({"plot", "scatter", "test.net", "-o", "closed/a.svg"}, "The graph cannot be written");
  EXPECT_TRUE(NamesIn(Path("closed")).empty());
  fs::permissions(Path("closed"), fs::perms(0755));
}

TEST_F(Rights, OfFilesThatMayNotBeReadMakeThemMissing) {
  PutTrainedNetwork();
  fs::permissions(Path("data.txt"), fs::perms(0));
  Fails({"train", "test.net"}, "Invalid Input Node Training File - data.txt");
  Fails({"set", "test.net", "--inputs", "data.txt"}, "Input node data file not found");
  fs::permissions(Path("test.net"), fs::perms(0));
  Fails({"train", "test.net"}, "File Not Found!");
}

}  // namespace
}  // namespace tarn
