#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>

// Results as they are kept in tests/data/golden/: whole files, and one line per hash in
// hashes.txt. With TARN_UPDATE_GOLDEN=1 in the environment they are written instead of
// compared, and the test that wrote them fails, so that an update never passes for a check. The
// hashes are rewritten as a whole: run the executable itself to update, not many at once.

namespace tarn {

// 64-bit FNV-1a.
class Hash {
 public:
  void Add(std::string_view bytes);
  // The raw bits, least significant byte first on every machine.
  void Add(std::span<const float> values);

  uint64_t value() const { return m_value; }

 private:
  void AddByte(unsigned char byte);

  uint64_t m_value = 14695981039346656037U;
};

// The text is that of tests/data/golden/NAME, where lines end with "\n" whatever the system ends
// them with; the first line that differs is told.
void ExpectGoldenFile(const std::string& name, const std::string& bytes);
// The hash is the one kept under this name.
void ExpectGoldenHash(const std::string& name, uint64_t hash);

// The names of the files in tests/data/golden/, and of the hashes in hashes.txt.
std::set<std::string> GoldenFileNames();
std::set<std::string> GoldenHashNames();

}  // namespace tarn
