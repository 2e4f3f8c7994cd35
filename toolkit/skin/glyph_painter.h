// Puts the pixels of a glyph on a bitmap.
#pragma once

#include <cstdint>

#include "toolkit/core/allegro.h"
#include "toolkit/skin/color.h"

namespace zel {

struct GlyphImage;

// Paints glyphs of one text: all in one colour, over one background (-1 is what lies there).
class GlyphPainter {
 public:
  GlyphPainter(BITMAP* target, Color color, Color background, bool antialiased);

  // With the image's top-left pixel at (x, y), within the target's clip rectangle.
  void Paint(const GlyphImage& image, int x, int y) const;

 private:
  struct Span {  // what shows of a row of the image
    const std::uint8_t* coverage;
    int x, y, count;
  };
  using PaintSpan = void (GlyphPainter::*)(const Span&) const;

  PaintSpan ChooseSpan(bool antialiased) const;
  void MakeRamp();
  void PaintSolid(const Span& span) const;
  void PaintHalfCovered(const Span& span) const;
  void PaintRamp(const Span& span) const;
  void PaintThroughAllegro(const Span& span) const;
  void Blend15(const Span& span) const;
  void Blend16(const Span& span) const;
  void Blend32(const Span& span) const;

  BITMAP* target_;
  Color color_;
  Color background_;
  PaintSpan paintSpan_;
  int ramp_[256];  // by coverage; only with a background
};

}  // namespace zel
