// A program to be killed: it tells by one letter that it is about to begin the work that it is
// given, and then does it over and over.

#include <cstdio>

#include "support/doomed_work.h"

int main(int argc, char** argv) {
  const std::function<bool()> work = tarn::DoomedWork(argc == 2 ? argv[1] : "");
  if (!work || std::fputs("r", stdout) < 0 || std::fflush(stdout) != 0) return 1;
  while (work()) {
  }
  return 1;
}
