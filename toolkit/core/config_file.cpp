#include "toolkit/core/config_file.h"

#include <algorithm>

#include "toolkit/core/bytes.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr std::size_t kLongestFile = 128 << 10;
constexpr std::size_t kLongestLine = 4096;

std::string FromUtf8(std::string text) {
  if (!need_uconvert(text.c_str(), U_UTF8, U_CURRENT)) return text;
  std::string converted(static_cast<std::size_t>(uconvert_size(text.c_str(), U_UTF8, U_CURRENT)),
                        '\0');
  do_uconvert(text.c_str(), U_UTF8, converted.data(), U_CURRENT,
              static_cast<int>(converted.size()));
  converted.pop_back();  // the terminator
  return converted;
}

std::string WithoutZeros(std::string text) {
  std::replace(text.begin(), text.end(), '\0', ' ');
  return text;
}

}  // namespace

void UseConfigFile(const char* path) {
  const Bytes bytes = ReadBytes(path, kLongestFile);
  UseConfigText(FromUtf8(WithoutZeros({bytes.begin(), bytes.end()})));
}

void UseConfigText(const std::string& text) {
  std::string sound;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    const std::string line = WithoutZeros(text.substr(start, end - start));
    sound += CutToBytes(Trimmed(line.c_str()).c_str(), kLongestLine);
    sound += '\n';
    start = end + 1;
  }
  // Byte by byte, so that no character meets the end of the buffer for a line.
  const int format = get_uformat();
  set_uformat(U_ASCII);
  set_config_data(sound.c_str(), static_cast<int>(sound.size()));
  set_uformat(format);
}

}  // namespace zel
