#include "app/session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/session_fixture.h"
#include "base/paths.h"
#include "engine/training_run.h"
#include "netfile/network_writer.h"
#include "support/set_clock.h"
#include "support/slashes.h"

namespace tarn {
namespace {

class SessionOpen : public SessionFixture {};

TEST_F(SessionOpen, AnswersForAMissingFile) {
  EXPECT_EQ(OpenNetwork(m_session, "nets/none.net").message(), "File Not Found!");
  EXPECT_EQ(OpenNetwork(m_session, "nets").message(), "File Not Found!");
  EXPECT_FALSE(m_files.Exists("/home/nets/none.net"));
  EXPECT_EQ(m_network.file_name, "");
  EXPECT_EQ(m_files.CurrentDirectory(), "/home");
}

TEST_F(SessionOpen, AnswersForAFileThatIsNoNetwork) {
  m_files.Put("/home/nets/empty.net", "");
  for (const char* name : {"/home/nets/data.txt", "/home/nets/empty.net"}) {
    EXPECT_EQ(OpenNetwork(m_session, name).message(), "Not a valid Tarn Network Definition File!");
  }
  EXPECT_EQ(m_network.file_name, "");
}

TEST_F(SessionOpen, RefusesTheUntitledNetworkInAnyCaseWithoutAWord) {
  for (const char* name : {"untitled.ne_", "UNTITLED.NE_", "nets/Untitled.Ne_"}) {
    m_files.Put(std::string("/home/") + name, "TARNV2.1\n");
    const Status status = OpenNetwork(m_session, name);
    EXPECT_FALSE(status.ok()) << name;
    EXPECT_EQ(status.message(), "");
  }
  EXPECT_EQ(m_network.file_name, "");
}

TEST_F(SessionOpen, TakesTheUntitledNetworkWithTheWeightsThatItHas) {
  m_files.Put("/home/nets/UNTITLED.NE_", "WEIGHTS:RANDOM\n");
  TakeUntitled(m_session, "nets/UNTITLED.NE_");
  EXPECT_EQ(Slashes(m_network.file_name), OpenedPath("/home/nets/UNTITLED.NE_"));
  EXPECT_FALSE(m_network.trained);
  EXPECT_EQ(m_files.CurrentDirectory(), "/home/nets");
  m_files.Put("/home/nets/UNTITLED.NE_", "anything\nWEIGHTS:READ\n");
  TakeUntitled(m_session, "/home/nets/UNTITLED.NE_");
  EXPECT_TRUE(m_network.trained);
}

TEST_F(SessionOpen, TakesTheWholePathAndEntersTheFolder) {
  ASSERT_TRUE(OpenNetwork(m_session, "nets/test.net").ok());
  EXPECT_EQ(Slashes(m_network.file_name), "/home/nets/test.net");
  EXPECT_EQ(m_files.CurrentDirectory(), "/home/nets");
  EXPECT_TRUE(OpenNetwork(m_session, "../nets/test.net").ok());
  EXPECT_EQ(Slashes(m_network.file_name), "/home/nets/test.net");
}

TEST_F(SessionOpen, TellsWhetherTheFileHoldsWeights) {
  SetSections("WEIGHTS:READ\n");
  ASSERT_TRUE(OpenNetwork(m_session, "nets/test.net").ok());
  EXPECT_TRUE(m_network.trained);
  SetSections(kPlainSections);
  ASSERT_TRUE(OpenNetwork(m_session, "/home/nets/test.net").ok());
  EXPECT_FALSE(m_network.trained);
}

TEST_F(SessionOpen, KeepsTheOpenNetworkWhenAnotherIsRefused) {
  ASSERT_TRUE(OpenNetwork(m_session, "nets/test.net").ok());
  EXPECT_FALSE(OpenNetwork(m_session, "none.net").ok());
  EXPECT_EQ(Slashes(m_network.file_name), "/home/nets/test.net");
}

class SessionTraining : public SessionFixture {
 protected:
  SessionTraining() { SetSections(kPlainSections); }
};

TEST_F(SessionTraining, ReadsHeaderPatternsAndWeights) {
  EXPECT_EQ(Train(), "");
  EXPECT_TRUE(m_notices.empty());
  EXPECT_EQ(m_network.mode, Mode::kTraining);
  EXPECT_TRUE(m_network.RecallTargets);
  EXPECT_EQ(m_network.NetName, "Test");
  EXPECT_EQ(m_network.nPats, 10);
  EXPECT_EQ(m_network.nTrain, 10);
  EXPECT_EQ(m_network.target_limits.upper[0], 10.0F);
  EXPECT_NE(m_network.layers[1].weights.Row(0)[0], 0.0F);
  EXPECT_TRUE(m_network.fully_connected);
}

TEST_F(SessionTraining, LooksUpDataInTheFolderOfTheNetwork) {
  // Train() is in another folder when the network is loaded.
  m_files.Put("/home/data.txt", "this is another file\n");
  EXPECT_EQ(Train(), "");
  EXPECT_EQ(m_network.nPats, 10);
  SetLine(9, "/home/data.txt");
  EXPECT_EQ(Train(), "Number Inputs and Targets are Not Equal");
}

TEST_F(SessionTraining, GivesTheSameNetworkForTheSameSeed) {
  SetLine(14, "3 4");
  ASSERT_EQ(Train(), "");
  const Network first = m_network;
  ASSERT_EQ(Train(), "");
  EXPECT_EQ(first.test_list, m_network.test_list);
  EXPECT_TRUE(std::ranges::equal(first.layers[1].weights.All(), m_network.layers[1].weights.All()));
  m_session.seeds = SeedSource(2);
  ASSERT_EQ(Train(), "");
  EXPECT_FALSE(
      std::ranges::equal(first.layers[1].weights.All(), m_network.layers[1].weights.All()));
}

TEST_F(SessionTraining, DrawsRandomWeightsWhenTheyAreAskedFor) {
  ASSERT_EQ(Train(), "");
  const Network random = m_network;
  m_network.layers[1].weights.Row(0)[0] = 7;
  ASSERT_TRUE(WriteNetworkFile(m_network.file_name, m_network).ok());
  ASSERT_EQ(Train(), "");
  EXPECT_EQ(m_network.layers[1].weights.Row(0)[0], 7);
  m_network.reset_weights = true;
  ASSERT_TRUE(LoadForTraining(m_session, m_notices).ok());
  EXPECT_TRUE(
      std::ranges::equal(random.layers[1].weights.All(), m_network.layers[1].weights.All()));
  EXPECT_FALSE(m_network.reset_weights);
  ASSERT_EQ(Train(), "");
  EXPECT_EQ(m_network.layers[1].weights.Row(0)[0], 7);
}

TEST_F(SessionTraining, KeepsTheWishForRandomWeightsWhenTheLoadFails) {
  ASSERT_EQ(Train(), "");
  m_network.reset_weights = true;
  SetLine(9, "gone.txt");
  EXPECT_EQ(LoadForTraining(m_session, m_notices).message(),
            "Invalid Input Node Training File - gone.txt");
  EXPECT_TRUE(m_network.reset_weights);
}

TEST_F(SessionTraining, NotesEveryFallbackInItsOrder) {
  SetLine(7, "100 0");
  SetLine(8, "-1 0");
  SetLine(14, "3 4");
  SetSections(
      "WEIGHTS:READ\n1 2 3\nCONNECTIONS:READ\n1\n1 0 2\nTESTPATTERNS:LATER\nNORMALIZE:NONE\n");
  m_files.Put("/home/nets/data.txt", m_files.Get("/home/nets/data.txt").value() + "3 1 11 k");
  EXPECT_EQ(Train(), "");
  EXPECT_EQ(m_notices, (Notices{"Screen update rate out of range; set to 1",
                                "AutoSave rate out of range; feature disabled",
                                "The last line of data.txt has no line end and is not read",
                                "Error reading weights - Random initialization",
                                "Error Reading Connections - Fully Connecting Network",
                                "Tarn setting random test set cases!"}));
  EXPECT_EQ(m_network.UpdateRate, 1);
  EXPECT_EQ(m_network.SaveRate, 0);
  EXPECT_EQ(m_network.nPats, 10);
  EXPECT_TRUE(m_network.random_weights);
  EXPECT_TRUE(m_network.fully_connected);
  EXPECT_EQ(m_network.test_list.size(), 4U);
}

TEST_F(SessionTraining, NotesATestSetThatNoLongerFits) {
  SetLine(14, "3 4");
  SetSections("WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:READ\n9 5 4\n");
  EXPECT_EQ(Train(), "");
  EXPECT_EQ(m_notices, (Notices{"Train set has changed - resetting test cases!"}));
  SetSections("WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:READ\n10 6 4\n1 2 3 4 5 99\n");
  EXPECT_EQ(Train(), "");
  EXPECT_EQ(m_notices, (Notices{"Test set information invalid - resetting test cases!"}));
  SetLine(14, "1 -4");
  EXPECT_EQ(Train(), "");
  EXPECT_EQ(m_notices, (Notices{"Invalid number of test cases - set to ZERO"}));
  EXPECT_EQ(m_network.nTrain, 10);
}

TEST_F(SessionTraining, AnswersForTheFirstThingThatCannotBeRead) {
  SetLine(9, "gone.txt");
  SetLine(12, "gone too.txt");
  SetSections("");
  EXPECT_EQ(Train(), "Invalid Input Node Training File - gone.txt");
  SetLine(4, "2 0 1 0 0");
  EXPECT_EQ(Train(), "Hidden layer 1 has an invalid node count");
  SetLine(3, "x");
  EXPECT_EQ(Train(), "Set number of network layers between 3 and 10");
  SetLine(1, "TARNV1.7");
  EXPECT_EQ(Train(), "Invalid Input file - Not a TARN Network File!");
}

struct Absurd {
  size_t line;
  const char* text;
  const char* message;  // empty: the value is taken or brought into its range
};

TEST_F(SessionTraining, AnswersForAbsurdHeaderValuesWithoutHarm) {
  const std::string original = m_files.Get("/home/nets/test.net").value();
  constexpr const char* kLayers = "Set number of network layers between 3 and 10";
  constexpr const char* kMemory = "Tarn has run out of memory!";
  for (const Absurd& c : std::vector<Absurd>{
           {3, "-2147483648", kLayers},
           {3, "-5", kLayers},
           {3, "0", kLayers},
           {3, "1", kLayers},
           {3, "2", kLayers},
           {3, "11", "Error - Too many layers requested, adjust Layer Count!"},
           {3, "2147483647", "Error - Too many layers requested, adjust Layer Count!"},
           {4, "2147483647 3 1 0 0", kMemory},
           {4, "100000 3 1 0 0", "Insufficient input node data - Data record 1"},
           {4, "-2147483648 3 1 0 0", "Invalid value for input node count"},
           {4, "2 2147483647 1 0 0", kMemory},
           {4, "2 -1 1 0 0", "Hidden layer 1 has an invalid node count"},
           {4, "2 3 2147483647 0 0", kMemory},
           {4, "2 3 100000 0 0", "Insufficient target node data - Data record 1"},
           {4, "2 3 0 0 0", "Invalid value for output node count"},
           {4, "2147483647 2147483647 2147483647 0 0", kMemory},
           {4, "2 99999999999 1 0 0", "Input error reading NET file - nUnits!"},
           {4, "2 3 1 2147483647 -2147483648", ""},
           {5, "1e38 1e38 -1e38 1e38 1e38 1e38", ""},
           {5, "nan inf 0 0 0 0", "Input error reading NET file - Invalid learning rates!"},
           {6, "-2147483648", ""},
           {7, "-2147483648 -2147483648", ""},
           {7, "2147483647 2147483647", ""},
           {8, "2147483647 2147483647", ""},
           {8, "-2147483648 -2147483648", ""},
           {9, "/", "Invalid Input Node Training File - /"},
           {10, "2147483647", "Insufficient input node data - Data record 1"},
           {10, "-2147483648", "Invalid start column specified for inputs"},
           {11, "2147483647 -2147483648", ""},
           {12, "/", "Invalid Target/Output Node Training File"},
           {13, "2147483647", "Insufficient target node data - Data record 1"},
           {13, "0", "Invalid start column specified for targets"},
           {14, "2147483647 2147483647", ""},
           {14, "-2147483648 -2147483648", ""},
           {14, "3 2147483647", ""},
       }) {
    SCOPED_TRACE(std::to_string(c.line) + ": " + c.text);
    std::string text = original;
    size_t begin = 0;
    for (size_t l = 1; l < c.line; ++l) begin = text.find('\n', begin) + 1;
    text.replace(begin, text.find('\n', begin) - begin, c.text);
    m_files.Put("/home/nets/test.net", text);
    EXPECT_EQ(Train(), c.message);
  }
}

TEST_F(SessionTraining, TrainsWhateverRatesTheHeaderHolds) {
  SetLine(4, "2 3 1 99 -99");
  SetLine(5, "1e38 -1e38 1e38 -1e38 1e38 -1e38");
  SetLine(6, "1");
  SetLine(7, "-2147483648 -2147483648");
  SetLine(8, "-2147483648 2147483647");
  ASSERT_EQ(Train(), "");
  SetClock clock;
  TrainingObserver observer;
  TrainingRun run(m_network, clock, observer, "/tmp/history");
  EXPECT_TRUE(run.Start().ok());
  EXPECT_EQ(run.RunFor(1000), RunState::kComplete);
  EXPECT_EQ(m_network.iteration, 1);
}

class SessionRecall : public SessionFixture {
 protected:
  // A trained network file, opened.
  SessionRecall() {
    SetSections(kPlainSections);
    EXPECT_EQ(Train(), "");
    EXPECT_TRUE(WriteNetworkFile(m_network.file_name, m_network).ok());
    EXPECT_TRUE(OpenNetwork(m_session, "/home/nets/test.net").ok());
    m_files.Put("/home/nets/new.txt", "0 0 1\n3 2 9\n1 1 5\n");
    m_network.RecallPatName = "new.txt";
    m_network.RecallTargets = false;
  }

  std::string Recall() {
    m_notices.clear();
    return LoadAndRecall(m_session, m_notices).message();
  }
};

TEST_F(SessionRecall, RefusesAnUntrainedNetwork) {
  SetSections(kPlainSections);
  ASSERT_TRUE(OpenNetwork(m_session, "/home/nets/test.net").ok());
  EXPECT_EQ(Recall(), "Untrained Networks Cannot be used for Recall!");
}

TEST_F(SessionRecall, LeavesTheActivationsOfAllPatternsAndNoFigures) {
  m_network.rms_test = m_network.correlation_test = 1;
  EXPECT_EQ(Recall(), "");
  EXPECT_TRUE(m_notices.empty());
  EXPECT_EQ(m_network.mode, Mode::kRecall);
  EXPECT_EQ(m_network.nPats, 3);
  EXPECT_EQ(m_network.iteration, 5);
  EXPECT_EQ(m_network.rms_test, 0);
  EXPECT_EQ(m_network.correlation_test, 0);
  EXPECT_TRUE(m_network.results_ready);
  EXPECT_FALSE(HasTargets(m_network));
  for (size_t p = 0; p < 3; ++p) EXPECT_GT(OutputLayer(m_network).activations.Row(p)[0], 0.0F);
}

TEST_F(SessionRecall, ReadsTargetsWhenThereAreSome) {
  m_network.RecallTargName = "new.txt";
  m_network.RecallTargCol = 3;
  m_network.RecallTargets = true;
  EXPECT_EQ(Recall(), "");
  EXPECT_EQ(m_network.targets.rows(), 3U);
  // 1..10 were the targets of the training: 1 is the lower end of the band.
  EXPECT_EQ(m_network.targets.Row(0)[0], 0.15F);
}

TEST_F(SessionRecall, ScalesInputsByTheLimitsOfTheTraining) {
  EXPECT_EQ(Recall(), "");
  EXPECT_EQ(m_network.layers[0].activations.Row(0)[0], 0.15F);
  EXPECT_NEAR(m_network.layers[0].activations.Row(1)[0], 0.85F, 1e-6F);
}

TEST_F(SessionRecall, WantsTheLimitsThatTheNetworkWasTrainedWith) {
  std::string text = m_files.Get("/home/nets/test.net").value();
  text.replace(text.find("NORMALIZE:READ"), std::string::npos, "NORMALIZE:NONE\n");
  m_files.Put("/home/nets/test.net", text);
  EXPECT_EQ(Recall(), "Bad or missing pattern normalization data");
  text.replace(text.find("1 1\n"), 4, "0 1\n");
  m_files.Put("/home/nets/test.net", text);
  EXPECT_EQ(Recall(), "Bad or missing target normalization data");
}

TEST_F(SessionRecall, AnswersForDataThatCannotBeRead) {
  m_network.RecallPatName = "gone.txt";
  EXPECT_EQ(Recall(), "Invalid Input Node Training File - gone.txt");
  m_network.RecallPatName = "new.txt";
  m_network.RecallPatCol = 3;
  EXPECT_EQ(Recall(), "Insufficient input node data - Data record 1");
}

TEST_F(SessionRecall, NotesAnUnendedLastLine) {
  m_files.Put("/home/nets/new.txt", "0 0 1\n3 2 9\n1 1 5");
  EXPECT_EQ(Recall(), "");
  EXPECT_EQ(m_notices, (Notices{"The last line of new.txt has no line end and is not read"}));
  EXPECT_EQ(m_network.nPats, 2);
}

TEST_F(SessionRecall, DoesNotTouchTheNetworkFile) {
  const std::string before = m_files.Get("/home/nets/test.net").value();
  EXPECT_EQ(Recall(), "");
  EXPECT_EQ(m_files.Get("/home/nets/test.net"), before);
}

}  // namespace
}  // namespace tarn
