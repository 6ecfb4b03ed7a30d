// What the check of the programs has to refuse: built with none of what protects them.

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>

namespace tarn {

std::string Shortened(const char* text, size_t length) {
  char copy[16] = "";
  std::strncpy(copy, text, length);
  return copy;
}

}  // namespace tarn

int main(int argc, char** argv) {
  std::printf("%s\n", tarn::Shortened(argv[0], static_cast<size_t>(argc)).c_str());
  return 0;
}
