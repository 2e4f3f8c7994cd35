// Makes graphics modes fail that the display could show.
//
// To be preloaded. Takes the place of Allegro's set_gfx_mode: refuses the modes named by the
// environment variable REFUSE_MODES (such as "640x480x16 800x600x8"; "all" for every mode), and
// reports each request on standard error, as "mode 640x480x16 refused" or "mode 640x480x16 tried".
// Going back to text mode is neither refused nor reported.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "toolkit/base/allegro.h"

namespace {

std::string Name(int width, int height) {
  return std::to_string(width) + "x" + std::to_string(height) + "x" +
         std::to_string(get_color_depth());
}

bool IsRefused(const std::string& mode) {
  const char* list = std::getenv("REFUSE_MODES");
  if (!list) return false;
  const std::string padded = " " + std::string(list) + " ";
  return std::string_view(list) == "all" || padded.find(" " + mode + " ") != std::string::npos;
}

}  // namespace

extern "C" int set_gfx_mode(int card, int width, int height, int virtualWidth, int virtualHeight) {
  using SetMode = int (*)(int, int, int, int, int);
  static const auto allegro = reinterpret_cast<SetMode>(dlsym(RTLD_NEXT, "set_gfx_mode"));
  if (card != GFX_TEXT) {
    const std::string mode = Name(width, height);
    const bool refused = IsRefused(mode);
    std::fprintf(stderr, "mode %s %s\n", mode.c_str(), refused ? "refused" : "tried");
    if (refused) return -1;
  }
  return allegro(card, width, height, virtualWidth, virtualHeight);
}
