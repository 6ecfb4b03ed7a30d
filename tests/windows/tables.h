#pragma once

#include <span>
#include <string_view>

// Every number that the windows answer to, by the name of its resource.

namespace tarn {

enum class Kind { kCommand, kButton, kEdit, kText, kCheck, kRadio, kList, kCombo, kGauge, kIcon };

std::string_view NameOf(Kind kind);

struct Entry {
  int id;
  Kind kind;
  std::string_view meaning;
};

struct Table {
  std::string_view name;
  std::span<const Entry> fixed;       // numbers that users and scripts rely on
  std::span<const Entry> added = {};  // numbers that only this program has
};

std::span<const Table> Tables();
// Throws std::out_of_range when there is none.
const Table& TableOf(std::string_view name);
const Entry& EntryOf(const Table& table, int id);

}  // namespace tarn
