#include "data/record_fields.h"

#include "base/text_numbers.h"

namespace tarn {
namespace {

bool IsSeparator(char c) {
  return c == ',' || IsSpace(c);
}

}  // namespace

RecordFields::RecordFields(std::string_view record) : m_rest(record) {
  SkipSeparators();
}

void RecordFields::SkipSeparators() {
  size_t i = 0;
  while (i < m_rest.size() && IsSeparator(m_rest[i])) ++i;
  m_rest.remove_prefix(i);
}

bool RecordFields::Step() {
  size_t i = 0;
  while (i < m_rest.size() && !IsSeparator(m_rest[i])) ++i;
  m_rest.remove_prefix(i);
  SkipSeparators();
  return !m_rest.empty();
}

bool RecordFields::Skip(int64_t count) {
  for (; count > 0; --count) {
    if (!Step()) return false;
  }
  return true;
}

bool RecordFields::Read(std::span<float> values) {
  bool first = true;
  for (float& value : values) {
    if (!first && !Step()) return false;
    // What a number leaves of its field is gone with the next step.
    if (!ScanFloat(m_rest, value)) return false;
    first = false;
  }
  return true;
}

}  // namespace tarn
