#include "launcher/backdrop.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "imageformats/load.h"
#include "toolkit/draw/art.h"
#include "toolkit/draw/scaling.h"

namespace zel {
namespace {

// What of a length is shown where, along one axis.
struct Stretch {
  int from, length;  // in the picture
  int at, extent;    // on the screen
};

Stretch Centred(int picture, double factor, int screen) {
  const int scaled = static_cast<int>(std::lround(picture * factor));
  if (scaled <= screen) return {0, picture, (screen - scaled) / 2, scaled};
  const int shown = std::max(1, static_cast<int>(std::lround(screen / factor)));
  return {(picture - shown) / 2, shown, 0, screen};
}

// Beside the area every row goes on in the colour of its ends, above and below every column.
void ExtendEdges(BITMAP* bitmap, const Rect& area) {
  const int right = area.Right() - 1, bottom = area.Bottom() - 1;
  for (int y = area.y; y <= bottom; ++y) {
    hline(bitmap, 0, y, area.x, getpixel(bitmap, area.x, y));
    hline(bitmap, right, y, bitmap->w - 1, getpixel(bitmap, right, y));
  }
  for (int y = 0; y < area.y; ++y) blit(bitmap, bitmap, 0, area.y, 0, y, bitmap->w, 1);
  for (int y = bottom + 1; y < bitmap->h; ++y) blit(bitmap, bitmap, 0, bottom, 0, y, bitmap->w, 1);
}

}  // namespace

BitmapPtr LoadBackdrop(const char* fileName, const ScreenLayout& layout, Size screen) {
  const Art art = FindArt(fileName, layout.scale);
  BitmapPtr picture{LoadPicture(art.path.c_str(), nullptr)};
  if (!picture) return nullptr;
  const Size size{picture->w / art.scale, picture->h / art.scale};
  if (Size{picture->w, picture->h} == screen) return picture;
  if (size.w < layout.size.w || size.h < layout.size.h)
    return ZoomArt(std::move(picture), art.scale, layout.scale);
  const bool isAsLarge = size == layout.size;
  const double factor = isAsLarge
                            ? layout.scale / art.scale
                            : std::max(1.0 * screen.w / picture->w, 1.0 * screen.h / picture->h);
  const Stretch x = Centred(picture->w, factor, screen.w);
  const Stretch y = Centred(picture->h, factor, screen.h);
  BitmapPtr backdrop{create_bitmap_ex(bitmap_color_depth(picture.get()), screen.w, screen.h)};
  if (!backdrop || x.extent < 1 || y.extent < 1) return nullptr;
  const Rect area{x.at, y.at, x.extent, y.extent};
  Scale(picture.get(), {x.from, y.from, x.length, y.length}, backdrop.get(), area);
  ExtendEdges(backdrop.get(), area);
  return backdrop;
}

}  // namespace zel
