#include "tools/skin/pictures.h"

#include <algorithm>
#include <cstring>

#include "imageformats/load.h"
#include "toolkit/base/bytes.h"
#include "toolkit/testing/offscreen.h"

namespace zel {
namespace {

constexpr int kTrueColor = 24;

bool IsSameColor(const RGB& a, const RGB& b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

BitmapPtr LoadAsIs(const std::string& path, SkinPalette* palette) {
  set_color_depth(kTrueColor);
  set_color_conversion(COLORCONV_NONE);
  std::memset(palette->colors, 0, sizeof palette->colors);
  return BitmapPtr{LoadPicture(path.c_str(), palette->colors)};
}

class BmpText {
 public:
  void Put(std::uint32_t number, int bytes) {
    for (; bytes > 0; --bytes, number >>= 8) text_ += static_cast<char>(number & 0xFF);
  }
  void Fill(std::size_t to) { text_.resize(to); }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

// Of 8 bits, without compression.
bool SaveBmp(const std::string& path, BITMAP* picture, const SkinPalette& palette) {
  constexpr std::uint32_t kHeads = 14 + 40, kStart = kHeads + 4 * PAL_SIZE;
  const auto rowBytes = static_cast<std::uint32_t>(picture->w + 3) / 4 * 4;
  const std::uint32_t size = rowBytes * static_cast<std::uint32_t>(picture->h);
  BmpText bmp;
  bmp.Put('B' | 'M' << 8, 2);
  for (const std::uint32_t number : {kStart + size, 0u, kStart, 40u}) bmp.Put(number, 4);
  for (const int side : {picture->w, picture->h}) bmp.Put(static_cast<std::uint32_t>(side), 4);
  bmp.Put(1, 2);
  bmp.Put(8, 2);
  for (const std::uint32_t number : {0u, size, 0u, 0u, 0u, 0u}) bmp.Put(number, 4);
  for (const RGB& color : palette.colors) {
    for (const std::uint32_t part : {color.b, color.g, color.r}) bmp.Put(part << 2 | part >> 4, 1);
    bmp.Put(0, 1);
  }
  for (int y = picture->h - 1; y >= 0; --y) {
    const std::size_t start = bmp.Text().size();
    for (int x = 0; x < picture->w; ++x)
      bmp.Put(static_cast<std::uint32_t>(getpixel(picture, x, y)), 1);
    bmp.Fill(start + rowBytes);
  }
  return WriteBytes(path.c_str(), bmp.Text());
}

}  // namespace

bool SkinPalette::operator==(const SkinPalette& other) const {
  return std::equal(std::begin(colors), std::end(colors), std::begin(other.colors), IsSameColor);
}

BitmapPtr LoadForDatafile(const std::string& path, const SkinPalette& skin) {
  SkinPalette own;
  BitmapPtr picture = LoadAsIs(path, &own);
  if (!picture) return nullptr;
  const int depth = bitmap_color_depth(picture.get());
  if (depth == kTrueColor || (depth == 8 && own == skin)) return picture;
  BitmapPtr converted{create_bitmap_ex(kTrueColor, picture->w, picture->h)};
  if (!converted) return nullptr;
  set_color_conversion(COLORCONV_TOTAL);
  select_palette(own.colors);
  blit(picture.get(), converted.get(), 0, 0, 0, 0, picture->w, picture->h);
  unselect_palette();
  return converted;
}

bool LoadPalette(const std::string& path, SkinPalette* palette) {
  const BitmapPtr picture = LoadAsIs(path, palette);
  return picture && bitmap_color_depth(picture.get()) == 8;
}

bool SavePicture(const std::string& path, BITMAP* picture, const SkinPalette& palette) {
  return bitmap_color_depth(picture) == 8 ? SaveBmp(path, picture, palette)
                                          : SaveMaskedPng(path.c_str(), picture);
}

bool SavePalette(const std::string& path, const SkinPalette& palette) {
  constexpr int kSide = 16;
  const BitmapPtr table{create_bitmap_ex(8, kSide, kSide)};
  if (!table) return false;
  for (int i = 0; i < PAL_SIZE; ++i) putpixel(table.get(), i % kSide, i / kSide, i);
  return SaveBmp(path, table.get(), palette);
}

}  // namespace zel
