// Texts as they are stored where lines end otherwise than with "\n".

#include <gtest/gtest.h>
#include <string>

#include "base/output_file_test.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"

namespace tarn {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

class OutputFileLineEnds : public testing::Test {
 protected:
  OutputFileLineEnds() { m_files.EndLinesWith(kLineEnd); }

  // A text given in pieces of so many bytes.
  void SaveInPieces(std::string_view text, size_t size) {
    OutputFile file;
    ASSERT_TRUE(file.OpenReplacing("a"));
    for (size_t begin = 0; begin < text.size(); begin += size) {
      EXPECT_TRUE(file.Write(text.substr(begin, size)));
    }
    EXPECT_TRUE(file.Commit());
  }

  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
};

TEST_F(OutputFileLineEnds, StandAtTheEndOfEveryLineOfAText) {
  ASSERT_TRUE(Save("a", "one\n\ntwo\nrest"));
  EXPECT_EQ(m_files.Get("a"), "one\r\n\r\ntwo\r\nrest");
  ASSERT_TRUE(Save("a", "\n"));
  EXPECT_EQ(m_files.Get("a"), "\r\n");
  ASSERT_TRUE(Save("a", ""));
  EXPECT_EQ(m_files.Get("a"), "");
}

TEST_F(OutputFileLineEnds, LeaveACarriageReturnOfTheTextItself) {
  ASSERT_TRUE(Save("a", "one\rtwo\r"));
  EXPECT_EQ(m_files.Get("a"), "one\rtwo\r");
}

TEST_F(OutputFileLineEnds, StandInFilesMadeNewAndAppendedToAndInWhatIsPrinted) {
  OutputFile file;
  ASSERT_TRUE(file.OpenNew("new"));
  EXPECT_TRUE(file.Printf("%d\n%s\n", 1, "two"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(m_files.Get("new"), "1\r\ntwo\r\n");
  ASSERT_TRUE(Append("new", "three\n"));
  ASSERT_TRUE(Append("appended", "four\n"));
  EXPECT_EQ(m_files.Get("new"), "1\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(m_files.Get("appended"), "four\r\n");
}

TEST_F(OutputFileLineEnds, ChangeNothingInBytes) {
  std::string bytes;
  for (int i = 0; i < 256 * 1024; ++i) bytes.push_back(static_cast<char>(i));
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing("a", OutputFile::Content::kBytes));
  EXPECT_TRUE(file.Write(bytes));
  EXPECT_TRUE(file.Commit());
  EXPECT_TRUE(m_files.Get("a") == bytes);
}

TEST_F(OutputFileLineEnds, AreThoseOfTheNextFileWhenAnotherIsOpened) {
  OutputFile file;
  ASSERT_TRUE(file.OpenReplacing("bytes", OutputFile::Content::kBytes));
  EXPECT_TRUE(file.Write("1\n"));
  EXPECT_TRUE(file.Commit());
  ASSERT_TRUE(file.OpenReplacing("text"));
  EXPECT_TRUE(file.Write("1\n"));
  EXPECT_TRUE(file.Commit());
  EXPECT_EQ(m_files.Get("bytes"), "1\n");
  EXPECT_EQ(m_files.Get("text"), "1\r\n");
}

// Blocks are handed on at 65536 bytes: a line ends before, on and behind that place, and a text is
// cut everywhere, between the two characters too.
TEST_F(OutputFileLineEnds, AreWholeWhereverBlocksAndPiecesEnd) {
  for (size_t first = 65530; first <= 65540; ++first) {
    const std::string text = std::string(first, '1') + "\n2\n" + std::string(140000, '3') + "\n\n";
    const std::string stored = Stored(text, kLineEnd);
    for (const size_t size : {text.size(), first + 1, size_t{4096}, size_t{7}}) {
      SaveInPieces(text, size);
      EXPECT_TRUE(m_files.Get("a") == stored) << first << " in pieces of " << size;
    }
  }
  SaveInPieces("a\n\nb\n", 1);
  EXPECT_EQ(m_files.Get("a"), "a\r\n\r\nb\r\n");
}

TEST_F(OutputFileLineEnds, AreForgottenWithAnAppendThatIsDiscarded) {
  ASSERT_TRUE(Save("a", "one\n"));
  OutputFile file;
  ASSERT_TRUE(file.OpenAppending("a"));
  EXPECT_TRUE(file.Write(kLong + "\n"));
  file.Discard();
  EXPECT_EQ(m_files.Get("a"), "one\r\n");
}

TEST_F(OutputFileLineEnds, AreThoseOfTheLayerUnderAFaultyOne) {
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  ASSERT_TRUE(Save("a", "one\n"));
  EXPECT_EQ(m_files.Get("a"), "one\r\n");
}

}  // namespace
}  // namespace tarn
