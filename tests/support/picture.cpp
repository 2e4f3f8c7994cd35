#include "tests/support/picture.h"

namespace zel {
namespace {

constexpr char kOther = '?';

struct Letter {
  char letter;
  int red, green, blue;
};
constexpr Letter kLetters[] = {
    {'.', 255, 0, 255},   {'r', 255, 0, 0}, {'g', 0, 255, 0},   {'b', 0, 0, 255},
    {'w', 255, 255, 255}, {'k', 0, 0, 0},   {'y', 255, 255, 0}, {'c', 0, 255, 255},
};
constexpr Letter kOtherColor = {kOther, 60, 120, 90};

int Pixel(BITMAP* bitmap, const Letter& color) {
  if (color.letter == '.') return bitmap_mask_color(bitmap);
  return makecol_depth(bitmap_color_depth(bitmap), color.red, color.green, color.blue);
}

int PixelOf(BITMAP* bitmap, char letter) {
  for (const Letter& color : kLetters)
    if (color.letter == letter) return Pixel(bitmap, color);
  return Pixel(bitmap, kOtherColor);
}

char LetterAt(BITMAP* bitmap, int x, int y) {
  const int pixel = getpixel(bitmap, x, y);
  for (const Letter& color : kLetters)
    if (Pixel(bitmap, color) == pixel) return color.letter;
  return kOther;
}

}  // namespace

BitmapPtr Paint(const Rows& rows) {
  const int w = static_cast<int>(rows.front().size());
  const int h = static_cast<int>(rows.size());
  BitmapPtr bitmap{create_bitmap(w, h)};
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) putpixel(bitmap.get(), x, y, PixelOf(bitmap.get(), rows[y].at(x)));
  return bitmap;
}

Rows Picture(BITMAP* bitmap) {
  Rows rows;
  for (int y = 0; y < bitmap->h; ++y) {
    std::string& row = rows.emplace_back();
    for (int x = 0; x < bitmap->w; ++x) row += LetterAt(bitmap, x, y);
  }
  return rows;
}

}  // namespace zel
