#pragma once

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "app/session.h"
#include "support/memory_files.h"

namespace tarn {

// A folder /home/nets with a network file of 2-3-1 nodes and ten patterns in data.txt; the
// user is in /home.
class SessionFixture : public testing::Test {
 protected:
  SessionFixture() {
    PutNetwork("");
    m_files.Put("/home/nets/data.txt",
                "0 0 1 a\n1 0 2 b\n0 1 3 c\n1 1 4 d\n2 0 5 e\n"
                "0 2 6 f\n2 1 7 g\n1 2 8 h\n2 2 9 i\n3 0 10 j\n");
    m_session.seeds = SeedSource(1);
  }

  // Line numbers count from 1; the file's sections follow the header.
  void SetLine(size_t line, std::string_view text) {
    m_header[line - 1] = text;
    PutNetwork(m_sections);
  }
  void SetSections(std::string_view sections) {
    m_sections = sections;
    PutNetwork(sections);
  }

  // Opens the network and loads it for training; the message, empty on success.
  std::string Train() {
    m_notices.clear();
    const Status opened = OpenNetwork(m_session, "/home/nets/test.net");
    m_files.EnterDirectory("/home");
    return opened.ok() ? LoadForTraining(m_session, m_notices).message()
                       : "not opened: " + opened.message();
  }

  MemoryFiles m_files;
  ScopedFileLayer m_layer{m_files};
  Session m_session;
  Network& m_network = m_session.network;
  Notices m_notices;

 private:
  void PutNetwork(std::string_view sections) {
    std::string text;
    for (const std::string& line : m_header) text += line + "\n";
    m_files.Put("/home/nets/test.net", text.append(sections));
  }

  std::array<std::string, 14> m_header = {"TARNV2.1",
                                          "Test",
                                          "3",
                                          "2 3 1 0 0 ",
                                          "0.000000 0.100000 0.010000 0.300000 0.500000 0.000000",
                                          "20",
                                          "100 5",
                                          "0 0",
                                          "data.txt",
                                          "1",
                                          "1 1",
                                          "data.txt",
                                          "3",
                                          "0 0"};
  std::string m_sections;
};

inline constexpr std::string_view kPlainSections =
    "WEIGHTS:RANDOM\nCONNECTIONS:FULL\nTESTPATTERNS:COMPUTE\nNORMALIZE:NONE\n";

}  // namespace tarn
