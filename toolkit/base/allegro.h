// The one place that includes Allegro.
//
// Allegro's GUI defines its message numbers as macros with the names that the toolkit gives its own
// constants (toolkit/base/messages.h), so the macros are taken away again here.
#pragma once

#include <memory>

#define ALLEGRO_NO_FIX_ALIASES
#define ALLEGRO_NO_MAGIC_MAIN
#include <allegro.h>

#undef MSG_START
#undef MSG_END
#undef MSG_DRAW
#undef MSG_CLICK
#undef MSG_DCLICK
#undef MSG_KEY
#undef MSG_CHAR
#undef MSG_UCHAR
#undef MSG_XCHAR
#undef MSG_WANTFOCUS
#undef MSG_GOTFOCUS
#undef MSG_LOSTFOCUS
#undef MSG_GOTMOUSE
#undef MSG_LOSTMOUSE
#undef MSG_IDLE
#undef MSG_RADIO
#undef MSG_WHEEL
#undef MSG_LPRESS
#undef MSG_LRELEASE
#undef MSG_MPRESS
#undef MSG_MRELEASE
#undef MSG_RPRESS
#undef MSG_RRELEASE
#undef MSG_WANTMOUSE
#undef MSG_USER
#undef ABS
#undef SGN
#undef MID

namespace zel {

struct BitmapDeleter {
  void operator()(BITMAP* bitmap) const noexcept { destroy_bitmap(bitmap); }
};
// A bitmap that is destroyed with its owner.
using BitmapPtr = std::unique_ptr<BITMAP, BitmapDeleter>;

// How pictures are brought to the depth of the graphics mode: always. In 8-bit modes, where the
// mask colour is no magenta, what is transparent stays so; in others the first entry of a picture's
// palette is a colour like any other, and magenta is transparent wherever the palette has it.
inline int PictureConversion() {
  return COLORCONV_TOTAL | (get_color_depth() == 8 ? COLORCONV_KEEP_TRANS : COLORCONV_NONE);
}

}  // namespace zel
