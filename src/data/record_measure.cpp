#include "data/record_measure.h"

#include <algorithm>

#include "base/text_reader.h"
#include "data/record_reader.h"

namespace tarn {

MeasureResult MeasureRecords(const std::string& path, FileMeasure& measure) {
  measure = {};
  TextReader file;
  if (!file.Open(path)) return MeasureResult::kNotRead;
  size_t longest = 0;
  TextReader::Line line;
  while (file.ReadLine(kLongestDataLine + 1, line)) {
    if (line.text.size() > kLongestDataLine) return MeasureResult::kLineTooLong;
    longest = std::max(longest, line.text.size());
    if (KindOfLine(line.text) != LineKind::kRecord) continue;
    if (!line.ended) {
      measure.unended_record = true;
      break;
    }
    ++measure.records;
    measure.longest_line = longest;
    measure.longest_record = std::max(measure.longest_record, line.text.size());
  }
  // What could be read of a file that fails would pass for all of it.
  return file.Failed() ? MeasureResult::kNotRead : MeasureResult::kDone;
}

}  // namespace tarn
