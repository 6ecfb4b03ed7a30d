#include "netfile/network_writer.h"

#include <numeric>

#include "data/normalization.h"
#include "data/test_set.h"
#include "netfile/connections_section.h"
#include "netfile/weights_section.h"
#include "netfile_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

// 8-7-2 nodes with all four sections: weights that six digits hold, two removed connections,
// a random split of 30 patterns and both limits.
Network FullNetwork() {
  Network network;
  network.NetName = "Every section";
  network.nLayers = 3;
  network.layers[0].nUnits = 8;
  network.layers[1].nUnits = 7;
  network.layers[2].nUnits = 2;
  network.layers[1].TransFunc = kTanh;
  network.layers[2].TransFunc = kGaussian;
  network.Eta = 0.125F;
  network.EtaMin = 0.0625F;
  network.EtaMax = 0.5F;
  network.Alpha = 0.75F;
  network.FastProp = 1.5F;
  network.Tolerance = 2.25F;
  network.MaxIterations = 5000;
  network.LRC = 300;
  network.UpdateRate = 10;
  network.SaveRate = 250;
  network.WeightRate = 4;
  network.PatName = "data/in.txt";
  network.PatCol = 2;
  network.TargName = "data/in.txt";
  network.TargCol = 10;
  network.pat_norm = network.targ_norm = 1;
  network.overMeth = kTestRandom;
  network.nPats = 30;
  network.nTrain = 18;
  network.testPats = 12;
  for (int32_t pattern = 0; pattern < 30; ++pattern) {
    (pattern % 5 < 3 ? network.train_list : network.test_list).push_back(pattern);
  }
  EXPECT_TRUE(AllocateArrays(network).ok());
  for (size_t l = 1; l < 3; ++l) {
    float value = l == 1 ? -2.0F : 10.0F;
    for (float& weight : network.layers[l].weights.All()) {
      weight = value;
      value += 0.0625F;
    }
  }
  network.layers[1].masks.Row(6)[7] = network.layers[2].masks.Row(0)[3] = 0;
  network.layers[1].weights.Row(6)[7] = network.layers[2].weights.Row(0)[3] = 0;
  network.fully_connected = false;
  std::iota(network.input_limits.lower.begin(), network.input_limits.lower.end(), -4.0F);
  std::iota(network.input_limits.upper.begin(), network.input_limits.upper.end(), 100.5F);
  network.target_limits.lower = {0.25F, -1000.0F};
  network.target_limits.upper = {0.75F, 123456.5F};
  return network;
}

constexpr std::string_view kFullText =
    "TARNV2.1\n"
    "Every section\n"
    "3\n"
    "8 7 2 2 1 \n"
    "1.500000 0.125000 0.062500 0.500000 0.750000 2.250000\n"
    "5000\n"
    "300 10\n"
    "250 4\n"
    "data/in.txt\n"
    "2\n"
    "1 1\n"
    "data/in.txt\n"
    "10\n"
    "3 12\n"
    "WEIGHTS:READ\n"
    "-2 -1.9375 -1.875 -1.8125 -1.75 -1.6875 -1.625\n"
    "-1.5625 -1.5\n"
    "-1.4375 -1.375 -1.3125 -1.25 -1.1875 -1.125 -1.0625\n"
    "-1 -0.9375\n"
    "-0.875 -0.8125 -0.75 -0.6875 -0.625 -0.5625 -0.5\n"
    "-0.4375 -0.375\n"
    "-0.3125 -0.25 -0.1875 -0.125 -0.0625 0 0.0625\n"
    "0.125 0.1875\n"
    "0.25 0.3125 0.375 0.4375 0.5 0.5625 0.625\n"
    "0.6875 0.75\n"
    "0.8125 0.875 0.9375 1 1.0625 1.125 1.1875\n"
    "1.25 1.3125\n"
    "1.375 1.4375 1.5 1.5625 1.625 1.6875 1.75\n"
    "0 1.875\n"
    "10 10.0625 10.125 0 10.25 10.3125 10.375\n"
    "10.4375\n"
    "10.5 10.5625 10.625 10.6875 10.75 10.8125 10.875\n"
    "10.9375\n"
    "WEIGHTS:STOP\n"
    "CONNECTIONS:READ\n"
    "2\n"
    "1 6 7\n"
    "2 0 3\n"
    "CONNECTIONS:STOP\n"
    "TESTPATTERNS:READ\n"
    "30 18 12\n"
    "0 1 2 5 6 7 10 11 12 15 16\n"
    "17 20 21 22 25 26 27\n"
    "3 4 8 9 13 14 18 19 23 24 28\n"
    "29\n"
    "TESTPATTERNS:STOP\n"
    "NORMALIZE:READ\n"
    "INPUTS\n"
    "-4.000000 -3.000000 -2.000000 -1.000000 0.000000 1.000000 2.000000 3.000000\n"
    "\n"
    "100.500000 101.500000 102.500000 103.500000 104.500000 105.500000 106.500000 107.500000\n"
    "\n"
    "OUTPUTS\n"
    "0.250000 -1000.000000 \n"
    "0.750000 123456.500000 \n"
    "NORMALIZE:STOP\n";

class NetworkWriter : public NetFileTest {
 protected:
  template <typename Writer>
  std::string Written(Writer writer) {
    OutputFile file;
    EXPECT_TRUE(file.OpenReplacing("/home/out") && writer(file, m_network) && file.Commit());
    return Get("/home/out");
  }
};

TEST_F(NetworkWriter, WritesAllFourSections) {
  EXPECT_EQ(TextOf(FullNetwork()), kFullText);
}

TEST_F(NetworkWriter, WritesTheSameUnderADecimalCommaLocale) {
  const CommaLocale comma;
  EXPECT_EQ(TextOf(FullNetwork()), kFullText);
}

TEST_F(NetworkWriter, WritesWhatReadersTakeBack) {
  for (const char* line_end : {"\n", "\r\n"}) {
    std::string text;
    for (const char c : kFullText) text.append(c == '\n' ? line_end : std::string(1, c));
    m_files.Put("/home/a.net", text);
    const Network wanted = FullNetwork();
    Notices notices;
    m_network = Network();
    m_network.file_name = "/home/a.net";
    ASSERT_TRUE(ReadHeader(m_network).ok());
    m_network.nPats = 30;
    SizeTestSet(m_network, notices);
    ASSERT_TRUE(AllocateArrays(m_network).ok());
    EXPECT_TRUE(ReadWeights(m_network, 1).ok());
    EXPECT_TRUE(ReadConnections(m_network, "/home").ok());
    EXPECT_TRUE(BuildTestSet(m_network, 1).ok());
    EXPECT_TRUE(ReadInputLimits(m_network).ok());
    EXPECT_TRUE(ReadTargetLimits(m_network).ok());
    EXPECT_EQ(m_network.train_list, wanted.train_list);
    EXPECT_EQ(m_network.input_limits.upper, wanted.input_limits.upper);
    EXPECT_EQ(Values(m_network.layers[1].weights), Values(wanted.layers[1].weights));
    EXPECT_EQ(Values(m_network.layers[2].masks), Values(wanted.layers[2].masks));
    EXPECT_FALSE(m_network.fully_connected);
    EXPECT_EQ(TextOf(m_network), kFullText);
  }
}

TEST_F(NetworkWriter, BringsAnOldFileIntoTheCurrentVersion) {
  Lines lines = OldHeader("TARNV1.0");
  lines.resize(14);
  lines.push_back("-20000\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8 0.9\n-20000");
  Prepare(lines);
  ASSERT_TRUE(ReadWeights(m_network, 1).ok());
  ASSERT_TRUE(ReadConnections(m_network, "/home").ok());
  ASSERT_TRUE(WriteNetworkFile("/home/a.net", m_network).ok());
  Lines expected = SmallNetwork();
  expected[3] = "2 2 1 0 0 ";
  expected[4] = "0.500000 0.010000 0.001000 0.300000 0.800000 0.000000";
  expected[7] = "500 0";
  expected[13] = "1 10";
  expected.erase(expected.begin() + 19, expected.begin() + 23);
  expected.insert(expected.begin() + 19, "CONNECTIONS:FULL");
  expected.back() =
      "NORMALIZE:READ\nINPUTS\n0.000000 0.000000 \n0.000000 0.000000 \nNORMALIZE:STOP";
  EXPECT_EQ(Get("/home/a.net"), Join(expected));
}

TEST_F(NetworkWriter, StoresARandomSplitOnly) {
  m_network = FullNetwork();
  for (const int32_t method : {-1, 0, 1, 2, 4}) {
    m_network.overMeth = method;
    EXPECT_EQ(Written(WriteTestPatterns), "TESTPATTERNS:COMPUTE\n");
  }
}

TEST_F(NetworkWriter, WritesElevenPatternNumbersALine) {
  m_network.overMeth = kTestRandom;
  m_network.nPats = 35;
  for (const int32_t test : {0, 1, 11, 12, 13}) {
    SCOPED_TRACE(test);
    m_network.testPats = test;
    m_network.nTrain = 22;
    m_network.train_list.assign(22, 3);
    m_network.test_list.assign(static_cast<size_t>(test), 4);
    std::string expected = "TESTPATTERNS:READ\n35 22 " + std::to_string(test) +
                           "\n3 3 3 3 3 3 3 3 3 3 3\n3 3 3 3 3 3 3 3 3 3 3\n";
    if (test == 1) expected += "4\n";
    if (test >= 11) expected += "4 4 4 4 4 4 4 4 4 4 4\n";
    if (test == 12) expected += "4\n";
    if (test == 13) expected += "4 4\n";
    EXPECT_EQ(Written(WriteTestPatterns), expected + "TESTPATTERNS:STOP\n");
  }
}

TEST_F(NetworkWriter, WritesTheLimitsThatAreInForce) {
  m_network.input_limits.lower = m_network.target_limits.lower = {-1.5F};
  m_network.input_limits.upper = m_network.target_limits.upper = {2.0F};
  EXPECT_EQ(Written(WriteNormalize), "NORMALIZE:NONE\n");
  const std::string limits = "\n-1.500000 \n2.000000 \n";
  m_network.pat_norm = 1;
  EXPECT_EQ(Written(WriteNormalize), "NORMALIZE:READ\nINPUTS" + limits + "NORMALIZE:STOP\n");
  m_network.targ_norm = -1;
  EXPECT_EQ(Written(WriteNormalize),
            "NORMALIZE:READ\nINPUTS" + limits + "OUTPUTS" + limits + "NORMALIZE:STOP\n");
  m_network.pat_norm = 0;
  EXPECT_EQ(Written(WriteNormalize), "NORMALIZE:READ\nOUTPUTS" + limits + "NORMALIZE:STOP\n");
}

TEST_F(NetworkWriter, WritesEightLimitsALineAndALineBreakBehindEachList) {
  m_network.pat_norm = 1;
  for (const size_t nodes : {8U, 9U}) {
    m_network.input_limits.lower.assign(nodes, 1.0F);
    m_network.input_limits.upper.assign(nodes, 2.0F);
    const std::string rest = nodes == 9 ? " \n" : "\n";
    std::string lower, upper;
    for (size_t i = 0; i < 8; ++i) {
      lower += i < 7 ? "1.000000 " : "1.000000\n";
      upper += i < 7 ? "2.000000 " : "2.000000\n";
    }
    EXPECT_EQ(Written(WriteNormalize),
              "NORMALIZE:READ\nINPUTS\n" + lower + (nodes == 9 ? "1.000000" : "") + rest + upper +
                  (nodes == 9 ? "2.000000" : "") + rest + "NORMALIZE:STOP\n");
  }
}

TEST_F(NetworkWriter, ReplacesTheNetworksOwnFile) {
  m_files.Put("/home/a.net", "old text that is longer than nothing");
  m_network = FullNetwork();
  m_network.file_name = "/home/a.net";
  EXPECT_TRUE(WriteNetworkFile("/home/a.net", m_network).ok());
  EXPECT_EQ(Get("/home/a.net"), kFullText);
}

TEST_F(NetworkWriter, AppendsToAnyOtherFile) {
  m_network = FullNetwork();
  m_network.file_name = "/home/a.net";
  m_files.Put("/home/b.net", "before\n");
  EXPECT_TRUE(WriteNetworkFile("/home/b.net", m_network).ok());
  EXPECT_EQ(Get("/home/b.net"), "before\n" + std::string(kFullText));
  EXPECT_TRUE(WriteNetworkFile("/home/new.net", m_network).ok());
  EXPECT_EQ(Get("/home/new.net"), kFullText);
  // The names are compared byte for byte.
  m_files.Put("/home/a.net", "before\n");
  EXPECT_TRUE(WriteNetworkFile("/home/./a.net", m_network).ok());
  EXPECT_EQ(Get("/home/a.net"), "before\n" + std::string(kFullText));
}

TEST_F(NetworkWriter, KnowsWhatCouldNotBeReadBack) {
  m_network = FullNetwork();
  EXPECT_TRUE(CanBeReadBack(m_network));
  for (const float value :
       {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
    for (float Network::*rate : {&Network::Eta, &Network::Alpha, &Network::EtaMin, &Network::EtaMax,
                                 &Network::FastProp, &Network::Tolerance}) {
      Network network = m_network;
      network.*rate = value;
      EXPECT_FALSE(CanBeReadBack(network));
    }
    Network network = m_network;
    network.layers[2].weights.All().back() = -value;
    EXPECT_FALSE(CanBeReadBack(network));
  }
  for (std::string Network::*text : {&Network::NetName, &Network::PatName, &Network::TargName}) {
    for (const char* key : {"WEIGHTS:", "CONNECTIONS:FULL", "TESTPATTERNS:x", "NORMALIZE:NONE"}) {
      Network network = m_network;
      network.*text = key;
      EXPECT_FALSE(CanBeReadBack(network)) << key;
      EXPECT_FALSE(SetupCanBeReadBack(network)) << key;
    }
    Network network = m_network;
    network.*text = "ITERATIONS.txt";
    EXPECT_TRUE(CanBeReadBack(network));
    EXPECT_FALSE(SnapshotCanBeReadBack(network));
  }
  m_network.layers[1].weights.All()[0] = std::numeric_limits<float>::max();
  EXPECT_TRUE(SnapshotCanBeReadBack(m_network));
  m_network.layers[1].weights.All()[0] = std::numeric_limits<float>::infinity();
  EXPECT_TRUE(SetupCanBeReadBack(m_network)) << "it is saved without them";
}

TEST_F(NetworkWriter, FailsWhereNoFileCanBeMade) {
  m_network = FullNetwork();
  m_network.file_name = "/no such folder/a.net";
  EXPECT_EQ(WriteNetworkFile("/no such folder/a.net", m_network).message(),
            "Cannot Write to Network File");
  EXPECT_EQ(WriteNetworkFile("/no such folder/b.net", m_network).message(),
            "Cannot Write to Network File");
  EXPECT_EQ(WriteNetworkFile("", m_network).message(), "Cannot Write to Network File");
}

TEST_F(NetworkWriter, KeepsTheOldFileWheneverTheDiskFails) {
  m_network = FullNetwork();
  m_network.file_name = "/home/a.net";
  for (const std::string path : {"/home/a.net", "/home/b.net"}) {
    for (const bool exists : {true, false}) {
      SCOPED_TRACE(path + (exists ? ", which exists" : ""));
      const std::string wanted =
          (exists && path == "/home/b.net" ? "old\n" : "") + std::string(kFullText);
      Status status;
      ForAllFaults(
          [&] {
            for (const std::string& left : m_files.Paths()) m_files.Remove(left);
            if (exists) m_files.Put(path, "old\n");
          },
          [&] { status = WriteNetworkFile(path, m_network); },
          [&](bool struck) {
            EXPECT_TRUE(struck || status.ok());
            EXPECT_EQ(status.message(), status.ok() ? "" : "Cannot Write to Network File");
            EXPECT_EQ(Get(path), status.ok() ? wanted : exists ? "old\n" : "(none)");
            EXPECT_EQ(m_files.Paths(), exists || status.ok() ? Lines{path} : Lines{});
            EXPECT_EQ(m_files.OpenHandles(), 0);
          });
    }
  }
}

}  // namespace
}  // namespace tarn
