#include "toolkit/draw/bitmap_guard.h"

#include <cstdint>

#include "toolkit/base/allegro.h"

namespace zel {
namespace {

BITMAP* CreateGuarded(int depth, int w, int h) {
  if (!IsPossibleBitmap(depth, w, h)) return nullptr;
  // create_bitmap_ex asks the hook whenever there is one, so it steps aside.
  system_driver->create_bitmap = nullptr;
  BITMAP* bitmap = create_bitmap_ex(depth, w, h);
  system_driver->create_bitmap = CreateGuarded;
  return bitmap;
}

}  // namespace

bool IsPossibleBitmap(int depth, int w, int h) {
  constexpr std::int64_t kMostBytes = 256 << 20;
  if (w < 0 || h < 0 || depth <= 0) return false;
  return std::int64_t{w} * h <= kMostBytes / BytesPerPixel(depth);
}

void InstallBitmapGuard() { system_driver->create_bitmap = CreateGuarded; }

}  // namespace zel
