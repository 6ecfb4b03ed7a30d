#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tarn {

// Walks over the fields of one data record. Fields are separated by runs of white space; a
// comma is white space here. The walk begins at the first field.
class RecordFields {
 public:
  explicit RecordFields(std::string_view record);

  // Moves on by `count` fields; false when the record ends before.
  bool Skip(int64_t count);

  // Reads consecutive fields as numbers from the current field on and stays at the last of
  // them. False when a field is missing or does not begin with a number; the values before it
  // are stored.
  bool Read(std::span<float> values);

 private:
  bool Step();
  void SkipSeparators();

  std::string_view m_rest;  // from the current field, or from within it, to the record's end
};

}  // namespace tarn
