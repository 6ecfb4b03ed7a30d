// What the header reader answers for a file that it cannot read.

#include "netfile_test.h"

namespace tarn {
namespace {

class HeaderFailure : public NetFileTest {
 protected:
  // The message for a file; nothing but closed handles and the same bytes may be left.
  std::string Message(const Lines& lines) {
    const std::string message = ReadHeaderOf(lines).message();
    EXPECT_EQ(m_files.OpenHandles(), 0);
    EXPECT_EQ(Get("/home/a.net"), Join(lines));
    return message;
  }
  std::string MessageWithLine(size_t number, std::string_view text) {
    return Message(WithLine(SmallNetwork(), number, text));
  }
  // The message for a file that ends before the line.
  std::string MessageWithout(size_t number, Lines lines = SmallNetwork()) {
    lines.resize(number - 1);
    return Message(lines);
  }
};

TEST_F(HeaderFailure, OfAFileThatCanNeitherBeOpenedNorCreated) {
  m_network.file_name = "/no such folder/a.net";
  EXPECT_EQ(ReadHeader(m_network).message(), "Tarn Network File Not Found");
  m_files.AddFolder("/home/folder");
  m_network.file_name = "/home/folder";
  EXPECT_EQ(ReadHeader(m_network).message(), "Tarn Network File Not Found");
  m_network.file_name = "";
  EXPECT_EQ(ReadHeader(m_network).message(), "Tarn Network File Not Found");
  EXPECT_EQ(m_files.Paths(), Lines{});
}

TEST_F(HeaderFailure, OfAFileWithoutAFirstLine) {
  EXPECT_EQ(Message({}), "ERROR - Unable to access network file!");
  m_files.Put("/home/a.net", "\x1ATARNV2.1\n");
  EXPECT_EQ(ReadHeader(m_network).message(), "ERROR - Unable to access network file!");
}

TEST_F(HeaderFailure, OfAFirstLineWithoutAKnownMagic) {
  for (const char* magic : {"", "TARN", "TARNV1", "TARNV1.2", "TARNV1.6", "TARNV2", "TARNV3.0",
                            "tarnv2.1", " TARNV2.1", "TARNV 2.1", "\xEF\xBB\xBFTARNV2.1"}) {
    SCOPED_TRACE(magic);
    EXPECT_EQ(MessageWithLine(1, magic), "Invalid Input file - Not a TARN Network File!");
  }
}

TEST_F(HeaderFailure, OfMoreThanTenLayersBeforeANodeCountIsRead) {
  for (const char* count : {"11", "2147483647", "99999999999"}) {
    SCOPED_TRACE(count);
    Lines lines = WithLine(SmallNetwork(), 3, count);
    EXPECT_EQ(Message(lines), "Error - Too many layers requested, adjust Layer Count!");
    EXPECT_EQ(Message(WithLine(lines, 4, "no node counts")),
              "Error - Too many layers requested, adjust Layer Count!");
  }
}

TEST_F(HeaderFailure, OfANodeCountThatDoesNotScan) {
  for (const char* line : {"", "x", "2 x 1 1 2", "2 2147483648 1 0 0", "2 -2147483649 1 0 0"}) {
    SCOPED_TRACE(line);
    EXPECT_EQ(MessageWithLine(4, line), "Input error reading NET file - nUnits!");
  }
  EXPECT_EQ(MessageWithout(4), "Input error reading NET file - nUnits!");
}

TEST_F(HeaderFailure, OfATransferCodeThatDoesNotScan) {
  EXPECT_EQ(MessageWithLine(4, "2 2 1 x 0"), "Input error reading NET file - TransFunc!");
  EXPECT_EQ(MessageWithLine(4, "2 2 1 0 Tanh"), "Input error reading NET file - TransFunc!");
  EXPECT_EQ(MessageWithLine(4, "2 2 1 0 4294967296"), "Input error reading NET file - TransFunc!");
  // The second code is looked for in the next line.
  EXPECT_EQ(MessageWithLine(4, "2 2 1 0\nx"), "Input error reading NET file - TransFunc!");
  EXPECT_EQ(Message(WithLine(OldHeader("TARNV1.5"), 4, "2 2 1 x")),
            "Input error reading NET file - TransFunc!");
  Lines ended = SmallNetwork();
  ended.resize(4);
  EXPECT_EQ(Message(WithLine(ended, 4, "2 2 1 0")), "Input error reading NET file - TransFunc!");
}

TEST_F(HeaderFailure, OfFewerThanFiveLearnRates) {
  for (const char* line : {"", "x", "0.5 0.01 0.001 0.3", "0.5 0.01 x 0.3 0.8 0.25",
                           "0,5 0,01 0,001 0,3 0,8 0,25", "0.5 nan 0.001 0.3 0.8 0.25",
                           "0.5 inf 0.001 0.3 0.8 0.25", "0.5 1e39 0.001 0.3 0.8 0.25"}) {
    SCOPED_TRACE(line);
    EXPECT_EQ(MessageWithLine(5, line), "Input error reading NET file - Invalid learning rates!");
  }
  EXPECT_EQ(MessageWithout(5), "Input error reading NET file - Invalid learning rates!");
}

TEST_F(HeaderFailure, OfAnIterationLimitThatIsNoNumber) {
  for (const char* line : {"", "many", "3000000000"}) {
    EXPECT_EQ(MessageWithLine(6, line), "Input error reading NET file - MaxIterations!");
  }
  EXPECT_EQ(MessageWithout(6), "Input error reading NET file - MaxIterations!");
}

TEST_F(HeaderFailure, OfALearnRateControlStartThatIsNoNumber) {
  for (const char* line : {"", "never 5", "3000000000 5"}) {
    EXPECT_EQ(MessageWithLine(7, line), "Input error reading NET file - LRC!");
  }
  EXPECT_EQ(MessageWithout(7), "Input error reading NET file - LRC!");
}

TEST_F(HeaderFailure, OfASaveRateThatIsNoNumberInTheVersionsWithoutAWeightRate) {
  for (const char* magic : {"TARNV1.0", "TARNV1.5"}) {
    SCOPED_TRACE(magic);
    EXPECT_EQ(Message(WithLine(OldHeader(magic), 8, "x 0")),
              "Input error reading NET file - SaveRate!");
    EXPECT_EQ(MessageWithout(8, OldHeader(magic)), "Input error reading NET file - SaveRate!");
  }
}

TEST_F(HeaderFailure, OfASaveRateOrAWeightRateThatIsMissingFromVersion2On) {
  for (const char* magic : {"TARNV2.2", "TARNV2.1"}) {
    SCOPED_TRACE(magic);
    for (const char* line : {"", "500", "500 x", "x 0", "500 2147483648"}) {
      EXPECT_EQ(Message(WithLine(OldHeader(magic), 8, line)),
                "Input error reading NET file - SaveRate, WeightRate!");
    }
    EXPECT_EQ(MessageWithout(8, OldHeader(magic)),
              "Input error reading NET file - SaveRate, WeightRate!");
  }
}

TEST_F(HeaderFailure, OfAnInputFileNameThatComesOutEmpty) {
  m_network.PatName = "old";
  EXPECT_EQ(MessageWithLine(9, std::string_view("\0in.txt", 7)),
            "Input error reading NET file - PatName!");
  EXPECT_EQ(MessageWithout(9), "Input error reading NET file - PatName!");
  EXPECT_EQ(m_network.PatName, "old");
}

TEST_F(HeaderFailure, OfAnInputColumnThatIsNoNumber) {
  EXPECT_EQ(MessageWithLine(10, "first"), "Input error reading NET file - PatCol!");
  EXPECT_EQ(MessageWithout(10), "Input error reading NET file - PatCol!");
}

TEST_F(HeaderFailure, OfNormalizationFlagsThatAreNotTwoNumbers) {
  for (const char* line : {"", "1", "1 yes", "yes 1"}) {
    EXPECT_EQ(MessageWithLine(11, line), "Input error reading NET file - pat_norm, targ_norm!");
  }
  EXPECT_EQ(MessageWithout(11), "Input error reading NET file - pat_norm, targ_norm!");
}

TEST_F(HeaderFailure, OfATargetFileNameThatComesOutEmpty) {
  m_network.TargName = "old";
  EXPECT_EQ(MessageWithLine(12, std::string_view("\0", 1)),
            "Input error reading NET file - TargName!");
  EXPECT_EQ(MessageWithout(12), "Input error reading NET file - TargName!");
  EXPECT_EQ(m_network.TargName, "old");
}

TEST_F(HeaderFailure, OfATargetColumnThatIsNoNumber) {
  EXPECT_EQ(MessageWithLine(13, "."), "Input error reading NET file - TargCol!");
  EXPECT_EQ(MessageWithout(13), "Input error reading NET file - TargCol!");
}

TEST_F(HeaderFailure, OfATestSetThatIsNotTwoNumbers) {
  for (const char* magic : {"TARNV1.5", "TARNV2.2", "TARNV2.1"}) {
    SCOPED_TRACE(magic);
    for (const char* line : {"", "2", "2 ten", "two 10"}) {
      EXPECT_EQ(Message(WithLine(OldHeader(magic), 14, line)),
                "Input error reading NET file - overMeth,testPats!");
    }
    EXPECT_EQ(MessageWithout(14, OldHeader(magic)),
              "Input error reading NET file - overMeth,testPats!");
  }
}

TEST_F(HeaderFailure, OfATestRangeThatIsNotTwoNumbersInTheOldestVersion) {
  for (const char* line : {"", "1", "1 x", "x 10"}) {
    EXPECT_EQ(Message(WithLine(OldHeader("TARNV1.0"), 14, line)),
              "Input error reading NET file - testStart, testEnd!");
  }
  EXPECT_EQ(MessageWithout(14, OldHeader("TARNV1.0")),
            "Input error reading NET file - testStart, testEnd!");
}

TEST_F(HeaderFailure, OfAFileThatEndsAtACtrlZ) {
  EXPECT_EQ(MessageWithLine(13, "\x1A"), "Input error reading NET file - TargCol!");
}

// Each line of a file fails in turn, read over a network of other values: the lines before it
// are in force, it and the lines behind it are not.
TEST_F(HeaderFailure, ChangesTheFieldsOfTheLinesBeforeItOnly) {
  const Lines other = {"TARNV2.1",
                       "Other",
                       "4",
                       "5 6 7 8 3 3 3 ",
                       "3 0.9 0.8 0.7 0.6 0.5",
                       "11",
                       "12 13",
                       "14 15",
                       "o.in",
                       "16",
                       "0 1",
                       "o.out",
                       "17",
                       "1 18"};
  const Lines bad = {"",    "",          "",
                     "5 x", "1 1 1 1 x", "x",
                     "x",   "1 x",       std::string(1, '\0'),
                     "x",   "1 x",       std::string(1, '\0'),
                     "x",   "1 x"};
  for (size_t number = 4; number <= 14; ++number) {
    SCOPED_TRACE(number);
    m_network = Network();
    m_network.file_name = "/home/a.net";
    ASSERT_TRUE(ReadHeaderOf(other).ok());
    m_network.UpdateRate = 13;
    ASSERT_FALSE(ReadHeaderOf(WithLine(SmallNetwork(), number, bad[number - 1])).ok());
    // The header as it would be saved: the new lines, then the old ones.
    Lines expected = SmallNetwork();
    expected.resize(14);
    for (size_t line = number; line <= 14; ++line) expected[line - 1] = other[line - 1];
    if (number == 4) expected[3] = "5 6 7 3 3 ";  // the layer count is the new one already
    OutputFile file;
    ASSERT_TRUE(file.OpenReplacing("/home/out") &&
                WriteHeader(file, m_network, HeaderKind::kSetup) && file.Commit());
    Lines written;
    for (std::string text = Get("/home/out"); !text.empty();) {
      const size_t end = text.find('\n');
      written.push_back(text.substr(0, end));
      text.erase(0, end + 1);
    }
    if (number <= 5) expected[4] = "3.000000 0.900000 0.800000 0.700000 0.600000 0.500000";
    EXPECT_EQ(written, expected);
  }
}

TEST_F(HeaderFailure, NeverTouchesAnExistingFileThatCannotBeOpened) {
  m_files.Put("/home/a.net", "what the user had");
  m_faulty.FailAt(1, FaultyFiles::Fault::kOnce, FaultyFiles::Kinds::kAll);
  EXPECT_EQ(ReadHeader(m_network).message(), "Invalid Input file - Not a TARN Network File!");
  EXPECT_EQ(Get("/home/a.net"), "what the user had");
}

TEST_F(HeaderFailure, OfTheDiskLeavesTheFileAsItWas) {
  for (const bool exists : {false, true}) {
    SCOPED_TRACE(exists);
    const std::string old = Join(SmallNetwork());
    Status status;
    ForAllFaults(
        [&] {
          m_files.Remove("/home/a.net");
          if (exists) m_files.Put("/home/a.net", old);
        },
        [&] { status = ReadHeader(m_network); },
        [&](bool struck) {
          EXPECT_TRUE(struck || status.ok());
          if (exists) {
            EXPECT_EQ(Get("/home/a.net"), old);
          } else if (m_files.Exists("/home/a.net")) {
            EXPECT_EQ(Get("/home/a.net"), NewNetworkText());
          } else {
            EXPECT_EQ(status.message(), "Tarn Network File Not Found");
          }
          EXPECT_LE(m_files.Paths().size(), 1U);
          EXPECT_EQ(m_files.OpenHandles(), 0);
        },
        exists ? 0 : 2);
  }
}

}  // namespace
}  // namespace tarn
