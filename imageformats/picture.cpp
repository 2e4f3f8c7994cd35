#include "imageformats/picture.h"

#include <allegro/internal/aintern.h>

#include <cstring>

namespace zel {
namespace {

constexpr int kTrueColor = 24;
constexpr std::uint8_t kHalfOpaque = 128;
constexpr std::size_t kLargestFile = 130u << 20;  // the largest picture takes 128 MiB

// The shifts of a pixel format, copied from Allegro's variables so that loops need not read them
// again for every pixel.
struct Shifts {
  int red, green, blue;
};

template <int kGreenBits>
struct ToHighColor {
  Shifts shifts;
  int operator()(int r, int g, int b) const {
    return (r >> 3 << shifts.red) | (g >> (8 - kGreenBits) << shifts.green) |
           (b >> 3 << shifts.blue);
  }
};

struct ToTrueColor {
  Shifts shifts;
  int operator()(int r, int g, int b) const {
    return (r << shifts.red) | (g << shifts.green) | (b << shifts.blue);
  }
};

struct Bytes3 {
  std::uint8_t bytes[3];
};

void Store(std::uint16_t& pixel, int color) { pixel = static_cast<std::uint16_t>(color); }
void Store(std::uint32_t& pixel, int color) { pixel = static_cast<std::uint32_t>(color); }
void Store(Bytes3& pixel, int color) { WRITE3BYTES(pixel.bytes, color); }

template <class Pixel, class Convert>
void WriteRow(BITMAP* picture, int y, const std::uint8_t* row, Convert convert) {
  Pixel* pixel = reinterpret_cast<Pixel*>(picture->line[y]);
  const int mask = bitmap_mask_color(picture);
  const int width = picture->w;
  for (int x = 0; x < width; ++x, row += 4) {
    // As one number, and converted in any case, so that the compiler can take several at a time.
    std::uint32_t rgba;
    std::memcpy(&rgba, row, sizeof rgba);
    const int color = convert(rgba & 0xFF, rgba >> 8 & 0xFF, rgba >> 16 & 0xFF);
    Store(pixel[x], rgba >> 24 < kHalfOpaque ? mask : color);
  }
}

}  // namespace

bool IsPictureSize(long width, long height) {
  return width >= 1 && height >= 1 && width <= kLargestSide && height <= kLargestSide &&
         width * height <= kLargestArea;
}

Bytes ReadPicture(const char* fileName) { return ReadBytes(fileName, kLargestFile); }

int PictureDepth() { return _color_load_depth(kTrueColor, FALSE); }

BITMAP* NewPicture(int depth, unsigned width, unsigned height) {
  if (!IsPictureSize(width, height)) return nullptr;
  const bool isReducedLater = depth == 8 || (get_color_conversion() & COLORCONV_DITHER);
  return create_bitmap_ex(isReducedLater ? kTrueColor : depth, static_cast<int>(width),
                          static_cast<int>(height));
}

void WriteRgbaRow(BITMAP* picture, int y, const std::uint8_t* row) {
  const Shifts of15{_rgb_r_shift_15, _rgb_g_shift_15, _rgb_b_shift_15};
  const Shifts of16{_rgb_r_shift_16, _rgb_g_shift_16, _rgb_b_shift_16};
  const Shifts of24{_rgb_r_shift_24, _rgb_g_shift_24, _rgb_b_shift_24};
  const Shifts of32{_rgb_r_shift_32, _rgb_g_shift_32, _rgb_b_shift_32};
  switch (bitmap_color_depth(picture)) {
    case 15:
      return WriteRow<std::uint16_t>(picture, y, row, ToHighColor<5>{of15});
    case 16:
      return WriteRow<std::uint16_t>(picture, y, row, ToHighColor<6>{of16});
    case 32:
      return WriteRow<std::uint32_t>(picture, y, row, ToTrueColor{of32});
    default:
      return WriteRow<Bytes3>(picture, y, row, ToTrueColor{of24});
  }
}

BITMAP* FinishPicture(BITMAP* picture, int depth, RGB* palette) {
  if (palette && depth != 8) generate_332_palette(palette);
  if (bitmap_color_depth(picture) == depth) return picture;
  const int conversion = get_color_conversion();
  set_color_conversion(conversion | COLORCONV_KEEP_TRANS);
  BITMAP* finished = _fixup_loaded_bitmap(picture, palette, depth);
  set_color_conversion(conversion);
  return finished;
}

}  // namespace zel
