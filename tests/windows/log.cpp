#include "windows/log.h"

#include <cstdio>
#include <fmt/format.h>

namespace tarn {
namespace {

// Nobody has to listen to the end.
void Put(const std::string& text) {
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

std::string Control(std::string_view window, const Entry& entry) {
  return fmt::format("\"{}\" {} {}", window, entry.id, NameOf(entry.kind));
}

}  // namespace

void Log::Tell(std::string_view kind, std::string_view text) const {
  Put(fmt::format("{:<8} {}\n", kind, text));
}

void Log::Road(std::string_view name) {
  Tell("road", name);
}

void Log::Found(std::string_view window, const Entry& entry, std::string_view text) {
  Tell("found", fmt::format("{} \"{}\"", Control(window, entry), text));
}

void Log::Acted(std::string_view window, const Entry& entry, std::string_view effect) {
  Tell("acted", fmt::format("{} {}", Control(window, entry), effect));
}

void Log::Command(const Table& table, int id, std::string_view effect) {
  Tell("command", fmt::format("{} {} {}", table.name, id, effect));
}

void Log::Window(std::string_view caption) {
  Tell("window", fmt::format("\"{}\"", caption));
}

void Log::Checked(std::string_view what) {
  Tell("checked", what);
}

void Log::Failed(std::string_view what) {
  ++m_failures;
  Tell("FAILED", what);
}

void Log::CountFound(const Table& table, int id) {
  m_found.emplace(table.name, id);
}

void Log::CountActed(const Table& table, int id) {
  CountFound(table, id);
  m_acted.emplace(table.name, id);
}

int Log::SummarizeEntries(const Table& table, std::span<const Entry> entries) const {
  int missing = 0;
  for (const Entry& entry : entries) {
    const Number number(table.name, entry.id);
    const bool acted = m_acted.contains(number);
    if (!acted) ++missing;
    Put(fmt::format("{:<13} {:>5} {:<9} {:<7} {:<9} {}\n", table.name, entry.id, NameOf(entry.kind),
                    m_found.contains(number) ? "found" : "-", acted ? "acted on" : "MISSING",
                    entry.meaning));
  }
  return missing;
}

void Log::Summarize(bool all) {
  int missing = 0;
  for (const Table& table : Tables()) {
    missing += SummarizeEntries(table, table.fixed);
    missing += SummarizeEntries(table, table.added);
  }
  if (all) m_failures += missing;
  Put(fmt::format("{} ids found and acted on, {} missing, {} failures\n", m_acted.size(), missing,
                  m_failures));
}

}  // namespace tarn
