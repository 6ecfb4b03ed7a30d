#include "base/text_reader.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

// The first bytes that the reader takes of a file at once; each further block is twice as long, up
// to the largest.
constexpr size_t kBlock = 4 * 1024;
constexpr size_t kLargestBlock = 256 * 1024;
constexpr size_t kWide = 1000000;

// Tells what was read of its files.
class CountedFiles : public MemoryFiles {
 public:
  int64_t Read(Handle file, void* data, size_t size) override {
    const int64_t count = MemoryFiles::Read(file, data, size);
    m_bytes_read += count;
    return count;
  }
  int64_t bytes_read() const { return m_bytes_read; }

 private:
  int64_t m_bytes_read = 0;
};

class TextReaderTest : public testing::Test {
 protected:
  void Open(std::string_view bytes) {
    m_files.Put("text", bytes);
    ASSERT_TRUE(m_reader.Open("text"));
  }

  // The next line, "$" standing for its end, or "EOF".
  std::string Next(size_t limit = kWide) {
    TextReader::Line line;
    if (!m_reader.ReadLine(limit, line)) return "EOF";
    return std::string(line.text) + (line.ended ? "$" : "");
  }

  std::string All() {
    std::string all;
    for (int c = m_reader.Get(); c >= 0; c = m_reader.Get()) all.push_back(static_cast<char>(c));
    return all;
  }

  MemoryFiles m_files;
  ScopedFileLayer m_scope{m_files};
  TextReader m_reader;
};

TEST_F(TextReaderTest, ReadsLinesWithoutTheirEnds) {
  Open("one\ntwo\n\nfour\n");
  EXPECT_EQ(Next(), "one$");
  EXPECT_EQ(Next(), "two$");
  EXPECT_EQ(Next(), "$");
  EXPECT_EQ(Next(), "four$");
  EXPECT_EQ(Next(), "EOF");
  EXPECT_EQ(Next(), "EOF");
}

TEST_F(TextReaderTest, TellsThatTheLastLineHasNoEnd) {
  Open("one\ntwo");
  EXPECT_EQ(Next(), "one$");
  EXPECT_EQ(Next(), "two");
  EXPECT_EQ(Next(), "EOF");
}

TEST_F(TextReaderTest, FindsNothingInAnEmptyFile) {
  Open("");
  EXPECT_EQ(Next(), "EOF");
  EXPECT_EQ(m_reader.Peek(), -1);
  EXPECT_EQ(m_reader.Get(), -1);
  int32_t number = 5;
  EXPECT_FALSE(m_reader.ScanInt(number));
  std::string word = "old";
  EXPECT_FALSE(m_reader.ScanWord(10, word));
  EXPECT_EQ(word, "");
}

TEST_F(TextReaderTest, TakesALineOfExactlyTheLimitWithItsEnd) {
  Open("12345\nabc\n");
  EXPECT_EQ(Next(5), "12345$");
  EXPECT_EQ(Next(5), "abc$");
  EXPECT_EQ(Next(5), "EOF");
}

TEST_F(TextReaderTest, LeavesWhatIsLongerThanTheLimitToTheNextCall) {
  Open("123456\nabc\n");
  EXPECT_EQ(Next(5), "12345");
  EXPECT_EQ(Next(5), "6$");
  EXPECT_EQ(Next(5), "abc$");
}

TEST_F(TextReaderTest, CutsAVeryLongLineAtEachLimit) {
  Open("123456789012\n");
  EXPECT_EQ(Next(5), "12345");
  EXPECT_EQ(Next(5), "67890");
  EXPECT_EQ(Next(5), "12$");
  EXPECT_EQ(Next(5), "EOF");
}

TEST_F(TextReaderTest, TakesALineOfTwiceTheLimitInTwoCalls) {
  Open("1234567890\r\n1");
  EXPECT_EQ(Next(5), "12345");
  EXPECT_EQ(Next(5), "67890$");
  EXPECT_EQ(Next(5), "1");
}

TEST_F(TextReaderTest, TakesCrLfAsOneLineEndAtTheLimitToo) {
  Open("one\r\n\r\n12345\r\n123456\r\n");
  EXPECT_EQ(Next(5), "one$");
  EXPECT_EQ(Next(5), "$");
  EXPECT_EQ(Next(5), "12345$");
  EXPECT_EQ(Next(5), "12345");
  EXPECT_EQ(Next(5), "6$");
}

TEST_F(TextReaderTest, KeepsACrThatEndsNoLine) {
  Open("a\rb\n\rc\r\r\nd\r");
  EXPECT_EQ(Next(), "a\rb$");
  EXPECT_EQ(Next(), "\rc\r$");
  EXPECT_EQ(Next(), "d\r");
  EXPECT_EQ(Next(), "EOF");
}

TEST_F(TextReaderTest, KeepsNulAndHighBytes) {
  const std::string bytes("a\0b\xFF\x80\n", 6);
  Open(bytes);
  EXPECT_EQ(Next(), std::string("a\0b\xFF\x80$", 6));
  m_reader.Rewind();
  EXPECT_EQ(All(), bytes);
}

TEST_F(TextReaderTest, EndsAtACtrlZ) {
  Open("one\ntwo\x1Athree\nfour\n");
  EXPECT_EQ(Next(), "one$");
  EXPECT_EQ(Next(), "two");
  EXPECT_EQ(Next(), "EOF");
}

TEST_F(TextReaderTest, HoldsNothingWhenItBeginsWithACtrlZ) {
  Open(
      "\x1A"
      "1 two\n");
  EXPECT_EQ(m_reader.Peek(), -1);
  EXPECT_EQ(m_reader.Get(), -1);
  EXPECT_EQ(m_reader.Get(), -1);
  EXPECT_EQ(Next(), "EOF");
  int32_t number = 0;
  EXPECT_FALSE(m_reader.ScanInt(number));
  std::string word;
  EXPECT_FALSE(m_reader.ScanWord(10, word));
}

TEST_F(TextReaderTest, EndsAtACtrlZThatBeginsABlock) {
  Open(std::string(kBlock, 'a') +
       "\x1A"
       "b");
  EXPECT_EQ(All(), std::string(kBlock, 'a'));
  EXPECT_EQ(m_reader.Get(), -1);
}

TEST_F(TextReaderTest, EndsWithACrBeforeACtrlZ) {
  Open("a\r\x1A\nb");
  EXPECT_EQ(All(), "a\r");
}

TEST_F(TextReaderTest, RewindsFromTheEndOfFileAndFromACtrlZ) {
  Open("one\ntwo\x1Athree");
  EXPECT_EQ(All(), "one\ntwo");
  m_reader.Rewind();
  EXPECT_EQ(Next(), "one$");
  m_reader.Rewind();
  EXPECT_EQ(Next(), "one$");
  EXPECT_EQ(Next(), "two");
  EXPECT_EQ(Next(), "EOF");
  m_reader.Rewind();
  EXPECT_EQ(All(), "one\ntwo");
}

TEST_F(TextReaderTest, ReadsALineAcrossBlocksWhole) {
  const std::string first(kBlock - 3, 'a');
  const std::string second(3 * kBlock, 'b');
  Open(first + "\n" + second + "\nend\n");
  EXPECT_EQ(Next(), first + "$");
  EXPECT_EQ(Next(), second + "$");
  EXPECT_EQ(Next(), "end$");
  EXPECT_EQ(Next(), "EOF");
}

TEST_F(TextReaderTest, FindsLineEndsAtEveryPlaceAroundABlockBorder) {
  for (size_t length = kBlock - 4; length <= kBlock + 2; ++length) {
    for (const char* end : {"\n", "\r\n"}) {
      SCOPED_TRACE(std::to_string(length) + (end[0] == '\r' ? " CR LF" : " LF"));
      const std::string text(length, 'x');
      Open(text + end + "next" + end);
      EXPECT_EQ(Next(), text + "$");
      EXPECT_EQ(Next(), "next$");
      m_reader.Rewind();
      EXPECT_EQ(All(), text + "\nnext\n");
      m_reader.Rewind();
      EXPECT_EQ(Next(length), text + "$");
      m_reader.Rewind();
      EXPECT_EQ(Next(length - 1), text.substr(1));
      EXPECT_EQ(Next(length - 1), "x$");
      EXPECT_EQ(Next(length - 1), "next$");
    }
  }
}

TEST_F(TextReaderTest, KeepsALoneCrAtTheEndOfABlock) {
  const std::string text = std::string(kBlock - 1, 'x') + "\ry\n";
  Open(text);
  EXPECT_EQ(All(), text);
  Open(std::string(kBlock - 1, 'x') + "\r");
  EXPECT_EQ(All(), std::string(kBlock - 1, 'x') + "\r");
}

TEST_F(TextReaderTest, ReadsManyBlocksOfShortLinesUnchanged) {
  std::string text;
  std::vector<std::string> lines;
  for (int i = 0; i < 100000; ++i) {
    lines.push_back("line " + std::to_string(i * 7919));
    text += lines.back() + (i % 3 == 0 ? "\r\n" : "\n");
  }
  Open(text);
  for (const std::string& line : lines) ASSERT_EQ(Next(254), line + "$");
  EXPECT_EQ(Next(), "EOF");
}

TEST_F(TextReaderTest, PeeksWithoutMovingOn) {
  Open("a\r\nb");
  EXPECT_EQ(m_reader.Peek(), 'a');
  EXPECT_EQ(m_reader.Get(), 'a');
  EXPECT_EQ(m_reader.Peek(), '\n');
  EXPECT_EQ(m_reader.Peek(), '\n');
  EXPECT_EQ(m_reader.Get(), '\n');
  EXPECT_EQ(m_reader.Get(), 'b');
  EXPECT_EQ(m_reader.Peek(), -1);
}

TEST_F(TextReaderTest, GivesHighBytesAsPositiveCharacters) {
  Open("\xFF");
  EXPECT_EQ(m_reader.Peek(), 0xFF);
  EXPECT_EQ(m_reader.Get(), 0xFF);
}

TEST_F(TextReaderTest, ScansNumbersOverLineEnds) {
  Open("  3\r\n\n 4\t0.5 -1e2\nrest of line\n");
  int32_t a = 0, b = 0;
  float c = 0, d = 0;
  EXPECT_TRUE(m_reader.ScanInt(a) && m_reader.ScanInt(b));
  EXPECT_TRUE(m_reader.ScanFloat(c) && m_reader.ScanFloat(d));
  EXPECT_EQ(a, 3);
  EXPECT_EQ(b, 4);
  EXPECT_EQ(c, 0.5F);
  EXPECT_EQ(d, -100.0F);
  EXPECT_EQ(Next(), "$");
  EXPECT_EQ(Next(), "rest of line$");
}

TEST_F(TextReaderTest, LeavesWhatDoesNotScanBehindItsWhiteSpace) {
  Open("12abc \n\t x1");
  int32_t number = 0;
  EXPECT_TRUE(m_reader.ScanInt(number));
  EXPECT_EQ(number, 12);
  EXPECT_FALSE(m_reader.ScanInt(number));
  EXPECT_EQ(number, 12);
  EXPECT_EQ(m_reader.Get(), 'a');
  EXPECT_EQ(m_reader.Get(), 'b');
  EXPECT_EQ(m_reader.Get(), 'c');
  float real = 7;
  EXPECT_FALSE(m_reader.ScanFloat(real));
  EXPECT_EQ(real, 7.0F);
  EXPECT_EQ(m_reader.Peek(), 'x');
}

TEST_F(TextReaderTest, FailsToScanANumberThatDoesNotFit) {
  Open("99999999999 1e39 5");
  int32_t number = 1;
  float real = 1;
  EXPECT_FALSE(m_reader.ScanInt(number));
  std::string word;
  EXPECT_TRUE(m_reader.ScanWord(20, word));
  EXPECT_EQ(word, "99999999999");
  EXPECT_FALSE(m_reader.ScanFloat(real));
}

TEST_F(TextReaderTest, ScansNumbersAcrossBlocks) {
  for (size_t before = kBlock - 12; before <= kBlock + 1; ++before) {
    SCOPED_TRACE(before);
    Open(std::string(before, ' ') + "-1234567\r\n0.015625e2 word8901\n");
    int32_t number = 0;
    float real = 0;
    std::string word;
    ASSERT_TRUE(m_reader.ScanInt(number));
    EXPECT_EQ(number, -1234567);
    ASSERT_TRUE(m_reader.ScanFloat(real));
    EXPECT_EQ(real, 1.5625F);
    ASSERT_TRUE(m_reader.ScanWord(100, word));
    EXPECT_EQ(word, "word8901");
  }
}

TEST_F(TextReaderTest, ScansManyBlocksOfNumbers) {
  std::string text;
  for (int32_t i = 0; i < 200000; ++i) text += std::to_string(i * 31) + (i % 8 == 7 ? "\n" : " ");
  Open(text);
  for (int32_t i = 0; i < 200000; ++i) {
    int32_t number = -1;
    ASSERT_TRUE(m_reader.ScanInt(number));
    ASSERT_EQ(number, i * 31);
  }
  int32_t number = 0;
  EXPECT_FALSE(m_reader.ScanInt(number));
  EXPECT_EQ(m_reader.Get(), -1);
}

TEST_F(TextReaderTest, FindsLineEndsAtTheBordersOfAllBlocks) {
  size_t border = 0;
  for (size_t block = kBlock; border < 2 * kLargestBlock;
       block = std::min(2 * block, kLargestBlock)) {
    border += block;
    SCOPED_TRACE(border);
    Open(std::string(border - 1, 'x') + "\r\nnext\r\n");
    EXPECT_EQ(Next(), std::string(border - 1, 'x') + "$");
    EXPECT_EQ(Next(), "next$");
    EXPECT_EQ(Next(), "EOF");
  }
}

TEST_F(TextReaderTest, ReadsNoMoreThanTheFirstBlockForALookAtALongFile) {
  CountedFiles files;
  const ScopedFileLayer scope(files);
  files.Put("text", "one\n" + std::string(kLargestBlock, 'x'));
  ASSERT_TRUE(m_reader.Open("text"));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Next(), "one$");
    m_reader.Rewind();
  }
  EXPECT_EQ(files.bytes_read(), 3 * int64_t{kBlock});
}

TEST_F(TextReaderTest, SkipsManyBlocksOfWhiteSpace) {
  Open(std::string(5 * kLargestBlock + 17, '\n') + "8");
  int32_t number = 0;
  ASSERT_TRUE(m_reader.ScanInt(number));
  EXPECT_EQ(number, 8);
}

TEST_F(TextReaderTest, KeepsOnlyTheLimitOfAWordAndPassesAllOfIt) {
  Open(" \n abcdefgh\r\nij");
  std::string word;
  EXPECT_TRUE(m_reader.ScanWord(3, word));
  EXPECT_EQ(word, "abc");
  EXPECT_EQ(m_reader.Peek(), '\n');
  EXPECT_TRUE(m_reader.ScanWord(3, word));
  EXPECT_EQ(word, "ij");
  EXPECT_FALSE(m_reader.ScanWord(3, word));
  EXPECT_EQ(word, "");
}

TEST_F(TextReaderTest, EndsTheTextWhereAReadFails) {
  FaultyFiles faulty(m_files);
  const ScopedFileLayer scope(faulty);
  Open(std::string(kBlock, 'a') + "\nb\n");
  faulty.FailAt(2, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
  EXPECT_EQ(Next(), std::string(kBlock, 'a'));
  EXPECT_EQ(Next(), "EOF");
  EXPECT_EQ(m_reader.Get(), -1);
  m_reader.Rewind();
  EXPECT_EQ(Next(), std::string(kBlock, 'a') + "$");
}

TEST_F(TextReaderTest, HoldsNothingAfterARewindThatFails) {
  FaultyFiles faulty(m_files);
  const ScopedFileLayer scope(faulty);
  Open("one\ntwo\n");
  EXPECT_EQ(Next(), "one$");
  faulty.FailAt(1, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
  m_reader.Rewind();
  EXPECT_EQ(Next(), "EOF");
  m_reader.Close();
}

TEST_F(TextReaderTest, ReadsNothingWhileClosed) {
  EXPECT_FALSE(m_reader.IsOpen());
  EXPECT_FALSE(m_reader.Open("missing"));
  EXPECT_FALSE(m_reader.IsOpen());
  m_reader.Rewind();
  EXPECT_EQ(Next(), "EOF");
  Open("one\n");
  m_reader.Close();
  EXPECT_EQ(Next(), "EOF");
  EXPECT_EQ(m_reader.Peek(), -1);
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(TextReaderTest, StartsAfreshWithAnotherFile) {
  Open("one\x1A");
  EXPECT_EQ(All(), "one");
  Open("two");
  EXPECT_EQ(All(), "two");
  EXPECT_EQ(m_files.OpenHandles(), 1);
}

TEST(TextReader, OpensNoDirectory) {
  const TempFolder folder;
  TextReader reader;
  EXPECT_FALSE(reader.Open(folder.path()));
  EXPECT_FALSE(reader.Open(folder / "missing"));
}

TEST(TextReader, ReadsAFileOnTheDisk) {
  const TempFolder folder;
  WriteFile(folder / "text", "one\r\n2 3\n");
  TextReader reader;
  ASSERT_TRUE(reader.Open(folder / "text"));
  TextReader::Line line;
  ASSERT_TRUE(reader.ReadLine(254, line));
  EXPECT_EQ(line.text, "one");
  int32_t number = 0;
  EXPECT_TRUE(reader.ScanInt(number));
  EXPECT_EQ(number, 2);
  reader.Rewind();
  EXPECT_EQ(reader.Get(), 'o');
}

}  // namespace
}  // namespace tarn
