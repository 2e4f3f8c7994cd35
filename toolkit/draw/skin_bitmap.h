// A bitmap of Allegro's with the knowledge how it dresses a widget.
//
// A skin element is a picture of equally sized frames, one per drawing state. SkinBitmap itself is
// the holder; that a frame fits a widget of any size is the work of NineSlice, the marks on it are
// those of marks.h, and all other drawing is Allegro's.
#pragma once

#include "toolkit/base/allegro.h"
#include "toolkit/base/error.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/marks.h"
#include "toolkit/draw/nine_slice.h"
#include "toolkit/draw/pixel_copy.h"

namespace zel {

class SkinBitmap;

// Where the pixels of a bitmap live.
enum BitmapKind : int { kMemoryBitmap = 0, kSystemBitmap = 1, kVideoBitmap = 2, kNoBitmap = 3 };

// What a bitmap is drawn on: a bitmap of Allegro's or the one that a holder holds. May be null.
class DrawTarget {
 public:
  DrawTarget(BITMAP* target) : bitmap_{target} {}
  DrawTarget(const SkinBitmap& holder);
  operator BITMAP*() const { return bitmap_; }

 private:
  BITMAP* bitmap_;
};

// Holds one bitmap or none, and either owns or borrows it. A borrowed bitmap must outlive the
// holder. All drawing on or from an empty holder does nothing, and so does drawing on a null
// bitmap.
class SkinBitmap {
 public:
  SkinBitmap() = default;
  explicit SkinBitmap(BITMAP* borrowed);
  SkinBitmap(const SkinBitmap& other);  // borrows the other holder's bitmap
  SkinBitmap& operator=(const SkinBitmap&) = delete;
  SkinBitmap(SkinBitmap&& other) noexcept;  // takes over bitmap and ownership
  SkinBitmap& operator=(SkinBitmap&& other) noexcept;
  explicit SkinBitmap(const char* path);  // empty when the file cannot be loaded
  SkinBitmap(int w, int h, int kind);

  virtual ~SkinBitmap();
  // Borrows or copies a bitmap; a null bitmap empties the holder. For a copy, `newKind` kNoBitmap
  // means the kind of the source. The tile size stays as it is.
  virtual void Set(BITMAP* source, bool copy, int newKind);
  virtual void Set(const SkinBitmap& other, bool copy, int newKind);
  virtual int GetTileWidth() const;
  virtual int GetTileHeight() const;
  virtual Size GetTileSize() const;
  virtual void SetTileWidth(int width);
  virtual void SetTileHeight(int height);
  virtual void SetTileSize(Size size);
  // Reads a picture file: code 12 when there is none, 13 when it is not a readable picture; then
  // the holder stays as it was. The bitmap is a memory bitmap when there is no room for the kind
  // asked for.
  virtual Error Load(const char* path, int newKind);
  // False when the picture could not be written.
  virtual bool Save(const char* path) const;

  // Takes a memory bitmap over; null empties the holder.
  void Take(BitmapPtr made);
  // Make a new, owned bitmap of undefined contents; the holder is empty when the size is not
  // positive, there is no memory for it, or the kind is none.
  void Create(int w, int h, int newKind = kMemoryBitmap);
  void CreateEx(int depth, int w, int h);
  // A part of the parent's bitmap, cut to it, that shares its pixels and must not outlive it.
  void CreateSub(const SkinBitmap& parent, int x, int y, int w, int h);
  // Empties the holder. An owned bitmap is destroyed, but never the screen or a part of it.
  void Destroy();

  BITMAP* GetBitmap() const { return bitmap; }
  bool IsEmpty() const { return bitmap == nullptr; }
  bool IsOwned() const { return owned; }
  int GetKind() const { return kind; }
  int Width() const { return bitmap ? bitmap->w : 0; }
  int Height() const { return bitmap ? bitmap->h : 0; }

  // The held bitmap as a skin element; see NineSlice.
  NineSlice Slices() const { return {bitmap, tileSize}; }
  int TileWidthOf(int frameWidth) const { return Slices().TileWidthOf(frameWidth); }
  int TileHeightOf(int frameHeight) const { return Slices().TileHeightOf(frameHeight); }
  int EdgeWidthOf(int frameWidth) const { return Slices().EdgeWidthOf(frameWidth); }
  int EdgeHeightOf(int frameHeight) const { return Slices().EdgeHeightOf(frameHeight); }

  using HSlice = NineSlice::HSlice;
  using VSlice = NineSlice::VSlice;
  void DrawHSlice(DrawTarget target, const HSlice& slice, int dx, int dy, int total,
                  bool masked) const {
    Slices().DrawHSlice(target, slice, dx, dy, total, masked);
  }
  void DrawVSlice(DrawTarget target, const VSlice& slice, int dx, int dy, int total,
                  bool masked) const {
    Slices().DrawVSlice(target, slice, dx, dy, total, masked);
  }
  void DrawHFrame(DrawTarget target, int frame, int x, int y, int total, int frames,
                  bool masked = false) const {
    Slices().DrawHFrame(target, frame, x, y, total, frames, masked);
  }
  void DrawVFrame(DrawTarget target, int frame, int x, int y, int total, int frames,
                  bool masked = false) const {
    Slices().DrawVFrame(target, frame, x, y, total, frames, masked);
  }
  void DrawHFrameMasked(DrawTarget target, int frame, int x, int y, int total, int frames) const {
    DrawHFrame(target, frame, x, y, total, frames, true);
  }
  void DrawVFrameMasked(DrawTarget target, int frame, int x, int y, int total, int frames) const {
    DrawVFrame(target, frame, x, y, total, frames, true);
  }
  void DrawArea(DrawTarget target, int column, int row, int x, int y, int w, int h, int columns,
                int rows, bool masked = false) const {
    Slices().DrawArea(target, column, row, x, y, w, h, columns, rows, masked);
  }
  void DrawAreaMasked(DrawTarget target, int column, int row, int x, int y, int w, int h,
                      int columns, int rows) const {
    DrawArea(target, column, row, x, y, w, h, columns, rows, true);
  }

  // Marks on the held bitmap; see marks.h.
  void Box3D(int x1, int y1, int x2, int y2, Color fill, Color light, Color dark, int line = 1) {
    Call(DrawBox3D, x1, y1, x2, y2, fill, light, dark, line);
  }
  void Circle3D(int x, int y, int r, Color fill, Color light, Color dark) {
    Call(DrawCircle3D, x, y, r, fill, light, dark);
  }
  void XMark(int cx, int cy, int size, Color color) { Call(DrawXMark, cx, cy, size, color); }
  void CheckMark(int x, int y, Color color) { Call(DrawCheckMark, x, y, color); }
  void Arrow(int x, int y, Color color, int direction) { Call(DrawArrow, x, y, color, direction); }
  void DottedRect(int x1, int y1, int x2, int y2, Color color, int line = 1) {
    Call(DrawDottedRect, x1, y1, x2, y2, color, line);
  }

  // Allegro's drawing on the held bitmap, each the function of that name.
  void set_clip_rect(int x1, int y1, int x2, int y2) { Call(::set_clip_rect, x1, y1, x2, y2); }
  // 0 when the held bitmap is shown now.
  int show_video_bitmap() { return bitmap ? ::show_video_bitmap(bitmap) : -1; }
  void clear_bitmap() { Call(::clear_bitmap); }
  void clear_to_color(Color color) { Call(::clear_to_color, color); }
  void putpixel(int x, int y, Color color) { Call(::putpixel, x, y, color); }
  // -1 outside the bitmap.
  int getpixel(int x, int y) const { return bitmap ? ::getpixel(bitmap, x, y) : -1; }
  void line(int x1, int y1, int x2, int y2, Color color) { Call(::line, x1, y1, x2, y2, color); }
  void hline(int x1, int y, int x2, Color color) { Call(::hline, x1, y, x2, color); }
  void vline(int x, int y1, int y2, Color color) { Call(::vline, x, y1, y2, color); }
  void triangle(int x1, int y1, int x2, int y2, int x3, int y3, Color color) {
    Call(::triangle, x1, y1, x2, y2, x3, y3, color);
  }
  void rect(int x1, int y1, int x2, int y2, Color color) { Call(::rect, x1, y1, x2, y2, color); }
  void rectfill(int x1, int y1, int x2, int y2, Color color) {
    Call(::rectfill, x1, y1, x2, y2, color);
  }
  // Allegro draws circles of a negative radius beside the bitmap.
  void circle(int x, int y, int radius, Color color) {
    if (radius >= 0) Call(::circle, x, y, radius, color);
  }
  void circlefill(int x, int y, int radius, Color color) {
    if (radius >= 0) Call(::circlefill, x, y, radius, color);
  }
  void ellipse(int x, int y, int rx, int ry, Color color) { Call(::ellipse, x, y, rx, ry, color); }
  void ellipsefill(int x, int y, int rx, int ry, Color color) {
    Call(::ellipsefill, x, y, rx, ry, color);
  }
  void arc(int x, int y, fixed angle1, fixed angle2, int radius, Color color) {
    Call(::arc, x, y, angle1, angle2, radius, color);
  }
  void spline(const int (&points)[8], Color color) { Call(::spline, points, color); }
  void floodfill(int x, int y, Color color) { Call(::floodfill, x, y, color); }

  // Allegro's copying of the held bitmap to a target. Those that leave out the mask colour need a
  // target of the same colour depth and draw nothing on another.
  void blit(DrawTarget target, int sx, int sy, int dx, int dy, int w, int h) const {
    if (bitmap && target) CopyPixels(bitmap, {sx, sy}, target, {dx, dy, w, h});
  }
  void masked_blit(DrawTarget target, int sx, int sy, int dx, int dy, int w, int h) const {
    if (SameDepth(target)) ::masked_blit(bitmap, target, sx, sy, dx, dy, w, h);
  }
  void stretch_blit(DrawTarget target, int sx, int sy, int sw, int sh, int dx, int dy, int dw,
                    int dh) const {
    if (SameDepth(target)) ::stretch_blit(bitmap, target, sx, sy, sw, sh, dx, dy, dw, dh);
  }
  void masked_stretch_blit(DrawTarget target, int sx, int sy, int sw, int sh, int dx, int dy,
                           int dw, int dh) const {
    if (SameDepth(target)) ::masked_stretch_blit(bitmap, target, sx, sy, sw, sh, dx, dy, dw, dh);
  }

  // Allegro's drawing of the held bitmap as a sprite, masked, with its top left corner at (x, y)
  // of the target.
  void draw_sprite(DrawTarget target, int x, int y) const { Sprite(::draw_sprite, target, x, y); }
  void draw_sprite_ex(DrawTarget target, int x, int y, int mode, int flip) const {
    Sprite(::draw_sprite_ex, target, x, y, mode, flip);
  }
  void draw_sprite_v_flip(DrawTarget target, int x, int y) const {
    Sprite(::draw_sprite_v_flip, target, x, y);
  }
  void draw_sprite_h_flip(DrawTarget target, int x, int y) const {
    Sprite(::draw_sprite_h_flip, target, x, y);
  }
  void draw_sprite_vh_flip(DrawTarget target, int x, int y) const {
    Sprite(::draw_sprite_vh_flip, target, x, y);
  }
  // These mix colours, and draw the plain sprite on an 8-bit target without Allegro's color_map. A
  // 32-bit bitmap brings its opacity to a target of any depth but 8.
  void draw_trans_sprite(DrawTarget target, int x, int y) const {
    if (!CanMix(target))
      draw_sprite(target, x, y);
    else if (SameDepth(target) || BringsAlpha(target))
      ::draw_trans_sprite(target, bitmap, x, y);
  }
  void draw_lit_sprite(DrawTarget target, int x, int y, int amount) const {
    Lit(::draw_lit_sprite, ::draw_sprite, target, amount, x, y);
  }
  void draw_gouraud_sprite(DrawTarget target, int x, int y, int c1, int c2, int c3, int c4) const {
    if (!CanMix(target))
      draw_sprite(target, x, y);
    else
      Sprite(::draw_gouraud_sprite, target, x, y, c1, c2, c3, c4);
  }
  // The held bitmap is an 8-bit one, whatever the target is.
  void draw_character_ex(DrawTarget target, int x, int y, Color color, Color background) const {
    if (bitmap && target && bitmap_color_depth(bitmap) == 8)
      ::draw_character_ex(target, bitmap, x, y, color, background);
  }
  void stretch_sprite(DrawTarget target, int x, int y, int w, int h) const {
    Sprite(::stretch_sprite, target, x, y, w, h);
  }
  void rotate_sprite(DrawTarget target, int x, int y, fixed angle) const {
    Sprite(::rotate_sprite, target, x, y, angle);
  }
  void rotate_sprite_v_flip(DrawTarget target, int x, int y, fixed angle) const {
    Sprite(::rotate_sprite_v_flip, target, x, y, angle);
  }
  void rotate_scaled_sprite(DrawTarget target, int x, int y, fixed angle, fixed scale) const {
    Sprite(::rotate_scaled_sprite, target, x, y, angle, scale);
  }
  void rotate_scaled_sprite_v_flip(DrawTarget target, int x, int y, fixed angle,
                                   fixed scale) const {
    Sprite(::rotate_scaled_sprite_v_flip, target, x, y, angle, scale);
  }
  void pivot_sprite(DrawTarget target, int x, int y, int cx, int cy, fixed angle) const {
    Sprite(::pivot_sprite, target, x, y, cx, cy, angle);
  }
  void pivot_sprite_v_flip(DrawTarget target, int x, int y, int cx, int cy, fixed angle) const {
    Sprite(::pivot_sprite_v_flip, target, x, y, cx, cy, angle);
  }
  void pivot_scaled_sprite(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                           fixed scale) const {
    Sprite(::pivot_scaled_sprite, target, x, y, cx, cy, angle, scale);
  }
  void pivot_scaled_sprite_v_flip(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                                  fixed scale) const {
    Sprite(::pivot_scaled_sprite_v_flip, target, x, y, cx, cy, angle, scale);
  }
  // The same with mixed colours, like the plain sprite where they cannot be mixed.
  void rotate_sprite_trans(DrawTarget target, int x, int y, fixed angle) const {
    Sprite(CanMix(target) ? ::rotate_sprite_trans : ::rotate_sprite, target, x, y, angle);
  }
  void rotate_sprite_v_flip_trans(DrawTarget target, int x, int y, fixed angle) const {
    Sprite(CanMix(target) ? ::rotate_sprite_v_flip_trans : ::rotate_sprite_v_flip, target, x, y,
           angle);
  }
  void rotate_scaled_sprite_trans(DrawTarget target, int x, int y, fixed angle, fixed scale) const {
    Sprite(CanMix(target) ? ::rotate_scaled_sprite_trans : ::rotate_scaled_sprite, target, x, y,
           angle, scale);
  }
  void rotate_scaled_sprite_v_flip_trans(DrawTarget target, int x, int y, fixed angle,
                                         fixed scale) const {
    Sprite(CanMix(target) ? ::rotate_scaled_sprite_v_flip_trans : ::rotate_scaled_sprite_v_flip,
           target, x, y, angle, scale);
  }
  void pivot_sprite_trans(DrawTarget target, int x, int y, int cx, int cy, fixed angle) const {
    Sprite(CanMix(target) ? ::pivot_sprite_trans : ::pivot_sprite, target, x, y, cx, cy, angle);
  }
  void pivot_sprite_v_flip_trans(DrawTarget target, int x, int y, int cx, int cy,
                                 fixed angle) const {
    Sprite(CanMix(target) ? ::pivot_sprite_v_flip_trans : ::pivot_sprite_v_flip, target, x, y, cx,
           cy, angle);
  }
  void pivot_scaled_sprite_trans(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                                 fixed scale) const {
    Sprite(CanMix(target) ? ::pivot_scaled_sprite_trans : ::pivot_scaled_sprite, target, x, y, cx,
           cy, angle, scale);
  }
  void pivot_scaled_sprite_v_flip_trans(DrawTarget target, int x, int y, int cx, int cy,
                                        fixed angle, fixed scale) const {
    Sprite(CanMix(target) ? ::pivot_scaled_sprite_v_flip_trans : ::pivot_scaled_sprite_v_flip,
           target, x, y, cx, cy, angle, scale);
  }
  void rotate_sprite_lit(DrawTarget target, int x, int y, fixed angle, int amount) const {
    Lit(::rotate_sprite_lit, ::rotate_sprite, target, amount, x, y, angle);
  }
  void rotate_sprite_v_flip_lit(DrawTarget target, int x, int y, fixed angle, int amount) const {
    Lit(::rotate_sprite_v_flip_lit, ::rotate_sprite_v_flip, target, amount, x, y, angle);
  }
  void rotate_scaled_sprite_lit(DrawTarget target, int x, int y, fixed angle, fixed scale,
                                int amount) const {
    Lit(::rotate_scaled_sprite_lit, ::rotate_scaled_sprite, target, amount, x, y, angle, scale);
  }
  void rotate_scaled_sprite_v_flip_lit(DrawTarget target, int x, int y, fixed angle, fixed scale,
                                       int amount) const {
    Lit(::rotate_scaled_sprite_v_flip_lit, ::rotate_scaled_sprite_v_flip, target, amount, x, y,
        angle, scale);
  }
  void pivot_sprite_lit(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                        int amount) const {
    Lit(::pivot_sprite_lit, ::pivot_sprite, target, amount, x, y, cx, cy, angle);
  }
  void pivot_sprite_v_flip_lit(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                               int amount) const {
    Lit(::pivot_sprite_v_flip_lit, ::pivot_sprite_v_flip, target, amount, x, y, cx, cy, angle);
  }
  void pivot_scaled_sprite_lit(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                               fixed scale, int amount) const {
    Lit(::pivot_scaled_sprite_lit, ::pivot_scaled_sprite, target, amount, x, y, cx, cy, angle,
        scale);
  }
  void pivot_scaled_sprite_v_flip_lit(DrawTarget target, int x, int y, int cx, int cy, fixed angle,
                                      fixed scale, int amount) const {
    Lit(::pivot_scaled_sprite_v_flip_lit, ::pivot_scaled_sprite_v_flip, target, amount, x, y, cx,
        cy, angle, scale);
  }

 private:
  template <class Function, class... Args>
  void Call(Function function, const Args&... args) {
    if (bitmap) function(bitmap, args...);
  }
  template <class Function, class... Args>
  void Sprite(Function function, DrawTarget target, Args... args) const {
    if (SameDepth(target)) function(target, bitmap, args...);
  }
  // `amount` comes last in all of Allegro's functions that light a sprite.
  template <class Lighting, class Plain, class... Args>
  void Lit(Lighting lighting, Plain plain, DrawTarget target, int amount, Args... args) const {
    if (CanMix(target))
      Sprite(lighting, target, args..., amount);
    else
      Sprite(plain, target, args...);
  }
  bool SameDepth(BITMAP* target) const {
    return bitmap && target && bitmap_color_depth(bitmap) == bitmap_color_depth(target);
  }
  static bool CanMix(BITMAP* target) {
    return color_map || (target && bitmap_color_depth(target) > 8);
  }
  bool BringsAlpha(BITMAP* target) const {
    return bitmap && target && bitmap_color_depth(bitmap) == 32 && bitmap_color_depth(target) > 8;
  }
  void Adopt(BITMAP* made, int newKind);
  void Assign(BITMAP* source, bool copy, int sourceKind, int newKind);

 protected:
  BITMAP* bitmap = nullptr;
  int kind = kNoBitmap;
  bool owned = false;
  Size tileSize{-1, -1};
};

inline DrawTarget::DrawTarget(const SkinBitmap& holder) : bitmap_{holder.GetBitmap()} {}

// The canvas that a widget draws on: the origin is the widget's top-left corner.
using Bitmap = SkinBitmap;

// A part of a canvas, for as long as something is drawn there: what the canvas clips stays clipped.
// Empty where nothing could be drawn. Unlike a holder's own sub-bitmap it is given back even when
// the canvas is the screen.
class SubCanvas final : public SkinBitmap {
 public:
  SubCanvas() = default;
  SubCanvas(const SkinBitmap& parent, int x, int y, int w, int h);

 private:
  BitmapPtr part_;
};

// The same bitmap, or a bitmap and a sub-bitmap of it.
bool SameBitmap(const BITMAP* a, const BITMAP* b);
bool IsScreen(const BITMAP* a);

}  // namespace zel
