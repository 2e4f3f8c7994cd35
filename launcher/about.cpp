#include "launcher/about.h"

#include <cstdio>
#include <string_view>

namespace zel {

bool TellsAbout(const char* program, const char* usage, int argc, char** argv) {
  if (argc != 2) return false;
  const std::string_view option = argv[1];
  if (option == "--help")
    std::fputs(usage, stdout);
  else if (option == "--version")
    std::printf("%s %s\n", program, ZEL_VERSION);
  else
    return false;
  return true;
}

}  // namespace zel
