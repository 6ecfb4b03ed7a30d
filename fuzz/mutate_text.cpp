#include "mutate_text.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace tarn::fuzz {
namespace {

// Where readers turn: signs, borders of the types, lists and fields, what is no number.
constexpr std::array<std::string_view, 32> kNumbers = {
    "0",      "-0",         "-1",          "1",          "2",           "3",        "10",
    "11",     "7",          "255",         "32767",      "32768",       "65536",    "100000",
    "-20000", "2147483647", "-2147483648", "2147483648", "99999999999", "00000001", "+5",
    "0.5",    ".5",         "5.",          "1e38",       "3.5e38",      "1e39",     "1e-50",
    "-1e-45", "nan",        "inf",         "0x10"};

struct Span {
  size_t begin = 0;
  size_t end = 0;
};

class Mutation {
 public:
  Mutation(std::string& text, std::span<const std::string_view> words, uint32_t seed)
      : m_text(text), m_words(words), m_random(seed) {}

  void Once() {
    using Change = void (Mutation::*)();
    static constexpr std::array<Change, 12> kChanges = {
        &Mutation::ReplaceNumber, &Mutation::ReplaceNumber, &Mutation::CountNumber,
        &Mutation::PutWord,       &Mutation::PutWord,       &Mutation::PutLine,
        &Mutation::SwapLines,     &Mutation::RepeatLine,    &Mutation::DropLine,
        &Mutation::CopyLines,     &Mutation::DropLines,     &Mutation::PutByte};
    (this->*kChanges[Below(kChanges.size())])();
  }

 private:
  size_t Below(size_t count) { return m_random() % std::max(count, size_t{1}); }

  template <typename Table>
  std::string_view Any(const Table& table) {
    return table.empty() ? std::string_view() : table[Below(table.size())];
  }

  // A line with its end, about as often the first as any other.
  Span AnyLine() {
    const size_t place = Below(m_text.size() + 1);
    const size_t before = place == 0 ? std::string::npos : m_text.rfind('\n', place - 1);
    const size_t end = m_text.find('\n', place);
    return {before == std::string::npos ? 0 : before + 1,
            end == std::string::npos ? m_text.size() : end + 1};
  }

  // A run of characters that may be one number.
  Span AnyNumber() {
    constexpr std::string_view kOfNumbers = "0123456789+-.e";
    const size_t begin = m_text.find_first_of("0123456789", Below(m_text.size() + 1));
    if (begin == std::string::npos) return {m_text.size(), m_text.size()};
    const size_t end = m_text.find_first_not_of(kOfNumbers, begin);
    const bool sign = begin > 0 && m_text[begin - 1] == '-';
    return {sign ? begin - 1 : begin, end == std::string::npos ? m_text.size() : end};
  }

  std::string Text(Span span) const { return m_text.substr(span.begin, span.end - span.begin); }
  void Replace(Span span, std::string_view text) {
    m_text.replace(span.begin, span.end - span.begin, text);
  }

  void ReplaceNumber() { Replace(AnyNumber(), Any(kNumbers)); }

  void CountNumber() {
    const Span number = AnyNumber();
    if (number.begin == number.end) return;
    char& digit = m_text[number.end - 1];
    if (digit >= '0' && digit <= '9') digit = static_cast<char>('0' + (digit - '0' + 1) % 10);
  }

  void PutWord() { m_text.insert(Below(m_text.size() + 1), Any(m_words)); }
  void PutLine() {
    m_text.insert(AnyLine().begin, std::string(Any(m_words)) + (Below(8) == 0 ? "\r\n" : "\n"));
  }

  void SwapLines() {
    Span first = AnyLine();
    Span second = AnyLine();
    if (first.begin > second.begin) std::swap(first, second);
    if (first.begin == second.begin) return;
    const std::string before = Text(first);
    Replace(first, Text(second));
    const size_t moved = second.begin - before.size() + (second.end - second.begin);
    Replace({moved, moved + second.end - second.begin}, before);
  }

  void RepeatLine() {
    const Span line = AnyLine();
    m_text.insert(line.begin, Text(line));
  }

  void DropLine() { Replace(AnyLine(), {}); }

  Span AnyLines() {
    const Span first = AnyLine();
    const Span second = AnyLine();
    return {std::min(first.begin, second.begin), std::max(first.end, second.end)};
  }
  void CopyLines() {
    const std::string lines = Text(AnyLines());
    m_text.insert(AnyLine().begin, lines);
  }
  void DropLines() { Replace(AnyLines(), {}); }

  void PutByte() {
    constexpr std::string_view kBytes("\0\r\n\x1A\t ,#=\"\xFF\xC3\x7F", 13);
    const char byte = Below(2) == 0 ? kBytes[Below(kBytes.size())] : static_cast<char>(m_random());
    m_text.insert(m_text.begin() + static_cast<std::ptrdiff_t>(Below(m_text.size() + 1)), byte);
  }

  std::string& m_text;
  std::span<const std::string_view> m_words;
  std::minstd_rand m_random;
};

}  // namespace

void MutateText(std::string& text, std::span<const std::string_view> words, uint32_t seed) {
  Mutation mutation(text, words, seed);
  for (uint32_t left = 1 + seed % 3; left > 0; --left) mutation.Once();
}

}  // namespace tarn::fuzz
