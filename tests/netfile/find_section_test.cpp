#include "netfile/find_section.h"

#include <string>

#include "netfile_test.h"

namespace tarn {
namespace {

class FindSectionTest : public NetFileTest {
 protected:
  std::string Find(std::string_view text, std::string_view prefix) {
    m_files.Put("/home/a.net", text);
    EXPECT_TRUE(m_file.Open("/home/a.net"));
    return FindSection(m_file, prefix);
  }
  std::string Rest() {
    std::string rest;
    for (int c = m_file.Get(); c >= 0; c = m_file.Get()) rest.push_back(static_cast<char>(c));
    return rest;
  }

  TextReader m_file;
};

TEST_F(FindSectionTest, ReturnsTheModeWordAndStandsAtTheLineAfterIt) {
  EXPECT_EQ(Find("a\nWEIGHTS:READ\n0.5\n", "WEIGHTS:"), "READ");
  EXPECT_EQ(Rest(), "0.5\n");
}

TEST_F(FindSectionTest, RewindsTheFileFirst) {
  EXPECT_EQ(Find("A:1\nB:2\n", "B:"), "2");
  EXPECT_EQ(FindSection(m_file, "A:"), "1");
  EXPECT_EQ(FindSection(m_file, "B:"), "2");
}

TEST_F(FindSectionTest, ReturnsNothingWhenNoLineMatches) {
  EXPECT_EQ(Find("a\n WEIGHTS:READ\nweights:READ\nxWEIGHTS:READ\nWEIGHTS\n", "WEIGHTS:"), "");
}

TEST_F(FindSectionTest, ReturnsNothingForAnEmptyFileAndForAFileThatIsNotOpen) {
  EXPECT_EQ(Find("", "WEIGHTS:"), "");
  m_file.Close();
  EXPECT_EQ(FindSection(m_file, "WEIGHTS:"), "");
}

TEST_F(FindSectionTest, ReturnsNothingForALonePrefix) {
  EXPECT_EQ(Find("WEIGHTS:\nWEIGHTS:READ\n", "WEIGHTS:"), "");
  EXPECT_EQ(Rest(), "WEIGHTS:READ\n");
}

TEST_F(FindSectionTest, TakesTheFirstOfSeveralLines) {
  EXPECT_EQ(Find("WEIGHTS:RANDOM\nWEIGHTS:READ\n", "WEIGHTS:"), "RANDOM");
}

TEST_F(FindSectionTest, KeepsEveryCharacterOfTheModeWordButTheLineEnd) {
  EXPECT_EQ(Find("WEIGHTS: READ \n", "WEIGHTS:"), " READ ");
  EXPECT_EQ(Find("WEIGHTS:READ\r\n0.5\r\n", "WEIGHTS:"), "READ");
  EXPECT_EQ(Rest(), "0.5\n");
}

TEST_F(FindSectionTest, FindsALastLineWithoutLineEnd) {
  EXPECT_EQ(Find("a\nNORMALIZE:NONE", "NORMALIZE:"), "NONE");
}

TEST_F(FindSectionTest, LooksThroughLongLinesInPiecesOf510Characters) {
  const std::string filler(510, 'x');
  EXPECT_EQ(Find(filler + "WEIGHTS:READ\n", "WEIGHTS:"), "READ");
  EXPECT_EQ(Find("x" + filler + "WEIGHTS:READ\n", "WEIGHTS:"), "");
  EXPECT_EQ(Find(filler + "\nWEIGHTS:READ\n", "WEIGHTS:"), "READ");
}

TEST_F(FindSectionTest, CutsAModeWordAt510CharactersOfItsLine) {
  EXPECT_EQ(Find("A:" + std::string(600, 'm') + "\n", "A:"), std::string(508, 'm'));
}

TEST_F(FindSectionTest, EndsAtACtrlZ) {
  EXPECT_EQ(Find("a\n\x1AWEIGHTS:READ\n", "WEIGHTS:"), "");
}

TEST_F(FindSectionTest, AnswersNothingWhenReadingFailsAndTheReaderTells) {
  m_files.Put("/home/a.net", "a\nWEIGHTS:READ\n");
  for (const int64_t operation : {1, 2}) {  // the rewind, the read
    ASSERT_TRUE(m_file.Open("/home/a.net"));
    EXPECT_FALSE(m_file.Failed());
    m_faulty.FailAt(operation, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
    EXPECT_EQ(FindSection(m_file, "WEIGHTS:"), "");
    m_faulty.StopFailing();
    EXPECT_TRUE(m_file.Failed());
  }
  ASSERT_TRUE(m_file.Open("/home/a.net"));
  EXPECT_FALSE(m_file.Failed());
}

}  // namespace
}  // namespace tarn
