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
constexpr std::uint32_t kUnit = 1 << 8;

// What a pixel of the target covers along one axis: `count` pixels of the source from `first` on,
// of the outer ones only parts.
struct Span {
  int first, count;
  std::uint32_t firstPart, lastPart;

  std::uint32_t Part(int i) const {
    if (i == 0) return firstPart;
    return i + 1 == count ? lastPart : kUnit;
  }
  bool operator==(const Span&) const = default;
};

// The spans of `to` pixels over `from` ones.
std::vector<Span> MakeSpans(int from, int to) {
  std::vector<Span> spans;
  spans.reserve(static_cast<std::size_t>(to));
  const auto place = [=](int i) { return static_cast<std::int64_t>(i) * from * kUnit / to; };
  for (int i = 0; i < to; ++i) {
    const std::int64_t start = place(i), end = std::max(start + 1, place(i + 1));
    const int first = static_cast<int>(start / kUnit);
    const int last = static_cast<int>((end - 1) / kUnit);
    const auto beyond = static_cast<std::uint32_t>(start % kUnit);
    const auto lastPart = static_cast<std::uint32_t>(end - std::int64_t{last} * kUnit);
    if (first == last)
      spans.push_back({first, 1, kUnit, 0});
    else
      spans.push_back({first, last - first + 1, kUnit - beyond, lastPart});
  }
  return spans;
}

// A pixel as sums, each channel times what was covered of it.
struct Sums {
  std::uint64_t red = 0, green = 0, blue = 0, covered = 0, all = 0;

  void Add(const Sums& other, std::uint32_t part) {
    red += other.red * part;
    green += other.green * part;
    blue += other.blue * part;
    covered += other.covered * part;
    all += other.all * part;
  }
};

class Scaler {
 public:
  Scaler(BITMAP* from, const Rect& source, BITMAP* to, const Rect& area)
      : from_{from},
        source_{source},
        to_{to},
        area_{area},
        depth_{bitmap_color_depth(from)},
        mask_{bitmap_mask_color(from)},
        columns_{MakeSpans(source.w, area.w)},
        rows_{MakeSpans(source.h, area.h)} {}

  void Run() {
    for (int y = 0; y < area_.h; ++y) {
      if (y > 0 && rows_[y] == rows_[y - 1])
        ::blit(to_, to_, area_.x, area_.y + y - 1, area_.x, area_.y + y, area_.w, 1);
      else if (depth_ == kPaletteDepth)
        PickRow(y);
      else
        MixRow(y);
    }
  }

 private:
  void PickRow(int y) {
    const int row = source_.y + Middle(rows_[y]);
    for (int x = 0; x < area_.w; ++x)
      _putpixel(to_, area_.x + x, area_.y + y,
                _getpixel(from_, source_.x + Middle(columns_[x]), row));
  }
  static int Middle(const Span& span) {
    if (span.count == 2) return span.first + (span.lastPart > span.firstPart ? 1 : 0);
    return span.first + span.count / 2;
  }

  void MixRow(int y) {
    const Span& rows = rows_[y];
    if (rows.count == 1)
      return MixColumns(y, [&, row = source_.y + rows.first](int x) { return PixelAt(x, row); });
    MixColumns(y, [&](int x) {
      Sums sums;
      for (int i = 0; i < rows.count; ++i)
        sums.Add(PixelAt(x, source_.y + rows.first + i), rows.Part(i));
      return sums;
    });
  }

  // `column` answers what the pixels of a column of the source are together.
  template <class Column>
  void MixColumns(int y, const Column& column) {
    const Span* before = nullptr;
    int color = 0;
    for (int x = 0; x < area_.w; ++x) {
      const Span& columns = columns_[x];
      if (!before || !(columns == *before)) {
        Sums sums;
        for (int i = 0; i < columns.count; ++i)
          sums.Add(column(source_.x + columns.first + i), columns.Part(i));
        color = ColorOf(sums);
        before = &columns;
      }
      Put(area_.x + x, area_.y + y, color);
    }
  }

  Sums PixelAt(int x, int y) const {
    const int color = Get(x, y);
    if (color == mask_) return {0, 0, 0, 0, 1};
    const auto channel = [](int value) { return static_cast<std::uint64_t>(value); };
    return {channel(getr_depth(depth_, color)), channel(getg_depth(depth_, color)),
            channel(getb_depth(depth_, color)), 1, 1};
  }

  int ColorOf(const Sums& sums) const {
    if (2 * sums.covered < sums.all || sums.covered == 0) return mask_;
    const auto mean = [&sums](std::uint64_t sum) {
      return static_cast<int>((sum + sums.covered / 2) / sums.covered);
    };
    const int color = makecol_depth(depth_, mean(sums.red), mean(sums.green), mean(sums.blue));
    // A mean must not make a hole; what is one off in green is no mask colour.
    return color == mask_ ? makecol_depth(depth_, 255, kUnlikeMask, 255) : color;
  }

  int Get(int x, int y) const {
    switch (depth_) {
      case 15:
        return _getpixel15(from_, x, y);
      case 16:
        return _getpixel16(from_, x, y);
      case 24:
        return _getpixel24(from_, x, y);
      default:
        return _getpixel32(from_, x, y);
    }
  }
  void Put(int x, int y, int color) {
    switch (depth_) {
      case 15:
        return _putpixel15(to_, x, y, color);
      case 16:
        return _putpixel16(to_, x, y, color);
      case 24:
        return _putpixel24(to_, x, y, color);
      default:
        return _putpixel32(to_, x, y, color);
    }
  }

  static constexpr int kUnlikeMask = 8;  // the least step of green in 15 bits

  BITMAP* from_;
  Rect source_;
  BITMAP* to_;
  Rect area_;
  int depth_, mask_;
  std::vector<Span> columns_, rows_;
};

// Where a frame's edges end along one axis, in the picture and where it is scaled.
struct Cuts {
  std::array<int, 4> from, to;
};

// `wanted` is the tile as it was asked for, negative for a third of the frame.
Cuts CutsOf(int frame, int edge, int tile, int wanted, double factor) {
  const auto scaled = [factor](int pixels) {
    return static_cast<int>(std::lround(pixels * factor));
  };
  const int length = scaled(frame);
  const int middle = wanted < 0 ? length / 3 : std::min(length, scaled(tile));
  const int start = edge > 0 ? (length - middle) / 2 : 0;
  const int end = edge + tile < frame ? start + (tile > 0 ? middle : 0) : length;
  // What there is none of in the picture takes no room.
  return {{0, edge, edge + tile, frame}, {0, start, end, length}};
}

}  // namespace

void Scale(BITMAP* from, const Rect& source, BITMAP* to, const Rect& area) {
  if (source.w > 0 && source.h > 0 && area.w > 0 && area.h > 0)
    Scaler{from, source, to, area}.Run();
}

BitmapPtr Scaled(BITMAP* picture, Size size) {
  BitmapPtr made{create_bitmap_ex(bitmap_color_depth(picture), size.w, size.h)};
  if (made) Scale(picture, {0, 0, picture->w, picture->h}, made.get(), {0, 0, size.w, size.h});
  return made;
}

BitmapPtr ScaledFrames(BITMAP* picture, Size grid, Size tile, double factor) {
  const Size frame{picture->w / grid.w, picture->h / grid.h};
  const NineSlice slices{picture, tile};
  const Cuts x =
      CutsOf(frame.w, slices.EdgeWidthOf(frame.w), slices.TileWidthOf(frame.w), tile.w, factor);
  const Cuts y =
      CutsOf(frame.h, slices.EdgeHeightOf(frame.h), slices.TileHeightOf(frame.h), tile.h, factor);
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
