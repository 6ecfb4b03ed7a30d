#include "engine/error_history.h"

#include <gtest/gtest.h>
#include <string>

#include "support/comma_locale.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

constexpr const char* kPath = "/tmp/history";
constexpr const char* kText = "/home/run.err";

HistoryRecord Record(int32_t iteration) {
  return {iteration, 0.5F, 0.25F, 0.125F, -1.0F, 0.75F, 33.25F, 100.0F};
}

// By the layout of the file: the iteration, then the seven floats.
const std::string kRecordBytes(
    "\x04\x03\x02\x01"
    "\x00\x00\x00\x3f"
    "\x00\x00\x80\x3e"
    "\x00\x00\x00\x3e"
    "\x00\x00\x80\xbf"
    "\x00\x00\x40\x3f"
    "\x00\x00\x05\x42"
    "\x00\x00\xc8\x42",
    32);

class ErrorHistoryTest : public testing::Test {
 protected:
  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
};

TEST(HistoryRecord, TakesThirtyTwoLittleEndianBytes) {
  const HistoryBytes bytes = EncodeHistoryRecord(Record(0x01020304));
  ASSERT_EQ(bytes.size(), 32U);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), kRecordBytes);
}

TEST(HistoryRecord, ReadsBackWhatWasWritten) {
  for (const int32_t iteration : {0, 1, -1, 2147483647}) {
    const HistoryRecord record = DecodeHistoryRecord(EncodeHistoryRecord(Record(iteration)));
    EXPECT_EQ(record.iteration, iteration);
    EXPECT_EQ(record.rms_train, 0.5F);
    EXPECT_EQ(record.rms_test, 0.25F);
    EXPECT_EQ(record.eta, 0.125F);
    EXPECT_EQ(record.correlation_train, -1.0F);
    EXPECT_EQ(record.correlation_test, 0.75F);
    EXPECT_EQ(record.within_train, 33.25F);
    EXPECT_EQ(record.within_test, 100.0F);
  }
}

TEST_F(ErrorHistoryTest, CreatesNothingBeforeItsRestart) {
  const ErrorHistory history(kPath);
  EXPECT_FALSE(m_files.Exists(kPath));
}

TEST_F(ErrorHistoryTest, GrowsByWholeRecordsThatReadersSeeAtOnce) {
  ErrorHistory history(kPath);
  ASSERT_TRUE(history.Restart());
  EXPECT_EQ(m_files.Get(kPath), "");
  EXPECT_TRUE(history.Append(Record(0x01020304)));
  EXPECT_EQ(m_files.Get(kPath), kRecordBytes);
  EXPECT_TRUE(history.Append(Record(0x01020304)));
  EXPECT_EQ(m_files.Get(kPath), kRecordBytes + kRecordBytes);
}

TEST_F(ErrorHistoryTest, BeginsAnewAtEveryRestart) {
  ErrorHistory history(kPath);
  ASSERT_TRUE(history.Restart());
  ASSERT_TRUE(history.Append(Record(1)));
  ASSERT_TRUE(history.Restart());
  EXPECT_EQ(m_files.Get(kPath), "");
  EXPECT_EQ(m_files.OpenHandles(), 1);
  history.Close();
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(ErrorHistoryTest, TakesNothingWhileItIsClosed) {
  ErrorHistory history(kPath);
  EXPECT_FALSE(history.Append(Record(1)));
  ASSERT_TRUE(history.Restart());
  history.Close();
  EXPECT_FALSE(history.Append(Record(1)));
  EXPECT_EQ(m_files.Get(kPath), "");
}

TEST_F(ErrorHistoryTest, CannotRestartInAFolderThatDoesNotExist) {
  ErrorHistory history("/nowhere/history");
  EXPECT_FALSE(history.Restart());
  EXPECT_FALSE(history.Append(Record(1)));
}

TEST_F(ErrorHistoryTest, KeepsItsWholeRecordsWhenTheDiskIsFull) {
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  ErrorHistory history(kPath);
  ASSERT_TRUE(history.Restart());
  ASSERT_TRUE(history.Append(Record(0x01020304)));
  faulty.FailAt(1, FaultyFiles::Fault::kShortWrite);
  EXPECT_FALSE(history.Append(Record(2)));
  EXPECT_EQ(m_files.Get(kPath), kRecordBytes);
  EXPECT_EQ(m_files.OpenHandles(), 0);
  faulty.StopFailing();
  EXPECT_FALSE(history.Append(Record(3)));
  EXPECT_EQ(m_files.Get(kPath), kRecordBytes);
}

TEST_F(ErrorHistoryTest, IsReadUpToATornLastRecord) {
  m_files.Put(kPath, kRecordBytes + kRecordBytes + kRecordBytes.substr(0, 31));
  HistoryReader reader(kPath);
  ASSERT_TRUE(reader.IsOpen());
  HistoryRecord record;
  EXPECT_TRUE(reader.Next(record));
  EXPECT_EQ(record.iteration, 0x01020304);
  EXPECT_TRUE(reader.Next(record));
  EXPECT_FALSE(reader.Next(record));
  EXPECT_FALSE(reader.Next(record));
}

TEST_F(ErrorHistoryTest, IsReadRecordByNumber) {
  ErrorHistory history(kPath);
  ASSERT_TRUE(history.Restart());
  for (int32_t i = 0; i < 5; ++i) ASSERT_TRUE(history.Append(Record(100 + i)));
  HistoryReader reader(kPath);
  EXPECT_EQ(reader.Count(), 5);
  HistoryRecord record;
  EXPECT_TRUE(reader.Read(3, record));
  EXPECT_EQ(record.iteration, 103);
  EXPECT_TRUE(reader.Read(1, record));
  EXPECT_EQ(record.iteration, 101);
  EXPECT_TRUE(reader.Next(record));
  EXPECT_EQ(record.iteration, 102);
  EXPECT_FALSE(reader.Read(5, record));
  ASSERT_TRUE(history.Append(Record(105)));
  EXPECT_EQ(reader.Count(), 6);
}

TEST_F(ErrorHistoryTest, CannotBeReadWhenItIsMissing) {
  HistoryReader reader(kPath);
  HistoryRecord record;
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_FALSE(reader.Next(record));
}

TEST_F(ErrorHistoryTest, IsExportedWithoutTheTestSetsTolerance) {
  ErrorHistory history(kPath);
  ASSERT_TRUE(history.Restart());
  ASSERT_TRUE(history.Append(Record(1)));
  ASSERT_TRUE(history.Append({2147483647, 1e-7F, 1234.5F, 0.1F, 0, 0, 12.5F, 25.0F}));
  const CommaLocale comma;
  ASSERT_TRUE(ExportErrorHistory(kPath, kText).ok());
  EXPECT_EQ(m_files.Get(kText),
            "1,0.500000,0.250000,0.125000,-1.000000,0.750000,33.250000\n"
            "2147483647,0.000000,1234.500000,0.100000,0.000000,0.000000,12.500000\n");
}

TEST_F(ErrorHistoryTest, CanGrowOnWhileItIsExported) {
  ErrorHistory history(kPath);
  ASSERT_TRUE(history.Restart());
  ASSERT_TRUE(history.Append(Record(0x01020304)));
  ASSERT_TRUE(ExportErrorHistory(kPath, kText).ok());
  EXPECT_TRUE(history.Append(Record(0x01020304)));
  EXPECT_EQ(m_files.Get(kPath), kRecordBytes + kRecordBytes);
}

TEST_F(ErrorHistoryTest, IsExportedUpToATornLastRecord) {
  m_files.Put(kPath, kRecordBytes + kRecordBytes.substr(0, 5));
  ASSERT_TRUE(ExportErrorHistory(kPath, kText).ok());
  EXPECT_EQ(m_files.Get(kText),
            "16909060,0.500000,0.250000,0.125000,-1.000000,0.750000,33.250000\n");
}

TEST_F(ErrorHistoryTest, AnswersForAnExportThatCannotBeWritten) {
  constexpr const char* kMessage = "File Error Writting Error History";
  EXPECT_EQ(ExportErrorHistory(kPath, kText).message(), kMessage);
  EXPECT_FALSE(m_files.Exists(kText));
  m_files.Put(kPath, kRecordBytes);
  EXPECT_EQ(ExportErrorHistory(kPath, "/nowhere/run.err").message(), kMessage);
  m_files.Put(kText, "old");
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  const int64_t struck = ForEveryFault(
      faulty, FaultyFiles::Fault::kDiskFull, FaultyFiles::Kinds::kMutating, [] {},
      [] { (void)ExportErrorHistory(kPath, kText); },
      [this](bool failed) {
        EXPECT_EQ(m_files.Get(kText) == "old", failed);
        m_files.Put(kText, "old");
      });
  EXPECT_GT(struck, 0);
}

}  // namespace
}  // namespace tarn
