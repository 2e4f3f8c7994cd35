#include "toolkit/draw/glyph_painter.h"

#include <algorithm>
#include <cstring>

#include "toolkit/draw/engine_font.h"

namespace zel {
namespace {

constexpr int kFull = 255;

// Pixels are blended in blocks, in vectors of the compiler: all of a block at once where the
// processor can, else one by one. The arithmetic is that of Allegro's trans blenders (its manual,
// set_trans_blender), which count in 1/32 or 1/256.
constexpr int kBlock = GlyphImage::kBlock;
using Coverages [[gnu::vector_size(kBlock)]] = std::uint8_t;
using Lanes [[gnu::vector_size(kBlock * 2)]] = std::uint16_t;      // one of each pixel
using LanePairs [[gnu::vector_size(kBlock * 4)]] = std::uint16_t;  // two of each pixel
using WordLanes [[gnu::vector_size(kBlock * 4)]] = std::uint32_t;

// 15 and 16 bits: blue in the lowest five, green above, red in the five above that. Green is
// blended where it is; its products fill the lane.
template <int kGreenBits>
class HighBlender {
 public:
  using Pixel = std::uint16_t;

  explicit HighBlender(int color)
      : color_{static_cast<Pixel>(color) + Lanes{}},
        red_{color_ >> kRedShift & kBlue},
        green_{color_ & kGreen},
        blue_{color_ & kBlue} {}

  void Blend(Pixel* pixels, const std::uint8_t* coverage) const {
    Coverages narrow;
    Lanes below;
    std::memcpy(&narrow, coverage, sizeof narrow);
    std::memcpy(&below, pixels, sizeof below);
    const Lanes covered = __builtin_convertvector(narrow, Lanes);
    const Lanes n = (covered + 1) >> 3, rest = 32 - n;
    const Lanes red = (red_ * n + (below >> kRedShift & kBlue) * rest) >> 5;
    const Lanes green = (green_ * n + (below & kGreen) * rest) >> 5 & kGreen;
    const Lanes blue = (blue_ * n + (below & kBlue) * rest) >> 5;
    Lanes mixed = red << kRedShift | green | blue;
    if constexpr (kGreenBits == 5)  // blending leaves out the bit above red
      mixed |= (covered == 0 ? below : covered == kFull ? color_ : Lanes{}) & kUnused;
    std::memcpy(pixels, &mixed, sizeof mixed);
  }

 private:
  static constexpr int kRedShift = 5 + kGreenBits;
  static constexpr Pixel kBlue = 31, kGreen = ((1 << kGreenBits) - 1) << 5, kUnused = 0x8000;

  Lanes color_, red_, green_, blue_;  // the colour in every lane
};

class TrueBlender {
 public:
  using Pixel = std::uint32_t;

  explicit TrueBlender(int color) : color_(static_cast<Pixel>(color)) {}

  void Blend(Pixel* pixels, const std::uint8_t* coverage) const {
    Coverages narrow;
    WordLanes below;
    std::memcpy(&narrow, coverage, sizeof narrow);
    std::memcpy(&below, pixels, sizeof below);
    const WordLanes covered = __builtin_convertvector(narrow, WordLanes);
    const WordLanes wide = covered + (covered != 0 ? WordLanes{} + 1 : WordLanes{});
    const LanePairs n = LanePairs(wide | wide << 16), rest = 256 - n;
    const WordLanes color = color_ + WordLanes{};
    // In Allegro's blender the green below carries over into red.
    const LanePairs redBlue = LanePairs(color & kRedBlue) * n + LanePairs(below & kRedBlue) * rest +
                              LanePairs((below & kGreen) << 8);
    const LanePairs green =
        LanePairs((color & kGreen) >> 8) * n + LanePairs((below & kGreen) >> 8) * rest;
    WordLanes mixed = (WordLanes(redBlue) >> 8 & kRedBlue) | (WordLanes(green) & kGreen);
    mixed = covered == 0 ? below : covered == kFull ? color : mixed;
    std::memcpy(pixels, &mixed, sizeof mixed);
  }

 private:
  static constexpr Pixel kRedBlue = 0xFF00FF, kGreen = 0xFF00;

  Pixel color_;
};

// The entry of a ramp between two components.
int RampStep(int color, int background) { return color == background ? 0 : color - background + 1; }
int RampEntry(int color, int background, int k) {
  return (background * 256 + k * RampStep(color, background)) >> 8;
}

}  // namespace

GlyphPainter::GlyphPainter(BITMAP* target, Color color, Color background, bool antialiased)
    : target_{target}, color_{color}, background_{background}, paint_{ChoosePaint(antialiased)} {
  if (paint_ == &GlyphPainter::PaintRamp) MakeRamp();
}

GlyphPainter::PaintPatch GlyphPainter::ChoosePaint(bool antialiased) const {
  if (!antialiased) return &GlyphPainter::PaintSolid;
  if (background_.IsSet()) return &GlyphPainter::PaintRamp;
  const int depth = bitmap_color_depth(target_);
  if (!is_memory_bitmap(target_) || depth == 24) return &GlyphPainter::PaintThroughAllegro;
  if (depth == 15) return &GlyphPainter::Blend<HighBlender<5>>;
  if (depth == 16) return &GlyphPainter::Blend<HighBlender<6>>;
  return &GlyphPainter::Blend<TrueBlender>;
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
  if (left >= right || top >= bottom) return;
  const int room = std::min(x + image.stride, target_->cr) - left;
  const std::uint8_t* coverage = image.pixels.get() + (top - y) * image.stride + (left - x);
  (this->*paint_)({coverage, image.stride, left, top, right - left, bottom - top, room});
}

template <class Put>
void GlyphPainter::ForEachCovered(const Patch& patch, const Put& put) const {
  for (int row = 0; row < patch.h; ++row)
    for (int column = 0; column < patch.w; ++column)
      if (const int k = patch.coverage[row * patch.stride + column])
        put(patch.x + column, patch.y + row, k);
}

void GlyphPainter::PaintSolid(const Patch& patch) const {
  ForEachCovered(patch, [this](int x, int y, int) { putpixel(target_, x, y, color_); });
}

void GlyphPainter::PaintRamp(const Patch& patch) const {
  ForEachCovered(patch, [this](int x, int y, int k) { putpixel(target_, x, y, ramp_[k]); });
}

void GlyphPainter::PaintThroughAllegro(const Patch& patch) const {
  ForEachCovered(patch, [this](int x, int y, int k) {
    if (k < kFull) {
      set_trans_blender(0, 0, 0, k);
      drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
    }
    putpixel(target_, x, y, color_);
    solid_mode();
  });
}

template <class Blender>
void GlyphPainter::Blend(const Patch& patch) const {
  using Pixel = typename Blender::Pixel;
  const Blender blender{color_};
  const Patch p = patch;  // so that the compiler need not fear that pixels lie in it
  unsigned char* const* lines = target_->line + p.y;
  const int whole = p.room / kBlock * kBlock;
  const std::uint8_t* coverage = p.coverage;
  for (int row = 0; row < p.h; ++row, coverage += p.stride) {
    Pixel* const pixels = reinterpret_cast<Pixel*>(lines[row]) + p.x;
    for (int i = 0; i < whole; i += kBlock) blender.Blend(pixels + i, coverage + i);
    if (whole >= p.w) continue;
    Pixel lastPixels[kBlock] = {};
    std::uint8_t lastCoverage[kBlock] = {};
    std::copy(pixels + whole, pixels + p.w, lastPixels);
    std::copy(coverage + whole, coverage + p.w, lastCoverage);
    blender.Blend(lastPixels, lastCoverage);
    std::copy(lastPixels, lastPixels + (p.w - whole), pixels + whole);
  }
}

}  // namespace zel
