#include "launcher/whole_file.h"

#include "toolkit/base/bytes.h"

namespace zel {

std::string ReadWhole(const char* fileName) {
  constexpr std::size_t kLongestFile = std::size_t{32} << 20;
  return ReadText(fileName, kLongestFile);
}

}  // namespace zel
