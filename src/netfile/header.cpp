#include "netfile/header.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text_numbers.h"
#include "base/text_reader.h"
#include "netfile/messages.h"

namespace tarn {
namespace {

constexpr std::string_view kCurrentMagic = "TARNV2.1";

// Six of the largest floats as the writer prints them are longer than other lines may be.
constexpr size_t kRatesLineLimit = 510;

// In the order in which they are compared.
struct Magic {
  std::string_view text;
  int32_t version;
};
constexpr std::array<Magic, 4> kMagics = {
    {{"TARNV1.5", 1}, {kCurrentMagic, kCurrentVersion}, {"TARNV2.", 2}, {"TARNV1.0", 0}}};
constexpr std::array<Magic, 3> kOpenMagics = {{{"TARNV1.5", 1}, {"TARNV2.", 2}, {"TARNV1", 0}}};

template <size_t count>
const Magic* FindMagic(const std::array<Magic, count>& magics, std::string_view line) {
  const auto* found = std::find_if(magics.begin(), magics.end(), [line](const Magic& magic) {
    return line.starts_with(magic.text);
  });
  return found == magics.end() ? nullptr : found;
}

std::string_view CutAtNul(std::string_view line) {
  return line.substr(0, line.find('\0'));
}

// One pass over the header, a stage a method. A line is stored whole or not at all.
class HeaderReader {
 public:
  explicit HeaderReader(Network& network) : m_network(network) {}

  Status Read() {
    for (auto stage : {&HeaderReader::Open, &HeaderReader::ReadMagic, &HeaderReader::ReadLayers,
                       &HeaderReader::ReadRates, &HeaderReader::ReadTraining,
                       &HeaderReader::ReadData, &HeaderReader::ReadTestSet}) {
      Status status = (this->*stage)();
      if (!status.ok()) return status;
    }
    const bool random = NextLine() == "WEIGHTS:RANDOM" && m_ended;
    m_network.random_weights = random && m_network.version != 0;
    return {};
  }

 private:
  // Empty behind the end of the file.
  std::string_view NextLine(size_t limit = kHeaderLineLimit) {
    TextReader::Line line;
    m_found = m_file.ReadLine(limit, line);
    m_ended = m_found && line.ended;
    return m_found ? line.text : std::string_view();
  }

  // A line of two numbers; neither is stored when one does not scan.
  bool ReadPair(int32_t& first, int32_t& second) {
    int32_t one = 0;
    int32_t two = 0;
    if (ScanInts(NextLine(), one, two) != 2) return false;
    first = one;
    second = two;
    return true;
  }

  Status Open() {
    const std::string& path = m_network.file_name;
    if (!m_file.Open(path)) {
      CreateNewNetwork(path);
      if (!m_file.Open(path)) return Status::Failure(kNetFileNotFound);
    }
    EnterFolderOf(path);
    return {};
  }

  Status ReadMagic() {
    const std::string_view line = NextLine();
    if (!m_found) return Status::Failure(kNetFileNoAccess);
    const Magic* magic = FindMagic(kMagics, line);
    if (magic == nullptr) return Status::Failure(kNetFileNotTarn);
    m_network.version = magic->version;
    m_network.NetName = CutAtNul(NextLine());
    return {};
  }

  Status ReadLayers() {
    const int32_t count = ToInt(NextLine());
    if (count > kMaxLayers) return Status::Failure(kTooManyLayers);
    m_network.nLayers = count;
    const auto layers = static_cast<size_t>(std::max(count, 0));
    std::array<int32_t, kMaxLayers> nodes{};
    std::array<int32_t, kMaxLayers> codes{};
    for (size_t l = 0; l < layers; ++l) {
      if (!m_file.ScanInt(nodes[l])) return Status::Failure(kBadUnits);
    }
    for (size_t l = 1; l < layers && m_network.version != 0; ++l) {
      if (!m_file.ScanInt(codes[l])) return Status::Failure(kBadTransFunc);
    }
    // What stands behind the last layer is cleared.
    for (size_t l = 0; l < kMaxLayers; ++l) {
      Layer& layer = m_network.layers[l];
      layer.nUnits = nodes[l];
      layer.TransFunc = codes[l];
      if (l >= layers) continue;
      const bool last = l == layers - 1;
      layer.role = l == 0 ? LayerRole::kInput : last ? LayerRole::kOutput : LayerRole::kHidden;
      layer.computed = l > 0;
    }
    return {};
  }

  // The values of line 4 were scanned from the stream; counting lines starts anew behind it.
  Status ReadRates() {
    Network& network = m_network;
    m_file.Rewind();
    for (int i = 0; i < 4; ++i) NextLine();
    std::array<float, 6> rates{};
    const int count = ScanFloats(NextLine(kRatesLineLimit), rates[0], rates[1], rates[2], rates[3],
                                 rates[4], rates[5]);
    if (count < 5) return Status::Failure(kBadRates);
    network.FastProp = rates[0];
    network.Eta = rates[1];
    network.EtaMin = rates[2];
    network.EtaMax = rates[3];
    network.Alpha = rates[4];
    network.Tolerance = network.version == 3 && count == 6 ? rates[5] : 0.0F;
    return {};
  }

  Status ReadTraining() {
    Network& network = m_network;
    if (ScanInts(NextLine(), network.MaxIterations) != 1) {
      return Status::Failure(kBadMaxIterations);
    }
    const int count = ScanInts(NextLine(), network.LRC, network.UpdateRate);
    if (count == 0) return Status::Failure(kBadLrc);
    if (count == 1) network.UpdateRate = 1;
    if (network.version < 2) {
      if (ScanInts(NextLine(), network.SaveRate) != 1) return Status::Failure(kBadSaveRate);
      network.WeightRate = 0;
      return {};
    }
    return ReadPair(network.SaveRate, network.WeightRate) ? Status()
                                                          : Status::Failure(kBadSaveWeightRate);
  }

  // An empty line keeps the old name; a missing line and one that starts with a NUL byte give
  // none at all.
  bool ReadFileName(std::string& name) {
    const std::string_view line = NextLine();
    if (m_found && line.empty()) return true;
    const std::string_view text = CutAtNul(line);
    if (!text.empty()) name = text;
    return !text.empty();
  }

  Status ReadData() {
    Network& network = m_network;
    if (!ReadFileName(network.PatName)) return Status::Failure(kBadPatName);
    if (ScanInts(NextLine(), network.PatCol) != 1) return Status::Failure(kBadPatCol);
    if (!ReadPair(network.pat_norm, network.targ_norm)) return Status::Failure(kBadNorm);
    if (!ReadFileName(network.TargName)) return Status::Failure(kBadTargName);
    if (ScanInts(NextLine(), network.TargCol) != 1) return Status::Failure(kBadTargCol);
    return {};
  }

  Status ReadTestSet() {
    Network& network = m_network;
    if (network.version != 0) {
      return ReadPair(network.overMeth, network.testPats) ? Status()
                                                          : Status::Failure(kBadOverMeth);
    }
    int32_t first = 0;
    int32_t last = 0;
    if (!ReadPair(first, last)) return Status::Failure(kBadTestRange);
    const int64_t count = int64_t{last} - first + 1;
    const bool any = first >= 1 && count > 0;
    network.overMeth = !any ? kTestNone : first == 1 ? kTestBeginning : kTestEnding;
    network.testPats = any ? static_cast<int32_t>(count) : 0;
    return {};
  }

  Network& m_network;
  TextReader m_file;
  bool m_found = false;  // the last line was there
  bool m_ended = false;  // and ended with a newline
};

// Lines of a file that is only looked at are read in pieces of at most this many characters.
constexpr size_t kCheckLineLimit = 253;

bool FindsWeights(TextReader& file) {
  TextReader::Line line;
  while (file.ReadLine(kCheckLineLimit, line)) {
    if (line.text.find("WEIGHTS:READ") != std::string_view::npos) return true;
  }
  return false;
}

}  // namespace

Status ReadHeader(Network& network) {
  return HeaderReader(network).Read();
}

bool WriteHeader(OutputFile& file, const Network& network, HeaderKind kind) {
  const bool control_started = kind == HeaderKind::kNetwork && network.LRC < network.iteration;
  file.Printf("%s\n", kCurrentMagic);
  file.Printf("%s\n", network.NetName.empty() ? "NO NAME" : network.NetName);
  file.Printf("%d\n", network.nLayers);
  const auto layers = static_cast<size_t>(std::clamp(network.nLayers, 0, kMaxLayers));
  for (size_t l = 0; l < layers; ++l) file.Printf("%d ", network.layers[l].nUnits);
  for (size_t l = 1; l < layers; ++l) file.Printf("%d ", network.layers[l].TransFunc);
  file.Write("\n");
  file.Printf("%f %f %f %f %f %f\n", double{network.FastProp}, double{network.Eta},
              double{network.EtaMin}, double{network.EtaMax}, double{network.Alpha},
              double{network.Tolerance});
  file.Printf("%d\n", network.MaxIterations);
  file.Printf("%d %d\n", control_started ? 1 : network.LRC, network.UpdateRate);
  file.Printf("%d %d\n", network.SaveRate, network.WeightRate);
  file.Printf("%s\n", network.PatName);
  file.Printf("%d\n", network.PatCol);
  file.Printf("%d %d\n", network.pat_norm, network.targ_norm);
  file.Printf("%s\n", network.TargName);
  file.Printf("%d\n", network.TargCol);
  return file.Printf("%d %d\n", network.overMeth, network.testPats);
}

std::string_view NewNetworkText() {
  return "TARNV2.1\n"
         "NO NAME\n"
         "3\n"
         "2 2 1 0 0\n"
         "0.0  0.01  0.001  0.3  0.8\n"
         "10000\n"
         "100 5\n"
         "500 0\n"
         "none\n"
         "1\n"
         "1 1\n"
         "none\n"
         "1\n"
         "0 0\n"
         "WEIGHTS:RANDOM\n"
         "CONNECTIONS:FULL\n"
         "TESTPATTERNS:COMPUTE\n"
         "NORMALIZE:NONE\n";
}

void CreateNewNetwork(const std::string& path) {
  OutputFile file;
  if (file.OpenNew(path)) {
    file.Write(NewNetworkText());
    (void)file.Commit();
  }
}

std::optional<bool> HoldsWeights(const std::string& path) {
  TextReader file;
  if (!file.Open(path)) return std::nullopt;
  const bool found = FindsWeights(file);
  return file.Failed() ? std::nullopt : std::optional(found);
}

Status CheckNetworkFile(std::string& path, Network& network) {
  path = OpenedPath(path);
  if (IsUntitled(path)) return Status::Failure("");
  TextReader file;
  if (!file.Open(path)) return Status::Failure(kOpenNotFound);
  EnterFolderOf(path);
  TextReader::Line line;
  if (!file.ReadLine(kCheckLineLimit, line)) return Status::Failure(kOpenNotTarn);
  const Magic* magic = FindMagic(kOpenMagics, line.text);
  if (magic == nullptr) return Status::Failure(kOpenNotTarn);
  const bool trained = FindsWeights(file);
  if (file.Failed()) return Status::Failure(kOpenNotTarn);
  network.file_name = path;
  network.version = magic->version;
  network.trained = trained;
  return {};
}

}  // namespace tarn
