#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/utf8.h"
#include "bounded_run.h"
#include "browser/report_file.h"
#include "browser/report_text.h"

// The input is taken twice: as a report file of 80-byte records, and as the lines of a report to
// be written. Records are read as they stand; what a window shows of one is text; what is written
// comes back, cut at a whole character.

namespace tarn::fuzz {
namespace {

const std::string kReport = "/fuzz/input.rpt";
const std::string kText = "/fuzz/report.txt";

std::string_view WithoutBlanks(std::string_view line) {
  while (line.ends_with(' ')) line.remove_suffix(1);
  return line;
}

void RequireText(std::string_view shown) {
  for (std::string_view rest = shown; !rest.empty();) {
    const std::string_view before = rest;
    const char32_t character = TakeCharacter(rest);
    Require(character >= U' ', "no control characters are shown");
    Require(character != kReplacementCharacter || before.starts_with("\xEF\xBF\xBD"),
            "what is shown is UTF-8");
  }
}

void CheckRecords(std::string_view file) {
  TVirtText report;
  Require(report.Open(kReport), "a report can be opened");
  const auto count = static_cast<int64_t>(file.size() / kReportWidth);
  Require(report.line_count() == count, "count of records");
  for (int64_t i = 0; i < count; ++i) {
    const std::string line = report.Line(i);
    Require(line == file.substr(static_cast<size_t>(i) * kReportWidth, kReportWidth), "a record");
    RequireText(DisplayText(line));
  }
  Require(report.Lines(0, count + 1) == file.substr(0, static_cast<size_t>(count) * kReportWidth),
          "all records");
  Require(report.Line(-1).empty() && report.Line(count).empty(), "no other records");
}

// Where the window stands stays within the report.
void CheckScrolling(std::string_view input) {
  TVirtText report;
  Require(report.Open(kReport), "a report can be opened");
  const int64_t rows = input.empty() ? 1 : 1 + static_cast<unsigned char>(input[0]) % 40;
  for (const int64_t line : {int64_t{-1}, int64_t{1}, report.line_count(), INT64_MAX, INT64_MIN}) {
    report.ScrollTo(line, rows);
    Require(report.first_visible() >= 0 && report.first_visible() <= report.ScrollRange(rows),
            "the first line is one of the report");
  }
}

void CheckSaved(const FuzzFiles& files, std::string_view file) {
  TVirtText report;
  Require(report.Open(kReport) && SaveReportText(report, kText), "a report can be saved");
  std::string text;
  for (; file.size() >= kReportWidth; file.remove_prefix(kReportWidth)) {
    text.append(WithoutBlanks(file.substr(0, kReportWidth))).append("\n");
  }
  Require(files.Get(kText) == text, "a saved report");
}

void CheckWritten(const FuzzFiles& files, std::string_view input) {
  ReportFile report;
  Require(report.Create("/tmp").ok(), "a report can be made");
  size_t lines = 0;
  for (std::string_view rest = input; !rest.empty(); ++lines) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    report.Write(line);
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  }
  Require(report.Finish().ok(), "a report can be finished");
  std::string_view written = files.Get(report.path());
  Require(written.size() == lines * kReportWidth, "a record for each line");
  for (std::string_view rest = input; !rest.empty(); written.remove_prefix(kReportWidth)) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    const std::string_view record = written.substr(0, kReportWidth);
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.size() <= kReportWidth) {
      Require(record.starts_with(line) && WithoutBlanks(record) == WithoutBlanks(line), "a line");
      continue;
    }
    // No more is missing than the beginning of a character.
    constexpr size_t kLongestCharacter = 4;
    const size_t sure = kReportWidth - kLongestCharacter + 1;
    Require(record.substr(0, sure) == line.substr(0, sure), "the front of a long line");
    const std::string_view tail = WithoutBlanks(record.substr(sure));
    Require(line.substr(sure).starts_with(tail), "the end of what fits of a long line");
  }
}

}  // namespace

const Bounds kBounds = {{1 << 18, 256}, {1 << 12, 512}, {1 << 12, 256}};

void Run(FuzzFiles& files, std::string_view input) {
  files.Put(kReport, input);
  CheckRecords(input);
  CheckScrolling(input);
  CheckWritten(files, input);
  if (IsSample(input, 8)) CheckSaved(files, input);
  Require(files.Get(kReport) == input, "the report is as it was");
  Require(files.Count() == (files.Exists(kText) ? 2 : 1), "no temporary files are left");
}

std::span<const std::string_view> Words() {
  static constexpr std::array<std::string_view, 8> kWords = {
      "          ",
      "12345678901234567890123456789012345678901234567890123456789012345678901234567890",
      "Number of Layers: 3",
      "\xC3\xA4",
      "\xE2\x82\xAC",
      "\xF0\x9F\x98\x80",
      "\xEF\xBF\xBD",
      "\xED\xA0\x80"};
  return kWords;
}

}  // namespace tarn::fuzz
