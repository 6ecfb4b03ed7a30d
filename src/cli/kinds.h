#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>

// The word that chooses what a command makes: a table of rows that have a `name`.

namespace tarn {

template <typename Kinds>
const typename Kinds::value_type* FindKind(const Kinds& kinds, std::string_view name) {
  for (const auto& kind : kinds) {
    if (kind.name == name) return &kind;
  }
  return nullptr;
}

// Adds KIND; another word is answered with all there are. `what` is made: "report".
template <typename Kinds>
void AddKindArgument(CLI::App& command, const Kinds& kinds, const std::string& what,
                     const std::string& help, std::string& chosen) {
  const auto check = [&kinds, what](const std::string& name) -> std::string {
    if (FindKind(kinds, name) != nullptr) return {};
    std::string text = "'" + name + "' is no kind of " + what + "; there are";
    for (const auto& kind : kinds) text.append(" ").append(kind.name);
    return text;
  };
  command.add_option("KIND", chosen, help)->required()->type_name("")->check(check);
}

}  // namespace tarn
