#include "toolkit/skin/glyph_painter.h"

#include <algorithm>

#include "toolkit/skin/engine_font.h"

namespace zel {
namespace {

constexpr int kFull = 255;
constexpr int kHalf = 128;

// The arithmetic of Allegro's trans blenders (its manual, set_trans_blender) for a row of pixels.
// With it no coverage leaves a pixel as it is and full coverage gives the colour, so there is
// nothing to branch on.
template <std::uint32_t kSpread>
void BlendHighRow(std::uint16_t* row, const std::uint8_t* coverage, int count,
                  std::uint32_t color) {
  const std::uint32_t x = ((color & 0xFFFF) | (color << 16)) & kSpread;
  for (int i = 0; i < count; ++i) {
    const std::uint32_t y = (row[i] | (static_cast<std::uint32_t>(row[i]) << 16)) & kSpread;
    const std::uint32_t n = (coverage[i] + 1u) / 8;
    const std::uint32_t mixed = ((x - y) * n / 32 + y) & kSpread;
    row[i] = static_cast<std::uint16_t>(mixed | (mixed >> 16));
  }
}

// Likewise, but blending takes away what is above the colour components, which pixels without or
// with full coverage keep.
void BlendTrueRow(std::uint32_t* row, const std::uint8_t* coverage, int count,
                  std::uint32_t color) {
  const std::uint32_t redBlue = color & 0xFF00FF, green = color & 0xFF00;
  for (int i = 0; i < count; ++i) {
    const std::uint32_t below = row[i];
    const std::uint32_t n = coverage[i] + (coverage[i] != 0 ? 1u : 0u);
    const std::uint32_t mixedRedBlue = (redBlue - (below & 0xFF00FF)) * n / 256 + below;
    const std::uint32_t mixedGreen = (green - (below & 0xFF00)) * n / 256 + (below & 0xFF00);
    const std::uint32_t mixed = (mixedRedBlue & 0xFF00FF) | (mixedGreen & 0xFF00);
    const std::uint32_t ends = coverage[i] == 0 ? below : color;
    row[i] = coverage[i] == 0 || coverage[i] == kFull ? ends : mixed;
  }
}

// The entry of a ramp between two components.
int RampStep(int color, int background) { return color == background ? 0 : color - background + 1; }
int RampEntry(int color, int background, int k) {
  return (background * 256 + k * RampStep(color, background)) >> 8;
}

}  // namespace

GlyphPainter::GlyphPainter(BITMAP* target, Color color, Color background, bool antialiased)
    : target_{target}, color_{color}, background_{background}, paintSpan_{ChooseSpan(antialiased)} {
  if (paintSpan_ == &GlyphPainter::PaintRamp) MakeRamp();
}

GlyphPainter::PaintSpan GlyphPainter::ChooseSpan(bool antialiased) const {
  if (!antialiased) return &GlyphPainter::PaintSolid;
  if (background_.IsSet()) return &GlyphPainter::PaintRamp;
  const int depth = bitmap_color_depth(target_);
  if (depth == 8) return &GlyphPainter::PaintHalfCovered;
  if (!is_memory_bitmap(target_) || depth == 24) return &GlyphPainter::PaintThroughAllegro;
  if (depth == 15) return &GlyphPainter::Blend15;
  return depth == 16 ? &GlyphPainter::Blend16 : &GlyphPainter::Blend32;
}

void GlyphPainter::MakeRamp() {
  for (int k = 1; k < 256; ++k)
    ramp_[k] = makecol(RampEntry(color_.r(), background_.r(), k),
                       RampEntry(color_.g(), background_.g(), k),
                       RampEntry(color_.b(), background_.b(), k));
}

void GlyphPainter::Paint(const GlyphImage& image, int x, int y) const {
  const int left = std::max(x, target_->cl);
  const int right = std::min(x + image.width, target_->cr);
  const int top = std::max(y, target_->ct);
  const int bottom = std::min(y + image.height, target_->cb);
  if (left >= right) return;
  for (int row = top; row < bottom; ++row) {
    const std::uint8_t* coverage = image.pixels.get() + (row - y) * image.width + (left - x);
    (this->*paintSpan_)({coverage, left, row, right - left});
  }
}

void GlyphPainter::PaintSolid(const Span& span) const {
  for (int i = 0; i < span.count; ++i)
    if (span.coverage[i]) putpixel(target_, span.x + i, span.y, color_);
}

void GlyphPainter::PaintHalfCovered(const Span& span) const {
  for (int i = 0; i < span.count; ++i)
    if (span.coverage[i] >= kHalf) putpixel(target_, span.x + i, span.y, color_);
}

void GlyphPainter::PaintRamp(const Span& span) const {
  for (int i = 0; i < span.count; ++i)
    if (const int k = span.coverage[i]) putpixel(target_, span.x + i, span.y, ramp_[k]);
}

void GlyphPainter::PaintThroughAllegro(const Span& span) const {
  for (int i = 0; i < span.count; ++i) {
    const int k = span.coverage[i];
    if (k == 0) continue;
    if (k < kFull) {
      set_trans_blender(0, 0, 0, k);
      drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
    }
    putpixel(target_, span.x + i, span.y, color_);
    if (k < kFull) solid_mode();
  }
}

void GlyphPainter::Blend15(const Span& span) const {
  BlendHighRow<0x3E07C1F>(reinterpret_cast<std::uint16_t*>(target_->line[span.y]) + span.x,
                          span.coverage, span.count, static_cast<std::uint32_t>(int{color_}));
}

void GlyphPainter::Blend16(const Span& span) const {
  BlendHighRow<0x7E0F81F>(reinterpret_cast<std::uint16_t*>(target_->line[span.y]) + span.x,
                          span.coverage, span.count, static_cast<std::uint32_t>(int{color_}));
}

void GlyphPainter::Blend32(const Span& span) const {
  BlendTrueRow(reinterpret_cast<std::uint32_t*>(target_->line[span.y]) + span.x, span.coverage,
               span.count, static_cast<std::uint32_t>(int{color_}));
}

}  // namespace zel
