#pragma once

#include <string_view>

#include "windows/place.h"

// Graphs and reports: the training and the recall window have them under numbers of their own.

namespace tarn {

// The command opens a graph with something in it, which is closed again.
void LookAtGraph(const Place& menu, int id);
// The same of a command that asks for the output nodes first: all of them, and one of them.
void LookAtOutputGraphs(const Place& menu, int id, std::string_view question, int outputs);
void LookAtInputGraphs(const Place& menu, int id);

// The command opens a report, which is closed again.
void LookAtReport(const Place& menu, int id, std::string_view caption);
void LookAtToleranceReport(const Place& menu, int id);
void LookAtThresholdReport(const Place& menu, int id);

void CloseGraph(Driver& driver, const Window& graph);
// The graph that comes when the questions of a command have been answered.
void LookAtNextGraph(Driver& driver, int command);

}  // namespace tarn
