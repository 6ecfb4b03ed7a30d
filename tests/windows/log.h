#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "windows/tables.h"

namespace tarn {

// Tells every step in a line of its own, and at the end what has come of every number.
class Log {
 public:
  void Road(std::string_view name);
  void Found(std::string_view window, const Entry& entry, std::string_view text);
  void Acted(std::string_view window, const Entry& entry, std::string_view effect);
  void Command(const Table& table, int id, std::string_view effect);
  void Window(std::string_view caption);
  void Checked(std::string_view what);
  void Failed(std::string_view what);

  void CountFound(const Table& table, int id);
  void CountActed(const Table& table, int id);
  // The table of all numbers. Those that are missing count as failures when `all` were wanted.
  void Summarize(bool all);
  int failures() const { return m_failures; }

 private:
  using Number = std::pair<std::string_view, int>;

  void Tell(std::string_view kind, std::string_view text) const;
  // How many of them are missing.
  int SummarizeEntries(const Table& table, std::span<const Entry> entries) const;

  std::set<Number> m_found;
  std::set<Number> m_acted;
  int m_failures = 0;
};

}  // namespace tarn
