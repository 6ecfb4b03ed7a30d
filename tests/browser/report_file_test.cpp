#include "browser/report_file.h"

#include "browser/report.h"
#include "browser/report_test.h"
#include "support/faulty_files.h"
#include "support/slashes.h"

namespace tarn {
namespace {

using ReportFileTest = ReportTest;

TEST_F(ReportFileTest, HoldsRecordsOfEightyBytesAndNothingElse) {
  ReportFile report;
  ASSERT_TRUE(report.Create("/tmp").ok());
  report.Write("one");
  report.Write("");
  report.WriteBlank();
  report.Printf("%d %s", 4, "four");
  ASSERT_TRUE(report.Finish().ok());
  const std::string bytes = m_files.Get(report.path()).value();
  EXPECT_EQ(bytes,
            "one" + std::string(77, ' ') + std::string(160, ' ') + "4 four" + std::string(74, ' '));
}

TEST_F(ReportFileTest, StoresEightyCharactersWholeAndCutsTheEightyFirst) {
  const std::string eighty(79, 'a');
  const std::vector<std::string> lines = Records([&](ReportFile& report) {
    report.Write(eighty + "b");
    report.Write(eighty + "bc");
  });
  EXPECT_EQ(lines, (std::vector<std::string>{eighty + "b", eighty + "b"}));
}

TEST_F(ReportFileTest, CutsNoCharacterInHalf) {
  const std::string start(79, 'a');
  const std::vector<std::string> lines = Records([&](ReportFile& report) {
    report.Write(start + "\u00E4" + "b");
    report.Write(start.substr(1) + "\u00E4" + "b");
    report.Write(start.substr(2) + "\U0001F33E");
    report.Write(std::string(90, '\x80'));
  });
  EXPECT_EQ(lines[0], start + " ");
  EXPECT_EQ(lines[1], start.substr(1) + "\u00E4");
  EXPECT_EQ(lines[2], start.substr(2) + "   ");
  EXPECT_EQ(lines[3], std::string(80, '\x80'));
}

TEST_F(ReportFileTest, IsAFileOfItsOwnWithThePrefixAndGoesWithItsOwner) {
  std::string first_path;
  {
    ReportFile first;
    ReportFile second;
    ASSERT_TRUE(first.Create("/tmp").ok());
    ASSERT_TRUE(second.Create("/tmp").ok());
    first_path = first.path();
    EXPECT_TRUE(Slashes(first_path).starts_with("/tmp/Tarn")) << first_path;
    EXPECT_NE(first_path, second.path());
    EXPECT_EQ(m_files.Paths().size(), 2U);
  }
  EXPECT_TRUE(m_files.Paths().empty());
  EXPECT_EQ(m_files.OpenHandles(), 0);
}

TEST_F(ReportFileTest, AnswersForAFolderThatTakesNoFile) {
  ReportFile report;
  EXPECT_EQ(report.Create("/nowhere").message(), "File Creation Access Denied");
  EXPECT_EQ(report.path(), "");
  EXPECT_EQ(report.Finish().message(), "File Creation Access Denied");
}

TEST_F(ReportFileTest, LeavesNothingWhenAnyOperationFails) {
  const Network network = WithValues(Table(2000, {0.5F}), Table(2000, {0.25F}));
  FaultyFiles faulty(m_files);
  const ScopedFileLayer layer(faulty);
  int refused = 0;
  for (int64_t k = 1;; ++k) {
    faulty.FailAt(k);
    ReportFile report;
    const Status made = MakeReport(ReportKind::kOutputs, network, {}, "/tmp", report);
    if (faulty.Failures() == 0) break;
    faulty.StopFailing();
    if (made.ok()) continue;  // another name was found
    ++refused;
    EXPECT_EQ(made.message(), "File Creation Access Denied");
    EXPECT_TRUE(m_files.Paths().empty()) << k;
    EXPECT_EQ(m_files.OpenHandles(), 0);
  }
  EXPECT_GE(refused, 3);
}

TEST_F(ReportFileTest, CanBeMadeAgain) {
  ReportFile report;
  ASSERT_TRUE(report.Create("/tmp").ok());
  report.Write("first");
  ASSERT_TRUE(report.Finish().ok());
  ASSERT_TRUE(report.Create("/tmp").ok());
  report.Write("second");
  ASSERT_TRUE(report.Finish().ok());
  EXPECT_EQ(m_files.Paths().size(), 1U);
  EXPECT_TRUE(m_files.Get(report.path()).value().starts_with("second"));
}

}  // namespace
}  // namespace tarn
