#include "launcher/whole_file.h"

#include "toolkit/base/bytes.h"

namespace zel {

std::string ReadWhole(const char* fileName) { return ReadText(fileName, kLongestWholeFile); }

}  // namespace zel
