#include "data/test_set.h"

#include <algorithm>
#include <numeric>

#include "data_test.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TestSetTest : public DataTest {
 protected:
  // A network in training after its patterns were counted; sized.
  Network MakeSized(int32_t patterns, int32_t method, int32_t test_patterns) {
    Network network = MakeNetwork(1, 1);
    network.nPats = patterns;
    network.overMeth = method;
    network.testPats = test_patterns;
    SizeTestSet(network, m_notices);
    return network;
  }
  static std::vector<int32_t> Range(int32_t first, int32_t end) {
    std::vector<int32_t> list(static_cast<size_t>(end - first));
    std::iota(list.begin(), list.end(), first);
    return list;
  }
  // The split of a seed by the generator's formula, drawn with a plain search.
  static std::vector<int32_t> DrawnBy(uint32_t seed, int32_t patterns, int32_t count) {
    uint64_t state = seed;
    std::vector<int32_t> drawn;
    while (static_cast<int32_t>(drawn.size()) < count) {
      state = (state * 214013 + 2531011) % 4294967296;
      const int32_t value = static_cast<int32_t>(state / 65536 % 32768);
      const int32_t number = value % std::min(patterns, 32767);
      if (std::ranges::find(drawn, number) == drawn.end()) drawn.push_back(number);
    }
    std::ranges::sort(drawn);
    return drawn;
  }
  // Both lists together hold each pattern once, each list ascending.
  static void ExpectPartition(const Network& network) {
    EXPECT_TRUE(std::ranges::is_sorted(network.train_list));
    EXPECT_TRUE(std::ranges::is_sorted(network.test_list));
    EXPECT_EQ(network.train_list.size(), static_cast<size_t>(network.nTrain));
    EXPECT_EQ(network.test_list.size(), static_cast<size_t>(network.testPats));
    std::vector<int32_t> all = network.train_list;
    all.insert(all.end(), network.test_list.begin(), network.test_list.end());
    std::ranges::sort(all);
    EXPECT_EQ(all, Range(0, network.nPats));
  }
};

TEST_F(TestSetTest, IsAtMost60PerCentOfThePatterns) {
  EXPECT_EQ(MakeSized(100, kTestBeginning, 80).testPats, 60);
  EXPECT_EQ(MakeSized(100, kTestBeginning, 80).nTrain, 40);
  EXPECT_EQ(MakeSized(100, kTestRandom, 60).testPats, 60);
  EXPECT_EQ(MakeSized(100, kTestEnding, 59).testPats, 59);
  EXPECT_EQ(MakeSized(100, 7, 1'000).testPats, 60);
  EXPECT_EQ(MakeSized(1, kTestEnding, 1).testPats, 0);
  EXPECT_EQ(MakeSized(2, kTestEnding, 2).testPats, 1);
  EXPECT_EQ(MakeSized(5, kTestEnding, 5).testPats, 3);
  EXPECT_EQ(MakeSized(7, kTestEnding, 7).testPats, 4);
}

TEST_F(TestSetTest, Is60PerCentExactlyForEveryMultipleOfFive) {
  for (int32_t patterns = 5; patterns <= 32'760; patterns += 5) {
    ASSERT_EQ(MakeSized(patterns, kTestEnding, patterns).testPats, patterns / 5 * 3);
  }
}

TEST_F(TestSetTest, IsAtMost19660Patterns) {
  EXPECT_EQ(MakeSized(32'766, kTestRandom, 32'766).testPats, 19'659);
  EXPECT_EQ(MakeSized(32'767, kTestRandom, 32'767).testPats, 19'660);
  EXPECT_EQ(MakeSized(32'768, kTestRandom, 32'768).testPats, 19'660);
  EXPECT_EQ(MakeSized(65'535, kTestRandom, 65'535).testPats, 19'660);
  EXPECT_EQ(MakeSized(2'147'483'647, kTestEnding, 2'147'483'647).testPats, 19'660);
}

TEST_F(TestSetTest, IsEmptyWithoutAMethod) {
  const Network network = MakeSized(100, kTestNone, 30);
  EXPECT_EQ(network.testPats, 0);
  EXPECT_EQ(network.nTrain, 100);
}

TEST_F(TestSetTest, CoversEveryPatternInRecall) {
  for (int32_t method : {0, 1, 2, 3, 9}) {
    Network network = MakeRecall(1, 1);
    network.nPats = 10;
    network.overMeth = method;
    network.testPats = 3;
    SizeTestSet(network, m_notices);
    EXPECT_EQ(network.nTrain, 10);
    EXPECT_EQ(network.testPats, 10);
    ASSERT_TRUE(BuildTestSet(network, 1).ok());
    EXPECT_EQ(network.train_list, Range(0, 10));
    EXPECT_EQ(network.test_list, Range(0, 10));
    EXPECT_EQ(network.testStart, 0);
    EXPECT_EQ(network.testEnd, 0);
  }
}

TEST_F(TestSetTest, TakesANegativeCountAsZero) {
  const Network network = MakeSized(100, kTestEnding, -3);
  EXPECT_EQ(network.testPats, 0);
  EXPECT_EQ(network.nTrain, 100);
  EXPECT_THAT(m_notices, ElementsAre("Invalid number of test cases - set to ZERO"));
}

TEST_F(TestSetTest, SaysNothingOfACountInBounds) {
  MakeSized(100, kTestEnding, 0);
  MakeSized(100, kTestEnding, 500);
  EXPECT_THAT(m_notices, IsEmpty());
}

TEST_F(TestSetTest, StandsAtTheBeginning) {
  Network network = MakeSized(100, kTestBeginning, 80);
  ASSERT_TRUE(BuildTestSet(network, 1).ok());
  EXPECT_EQ(network.test_list, Range(0, 60));
  EXPECT_EQ(network.train_list, Range(60, 100));
  EXPECT_EQ(network.testStart, 1);
  EXPECT_EQ(network.testEnd, 60);
}

TEST_F(TestSetTest, StandsAtTheEnd) {
  Network network = MakeSized(100, kTestEnding, 10);
  ASSERT_TRUE(BuildTestSet(network, 1).ok());
  EXPECT_EQ(network.train_list, Range(0, 90));
  EXPECT_EQ(network.test_list, Range(90, 100));
  EXPECT_EQ(network.testStart, 91);
  EXPECT_EQ(network.testEnd, 100);
}

TEST_F(TestSetTest, StandsAtTheEndForAnUnknownMethod) {
  for (int32_t method : {-1, 4, 2'147'483'647}) {
    Network network = MakeSized(100, method, 10);
    ASSERT_TRUE(BuildTestSet(network, 1).ok());
    EXPECT_EQ(network.overMeth, kTestEnding);
    EXPECT_EQ(network.test_list, Range(90, 100));
  }
}

TEST_F(TestSetTest, BecomesNoneForAnUnknownMethodWithoutTestPatterns) {
  Network network = MakeSized(100, 4, 0);
  ASSERT_TRUE(BuildTestSet(network, 1).ok());
  EXPECT_EQ(network.overMeth, kTestNone);
  EXPECT_EQ(network.train_list, Range(0, 100));
  EXPECT_THAT(network.test_list, IsEmpty());
}

TEST_F(TestSetTest, IsEmptyWithoutTestPatternsAndReadsNothing) {
  m_files.Put("test.net", "TESTPATTERNS:NONSENSE\n");
  for (int32_t method : {0, 1, 2, 3}) {
    Network network = MakeSized(100, method, 0);
    network.testStart = 5;
    network.testEnd = 6;
    network.test_list = {1, 2};
    ASSERT_TRUE(BuildTestSet(network, 1).ok());
    EXPECT_EQ(network.train_list, Range(0, 100));
    EXPECT_THAT(network.test_list, IsEmpty());
    EXPECT_EQ(network.testStart, 0);
    EXPECT_EQ(network.testEnd, 0);
  }
}

TEST_F(TestSetTest, IsDrawnAsTheGeneratorGivesItForASeed) {
  for (uint32_t seed : {0U, 1U, 42U, 4'294'967'295U}) {
    Network network = MakeSized(100, kTestRandom, 60);
    ASSERT_TRUE(BuildTestSet(network, seed).ok());
    EXPECT_EQ(network.test_list, DrawnBy(seed, 100, 60));
    ExpectPartition(network);
    EXPECT_EQ(network.testStart, 0);
    EXPECT_EQ(network.testEnd, 0);
  }
}

TEST_F(TestSetTest, IsDrawnFromTheFirst32767Patterns) {
  Network network = MakeSized(65'540, kTestRandom, 65'540);
  ASSERT_TRUE(BuildTestSet(network, 3).ok());  // draws 32767 itself, too
  EXPECT_EQ(network.test_list.size(), 19'660U);
  EXPECT_LE(network.test_list.back(), 32'766);
  EXPECT_EQ(network.test_list, DrawnBy(3, 65'540, 19'660));
  ExpectPartition(network);
}

TEST_F(TestSetTest, DiffersWithTheSeed) {
  Network one = MakeSized(100, kTestRandom, 20);
  Network two = one;
  ASSERT_TRUE(BuildTestSet(one, 1).ok());
  ASSERT_TRUE(BuildTestSet(two, 2).ok());
  EXPECT_NE(one.test_list, two.test_list);
}

class StoredTestSetTest : public TestSetTest {
 protected:
  Status Build(const std::string& section) {
    m_files.Put("test.net", "TARNV2.1\nWEIGHTS:RANDOM\n" + section + "NORMALIZE:NONE\n");
    m_network = MakeSized(10, kTestRandom, 3);
    return BuildTestSet(m_network, 5);
  }
  void ExpectNewSplit() {
    EXPECT_EQ(m_network.test_list, DrawnBy(5, 10, 3));
    ExpectPartition(m_network);
  }

  Network m_network;
};

TEST_F(StoredTestSetTest, IsReadFromTheFile) {
  ASSERT_EQ(
      Build("TESTPATTERNS:READ\n10 7 3\n0 1 2 4 5\n7 8\n3 6 9\nTESTPATTERNS:STOP\n").message(), "");
  EXPECT_THAT(m_network.train_list, ElementsAre(0, 1, 2, 4, 5, 7, 8));
  EXPECT_THAT(m_network.test_list, ElementsAre(3, 6, 9));
}

TEST_F(StoredTestSetTest, IsReadFromCrLfLines) {
  ASSERT_EQ(Build("TESTPATTERNS:READ\r\n10 7 3\r\n0 1 2 4 5 7 8\r\n3 6 9\r\n").message(), "");
  EXPECT_THAT(m_network.test_list, ElementsAre(3, 6, 9));
}

TEST_F(StoredTestSetTest, IsDrawnForComputeAndWithoutASection) {
  EXPECT_TRUE(Build("TESTPATTERNS:COMPUTE\n").ok());
  ExpectNewSplit();
  EXPECT_TRUE(Build("TESTPATTERNS:\n").ok());
  ExpectNewSplit();
  EXPECT_TRUE(Build("").ok());
  ExpectNewSplit();
}

TEST_F(StoredTestSetTest, IsDrawnWithoutANetworkFile) {
  Network network = MakeSized(10, kTestRandom, 3);
  network.file_name = "missing.net";
  EXPECT_TRUE(BuildTestSet(network, 5).ok());
  EXPECT_EQ(network.test_list, DrawnBy(5, 10, 3));
}

TEST_F(StoredTestSetTest, IsDrawnAnewWhenTheCountsHaveChanged) {
  for (const char* counts : {"9 6 3", "10 6 4", "10 7 4", "11 7 3", "10 7", "", "x"}) {
    const Status status = Build(std::string("TESTPATTERNS:READ\n") + counts +
                                "\nTESTPATTERNS:STOP\n0 1 2 4 5 7 8\n3 6 9\n");
    EXPECT_EQ(status.message(), "Train set has changed - resetting test cases!") << counts;
    ExpectNewSplit();
  }
}

TEST_F(StoredTestSetTest, IsDrawnAnewWhenANumberIsMissingOrOutOfRange) {
  for (const char* lists :
       {"0 1 2 4 5 7 8\n3 6", "0 1 2 4 5 7 10\n3 6 9", "0 1 2 4 5 7 8\n3 6 10",
        "0 1 2 x 5 7 8\n3 6 9", "-1 1 2 4 5 7 8\n3 6 9", "", "0 1 2 4 5 7 8\n3 6 99999999999"}) {
    const Status status =
        Build(std::string("TESTPATTERNS:READ\n10 7 3\n") + lists + "\nTESTPATTERNS:STOP\n");
    EXPECT_EQ(status.message(), "Test set information invalid - resetting test cases!") << lists;
    ExpectNewSplit();
  }
}

TEST_F(StoredTestSetTest, IsDrawnAnewForAnUnknownModeWord) {
  for (const char* word : {"RANDOM", "read", "READ ", "COMPUTED"}) {
    const Status status =
        Build(std::string("TESTPATTERNS:") + word + "\n10 7 3\n0 1 2 4 5 7 8\n3 6 9\n");
    EXPECT_EQ(status.message(), "Tarn setting random test set cases!") << word;
    ExpectNewSplit();
  }
}

}  // namespace
}  // namespace tarn
