// Looks for mistakes in a menu tree: zel-check [DIR]
//
// Says what the launcher would silently leave out, cut or misunderstand. Shows nothing, needs no
// display and writes nothing.
//
// The exit status is 0 without findings, 1 with findings and 2 when DIR is no directory.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "imageformats/register.h"
#include "toolkit/base/allegro.h"
#include "toolkit/draw/bitmap_guard.h"
#include "tools/support/menu_check.h"

int main(int argc, char** argv) {
  if (argc > 2 || (argc == 2 && argv[1][0] == '-')) {
    std::fputs("usage: zel-check [DIR]    DIR is /etc/zel by default\n", stderr);
    return 2;
  }
  const char* directory = argc == 2 ? argv[1] : "/etc/zel";
  if (chdir(directory) != 0) {
    std::fprintf(stderr, "zel-check: there is no directory %s\n", directory);
    return 2;
  }
  set_uformat(U_ASCII);
  install_allegro(SYSTEM_NONE, &errno, std::atexit);
  zel::InstallBitmapGuard();
  zel::RegisterPictureFormats();
  return zel::CheckMenuTree() ? EXIT_SUCCESS : EXIT_FAILURE;
}
