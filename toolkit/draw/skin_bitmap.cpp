#include "toolkit/draw/skin_bitmap.h"

#include <algorithm>
#include <utility>

#include "imageformats/load.h"
#include "toolkit/base/bytes.h"
#include "toolkit/draw/bitmap_guard.h"

namespace zel {
namespace {

bool IsUsable(int depth, int w, int h) { return w > 0 && h > 0 && IsPossibleBitmap(depth, w, h); }

BITMAP* MakeBitmap(int w, int h, int kind) {
  if (!IsUsable(get_color_depth(), w, h)) return nullptr;
  if (kind == kMemoryBitmap) return create_bitmap(w, h);
  if (!gfx_driver) return nullptr;  // before the first graphics mode there is only memory
  if (kind == kSystemBitmap) return create_system_bitmap(w, h);
  if (kind == kVideoBitmap) return create_video_bitmap(w, h);
  return nullptr;
}

BITMAP* MakeCopy(BITMAP* source, int kind) {
  BITMAP* copy = MakeBitmap(source->w, source->h, kind);
  if (copy) blit(source, copy, 0, 0, 0, 0, source->w, source->h);
  return copy;
}

int KindOf(BITMAP* bitmap) {
  if (!bitmap) return kNoBitmap;
  if (is_video_bitmap(bitmap)) return kVideoBitmap;
  return is_system_bitmap(bitmap) ? kSystemBitmap : kMemoryBitmap;
}

// A part of a bitmap, which Allegro cuts to it; null where nothing is left.
BitmapPtr MakePart(BITMAP* whole, int x, int y, int w, int h) {
  const bool inside = whole && x >= 0 && y >= 0 && x < whole->w && y < whole->h;
  if (!inside || w < 1 || h < 1) return nullptr;
  return BitmapPtr{create_sub_bitmap(whole, x, y, std::min(w, whole->w), std::min(h, whole->h))};
}

}  // namespace

SkinBitmap::SkinBitmap(BITMAP* borrowed) : bitmap{borrowed}, kind{KindOf(borrowed)} {}

SkinBitmap::SkinBitmap(const SkinBitmap& other)
    : bitmap{other.bitmap}, kind{other.kind}, tileSize{other.tileSize} {}

SkinBitmap::SkinBitmap(SkinBitmap&& other) noexcept { *this = std::move(other); }

SkinBitmap& SkinBitmap::operator=(SkinBitmap&& other) noexcept {
  if (this == &other) return *this;
  Destroy();
  bitmap = std::exchange(other.bitmap, nullptr);
  kind = std::exchange(other.kind, kNoBitmap);
  owned = std::exchange(other.owned, false);
  tileSize = std::exchange(other.tileSize, {-1, -1});
  return *this;
}

SkinBitmap::SkinBitmap(const char* path) { SkinBitmap::Load(path, kMemoryBitmap); }

SkinBitmap::SkinBitmap(int w, int h, int kind) { Create(w, h, kind); }

SkinBitmap::~SkinBitmap() { Destroy(); }

void SkinBitmap::Set(BITMAP* source, bool copy, int newKind) {
  Assign(source, copy, KindOf(source), newKind);
}

void SkinBitmap::Set(const SkinBitmap& other, bool copy, int newKind) {
  Assign(other.bitmap, copy, other.kind, newKind);
}

void SkinBitmap::Assign(BITMAP* source, bool copy, int sourceKind, int newKind) {
  if (source && copy) {
    const int made = newKind == kNoBitmap ? sourceKind : newKind;
    return Adopt(MakeCopy(source, made), made);
  }
  if (source == bitmap) return;
  Destroy();
  bitmap = source;
  kind = source ? sourceKind : kNoBitmap;
}

// Owns `made` from now on. It is made before this is called, as its pixels may come from the old
// bitmap.
void SkinBitmap::Adopt(BITMAP* made, int newKind) {
  Destroy();
  if (!made) return;
  bitmap = made;
  kind = newKind;
  owned = true;
}

void SkinBitmap::Take(BitmapPtr made) { Adopt(made.release(), kMemoryBitmap); }

int SkinBitmap::GetTileWidth() const { return tileSize.w; }
int SkinBitmap::GetTileHeight() const { return tileSize.h; }
Size SkinBitmap::GetTileSize() const { return tileSize; }
void SkinBitmap::SetTileWidth(int width) { tileSize.w = width; }
void SkinBitmap::SetTileHeight(int height) { tileSize.h = height; }
void SkinBitmap::SetTileSize(Size size) { tileSize = size; }

Error SkinBitmap::Load(const char* path, int newKind) {
  if (!path || !IsFile(path)) return kFileNotFoundError;
  BitmapPtr loaded{LoadPicture(path, nullptr)};
  if (!loaded) return kLoadError;
  if (newKind == kSystemBitmap || newKind == kVideoBitmap) {
    if (BITMAP* copy = MakeCopy(loaded.get(), newKind)) {
      Adopt(copy, newKind);
      return kNoError;
    }
  }
  Adopt(loaded.release(), kMemoryBitmap);
  return kNoError;
}

bool SkinBitmap::Save(const char* path) const {
  return bitmap && path && save_bitmap(path, bitmap, nullptr) == 0;
}

void SkinBitmap::Create(int w, int h, int newKind) {
  Destroy();
  Adopt(MakeBitmap(w, h, newKind), newKind);
}

void SkinBitmap::CreateEx(int depth, int w, int h) {
  Destroy();
  Adopt(IsUsable(depth, w, h) ? create_bitmap_ex(depth, w, h) : nullptr, kMemoryBitmap);
}

void SkinBitmap::CreateSub(const SkinBitmap& parent, int x, int y, int w, int h) {
  Adopt(MakePart(parent.bitmap, x, y, w, h).release(), parent.kind);
}

SubCanvas::SubCanvas(const SkinBitmap& parent, int x, int y, int w, int h)
    : part_{MakePart(parent.GetBitmap(), x, y, w, h)} {
  if (!part_) return;
  // Allegro lets the part draw where its parent may not.
  int left, top, right, bottom;
  get_clip_rect(parent.GetBitmap(), &left, &top, &right, &bottom);
  if (left - x >= part_->w || top - y >= part_->h || right < x || bottom < y) return;
  ::set_clip_rect(part_.get(), left - x, top - y, right - x, bottom - y);
  Set(part_.get(), false, kNoBitmap);
}

void SkinBitmap::Destroy() {
  if (owned && !IsScreen(bitmap)) destroy_bitmap(bitmap);
  bitmap = nullptr;
  kind = kNoBitmap;
  owned = false;
}

bool SameBitmap(const BITMAP* a, const BITMAP* b) {
  return is_same_bitmap(const_cast<BITMAP*>(a), const_cast<BITMAP*>(b)) != 0;
}

bool IsScreen(const BITMAP* a) { return SameBitmap(a, screen); }

}  // namespace zel
