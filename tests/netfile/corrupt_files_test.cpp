// Loads the damaged network files of tests/data/corrupt/net, each as a program would.

#include <filesystem>
#include <set>

#include "netfile/connections_section.h"
#include "netfile/setup_save.h"
#include "netfile/weights_section.h"
#include "netfile_test.h"
#include "support/temp_folder.h"

namespace tarn {
namespace {

struct CorruptFile {
  std::string_view name;
  // Of the first step that ends the loading, or of the fallbacks; none when the file loads.
  std::vector<std::string> messages;
};

const std::vector<CorruptFile> kFiles = {
    // clang-format off
    {"binary.net", {"Invalid Input file - Not a TARN Network File!"}},
    {"byte_order_mark.net", {"Invalid Input file - Not a TARN Network File!"}},
    {"connections_bias.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_count_too_large.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_huge_count.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_layer_huge.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_layer_negative.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_layer_too_high.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_layer_zero.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_negative_count.net", {}},
    {"connections_no_count.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_node_negative.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_node_too_high.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_short_triple.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_source_huge.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_source_negative.net", {"Error Reading Connections - Fully Connecting Network"}},
    {"connections_unknown_mode.net", {}},
    {"ctrl_z_first.net", {"ERROR - Unable to access network file!"}},
    {"ctrl_z_in_header.net", {"Input error reading NET file - TargCol!"}},
    {"eleven_layers.net", {"Error - Too many layers requested, adjust Layer Count!"}},
    {"empty.net", {"ERROR - Unable to access network file!"}},
    {"header_alone.net", {"Error reading weights - Random initialization"}},
    {"input_column.net", {"Input error reading NET file - PatCol!"}},
    {"input_file_name_missing.net", {"Input error reading NET file - PatName!"}},
    {"input_file_name_nul.net", {"Input error reading NET file - PatName!"}},
    {"layers_beyond_32_bits.net", {"Error - Too many layers requested, adjust Layer Count!"}},
    {"layers_negative.net", {"Set number of network layers between 3 and 10"}},
    {"layers_no_number.net", {"Set number of network layers between 3 and 10"}},
    {"layers_one.net", {"Set number of network layers between 3 and 10"}},
    {"layers_two.net", {"Set number of network layers between 3 and 10"}},
    {"layers_zero.net", {"Set number of network layers between 3 and 10"}},
    {"line_4_over_two_lines.net", {"Input error reading NET file - Invalid learning rates!"}},
    {"long_line_of_blanks.net", {}},
    {"lrc.net", {"Input error reading NET file - LRC!"}},
    {"magic_alone.net", {"Input error reading NET file - Invalid learning rates!"}},
    {"max_iterations.net", {"Input error reading NET file - MaxIterations!"}},
    {"max_iterations_beyond_32_bits.net", {"Input error reading NET file - MaxIterations!"}},
    {"name_too_long.net", {"Input error reading NET file - PatCol!"}},
    {"no_line_end.net", {}},
    {"nodes_beyond_32_bits.net", {"Input error reading NET file - nUnits!"}},
    {"nodes_huge_everywhere.net", {"Tarn has run out of memory!"}},
    {"nodes_huge_hidden.net", {"Tarn has run out of memory!"}},
    {"nodes_huge_inputs.net", {"Tarn has run out of memory!"}},
    {"nodes_huge_outputs.net", {"Tarn has run out of memory!"}},
    {"nodes_missing.net", {"Input error reading NET file - TransFunc!"}},
    {"nodes_negative_hidden.net", {"Hidden layer 1 has an invalid node count"}},
    {"nodes_negative_inputs.net", {"Invalid value for input node count"}},
    {"nodes_negative_outputs.net", {"Invalid value for output node count"}},
    {"nodes_no_number.net", {"Input error reading NET file - nUnits!"}},
    {"normalization_flags.net", {"Input error reading NET file - pat_norm, targ_norm!"}},
    {"not_a_network.net", {"Invalid Input file - Not a TARN Network File!"}},
    {"nul_bytes_in_weights.net", {"Error reading weights - Random initialization"}},
    {"old_no_closing_marker.net", {"Error Reading Version 1.0 Weights - Randomize"}},
    {"old_no_marker.net", {"Error Reading Version 1.0 Weights - Randomize"}},
    {"old_one_short.net", {"Error Reading Version 1.0 Weights - Randomize"}},
    {"old_wrong_closing_marker.net", {"Error Reading Version 1.0 Weights - Randomize"}},
    {"rates_decimal_comma.net", {"Input error reading NET file - Invalid learning rates!"}},
    {"rates_four.net", {"Input error reading NET file - Invalid learning rates!"}},
    {"rates_infinite.net", {"Input error reading NET file - Invalid learning rates!"}},
    {"rates_nan.net", {"Input error reading NET file - Invalid learning rates!"}},
    {"save_rate.net", {"Input error reading NET file - SaveRate!"}},
    {"save_rate_without_weight_rate.net", {"Input error reading NET file - SaveRate, WeightRate!"}},
    {"section_names_in_the_name.net", {"Error reading weights - Random initialization"}},
    {"sound.net", {}},
    {"sound_crlf.net", {}},
    {"sound_old.net", {}},
    {"stop_word_twice.net", {}},
    {"target_column.net", {"Input error reading NET file - TargCol!"}},
    {"target_file_name_nul.net", {"Input error reading NET file - TargName!"}},
    {"test_range.net", {"Input error reading NET file - testStart, testEnd!"}},
    {"test_set.net", {"Input error reading NET file - overMeth,testPats!"}},
    {"transfer_code_no_number.net", {"Input error reading NET file - TransFunc!"}},
    {"truncated_in_weights.net", {"Error reading weights - Random initialization"}},
    {"unknown_version.net", {"Invalid Input file - Not a TARN Network File!"}},
    {"values_out_of_range.net", {}},
    {"weights_and_connections.net", {"Error reading weights - Random initialization", "Error Reading Connections - Fully Connecting Network"}},
    {"weights_empty_mode.net", {"Error reading weights - Random initialization"}},
    {"weights_infinite.net", {"Error reading weights - Random initialization"}},
    {"weights_long_number.net", {"Error reading weights - Random initialization"}},
    {"weights_no_number.net", {"Error reading weights - Random initialization"}},
    {"weights_no_section.net", {"Error reading weights - Random initialization"}},
    {"weights_no_stop.net", {"Error reading weights - Random initialization"}},
    {"weights_one_short.net", {"Error reading weights - Random initialization"}},
    {"weights_one_too_many.net", {"Error reading weights - Random initialization"}},
    {"weights_unknown_mode.net", {"Error reading weights - Random initialization"}},
    // clang-format on
};

const std::string kFolder = std::string(TARN_SOURCE_DIR) + "/tests/data/corrupt/net/";

class CorruptFiles : public NetFileTest {
 protected:
  void PutFile(std::string_view name) {
    m_files.Put("/home/a.net", ReadFile(kFolder + std::string(name)));
    m_network = Network();
    m_network.file_name = "/home/a.net";
  }
  std::vector<std::string> Load() {
    for (const auto& step : {ReadHeader, AllocateArrays}) {
      const Status status = step(m_network);
      if (!status.ok()) return {status.message()};
    }
    std::vector<std::string> messages;
    for (const Status& status : {ReadWeights(m_network, 1), ReadConnections(m_network, "/home")}) {
      if (!status.ok()) messages.push_back(status.message());
    }
    return messages;
  }
};

TEST_F(CorruptFiles, AreEachAnsweredWithTheirMessages) {
  for (const CorruptFile& file : kFiles) {
    SCOPED_TRACE(file.name);
    PutFile(file.name);
    const std::string before = Get("/home/a.net");
    EXPECT_EQ(Load(), file.messages);
    EXPECT_EQ(Get("/home/a.net"), before);
    EXPECT_EQ(m_files.OpenHandles(), 0);
  }
}

TEST_F(CorruptFiles, AnswerTheSameToTheShapeCheckAlone) {
  for (const CorruptFile& file : kFiles) {
    SCOPED_TRACE(file.name);
    PutFile(file.name);
    if (!ReadHeader(m_network).ok()) continue;
    EXPECT_EQ(CheckShape(m_network).message(), AllocateArrays(m_network).message());
  }
}

TEST_F(CorruptFiles, WhichLoadAreSavedAsSoundOnes) {
  int loaded = 0;
  for (const CorruptFile& file : kFiles) {
    SCOPED_TRACE(file.name);
    PutFile(file.name);
    (void)Load();
    if (!CheckShape(m_network).ok() || m_network.layers[1].weights.rows() == 0) continue;
    // A name that begins like a section is taken for it, in the saved file too.
    if (m_network.NetName.starts_with("WEIGHTS:")) continue;
    ++loaded;
    EXPECT_TRUE(WriteNetworkFile("/home/a.net", m_network).ok());
    const std::string saved = Get("/home/a.net");
    EXPECT_EQ(Load(), std::vector<std::string>());
    EXPECT_EQ(TextOf(m_network), saved);
  }
  EXPECT_GT(loaded, 20);
}

TEST_F(CorruptFiles, WhoseHeaderReadsStandASetupSave) {
  int saved = 0;
  for (const CorruptFile& file : kFiles) {
    SCOPED_TRACE(file.name);
    PutFile(file.name);
    if (!ReadHeader(m_network).ok()) continue;
    ++saved;
    EXPECT_TRUE(SaveSetup(m_network, "/home/a.net", "/home").ok());
    EXPECT_TRUE(ReadHeader(m_network).ok());
    EXPECT_EQ(m_files.Paths(), Lines{"/home/a.net"});
  }
  EXPECT_GT(saved, 30);
}

TEST_F(CorruptFiles, AreAllInTheTable) {
  std::set<std::string> named, found;
  for (const CorruptFile& file : kFiles) named.emplace(file.name);
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    found.insert(entry.path().filename().string());
  }
  EXPECT_EQ(found, named);
}

}  // namespace
}  // namespace tarn
