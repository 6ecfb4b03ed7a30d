#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace tarn {

// Puts a locale with a decimal comma and dots between thousands in force for as long as it
// lives: for C++ streams always, for the C library when the machine has such a locale.
class CommaLocale {
 public:
  CommaLocale()
      : m_before(std::locale::global(std::locale(std::locale::classic(), new Comma))),
        m_c_before(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8",
                             "it_IT.UTF-8", "nl_NL.UTF-8", "de_DE", "German_Germany"}) {
      if (std::setlocale(LC_ALL, name) == nullptr) continue;
      m_c_library = true;
      break;
    }
  }
  ~CommaLocale() {
    std::locale::global(m_before);
    std::setlocale(LC_ALL, m_c_before.c_str());
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

  // Whether printf and strtod follow it too.
  bool HoldsForC() const { return m_c_library; }

 private:
  class Comma : public std::numpunct<char> {
   protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  std::locale m_before;
  std::string m_c_before;
  bool m_c_library = false;
};

}  // namespace tarn
