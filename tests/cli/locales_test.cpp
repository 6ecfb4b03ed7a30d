#include <clocale>
#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <stdlib.h>
#include <string>

#include "cli/cli_test.h"

// All that the program writes is the same under every locale of its user. The locales are compiled
// with the tests: the machine need not have them.

namespace tarn {
namespace {

namespace fs = std::filesystem;

// Everything that a user would keep of a project, by file name.
using Files = std::map<std::string, std::string>;

class Locales : public CliTest {
 protected:
  // What all commands write in a folder of its own, and print into files there.
  Files WriteAll(const std::string& locale) {
    const std::string home = m_scene.folder;
    m_scene.folder = Path(locale);
    fs::create_directory(m_scene.folder);
    m_scene.environment["LOCPATH"] = TARN_LOCALES;
    m_scene.environment["LC_ALL"] = locale;
    m_scene.environment["LANG"] = locale;
    MakeAndTrain();
    for (const char* kind : {"information", "weights", "outputs", "statistics", "divergence"}) {
      Print({"report", kind, "i.net"}, kind);
    }
    Print({"report", "tolerance", "i.net", "--tolerance", "0.25"}, "tolerance");
    Print({"report", "threshold", "i.net", "--upper", "0.75", "--lower", "0.125"}, "threshold");
    PlotAll();
    Files written;
    for (const std::string& name : NamesIn(m_scene.folder)) written[name] = Read(name);
    m_scene.folder = home;
    return written;
  }

 private:
  void Print(const std::vector<std::string>& arguments, const std::string& name) {
    const RunResult result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    Write(name + ".printed", result.out);
  }

  void MakeAndTrain() {
    Write("data.txt",
          "# \"I\" \"\xC4\xB0i\" \"\xC3\x9C\"\n0.5 1.25 1\n1.5 0.25 2\n0.25 1e-3 3\n1 1,4\n2 0.5 "
          "5\n0.125 2 6\n2 1 7\n1 2 8\n2 2 9\n3 0 10.5\n");
    Do({"new", "i.net", "--name", "INIT i", "--layers", "2,3,1", "--transfer", "TANH,Sigmoid",
        "--inputs", "data.txt", "--targets", "data.txt", "--targets-column", "3", "--test-method",
        "RANDOM", "--test-patterns", "3"});
    Do({"set", "i.net", "--eta", "0.125", "--momentum", "0.5", "--tolerance", "0.25",
        "--iterations", "20", "--update-rate", "5", "--autosave-rate", "5"});
    Write("untrained.printed", Read("i.net"));
    const RunResult trained =
        Run({"train", "i.net", "--seed", "1", "--error-history", "i.err", "--history", "i.his",
             "--outputs", "i.out", "--autosave", "i.store"});
    EXPECT_EQ(trained.status, 0);
    Write("trained.printed", trained.out);
    Do({"restore", "i.store", "10", "restored.net"});
    Print({"recall", "i.net", "--inputs", "data.txt", "--targets", "data.txt", "--targets-column",
           "3"},
          "recalled");
    Print({"train", "--help"}, "help");
    Write("refused.printed", Run({"set", "i.net", "--eta", "0,5"}).err);
  }

  void PlotAll() {
    for (const char* kind : {"rms", "test-rms", "learn-rate", "correlation", "test-correlation",
                             "tolerance", "test-tolerance"}) {
      Do({"plot", kind, "i.net", "--history", "i.his", "-o", kind + std::string(".csv")});
    }
    for (const char* kind :
         {"scatter", "outputs", "error", "inputs", "interrogator", "hidden", "contour"}) {
      Do({"plot", kind, "i.net", "-o", kind + std::string(".csv")});
    }
    for (const char* kind : {"scatter", "inputs", "contour"}) {
      Do({"plot", kind, "i.net", "-o", kind + std::string(".svg")});
    }
  }
};

// What printf makes of a half in a locale.
std::string HalfIn(const char* name) {
  ::setenv("LOCPATH", TARN_LOCALES, 1);
  const bool known = std::setlocale(LC_ALL, name) != nullptr;
  char text[16] = "no such locale";
  if (known) std::snprintf(text, sizeof(text), "%.1f", 0.5);
  std::setlocale(LC_ALL, "C");
  ::unsetenv("LOCPATH");
  return text;
}

TEST_F(Locales, HaveNoPartInWhatIsWritten) {
  const Files plain = WriteAll("C");
  EXPECT_EQ(plain.size(), 36U);
  EXPECT_EQ(plain.count("contour.svg"), 1U);
  EXPECT_THAT(plain.at("i.net"), testing::HasSubstr(" 0.125000 "));
  for (const char* locale : {"de_DE.UTF-8", "tr_TR.UTF-8"}) {
    ASSERT_EQ(HalfIn(locale), "0,5") << "the locale itself holds";
    EXPECT_EQ(WriteAll(locale), plain) << locale;
  }
  EXPECT_EQ(WriteAll("C.UTF-8"), plain);
}

}  // namespace
}  // namespace tarn
