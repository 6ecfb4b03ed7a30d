#include "data/column_labels.h"

#include <limits>

#include "data_test.h"

namespace tarn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ColumnLabelsTest : public DataTest {
 protected:
  std::vector<std::string> Labels(std::string_view content, int32_t first_column, int32_t nodes) {
    m_files.Put("data", content);
    RecordReader reader;
    EXPECT_TRUE(reader.Reserve(2'000'000));
    EXPECT_TRUE(reader.Open("data"));
    return ReadColumnLabels(reader, first_column, nodes);
  }
};

TEST_F(ColumnLabelsTest, AreTakenFromTheStartColumnOn) {
  EXPECT_THAT(Labels("# \"a\" \"b\" \"c\"\n1 2 3\n", 2, 2), ElementsAre("b", "c"));
  EXPECT_THAT(Labels("# \"a\" \"b\" \"c\"\n1 2 3\n", 1, 2), ElementsAre("a", "b"));
}

TEST_F(ColumnLabelsTest, AreNumberedAcrossAllHeadComments) {
  EXPECT_THAT(Labels("# \"a\"\n\n# plain\n  # \"b\",\"c\"\n1 2 3\n", 2, 2), ElementsAre("b", "c"));
}

TEST_F(ColumnLabelsTest, AreNotTakenFromBehindTheFirstRecord) {
  EXPECT_THAT(Labels("# \"a\"\n1 2\n# \"b\"\n3 4\n", 1, 2), IsEmpty());
}

TEST_F(ColumnLabelsTest, AreNoneWhenThereAreFewerThanNodes) {
  EXPECT_THAT(Labels("# \"a\" \"b\"\n1 2 3\n", 1, 3), IsEmpty());
  EXPECT_THAT(Labels("# \"a\" \"b\"\n1 2 3\n", 2, 2), IsEmpty());
  EXPECT_THAT(Labels("1 2 3\n", 1, 1), IsEmpty());
}

TEST_F(ColumnLabelsTest, AreNoneWhenAQuoteIsNotClosedOnItsLine) {
  EXPECT_THAT(Labels("# \"a\" \"b\n# \"\n1 2\n", 1, 1), IsEmpty());
  EXPECT_THAT(Labels("# \"a\" \"b\"\n# it's 5\" wide\n1 2\n", 1, 2), IsEmpty());
}

TEST_F(ColumnLabelsTest, KeepBlanksAndEmptyTexts) {
  EXPECT_THAT(Labels("# \" a b \" \"\" \"#\"\n1 2 3\n", 1, 3), ElementsAre(" a b ", "", "#"));
}

TEST_F(ColumnLabelsTest, AreCutTo25Characters) {
  EXPECT_THAT(Labels("# \"1234567890123456789012345\" \"12345678901234567890123456\"\n1\n", 1, 2),
              ElementsAre("1234567890123456789012345", "1234567890123456789012345"));
}

TEST_F(ColumnLabelsTest, AreNeverCutWithinACharacter) {
  std::string label;
  std::string cut;
  for (int i = 0; i < 30; ++i) label += "\xC3\xA4";  // two bytes each
  for (int i = 0; i < 25; ++i) cut += "\xC3\xA4";
  EXPECT_THAT(Labels("# \"" + label + "\"\n1\n", 1, 1), ElementsAre(cut));
}

TEST_F(ColumnLabelsTest, AreReadFromCrLfLines) {
  EXPECT_THAT(Labels("# \"a\" \"b\"\r\n1 2\r\n", 1, 2), ElementsAre("a", "b"));
}

TEST_F(ColumnLabelsTest, StandAbsurdColumnsAndNodeCounts) {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  EXPECT_THAT(Labels("# \"a\" \"b\"\n1 2\n", kMost, 1), IsEmpty());
  EXPECT_THAT(Labels("# \"a\" \"b\"\n1 2\n", 1, kMost), IsEmpty());
}

TEST(FirstCharacters, CountsCharactersOfOneToFourBytes) {
  EXPECT_EQ(FirstCharacters("abc", 2), "ab");
  EXPECT_EQ(FirstCharacters("abc", 5), "abc");
  EXPECT_EQ(FirstCharacters("\xE2\x82\xAC\xE2\x82\xAC", 1), "\xE2\x82\xAC");
  EXPECT_EQ(FirstCharacters("\xF0\x9F\x98\x80x", 1), "\xF0\x9F\x98\x80");
  EXPECT_EQ(FirstCharacters("", 3), "");
}

TEST(FirstCharacters, TakesAStrayByteAsACharacter) {
  EXPECT_EQ(FirstCharacters(std::string(40, '\x80'), 25), std::string(25, '\x80'));
  EXPECT_EQ(FirstCharacters(std::string(40, '\xF0'), 25), std::string(25, '\xF0'));
  EXPECT_EQ(FirstCharacters("\xC3", 1), "\xC3");
  EXPECT_EQ(FirstCharacters("\xE2\x82xy", 3), "\xE2\x82x");
}

}  // namespace
}  // namespace tarn
