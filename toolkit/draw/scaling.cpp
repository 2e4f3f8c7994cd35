#include "toolkit/draw/scaling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "toolkit/draw/nine_slice.h"

namespace zel {
namespace {

constexpr int kPaletteDepth = 8;

// How much of a pixel is covered is counted in these parts of it.
constexpr std::uint32_t kUnit = 1 << 6;

// What a pixel of the target covers along one axis: `count` pixels of the source from `first` on,
// of the outer ones only parts.
struct Span {
  int first, count;
  std::uint32_t firstPart, lastPart;

  std::uint32_t Part(int i) const {
    if (i == 0) return firstPart;
    return i + 1 == count ? lastPart : kUnit;
  }
  std::uint32_t Total() const {
    if (count == 1) return firstPart;
    return firstPart + lastPart + static_cast<std::uint32_t>(count - 2) * kUnit;
  }
  bool operator==(const Span&) const = default;
};

// The spans of `to` pixels over `from` ones.
std::vector<Span> MakeSpans(int from, int to) {
  std::vector<Span> spans;
  const auto place = [=](int i) { return static_cast<std::int64_t>(i) * from * kUnit / to; };
  for (int i = 0; i < to; ++i) {
    const std::int64_t start = place(i), end = std::max(start + 1, place(i + 1));
    const int first = static_cast<int>(start / kUnit);
    const int last = static_cast<int>((end - 1) / kUnit);
    const auto beyond = static_cast<std::uint32_t>(start % kUnit);
    const auto lastPart = static_cast<std::uint32_t>(end - std::int64_t{last} * kUnit);
    if (first == last)
      spans.push_back({first, 1, 1, 0});
    else
      spans.push_back({first, last - first + 1, kUnit - beyond, lastPart});
  }
  return spans;
}

// A pixel as sums: each channel times what was covered of it, and how much was covered.
template <class Sum>
struct Pixel {
  Sum red = 0, green = 0, blue = 0, covered = 0;

  template <class Other>
  void Add(const Pixel<Other>& other, std::uint32_t part) {
    red += static_cast<Sum>(other.red) * part;
    green += static_cast<Sum>(other.green) * part;
    blue += static_cast<Sum>(other.blue) * part;
    covered += static_cast<Sum>(other.covered) * part;
  }
};

// Pixels of a depth of more than 8 bits.
template <int kDepth>
struct Format {
  static int Get(BITMAP* bitmap, int x, int y) {
    if constexpr (kDepth == 15) return _getpixel15(bitmap, x, y);
    if constexpr (kDepth == 16) return _getpixel16(bitmap, x, y);
    if constexpr (kDepth == 24) return _getpixel24(bitmap, x, y);
    return _getpixel32(bitmap, x, y);
  }
  static void Put(BITMAP* bitmap, int x, int y, int color) {
    if constexpr (kDepth == 15)
      _putpixel15(bitmap, x, y, color);
    else if constexpr (kDepth == 16)
      _putpixel16(bitmap, x, y, color);
    else if constexpr (kDepth == 24)
      _putpixel24(bitmap, x, y, color);
    else
      _putpixel32(bitmap, x, y, color);
  }
  static Pixel<std::uint32_t> Split(int color) {
    const auto channel = [color](int shift, int bits, const int* scale) {
      const int value = color >> shift & ((1 << bits) - 1);
      return static_cast<std::uint32_t>(bits == 8 ? value : scale[value]);
    };
    if constexpr (kDepth == 15)
      return {channel(_rgb_r_shift_15, 5, _rgb_scale_5), channel(_rgb_g_shift_15, 5, _rgb_scale_5),
              channel(_rgb_b_shift_15, 5, _rgb_scale_5), 1};
    if constexpr (kDepth == 16)
      return {channel(_rgb_r_shift_16, 5, _rgb_scale_5), channel(_rgb_g_shift_16, 6, _rgb_scale_6),
              channel(_rgb_b_shift_16, 5, _rgb_scale_5), 1};
    if constexpr (kDepth == 24)
      return {channel(_rgb_r_shift_24, 8, nullptr), channel(_rgb_g_shift_24, 8, nullptr),
              channel(_rgb_b_shift_24, 8, nullptr), 1};
    return {channel(_rgb_r_shift_32, 8, nullptr), channel(_rgb_g_shift_32, 8, nullptr),
            channel(_rgb_b_shift_32, 8, nullptr), 1};
  }
};

// What is done row by row: both bitmaps, and the spans of the rows and columns.
struct Scaling {
  BITMAP* from;
  Rect source;
  BITMAP* to;
  Rect area;
  std::vector<Span> columns = MakeSpans(source.w, area.w);
  std::vector<Span> rows = MakeSpans(source.h, area.h);

  // `draw` draws a row; one that covers the same as the one before is the same.
  template <class Draw>
  void Rows(const Draw& draw) const {
    for (int y = 0; y < area.h; ++y)
      if (y > 0 && rows[y] == rows[y - 1])
        ::blit(to, to, area.x, area.y + y - 1, area.x, area.y + y, area.w, 1);
      else
        draw(y);
  }
};

int Middle(const Span& span) {
  if (span.count == 2) return span.first + (span.lastPart > span.firstPart ? 1 : 0);
  return span.first + span.count / 2;
}

void Pick(const Scaling& s) {
  s.Rows([&s](int y) {
    const int row = s.source.y + Middle(s.rows[y]);
    for (int x = 0; x < s.area.w; ++x)
      _putpixel(s.to, s.area.x + x, s.area.y + y,
                _getpixel(s.from, s.source.x + Middle(s.columns[x]), row));
  });
}

template <int kDepth>
class Mixer {
 public:
  explicit Mixer(const Scaling& scaling)
      : s_{scaling}, mask_{bitmap_mask_color(s_.from)}, line_(s_.source.w) {}

  void Run() {
    s_.Rows([this](int y) {
      MixLines(s_.rows[y]);
      MixColumns(s_.area.y + y, s_.rows[y].Total());
    });
  }

 private:
  using Depth = Format<kDepth>;

  Pixel<std::uint32_t> At(int x, int y) const {
    const int color = Depth::Get(s_.from, s_.source.x + x, y);
    return color == mask_ ? Pixel<std::uint32_t>{} : Depth::Split(color);
  }
  void MixLines(const Span& rows) {
    line_.assign(line_.size(), {});
    for (int i = 0; i < rows.count; ++i) {
      const int y = s_.source.y + rows.first + i;
      const std::uint32_t part = rows.Part(i);
      for (int x = 0; x < s_.source.w; ++x) line_[x].Add(At(x, y), part);
    }
  }

  // `weight` is that of a whole pixel in the line.
  void MixColumns(int row, std::uint64_t weight) {
    for (int x = 0; x < s_.area.w; ++x) {
      const Span& columns = s_.columns[x];
      const int at = s_.area.x + x;
      if (x > 0 && columns == s_.columns[x - 1]) {
        Depth::Put(s_.to, at, row, Depth::Get(s_.to, at - 1, row));
      } else {
        Pixel<std::uint64_t> sums;
        for (int i = 0; i < columns.count; ++i) sums.Add(line_[columns.first + i], columns.Part(i));
        Depth::Put(s_.to, at, row, ColorOf(sums, weight * columns.Total()));
      }
    }
  }

  int ColorOf(const Pixel<std::uint64_t>& sums, std::uint64_t all) {
    if (2 * sums.covered < all) return mask_;
    if (sums.covered != divisor_) {
      divisor_ = sums.covered;
      reciprocal_ = (kOne + divisor_ - 1) / divisor_;
    }
    // A multiplication takes a tenth of the time of a division.
    const auto mean = [this](std::uint64_t sum) {
      return static_cast<int>((sum + divisor_ / 2) * reciprocal_ / kOne);
    };
    const int color = makecol_depth(kDepth, mean(sums.red), mean(sums.green), mean(sums.blue));
    // A mean must not make a hole.
    return color == mask_ ? makecol_depth(kDepth, 255, kUnlikeMask, 255) : color;
  }

  static constexpr std::uint64_t kOne = std::uint64_t{1} << 32;
  static constexpr int kUnlikeMask = 8;  // the least step of green in 15 bits

  const Scaling& s_;
  int mask_;
  std::uint64_t divisor_ = 1, reciprocal_ = kOne;
  std::vector<Pixel<std::uint32_t>> line_;  // of the source, as the row covers it
};

template <int kDepth>
void Mix(const Scaling& scaling) {
  Mixer<kDepth>{scaling}.Run();
}

// Where a frame's edges end along one axis, in the picture and where it is scaled, and the tile
// that keeps the scaled edges whole: both are drawn as thick as half of what the tile leaves.
struct Cuts {
  std::array<int, 4> from, to;
  int tile;
};

Cuts CutsOf(int frame, int edge, int tile, double factor) {
  const auto scaled = [factor](int pixels) {
    return static_cast<int>(std::lround(pixels * factor));
  };
  const int length = scaled(frame), last = frame - edge - tile;
  const int start = std::min(scaled(edge), length);
  // What there is none of in the picture takes no room.
  const int end = tile > 0 ? std::max(start, length - scaled(last)) : start;
  const int thickness = std::min(std::max(start, length - end), length / 2);
  return {{0, edge, edge + tile, frame}, {0, start, end, length}, length - 2 * thickness};
}

}  // namespace

void Scale(BITMAP* from, const Rect& source, BITMAP* to, const Rect& area) {
  if (source.w < 1 || source.h < 1 || area.w < 1 || area.h < 1) return;
  if (source.w == area.w && source.h == area.h)
    return ::blit(from, to, source.x, source.y, area.x, area.y, area.w, area.h);
  const Scaling scaling{from, source, to, area};
  switch (bitmap_color_depth(from)) {
    case kPaletteDepth:
      return Pick(scaling);
    case 15:
      return Mix<15>(scaling);
    case 16:
      return Mix<16>(scaling);
    case 24:
      return Mix<24>(scaling);
    default:
      return Mix<32>(scaling);
  }
}

BitmapPtr Scaled(BITMAP* picture, Size size) {
  BitmapPtr made{create_bitmap_ex(bitmap_color_depth(picture), size.w, size.h)};
  if (made) Scale(picture, {0, 0, picture->w, picture->h}, made.get(), {0, 0, size.w, size.h});
  return made;
}

BitmapPtr ScaledFrames(BITMAP* picture, Size grid, Size* tile, double factor) {
  const Size frame{picture->w / grid.w, picture->h / grid.h};
  const NineSlice slices{picture, *tile};
  const Cuts x = CutsOf(frame.w, slices.EdgeWidthOf(frame.w), slices.TileWidthOf(frame.w), factor);
  const Cuts y =
      CutsOf(frame.h, slices.EdgeHeightOf(frame.h), slices.TileHeightOf(frame.h), factor);
  *tile = {x.tile, y.tile};
  const Size made{x.to.back(), y.to.back()};
  BitmapPtr result{create_bitmap_ex(bitmap_color_depth(picture), made.w * grid.w, made.h * grid.h)};
  if (!result) return nullptr;
  for (int row = 0; row < grid.h; ++row)
    for (int column = 0; column < grid.w; ++column)
      for (std::size_t i = 0; i + 1 < y.from.size(); ++i)
        for (std::size_t j = 0; j + 1 < x.from.size(); ++j)
          Scale(picture,
                {column * frame.w + x.from[j], row * frame.h + y.from[i], x.from[j + 1] - x.from[j],
                 y.from[i + 1] - y.from[i]},
                result.get(),
                {column * made.w + x.to[j], row * made.h + y.to[i], x.to[j + 1] - x.to[j],
                 y.to[i + 1] - y.to[i]});
  return result;
}

}  // namespace zel
