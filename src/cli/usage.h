#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tarn {

// Gives the program's help its form: lines of at most 80 columns, the value of an option and
// its default beside its name and nothing else. Before the commands are added, which take it
// over.
void UseHelpFormat(CLI::App& program);

// What is wrong with the command line, and where to read on.
std::string ExplainWrongUsage(const CLI::App& program, const CLI::ParseError& error);

}  // namespace tarn
