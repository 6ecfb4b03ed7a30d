// Writing the header, the text of a new network, and the check of a file that is opened.

#include "netfile_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

class HeaderWriter : public NetFileTest {
 protected:
  std::string Written(HeaderKind kind) {
    OutputFile file;
    EXPECT_TRUE(file.OpenReplacing("/home/out") && WriteHeader(file, m_network, kind) &&
                file.Commit());
    return Get("/home/out");
  }
  // Line 7: the start of learn rate control and the update rate.
  std::string Line7(HeaderKind kind) {
    std::string text = Written(kind);
    for (int line = 1; line < 7; ++line) text.erase(0, text.find('\n') + 1);
    return text.substr(0, text.find('\n'));
  }
};

TEST_F(HeaderWriter, WritesFourteenLines) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  m_network.layers[0].nUnits = 12;
  m_network.Eta = 0.0123456789F;
  m_network.Alpha = 1.0F;
  m_network.pat_norm = -3;
  const std::string expected =
      "TARNV2.1\n"
      "Small\n"
      "3\n"
      "12 2 1 1 2 \n"
      "0.500000 0.012346 0.001000 0.300000 1.000000 0.250000\n"
      "10000\n"
      "100 5\n"
      "500 7\n"
      "in.txt\n"
      "2\n"
      "-3 0\n"
      "targets.txt\n"
      "3\n"
      "2 10\n";
  EXPECT_EQ(Written(HeaderKind::kNetwork), expected);
  EXPECT_EQ(Written(HeaderKind::kSetup), expected);
}

TEST_F(HeaderWriter, WritesWhatItReads) {
  Lines header = SmallNetwork();
  header.resize(14);
  ASSERT_TRUE(ReadHeaderOf(header).ok());
  EXPECT_EQ(Written(HeaderKind::kNetwork), Join(header));
}

TEST_F(HeaderWriter, BringsOlderVersionsIntoTheCurrentLayout) {
  ASSERT_TRUE(ReadHeaderOf(OldHeader("TARNV1.0")).ok());
  Lines expected = SmallNetwork();
  expected.resize(14);
  expected[3] = "2 2 1 0 0 ";
  expected[4] = "0.500000 0.010000 0.001000 0.300000 0.800000 0.000000";
  expected[7] = "500 0";
  expected[13] = "1 10";
  EXPECT_EQ(Written(HeaderKind::kSetup), Join(expected));
  ASSERT_TRUE(ReadHeaderOf(OldHeader("TARNV1.5")).ok());
  expected[3] = "2 2 1 1 2 ";
  expected[13] = "2 10";
  EXPECT_EQ(Written(HeaderKind::kNetwork), Join(expected));
  ASSERT_TRUE(ReadHeaderOf(OldHeader("TARNV2.7")).ok());
  expected[7] = "500 7";
  EXPECT_EQ(Written(HeaderKind::kNetwork), Join(expected));
}

TEST_F(HeaderWriter, WritesALearnRateControlThatHasStartedAs1) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  m_network.iteration = 500;
  m_network.LRC = 100;
  EXPECT_EQ(Line7(HeaderKind::kNetwork), "1 5");
  m_network.LRC = 499;
  EXPECT_EQ(Line7(HeaderKind::kNetwork), "1 5");
  m_network.LRC = 500;
  EXPECT_EQ(Line7(HeaderKind::kNetwork), "500 5");
  m_network.LRC = 600;
  EXPECT_EQ(Line7(HeaderKind::kNetwork), "600 5");
}

TEST_F(HeaderWriter, LeavesTheLearnRateControlStartAloneInASetup) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  m_network.iteration = 500;
  m_network.LRC = 100;
  EXPECT_EQ(Line7(HeaderKind::kSetup), "100 5");
}

TEST_F(HeaderWriter, GivesANetworkWithoutNameTheNameOfANewOne) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  m_network.NetName.clear();
  EXPECT_TRUE(Written(HeaderKind::kSetup).starts_with("TARNV2.1\nNO NAME\n3\n"));
}

TEST_F(HeaderWriter, WritesNoMoreLayersThanThereCanBe) {
  for (const int32_t layers : {-2147483647 - 1, -1, 0, 11, 2147483647}) {
    m_network.nLayers = layers;
    const std::string text = Written(HeaderKind::kSetup);
    const size_t start = ("TARNV2.1\nNO NAME\n" + std::to_string(layers) + "\n").size();
    const std::string line4 = text.substr(start, text.find('\n', start) - start);
    EXPECT_EQ(line4.size(), layers < 0 ? 0U : layers == 0 ? 0U : 2U * 19U);
  }
}

TEST_F(HeaderWriter, WritesTheSameUnderADecimalCommaLocale) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  m_network.MaxIterations = 1234567;
  const std::string before = Written(HeaderKind::kNetwork);
  const CommaLocale comma;
  EXPECT_EQ(Written(HeaderKind::kNetwork), before);
}

TEST_F(HeaderWriter, TellsThatAWriteFailed) {
  ASSERT_TRUE(ReadHeaderOf(SmallNetwork()).ok());
  OutputFile file;
  EXPECT_FALSE(WriteHeader(file, m_network, HeaderKind::kSetup));
}

using NewNetwork = NetFileTest;

TEST_F(NewNetwork, HasItsOwnText) {
  CreateNewNetwork("/home/untitled.ne_");
  EXPECT_EQ(Get("/home/untitled.ne_"),
            "TARNV2.1\n"
            "NO NAME\n"
            "3\n"
            "2 2 1 0 0\n"
            "0.0  0.01  0.001  0.3  0.8\n"
            "10000\n"
            "100 5\n"
            "500 0\n"
            "none\n"
            "1\n"
            "1 1\n"
            "none\n"
            "1\n"
            "0 0\n"
            "WEIGHTS:RANDOM\n"
            "CONNECTIONS:FULL\n"
            "TESTPATTERNS:COMPUTE\n"
            "NORMALIZE:NONE\n");
}

TEST_F(NewNetwork, NeverReplacesAFile) {
  m_files.Put("/home/a.net", "precious");
  CreateNewNetwork("/home/a.net");
  EXPECT_EQ(Get("/home/a.net"), "precious");
}

TEST_F(NewNetwork, IsCreatedWholeOrNotAtAll) {
  ForAllFaults([&] { m_files.Remove("/home/a.net"); }, [&] { CreateNewNetwork("/home/a.net"); },
               [&](bool struck) {
                 const bool exists = m_files.Exists("/home/a.net");
                 EXPECT_TRUE(struck || exists);
                 if (exists) {
                   EXPECT_EQ(Get("/home/a.net"), NewNetworkText());
                 }
                 EXPECT_LE(m_files.Paths().size(), 1U);
               });
  CreateNewNetwork("/no such folder/a.net");
  EXPECT_FALSE(m_files.Exists("/no such folder/a.net"));
}

class OpenCheck : public NetFileTest {
 protected:
  OpenCheck() {
    m_network = Network();
    m_network.file_name = "before";
    m_network.version = 77;
    m_network.trained = true;
  }
  Status Check(std::string_view text) {
    m_files.Put("/nets/A.net", text);
    m_path = "/nets/A.net";
    return CheckNetworkFile(m_path, m_network);
  }

  std::string m_path;
};

TEST_F(OpenCheck, TakesOverNameAndVersion) {
  for (const auto& [magic, version] :
       std::vector<std::pair<std::string, int32_t>>{{"TARNV1.5", 1},
                                                    {"TARNV2.1", 2},
                                                    {"TARNV2.0", 2},
                                                    {"TARNV2.", 2},
                                                    {"TARNV1.0", 0},
                                                    {"TARNV1.2", 0},
                                                    {"TARNV1", 0},
                                                    {"TARNV1x", 0},
                                                    {"TARNV1.50 and more", 1}}) {
    SCOPED_TRACE(magic);
    EXPECT_TRUE(Check(magic + "\n").ok());
    EXPECT_EQ(m_network.version, version);
#ifdef _WIN32
    EXPECT_EQ(m_network.file_name, "/nets/a.net");
#else
    EXPECT_EQ(m_network.file_name, "/nets/A.net");
#endif
    EXPECT_EQ(m_network.file_name, m_path);
  }
}

TEST_F(OpenCheck, KnowsLessThanTheReader) {
  ASSERT_TRUE(Check(Join(WithLine(SmallNetwork(), 1, "TARNV1.2"))).ok());
  EXPECT_EQ(ReadHeader(m_network).message(), "Invalid Input file - Not a TARN Network File!");
  ASSERT_TRUE(Check(Join(SmallNetwork())).ok());
  EXPECT_EQ(m_network.version, 2);
  ASSERT_TRUE(ReadHeader(m_network).ok());
  EXPECT_EQ(m_network.version, 3);
}

TEST_F(OpenCheck, RefusesAMissingFileAndCreatesNone) {
  m_path = "/nets/missing.net";
  EXPECT_EQ(CheckNetworkFile(m_path, m_network).message(), "File Not Found!");
  EXPECT_TRUE(m_files.Paths().empty());
  EXPECT_EQ(m_network.file_name, "before");
}

TEST_F(OpenCheck, RefusesAnyOtherFileAndLeavesTheNetworkAlone) {
  for (const char* text : {"", "TARN\n", "TARNV3\n", " TARNV2.1\n", "tarnv2.1\n", "TARNV2\n",
                           "\nTARNV2.1\n", "\x1ATARNV2.1\n"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Check(text).message(), "Not a valid Tarn Network Definition File!");
    EXPECT_EQ(m_network.file_name, "before");
    EXPECT_EQ(m_network.version, 77);
    EXPECT_TRUE(m_network.trained);
    EXPECT_EQ(m_files.OpenHandles(), 0);
  }
}

TEST_F(OpenCheck, RefusesTheScratchFileWithoutAWord) {
  for (const char* path : {"/nets/untitled.ne_", "/nets/UNTITLED.NE_", "/nets/UnTitled.Ne_",
                           "untitled.ne_", "/untitled.ne_/a.net", "/nets/my untitled.ne_.net"}) {
    SCOPED_TRACE(path);
    m_files.Put(path, Join(SmallNetwork()));
    m_path = path;
    const Status status = CheckNetworkFile(m_path, m_network);
    EXPECT_FALSE(status.ok());
    EXPECT_EQ(status.message(), "");
    EXPECT_EQ(m_files.CurrentDirectory(), "/home");
    EXPECT_EQ(m_network.file_name, "before");
  }
}

TEST_F(OpenCheck, EntersTheFolderOfAnyFileThatOpens) {
  EXPECT_FALSE(Check("no network").ok());
  EXPECT_EQ(m_files.CurrentDirectory(), "/nets");
}

TEST_F(OpenCheck, TellsWhetherTheFileHoldsWeights) {
  EXPECT_TRUE(Check(Join(SmallNetwork())).ok());
  EXPECT_TRUE(m_network.trained);
  EXPECT_TRUE(Check(NewNetworkText()).ok());
  EXPECT_FALSE(m_network.trained);
  EXPECT_TRUE(Check("TARNV2.1\nany WEIGHTS:READ in a line").ok());
  EXPECT_TRUE(m_network.trained);
  EXPECT_TRUE(Check("TARNV2.1 WEIGHTS:READ\nWEIGHTS: READ\nweights:read\n").ok());
  EXPECT_FALSE(m_network.trained);
}

TEST_F(OpenCheck, ReadsLinesInPiecesOf253Characters) {
  const std::string filler(253, 'x');
  EXPECT_TRUE(Check("TARNV2.1\n" + filler + "WEIGHTS:READ\n").ok());
  EXPECT_TRUE(m_network.trained);
  EXPECT_TRUE(Check("TARNV2.1\n" + filler.substr(1) + "WEIGHTS:READ\n").ok());
  EXPECT_FALSE(m_network.trained);
  // The rest of a long first line is not the first line any more.
  EXPECT_TRUE(Check("TARNV2.1" + filler + "WEIGHTS:READ\n").ok());
  EXPECT_TRUE(m_network.trained);
}

TEST_F(OpenCheck, LeavesTheFileAsItIs) {
  const std::string text = Join(SmallNetwork(), "\r\n");
  EXPECT_TRUE(Check(text).ok());
  EXPECT_TRUE(m_network.trained);
  EXPECT_EQ(Get("/nets/A.net"), text);
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

}  // namespace
}  // namespace tarn
