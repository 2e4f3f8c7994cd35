#include "toolkit/draw/bitmap_guard.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "toolkit/base/allegro.h"

namespace zel {
namespace {

constexpr unsigned BytesPerPixel(int depth) { return (static_cast<unsigned>(depth) + 7) / 8; }

// Gets the memory of a large bitmap at once. Page by page, as it is first written to, takes longer
// than to fill it, most of all on a virtual machine without acceleration.
void Populate(const BITMAP* bitmap, std::uintptr_t bytes) {
#ifdef MADV_POPULATE_WRITE
  constexpr std::uintptr_t kSmallest = 256 << 10, kLargest = 16 << 20;
  if (bytes < kSmallest || bytes > kLargest) return;
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto start = reinterpret_cast<std::uintptr_t>(bitmap->dat);
  const std::uintptr_t first = (start + page - 1) / page * page;
  const std::uintptr_t end = (start + bytes) / page * page;
  // Older kernels refuse it, which is no harm.
  madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
#endif
}

BITMAP* CreateGuarded(int depth, int w, int h) {
  if (!IsPossibleBitmap(depth, w, h)) return nullptr;
  // create_bitmap_ex asks the hook whenever there is one, so it steps aside.
  system_driver->create_bitmap = nullptr;
  BITMAP* bitmap = create_bitmap_ex(depth, w, h);
  system_driver->create_bitmap = CreateGuarded;
  if (bitmap) Populate(bitmap, std::uintptr_t{BytesPerPixel(depth)} * w * h);
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
