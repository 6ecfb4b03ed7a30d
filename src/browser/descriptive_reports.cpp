#include "browser/descriptive_reports.h"

#include <span>
#include <string>
#include <string_view>

namespace tarn {
namespace {

std::string_view TransferName(const Layer& layer) {
  const auto code = static_cast<size_t>(layer.TransFunc);
  return code < kTransferNames.size() ? kTransferNames[code] : "";
}

std::string_view YesOrNo(int32_t flag) {
  return flag != 0 ? "YES" : "NO";
}

std::string_view InclusionMethod(int32_t method) {
  switch (method) {
    case kTestBeginning:
      return "BEGINNING";
    case kTestEnding:
      return "ENDING";
    case kTestRandom:
      return "RANDOM";
    default:
      return "NONE";
  }
}

void WriteLayer(std::string_view heading, const Layer& layer, std::string_view transfer_function,
                ReportFile& report) {
  report.Write(heading);
  report.Printf("   Nodes:              %d", layer.nUnits);
  report.Printf("   Transfer Function:  %s", transfer_function);
  report.WriteBlank();
}

void WriteRemovedConnections(const Network& network, ReportFile& report) {
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Matrix& masks = network.layers[l].masks;
    for (size_t j = 0; j < masks.rows(); ++j) {
      const std::span<const float> row = masks.Row(j);
      for (size_t i = 0; i < row.size(); ++i) {
        if (row[i] != 0.0F) continue;
        report.Printf("   From:  Layer %d Node %d    To: Layer %d Node %d", l, i + 1, l + 1, j + 1);
      }
    }
  }
}

void WriteConnections(const Network& network, ReportFile& report) {
  report.Write(network.fully_connected ? " Connections:FULL" : " Connections Removed:");
  if (!network.fully_connected) WriteRemovedConnections(network, report);
  report.WriteBlank();
}

void WriteTrainingInformation(const Network& network, ReportFile& report) {
  report.Write(" Training Information:");
  report.Printf("   Iterations:         %d", network.iteration);
  report.Printf("   Training Error:     %f", double{network.rms_train});
  report.Printf("   Test Set Error:     %f", double{network.rms_test});
  report.Printf("   Learn Rate:         %f", double{network.Eta});
  report.Printf("   Momentum Factor:    %f", double{network.Alpha});
  report.Printf("   Fast-Prop Coef:     %f", double{network.FastProp});
  report.Printf("   Input Node File:    %s", network.PatName);
  report.Printf("   Input Start Column: %d", network.PatCol);
  report.Printf("   Normalize Inputs:   %s", YesOrNo(network.pat_norm));
  report.Printf("   Output Node File:   %s", network.TargName);
  report.Printf("   Output Start Column:%d", network.TargCol);
  report.Printf("   Normalize Outputs:  %s", YesOrNo(network.targ_norm));
  report.Printf("   Training Patterns:  %d", network.nTrain);
  report.Printf("   Test Patterns:      %d", network.testPats);
  report.Printf("   Inclusion Method:   %s", InclusionMethod(network.overMeth));
}

}  // namespace

void WriteInformation(const Network& network, ReportFile& report) {
  report.Printf(" Network Name:         %s", network.NetName);
  report.WriteBlank();
  report.Printf(" Number of Layers:     %d", network.nLayers);
  report.WriteBlank();
  WriteLayer(" Input Layer:", network.layers[0], "Linear", report);
  for (int32_t h = 1; h < network.nLayers - 1; ++h) {
    const Layer& layer = network.layers[static_cast<size_t>(h)];
    WriteLayer(fmt::sprintf(" Hidden Layer %d:", h), layer, TransferName(layer), report);
  }
  WriteLayer(" Output Layer:", OutputLayer(network), TransferName(OutputLayer(network)), report);
  if (network.mode != Mode::kTraining) return;
  WriteConnections(network, report);
  WriteTrainingInformation(network, report);
}

void WriteWeights(const Network& network, ReportFile& report) {
  report.Write(" Network Weights and Current Adjustment Deltas");
  report.WriteBlank();
  report.Printf(" Network Name:  %s", network.NetName);
  report.Printf(" Iterations:    %d", network.iteration);
  report.WriteBlank();
  report.Write(" Layer   Node   Connection          Weight      Weight Delta");
  report.Write(" -----   ----   ----------          ------      ------------");
  for (size_t l = 1; l < static_cast<size_t>(network.nLayers); ++l) {
    const Layer& layer = network.layers[l];
    for (size_t j = 0; j < layer.weights.rows(); ++j) {
      const std::span<const float> weights = layer.weights.Row(j);
      const std::span<const float> changes = layer.weight_changes.Row(j);
      for (size_t i = 0; i + 1 < weights.size(); ++i) {
        report.Printf(" %2d      %4d    %4d       %14.5f    %12.6f", l + 1, j + 1, i + 1,
                      double{weights[i]}, double{changes[i]});
      }
    }
  }
}

}  // namespace tarn
