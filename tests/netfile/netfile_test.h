#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "base/output_file.h"
#include "engine/network.h"
#include "netfile/header.h"
#include "netfile/network_writer.h"
#include "support/faulty_files.h"
#include "support/memory_files.h"

namespace tarn {

using Lines = std::vector<std::string>;

// A whole network file, 2-2-1 nodes, with weights and one removed connection.
inline Lines SmallNetwork() {
  return {"TARNV2.1",
          "Small",
          "3",
          "2 2 1 1 2 ",
          "0.500000 0.010000 0.001000 0.300000 0.800000 0.250000",
          "10000",
          "100 5",
          "500 7",
          "in.txt",
          "2",
          "1 0",
          "targets.txt",
          "3",
          "2 10",
          "WEIGHTS:READ",
          "0.1 0.2 0.3",
          "0.4 0.5 0.6",
          "0.7 0.8 0.9",
          "WEIGHTS:STOP",
          "CONNECTIONS:READ",
          "1",
          "1 0 1",
          "CONNECTIONS:STOP",
          "TESTPATTERNS:COMPUTE",
          "NORMALIZE:NONE"};
}

inline std::string Join(const Lines& lines, std::string_view end = "\n") {
  std::string text;
  for (const std::string& line : lines) text.append(line).append(end);
  return text;
}

// `lines` with another text in the line `number`, from 1.
inline Lines WithLine(Lines lines, size_t number, std::string_view text) {
  lines.at(number - 1) = text;
  return lines;
}

// The same header as an older version has it.
inline Lines OldHeader(std::string_view magic) {
  Lines lines = WithLine(SmallNetwork(), 1, magic);
  lines[4] = "0.5 0.01 0.001 0.3 0.8";
  if (!magic.starts_with("TARNV2")) lines[7] = "500";
  if (magic == "TARNV1.0") {
    lines[3] = "2 2 1";
    lines[13] = "1 10";
  }
  return lines;
}

// What the whole-file writer makes of a network.
inline std::string TextOf(const Network& network) {
  MemoryFiles memory;
  const ScopedFileLayer layer(memory);
  OutputFile file;
  EXPECT_TRUE(file.OpenReplacing("text") && WriteNetwork(file, network) && file.Commit());
  return memory.Get("text").value_or("");
}

inline std::vector<float> Values(const Matrix& matrix) {
  return {matrix.All().begin(), matrix.All().end()};
}

// Files in memory whose operations can be made to fail, and the network "/home/a.net".
class NetFileTest : public testing::Test {
 protected:
  NetFileTest() { m_network.file_name = "/home/a.net"; }

  void Put(const Lines& lines, std::string_view end = "\n") {
    m_files.Put("/home/a.net", Join(lines, end));
  }
  std::string Get(const std::string& path) const { return m_files.Get(path).value_or("(none)"); }

  Status ReadHeaderOf(const Lines& lines) {
    Put(lines);
    return ReadHeader(m_network);
  }
  // Header and arrays: what a reader of sections starts from.
  void Prepare(const Lines& lines) {
    const Status header = ReadHeaderOf(lines);
    ASSERT_TRUE(header.ok()) << header.message();
    const Status arrays = AllocateArrays(m_network);
    ASSERT_TRUE(arrays.ok()) << arrays.message();
  }

  // Each fault has to strike `least` times.
  void ForAllFaults(const std::function<void()>& prepare, const std::function<void()>& operation,
                    const std::function<void(bool struck)>& check, int64_t least = 2) {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    tarn::ForAllFaults(m_faulty, std::string(test.test_suite_name()) + "." + test.name(), prepare,
                       operation, check, least);
  }

  MemoryFiles m_files;
  FaultyFiles m_faulty{m_files};
  Network m_network;

 private:
  ScopedFileLayer m_layer{m_faulty};
};

}  // namespace tarn
