#include <new>
#include <optional>

#include "app/dialogs.h"
#include "app/messages.h"
#include "browser/messages.h"
#include "browser/report.h"
#include "browser/report_test.h"

namespace tarn {
namespace {

class ReportKinds : public ReportTest {
 protected:
  std::string FirstLine(ReportKind kind) {
    const Network network = WithValues({{0.5F}}, {{0.25F}});
    ReportFile report;
    CheckValues values;
    values.tolerance = 0.75F;
    values.thresholds.upper = 0.125F;
    EXPECT_TRUE(MakeReport(kind, network, values, "/tmp", report).ok());
    TVirtText text;
    EXPECT_TRUE(text.Open(report.path()));
    for (int64_t i = 0; i < text.line_count(); ++i) {
      m_text += WithoutTrailingBlanks(text.Line(i));
      m_text += '\n';
    }
    return std::string(WithoutTrailingBlanks(text.Line(0)));
  }

  std::string m_text;
};

TEST_F(ReportKinds, HaveTheirCaptions) {
  EXPECT_EQ(ReportCaption(ReportKind::kInformation), "Network Information");
  EXPECT_EQ(ReportCaption(ReportKind::kWeights), "Weight Information");
  EXPECT_EQ(ReportCaption(ReportKind::kOutputs), "Network Outputs and Targets");
  EXPECT_EQ(ReportCaption(ReportKind::kStatistics), "Network Statistics");
  EXPECT_EQ(ReportCaption(ReportKind::kTolerance), "Network Tolerance Check");
  EXPECT_EQ(ReportCaption(ReportKind::kThreshold), "Network Threshold Check");
}

TEST_F(ReportKinds, AreMadeByTheirWriters) {
  EXPECT_EQ(FirstLine(ReportKind::kInformation), " Network Name:         Net");
  EXPECT_EQ(FirstLine(ReportKind::kWeights), " Network Weights and Current Adjustment Deltas");
  EXPECT_EQ(FirstLine(ReportKind::kOutputs), " Targets and Network Outputs");
  EXPECT_EQ(FirstLine(ReportKind::kStatistics), " Network Statistics");
  EXPECT_EQ(FirstLine(ReportKind::kTolerance), " Tolerance Checking");
  EXPECT_EQ(FirstLine(ReportKind::kThreshold), " Threshold Checking");
  EXPECT_NE(m_text.find(" Tolerance:     0.750000\n"), std::string::npos);
  EXPECT_NE(m_text.find(" Upper Threshold:     0.125000\n"), std::string::npos);
}

TEST_F(ReportKinds, AnswerWithoutAFolder) {
  const Network network = WithValues({{0.5F}}, {{0.25F}});
  ReportFile report;
  EXPECT_EQ(MakeReport(ReportKind::kStatistics, network, {}, "/nowhere", report).message(),
            "File Creation Access Denied");
  EXPECT_EQ(kReportErrorCaption, "Tarn Error");
}

// Memory is short when the first lines are handed on.
class FilesWithoutMemory : public MemoryFiles {
 public:
  int64_t Write(Handle /*file*/, const void* /*data*/, size_t /*size*/) override {
    throw std::bad_alloc();
  }
};

TEST_F(ReportKinds, AnswerWithoutMemoryAndLeaveNothing) {
  FilesWithoutMemory files;
  const ScopedFileLayer layer(files);
  const Network network = WithValues(Table(2000, {0.5F}), Table(2000, {0.25F}));
  ReportFile report;
  EXPECT_EQ(MakeReport(ReportKind::kOutputs, network, {}, "/tmp", report).message(),
            "Tarn has run out of memory!");
  EXPECT_EQ(report.path(), "");
  EXPECT_TRUE(files.Paths().empty());
  EXPECT_EQ(files.OpenHandles(), 0);
}

TEST_F(ReportKinds, NeedTargetsWhereTheyCompare) {
  for (const ReportKind kind :
       {ReportKind::kInformation, ReportKind::kWeights, ReportKind::kOutputs}) {
    EXPECT_FALSE(NeedsTargets(kind));
  }
  for (const ReportKind kind :
       {ReportKind::kStatistics, ReportKind::kTolerance, ReportKind::kThreshold}) {
    EXPECT_TRUE(NeedsTargets(kind));
  }
}

TEST_F(ReportKinds, AreNotWantedWithoutAThresholdToCheck) {
  EXPECT_FALSE(IsReportWanted(ReportKind::kThreshold, {}));
  EXPECT_TRUE(IsReportWanted(ReportKind::kThreshold, {0, {1.0F, std::nullopt}}));
  EXPECT_TRUE(IsReportWanted(ReportKind::kThreshold, {0, {std::nullopt, 0.0F}}));
  EXPECT_TRUE(IsReportWanted(ReportKind::kTolerance, {}));
  EXPECT_TRUE(IsReportWanted(ReportKind::kInformation, {}));
}

TEST_F(ReportKinds, AskWithTheirTexts) {
  EXPECT_EQ(kToleranceCaption, "Select Tolerance");
  EXPECT_EQ(kTolerancePrompt, "Tolerance Value:");
  EXPECT_EQ(kUpperThresholdCaption, "Select Upper Threshold Value");
  EXPECT_EQ(kUpperThresholdPrompt, "Upper threshold (optional):");
  EXPECT_EQ(kLowerThresholdCaption, "Select Lower Threshold Value");
  EXPECT_EQ(kLowerThresholdPrompt, "Lower threshold (optional):");
  EXPECT_EQ(kSaveReportQuestion.title, "Save Information as...");
  EXPECT_EQ(kSaveReportQuestion.filter, "bitmap (*.txt)|*.txt");
}

TEST(ReportWindow, HasItsTexts) {
  EXPECT_EQ(kBrowserCaption, "Info Browser");
  EXPECT_EQ(kLinesNotCopied, "The lines cannot be copied");
  EXPECT_EQ(kReportNotSaved, "The report cannot be written");
  EXPECT_EQ(kNoPreview, "The pages cannot be shown");
}

}  // namespace
}  // namespace tarn
