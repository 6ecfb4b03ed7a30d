#include "base/text_reader.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/text_numbers.h"

namespace tarn {
namespace {

// Blocks grow while a file is read: most files are small, and a look at one takes its first lines.
constexpr size_t kFirstBlock = size_t{1} << 12;
constexpr size_t kLargestBlock = size_t{1} << 18;
constexpr char kCtrlZ = 0x1A;
// No number is longer: longer digit strings are cut there and scanned as far as they go.
constexpr size_t kLongestNumber = 4096;

}  // namespace

bool TextReader::Open(const std::string& path) {
  Close();
  m_file = Files().Open(path, FileLayer::Mode::kRead);
  m_begin = m_end = 0;
  m_block = kFirstBlock;
  m_at_end = !IsOpen();
  m_failed = !IsOpen() && Files().WriteTime(path).has_value();
  return IsOpen();
}

void TextReader::Close() {
  if (IsOpen()) Files().Close(m_file);
  m_file = FileLayer::kNoFile;
  m_begin = m_end = 0;
  m_at_end = true;
}

bool TextReader::Reserve(size_t length) {
  if (length > m_buffer.max_size() / 2 - kLargestBlock) return false;
  try {
    m_buffer.reserve(kLargestBlock + 2 * length);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

void TextReader::Rewind() {
  m_begin = m_end = 0;
  m_block = kFirstBlock;
  m_at_end = !IsOpen() || !Files().Seek(m_file, 0);
  m_failed = m_failed || (IsOpen() && m_at_end);
}

bool TextReader::Fill() {
  if (m_at_end) return false;
  if (m_begin > 0) {
    std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_begin),
              m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end), m_buffer.begin());
    m_end -= m_begin;
    m_begin = 0;
  }
  if (m_buffer.size() - m_end < m_block) m_buffer.resize(std::max(m_end + m_block, 2 * m_end));
  const int64_t count = Files().Read(m_file, m_buffer.data() + m_end, m_block);
  m_block = std::min(2 * m_block, kLargestBlock);
  if (count <= 0) {
    m_at_end = true;
    m_failed = m_failed || count < 0;
    return false;
  }
  const char* block = m_buffer.data() + m_end;
  const void* stop = std::memchr(block, kCtrlZ, static_cast<size_t>(count));
  if (stop != nullptr) {
    const size_t kept = static_cast<size_t>(static_cast<const char*>(stop) - block);
    m_end += kept;
    m_at_end = true;
    return kept > 0;
  }
  m_end += static_cast<size_t>(count);
  return true;
}

std::string_view TextReader::Ahead(size_t count) {
  while (m_end - m_begin < count && Fill()) {
  }
  return {m_buffer.data() + m_begin, m_end - m_begin};
}

bool TextReader::ReadLine(size_t limit, Line& line) {
  // The search goes on where the last block ended, so a long line is searched once.
  size_t searched = 0;
  while (true) {
    const size_t held = m_end - m_begin;
    const size_t span = std::min(held, limit + 2);
    const char* start = m_buffer.data() + m_begin;
    const void* found =
        span > searched ? std::memchr(start + searched, '\n', span - searched) : nullptr;
    if (found != nullptr) {
      const size_t length = static_cast<size_t>(static_cast<const char*>(found) - start);
      const size_t cut = length > 0 && start[length - 1] == '\r' ? length - 1 : length;
      if (cut <= limit) {
        line = {std::string_view(start, cut), true};
        m_begin += length + 1;
        return true;
      }
    }
    if (found != nullptr || span == limit + 2 || !Fill()) {
      if (span == 0) return false;
      const size_t taken = std::min(m_end - m_begin, limit);
      line = {std::string_view(m_buffer.data() + m_begin, taken), false};
      m_begin += taken;
      return true;
    }
    searched = span;
  }
}

int TextReader::Peek() {
  if (m_begin == m_end && !Fill()) return -1;
  if (m_buffer[m_begin] == '\r') {
    const std::string_view ahead = Ahead(2);
    if (ahead.size() > 1 && ahead[1] == '\n') ++m_begin;
  }
  return static_cast<unsigned char>(m_buffer[m_begin]);
}

int TextReader::Get() {
  const int c = Peek();
  if (c >= 0) ++m_begin;
  return c;
}

void TextReader::SkipSpace() {
  while (true) {
    while (m_begin < m_end && IsSpace(m_buffer[m_begin])) ++m_begin;
    if (m_begin < m_end || !Fill()) return;
  }
}

template <typename Value>
bool TextReader::ScanNumber(bool (*scan)(std::string_view&, Value&), Value& value) {
  SkipSpace();
  std::string_view ahead = Ahead(kLongestNumber);
  const size_t held = std::min(ahead.size(), kLongestNumber);
  std::string_view rest = ahead.substr(0, held);
  if (!scan(rest, value)) return false;
  m_begin += held - rest.size();
  return true;
}

bool TextReader::ScanInt(int32_t& value) {
  return ScanNumber<int32_t>(&tarn::ScanInt, value);
}

bool TextReader::ScanFloat(float& value) {
  return ScanNumber<float>(&tarn::ScanFloat, value);
}

bool TextReader::ScanWord(size_t limit, std::string& word) {
  SkipSpace();
  word.clear();
  bool any = false;
  for (int c = Peek(); c >= 0 && !IsSpace(static_cast<char>(c)); c = Peek()) {
    any = true;
    if (word.size() < limit) word.push_back(static_cast<char>(c));
    Get();
  }
  return any;
}

}  // namespace tarn
