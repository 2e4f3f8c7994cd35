// The least that an Allegro program can do: shows one picture and sleeps. What the launcher is
// measured against.
#include "imageformats/register.h"
#include "toolkit/base/allegro.h"

int main(int argc, char** argv) {
  if (argc != 2 || install_allegro(SYSTEM_AUTODETECT, &errno, atexit) != 0) return 1;
  zel::RegisterPictureFormats();
  set_color_depth(16);
  if (set_gfx_mode(GFX_AUTODETECT_WINDOWED, 800, 600, 0, 0) != 0) return 1;
  install_keyboard();
  install_timer();
  install_mouse();
  const zel::BitmapPtr picture{load_bitmap(argv[1], nullptr)};
  if (!picture) return 1;
  blit(picture.get(), screen, 0, 0, 0, 0, SCREEN_W, SCREEN_H);
  for (;;) rest(1000);
}
