// Puts the pixels of a glyph on a bitmap.
#pragma once

#include <cstdint>

#include "toolkit/base/allegro.h"
#include "toolkit/draw/color.h"

namespace zel {

struct GlyphImage;

// Paints glyphs of one text: all in one colour, over one background (-1 is what lies there).
class GlyphPainter {
 public:
  // Antialiased glyphs on an 8-bit target need a background: a palette cannot be blended with.
  GlyphPainter(BITMAP* target, Color color, Color background, bool antialiased);

  // With the image's top-left pixel at (x, y), within the target's clip rectangle.
  void Paint(const GlyphImage& image, int x, int y) const;

 private:
  struct Patch {  // what shows of an image
    const std::uint8_t* coverage;
    int stride;      // from one row of coverage to the next
    int x, y, w, h;  // on the target
    int room;        // pixels of a row, w or more, that show; those beyond w are not covered
  };
  using PaintPatch = void (GlyphPainter::*)(const Patch&) const;

  PaintPatch ChoosePaint(bool antialiased) const;
  void MakeRamp();
  template <class Put>
  void ForEachCovered(const Patch& patch, const Put& put) const;
  void PaintSolid(const Patch& patch) const;
  void PaintRamp(const Patch& patch) const;
  void PaintThroughAllegro(const Patch& patch) const;
  template <class Blender>
  void Blend(const Patch& patch) const;

  BITMAP* target_;
  Color color_;
  Color background_;
  PaintPatch paint_;
  int ramp_[256];  // by coverage; only with a background
};

}  // namespace zel
