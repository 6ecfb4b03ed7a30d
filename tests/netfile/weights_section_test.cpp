#include "netfile/weights_section.h"

#include <utility>

#include "netfile_test.h"
#include "support/comma_locale.h"

namespace tarn {
namespace {

using testing::ElementsAre;

constexpr uint32_t kSeed = 7;

class WeightsReader : public NetFileTest {
 protected:
  // The small network with another text in place of its weights section.
  static Lines With(const std::string& section) {
    Lines lines = SmallNetwork();
    lines.erase(lines.begin() + 14, lines.begin() + 19);
    lines.insert(lines.begin() + 14, section);
    return lines;
  }
  Status Read(const Lines& lines) {
    Prepare(lines);
    m_network.layers[1].weight_changes.All()[2] = 9;
    m_network.layers[2].weight_changes.All()[2] = 9;
    return ReadWeights(m_network, kSeed);
  }
  std::vector<float> All() const {
    std::vector<float> all = Values(m_network.layers[1].weights);
    for (const float weight : m_network.layers[2].weights.All()) all.push_back(weight);
    return all;
  }
  void ExpectWeights() {
    EXPECT_THAT(All(), ElementsAre(0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F, 0.9F));
    EXPECT_FALSE(m_network.random_weights);
    ExpectNoChanges();
  }
  void ExpectRandom() {
    Network random = m_network;
    InitializeRandomWeights(random, kSeed);
    EXPECT_EQ(Values(m_network.layers[1].weights), Values(random.layers[1].weights));
    EXPECT_EQ(Values(m_network.layers[2].weights), Values(random.layers[2].weights));
    ExpectNoChanges();
  }
  void ExpectNoChanges() {
    EXPECT_THAT(Values(m_network.layers[1].weight_changes), testing::Each(0.0F));
    EXPECT_THAT(Values(m_network.layers[2].weight_changes), testing::Each(0.0F));
  }
  void ExpectFallback(const Lines& lines) {
    EXPECT_EQ(Read(lines).message(), "Error reading weights - Random initialization");
    ExpectRandom();
    EXPECT_TRUE(m_network.random_weights);
    EXPECT_EQ(m_files.OpenHandles(), 0);
  }
};

TEST_F(WeightsReader, ReadsTheWeightsAndClearsTheChanges) {
  EXPECT_TRUE(Read(SmallNetwork()).ok());
  ExpectWeights();
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(WeightsReader, DoesNotMindLineBreaks) {
  EXPECT_TRUE(
      Read(With("WEIGHTS:READ\n0.1 0.2\n\n  0.3 0.4\t0.5 0.6 0.7\n\n0.8\n0.9 WEIGHTS:STOP")).ok());
  ExpectWeights();
  EXPECT_TRUE(
      Read(With("WEIGHTS:READ\r\n0.1 .2 3e-1\r\n+0.4 0.5 0.6\r\n0.7 0.8 0.9\r\nWEIGHTS:STOPPED"))
          .ok());
  ExpectWeights();
}

TEST_F(WeightsReader, ReadsTheSameUnderADecimalCommaLocale) {
  const CommaLocale comma;
  EXPECT_TRUE(Read(SmallNetwork()).ok());
  ExpectWeights();
}

TEST_F(WeightsReader, RandomizesWhenTheFileAsksForIt) {
  EXPECT_TRUE(Read(With("WEIGHTS:RANDOM")).ok());
  EXPECT_TRUE(m_network.random_weights);
  ExpectRandom();
}

TEST_F(WeightsReader, RandomizesAnewAtEveryLoad) {
  Prepare(With("WEIGHTS:RANDOM"));
  EXPECT_TRUE(ReadWeights(m_network, 1).ok());
  const std::vector<float> first = All();
  EXPECT_TRUE(ReadWeights(m_network, 2).ok());
  EXPECT_NE(All(), first);
}

TEST_F(WeightsReader, RandomizesWhenTheFlagIsSetWhateverTheModeWord) {
  for (const char* mode : {"WEIGHTS:READ", "WEIGHTS:ODD"}) {
    Prepare(With(mode));
    m_network.random_weights = true;
    EXPECT_TRUE(ReadWeights(m_network, kSeed).ok());
    ExpectRandom();
  }
}

TEST_F(WeightsReader, FallsBackToRandomWhenOneValueIsMissing) {
  const std::string values = "WEIGHTS:READ\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8\n";
  EXPECT_EQ(Read(With(values + "WEIGHTS:STOP")).message(),
            "Error reading weights - Random initialization");
  ExpectRandom();
  EXPECT_TRUE(m_network.random_weights);
  ExpectFallback(With(values));
}

TEST_F(WeightsReader, FallsBackToRandomWhenOneValueIsTooMany) {
  ExpectFallback(With("WEIGHTS:READ\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1.0\nWEIGHTS:STOP"));
}

TEST_F(WeightsReader, FallsBackToRandomForAValueThatDoesNotScan) {
  for (const char* value : {"x", "nan", "inf", "1e39", "0,9"}) {
    SCOPED_TRACE(value);
    ExpectFallback(With("WEIGHTS:READ\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 " + std::string(value) +
                        "\nWEIGHTS:STOP"));
  }
}

TEST_F(WeightsReader, FallsBackToRandomWithoutTheStopWord) {
  const std::string values = "WEIGHTS:READ\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9\n";
  for (const char* end : {"", "WEIGHTS:STO", "weights:stop", "STOP"}) {
    SCOPED_TRACE(end);
    ExpectFallback(With(values + end));
  }
}

TEST_F(WeightsReader, FallsBackToRandomForAnyOtherModeWord) {
  for (const char* section : {"WEIGHTS:", "WEIGHTS:READY", "WEIGHTS:read", "WEIGHTS: READ",
                              "WEIGHTS:READ ", "WEIGHTS:RANDOMLY", "no section", ""}) {
    SCOPED_TRACE(section);
    ExpectFallback(With(section));
  }
}

TEST_F(WeightsReader, FallsBackToRandomWhenTheFileIsGone) {
  Prepare(SmallNetwork());
  m_files.Remove("/home/a.net");
  EXPECT_EQ(ReadWeights(m_network, kSeed).message(),
            "Error reading weights - Random initialization");
  ExpectRandom();
}

TEST_F(WeightsReader, FallsBackToRandomOnAReadError) {
  Prepare(SmallNetwork());
  for (const int64_t operation : {1, 2, 3}) {  // open, rewind, read
    m_network.random_weights = false;
    m_faulty.FailAt(operation, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
    EXPECT_EQ(ReadWeights(m_network, kSeed).message(),
              "Error reading weights - Random initialization");
    ExpectRandom();
  }
}

class OldWeightsReader : public WeightsReader {
 protected:
  // A file of the oldest version with this text behind its header.
  static Lines Old(const std::string& weights) {
    Lines lines = OldHeader("TARNV1.0");
    lines.resize(14);
    lines.push_back(weights);
    return lines;
  }
  void ExpectOldFallback(const std::string& weights) {
    EXPECT_EQ(Read(Old(weights)).message(), "Error Reading Version 1.0 Weights - Randomize");
    ExpectRandom();
    EXPECT_TRUE(m_network.random_weights);
  }
};

TEST_F(OldWeightsReader, ReadsTheWeightsBetweenTheMarkers) {
  EXPECT_TRUE(Read(Old("-20000\n0.1 0.2 0.3\n0.4 0.5 0.6\n0.7 0.8 0.9\n-20000")).ok());
  ExpectWeights();
  EXPECT_TRUE(
      Read(Old("some line\n  -20000 and more 5\n0.1 0.2 0.3 0.4 0.5\n0.6 0.7 0.8 0.9 -20000"))
          .ok());
  ExpectWeights();
}

TEST_F(OldWeightsReader, RandomizesForAnyLineThatBeginsWithRandom) {
  EXPECT_TRUE(Read(Old("RANDOM")).ok());
  ExpectRandom();
  EXPECT_FALSE(m_network.random_weights);
  EXPECT_TRUE(Read(Old("-20000\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9\n-20000\nRANDOMLY")).ok());
  ExpectRandom();
  EXPECT_TRUE(Read(WithLine(Old("-20000\n0.1"), 2, "RANDOM name")).ok());
  ExpectRandom();
}

TEST_F(OldWeightsReader, RandomizesWhenTheFlagIsSet) {
  Prepare(Old("-20000\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9\n-20000"));
  m_network.random_weights = true;
  EXPECT_TRUE(ReadWeights(m_network, kSeed).ok());
  ExpectRandom();
}

TEST_F(OldWeightsReader, ReadsLinesInPiecesOf198Characters) {
  const std::string weights = "\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9\n-20000";
  const std::string filler(198, 'x');
  EXPECT_TRUE(Read(Old(filler + "RANDOM")).ok());
  ExpectRandom();
  EXPECT_TRUE(Read(Old("x" + filler + "RANDOM\n-20000" + weights)).ok());
  ExpectWeights();
  EXPECT_TRUE(Read(Old(filler + "-20000" + weights)).ok());
  ExpectWeights();
}

TEST_F(OldWeightsReader, FallsBackToRandomForEveryFailure) {
  const std::string start = "-20000\n0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 ";
  EXPECT_EQ(Read(Old(start + "0.9\n20000")).message(),
            "Error Reading Version 1.0 Weights - Randomize");
  ExpectRandom();
  ExpectOldFallback("");                           // no marker
  ExpectOldFallback("-200000\n0.1 0.2 0.3");       // another number
  ExpectOldFallback("x -20000\n0.1 0.2 0.3");      // not the first
  ExpectOldFallback("WEIGHTS:READ\n0.1 0.2 0.3");  // the later layout
  ExpectOldFallback(start);                        // a value short
  ExpectOldFallback(start + "x 0.9\n-20000");      // one that does not scan
  ExpectOldFallback(start + "-20000");             // the marker taken for a value
  ExpectOldFallback(start + "0.9");                // no closing marker
  ExpectOldFallback(start + "0.9 1.0\n-20000");    // a value too many
}

TEST_F(OldWeightsReader, FallsBackToRandomWhenTheFileIsGone) {
  Prepare(Old("RANDOM"));
  m_files.Remove("/home/a.net");
  EXPECT_EQ(ReadWeights(m_network, kSeed).message(),
            "Error Reading Version 1.0 Weights - Randomize");
  ExpectRandom();
}

class WeightsWriter : public NetFileTest {
 protected:
  std::string Written(const std::string& layers, float first, float step) {
    Prepare(WithLine(SmallNetwork(), 4, layers));
    for (Layer& layer : m_network.layers) {
      for (float& weight : layer.weights.All()) weight = std::exchange(first, first + step);
    }
    OutputFile file;
    EXPECT_TRUE(file.OpenReplacing("/home/out") && WriteWeights(file, m_network) && file.Commit());
    return Get("/home/out");
  }
};

TEST_F(WeightsWriter, WritesSevenValuesALineAndEveryNodeOnANewOne) {
  EXPECT_EQ(Written("7 2 1 0 0", 1.0F, 1.0F),
            "WEIGHTS:READ\n"
            "1 2 3 4 5 6 7\n"
            "8\n"
            "9 10 11 12 13 14 15\n"
            "16\n"
            "17 18 19\n"
            "WEIGHTS:STOP\n");
  EXPECT_EQ(Written("6 1 8 0 0", 1.0F, 1.0F),
            "WEIGHTS:READ\n"
            "1 2 3 4 5 6 7\n"
            "8 9\n10 11\n12 13\n14 15\n16 17\n18 19\n20 21\n22 23\n"
            "WEIGHTS:STOP\n");
}

TEST_F(WeightsWriter, WritesSixDigits) {
  EXPECT_EQ(Written("1 1 1 0 0", -0.123456789F, 1234567.9F),
            "WEIGHTS:READ\n-0.123457 1.23457e+06\n2.46914e+06 3.7037e+06\nWEIGHTS:STOP\n");
  EXPECT_EQ(Written("1 1 1 0 0", 1e-7F, 0.0F),
            "WEIGHTS:READ\n1e-07 1e-07\n1e-07 1e-07\nWEIGHTS:STOP\n");
}

TEST_F(WeightsWriter, WritesTheSameUnderADecimalCommaLocale) {
  const CommaLocale comma;
  EXPECT_EQ(Written("1 1 1 0 0", 1234.5F, 0.0F),
            "WEIGHTS:READ\n1234.5 1234.5\n1234.5 1234.5\nWEIGHTS:STOP\n");
}

}  // namespace
}  // namespace tarn
