#include "windows/tables.h"

#include <array>
#include <stdexcept>
#include <string>

namespace tarn {
namespace {

using enum Kind;

constexpr std::array kStartUp = {
    Entry{101, kButton, "New"},          Entry{103, kButton, "Open..."},
    Entry{102, kRadio, "Training Mode"}, Entry{106, kRadio, "Recall Mode"},
    Entry{105, kButton, "Run..."},       Entry{108, kButton, "Help"},
    Entry{109, kButton, "About"},        Entry{110, kButton, "Exit"},
};
constexpr std::array kStartUpAdded = {Entry{107, kRadio, "neither mode (hidden)"}};

constexpr std::array kSetup = {
    Entry{101, kButton, "Network Design"},
    Entry{102, kButton, "Training Data"},
    Entry{103, kButton, "Training Parameters"},
    Entry{104, kButton, "Save Network Setup"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kDesign = {
    Entry{148, kEdit, "Network Name:"},
    Entry{101, kEdit, "Number of Network Layers:"},
    Entry{102, kEdit, "Number of Input Nodes:"},
    Entry{103, kEdit, "Hidden Layer 1 Nodes:"},
    Entry{104, kEdit, "Hidden Layer 2 Nodes:"},
    Entry{105, kEdit, "Hidden Layer 3 Nodes:"},
    Entry{106, kEdit, "Hidden Layer 4 Nodes:"},
    Entry{107, kEdit, "Hidden Layer 5 Nodes:"},
    Entry{108, kEdit, "Hidden Layer 6 Nodes:"},
    Entry{109, kEdit, "Hidden Layer 7 Nodes:"},
    Entry{110, kEdit, "Hidden Layer 8 Nodes:"},
    Entry{111, kEdit, "Number of Output Nodes:"},
    Entry{113, kButton, "Transfer Functions... of hidden layer 1"},
    Entry{112, kButton, "Transfer Functions... of hidden layer 2"},
    Entry{114, kButton, "Transfer Functions... of hidden layer 3"},
    Entry{115, kButton, "Transfer Functions... of hidden layer 4"},
    Entry{116, kButton, "Transfer Functions... of hidden layer 5"},
    Entry{117, kButton, "Transfer Functions... of hidden layer 6"},
    Entry{118, kButton, "Transfer Functions... of hidden layer 7"},
    Entry{119, kButton, "Transfer Functions... of hidden layer 8"},
    Entry{120, kButton, "Transfer Functions... of the output layer"},
    Entry{139, kButton, "Connections... of hidden layer 1"},
    Entry{140, kButton, "Connections... of hidden layer 2"},
    Entry{141, kButton, "Connections... of hidden layer 3"},
    Entry{142, kButton, "Connections... of hidden layer 4"},
    Entry{143, kButton, "Connections... of hidden layer 5"},
    Entry{144, kButton, "Connections... of hidden layer 6"},
    Entry{145, kButton, "Connections... of hidden layer 7"},
    Entry{146, kButton, "Connections... of hidden layer 8"},
    Entry{147, kButton, "Connections... of the output layer"},
    Entry{149, kButton, "View Network"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kTransfer = {
    Entry{10, kRadio, "Sigmoid (1/(1+exp(-x)))"},
    Entry{11, kRadio, "Gaussian (exp(-x*x))"},
    Entry{12, kRadio, "Hyperbolic Tangent (tanh(x))"},
    Entry{13, kRadio, "Hyperbolic Secant (sech(x))"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{9, kButton, "Help"},
};

constexpr std::array kConnections = {
    Entry{101, kList, "Connections in Network"},
    Entry{102, kList, "Connections Removed"},
    Entry{103, kButton, "Remove ->"},
    Entry{104, kButton, "<- Add"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kViewMenu = {Entry{101, kCommand, "Exit"}};

constexpr std::array kParameters = {
    Entry{101, kEdit, "Max Iterations:"},
    Entry{102, kEdit, "Learn Rate Control Start Iteration:"},
    Entry{103, kEdit, "AutoSave Rate:"},
    Entry{104, kEdit, "Screen Update Rate:"},
    Entry{105, kEdit, "Learn Rate (ETA):"},
    Entry{106, kEdit, "Learn Rate Minimum (Learn Control):"},
    Entry{107, kEdit, "Learn Rate Maximum (Learn Control):"},
    Entry{108, kEdit, "Momentum (ALPHA):"},
    Entry{109, kEdit, "FAST-Prop Coefficient:"},
    Entry{110, kEdit, "Training Patterns used per Weight Update:"},
    Entry{112, kEdit, "Tolerance:"},
    Entry{111, kCheck, "Reset/Initialize Network Weights"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kTrainingData = {
    Entry{101, kButton, "Input Node Data File"},
    Entry{113, kText, "Input Node Data File: "},
    Entry{111, kEdit, "Data Start Column: of the inputs"},
    Entry{109, kCheck, "Normalize Inputs"},
    Entry{102, kButton, "Target Node Data File"},
    Entry{114, kText, "Target Data File: "},
    Entry{112, kEdit, "Data Start Column: of the targets"},
    Entry{110, kCheck, "Normalize Outputs"},
    Entry{107, kEdit, "Number of Test Cases:"},
    Entry{103, kRadio, "Random"},
    Entry{104, kRadio, "Beginning"},
    Entry{105, kRadio, "End"},
    Entry{106, kRadio, "None"},
    Entry{115, kButton, "Tabulo"},
    Entry{116, kButton, "Load Tabulo Info"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kRecallData = {
    Entry{101, kButton, "Input Node Data FIle"},
    Entry{113, kText, "Input Node Data File: "},
    Entry{111, kEdit, "Data Start Column: of the inputs"},
    Entry{102, kButton, "Target Data File"},
    Entry{114, kText, "Target Data File: "},
    Entry{112, kEdit, "Data Start Column: of the targets"},
    Entry{115, kButton, "Tabulo"},
    Entry{103, kButton, "Load Tabulo Info"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kTrainMenu = {
    Entry{101, kCommand, "Save Network"},
    Entry{112, kCommand, "Save Network As..."},
    Entry{102, kCommand, "Save Outputs/Targets..."},
    Entry{103, kCommand, "Save Error History..."},
    Entry{104, kCommand, "Save AutoSave Network..."},
    Entry{129, kCommand, "Restart Tarn"},
    Entry{130, kCommand, "Exit"},
    Entry{105, kCommand, "Learn Rate Control"},
    Entry{106, kCommand, "Learn Rate..."},
    Entry{107, kCommand, "Learn Rate Min..."},
    Entry{108, kCommand, "Learn Rate Max..."},
    Entry{109, kCommand, "Momentum..."},
    Entry{110, kCommand, "FAST-Prop Coef..."},
    Entry{142, kCommand, "Patterns per Weight Update..."},
    Entry{111, kCommand, "Iterations..."},
    Entry{113, kCommand, "AutoSave Rate..."},
    Entry{114, kCommand, "Screen Update Rate..."},
    Entry{147, kCommand, "Tolerance..."},
    Entry{115, kCommand, "Initialize/Reset Weights..."},
    Entry{116, kCommand, "RMS Error History vs Iteration..."},
    Entry{144, kCommand, "Correlation History vs Iteration..."},
    Entry{148, kCommand, "Tolerance History vs Iteration..."},
    Entry{121, kCommand, "Test RMS Error History vs Iteration..."},
    Entry{145, kCommand, "Test Correlation History vs Iteration..."},
    Entry{149, kCommand, "Test Tolerance History vs Iteration..."},
    Entry{117, kCommand, "Learn Rate vs Iteration..."},
    Entry{118, kCommand, "Targets vs Net Outputs..."},
    Entry{119, kCommand, "Targets/Outputs vs Pattern Sequence..."},
    Entry{120, kCommand, "Output Error vs Pattern Sequence..."},
    Entry{122, kCommand, "Input Nodes vs Pattern Sequence..."},
    Entry{131, kCommand, "Input Node Interrogator..."},
    Entry{146, kCommand, "Color Contours..."},
    Entry{132, kCommand, "Hidden Node Analyzer..."},
    Entry{133, kCommand, "Network Information..."},
    Entry{123, kCommand, "Network Outputs/Targets..."},
    Entry{124, kCommand, "Weights and Deltas..."},
    Entry{125, kCommand, "Statistics..."},
    Entry{126, kCommand, "Tolerance Checking..."},
    Entry{127, kCommand, "Threshold Checking..."},
    Entry{128, kCommand, "Divergence Checking..."},
    Entry{135, kCommand, "Start"},
    Entry{134, kCommand, "Stop"},
    Entry{24341, kCommand, "Help"},
    Entry{24346, kCommand, "About..."},
};

constexpr std::array kTrainingAdded = {
    Entry{201, kText, "RMS Error: training set"},
    Entry{202, kText, "RMS Error: test set"},
    Entry{203, kText, "Correlation Coefficient: training set"},
    Entry{204, kText, "Correlation Coefficient: test set"},
    Entry{205, kText, "Within Tolerance: training set"},
    Entry{206, kText, "Within Tolerance: test set"},
    Entry{207, kText, "Iteration:"},
    Entry{208, kText, "Learn Rate (ETA):"},
    Entry{209, kText, "Learn Rate Control:"},
    Entry{210, kText, "Transfer Function:"},
    Entry{211, kText, "Training Speed (1000 connections/s):"},
    Entry{212, kGauge, "progress"},
    Entry{213, kText, "percent complete"},
    Entry{214, kText, "Time Remaining:"},
    Entry{215, kButton, "Start"},
    Entry{216, kButton, "Halt"},
    Entry{217, kButton, "Stop"},
};

constexpr std::array kAutoSaveAdded = {
    Entry{102, kText, "Iteration:"}, Entry{101, kCombo, "the iterations stored"},
    Entry{1, kButton, "OK"},         Entry{2, kButton, "Cancel"},
    Entry{998, kButton, "Help"},
};

constexpr std::array kBrowserMenu = {
    Entry{136, kCommand, "Save As..."},
    Entry{137, kCommand, "Print..."},
    Entry{143, kCommand, "Exit"},
};
constexpr std::array kBrowserAdded = {
    Entry{24341, kCommand, "Help"},        Entry{151, kCommand, "Print Preview..."},
    Entry{152, kCommand, "Page Setup..."}, Entry{138, kCommand, "Copy"},
    Entry{156, kCommand, "Select All"},
};

constexpr std::array kGraphMenu = {
    Entry{136, kCommand, "Save As..."},    Entry{137, kCommand, "Print..."},
    Entry{143, kCommand, "Exit"},          Entry{138, kCommand, "Copy"},
    Entry{139, kCommand, "Legend Toggle"}, Entry{140, kCommand, "Zoom"},
    Entry{141, kCommand, "Reset Zoom"},
};
constexpr std::array kGraphAdded = {
    Entry{24341, kCommand, "Help"},         Entry{151, kCommand, "Print Preview..."},
    Entry{152, kCommand, "Page Setup..."},  Entry{153, kCommand, "Export Picture..."},
    Entry{154, kCommand, "Export Data..."}, Entry{155, kCommand, "Copy Data"},
};

constexpr std::array kRecall = {
    Entry{101, kText, "network name"},     Entry{102, kText, "Network Layers:"},
    Entry{104, kText, "Input Nodes:"},     Entry{105, kText, "Output Nodes:"},
    Entry{106, kText, "Hidden Nodes:"},    Entry{107, kText, "Connections:"},
    Entry{108, kText, "Recall Patterns:"},
};

constexpr std::array kRecallMenu = {
    Entry{202, kCommand, "Save Outputs/Targets..."},
    Entry{229, kCommand, "Restart Tarn"},
    Entry{230, kCommand, "Exit"},
    Entry{218, kCommand, "Targets vs Net Outputs..."},
    Entry{219, kCommand, "Targets/Outputs vs Pattern Sequence..."},
    Entry{220, kCommand, "Output Error vs Pattern Sequence..."},
    Entry{222, kCommand, "Input Nodes vs Pattern Sequence..."},
    Entry{233, kCommand, "Network Information"},
    Entry{223, kCommand, "Network Outputs/Targets"},
    Entry{225, kCommand, "Statistics"},
    Entry{226, kCommand, "Tolerance Checking"},
    Entry{227, kCommand, "Threshold Checking"},
    Entry{24341, kCommand, "Help"},
    Entry{24346, kCommand, "About..."},
};

constexpr std::array kValue = {
    Entry{101, kEdit, "the value"},
    Entry{102, kText, "Enter Value:"},
    Entry{1, kButton, "OK"},
    Entry{2, kButton, "Cancel"},
};

constexpr std::array kStatus = {Entry{101, kText, "Status"}};

constexpr std::array kAboutAdded = {
    Entry{1, kButton, "OK"},
    Entry{101, kText, "name, version and purpose"},
    Entry{102, kIcon, "the program icon"},
};

constexpr std::array kTables = {
    Table{"TARN", kStartUp, kStartUpAdded},
    Table{"TSETUP_DLG", kSetup},
    Table{"NDESIGN_DLG", kDesign},
    Table{"TRANSFER_DLG", kTransfer},
    Table{"TCONNECT_DLG", kConnections},
    Table{"VIEW_MENU", kViewMenu},
    Table{"TPARAM_DLG", kParameters},
    Table{"TDATA_DLG", kTrainingData},
    Table{"RDATA_DLG", kRecallData},
    Table{"TRAIN_MENU", kTrainMenu},
    Table{"TRAIN_DLG", {}, kTrainingAdded},
    Table{"AUTOSAVE_DLG", {}, kAutoSaveAdded},
    Table{"INFO_MENU", kBrowserMenu, kBrowserAdded},
    Table{"GRAPH_MENU", kGraphMenu, kGraphAdded},
    Table{"RECALL_DLG", kRecall},
    Table{"RECALL_MENU", kRecallMenu},
    Table{"DATAENT_DLG", kValue},
    Table{"STATUS_DLG", kStatus},
    Table{"ABOUT_DLG", {}, kAboutAdded},
};

}  // namespace

std::string_view NameOf(Kind kind) {
  switch (kind) {
    case kCommand:
      return "command";
    case kButton:
      return "button";
    case kEdit:
      return "edit";
    case kText:
      return "text";
    case kCheck:
      return "check box";
    case kRadio:
      return "radio";
    case kList:
      return "list";
    case kCombo:
      return "combo box";
    case kGauge:
      return "gauge";
    case kIcon:
      break;
  }
  return "icon";
}

std::span<const Table> Tables() {
  return kTables;
}

const Table& TableOf(std::string_view name) {
  for (const Table& table : kTables) {
    if (table.name == name) return table;
  }
  throw std::out_of_range("no table " + std::string(name));
}

const Entry& EntryOf(const Table& table, int id) {
  for (const std::span<const Entry> entries : {table.fixed, table.added}) {
    for (const Entry& entry : entries) {
      if (entry.id == id) return entry;
    }
  }
  throw std::out_of_range("no " + std::to_string(id) + " in " + std::string(table.name));
}

}  // namespace tarn
