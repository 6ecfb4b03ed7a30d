#pragma once

#include <CLI/CLI.hpp>

#include "cli/console.h"

// The commands of tarn-cli, one file each. Each adds itself to the program with its options
// and its help; when the user has chosen it, it stores its exit status.

namespace tarn {

void AddNewCommand(CLI::App& program, ExitStatus& exit_status);
void AddSetCommand(CLI::App& program, ExitStatus& exit_status);
void AddTrainCommand(CLI::App& program, ExitStatus& exit_status);
void AddRecallCommand(CLI::App& program, ExitStatus& exit_status);
void AddReportCommand(CLI::App& program, ExitStatus& exit_status);
void AddPlotCommand(CLI::App& program, ExitStatus& exit_status);
void AddRestoreCommand(CLI::App& program, ExitStatus& exit_status);

}  // namespace tarn
