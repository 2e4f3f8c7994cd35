#include "imageformats/load.h"

#include <algorithm>
#include <cstdint>

#include "imageformats/library_formats.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

struct Format {
  const char* extension;
  BITMAP* (*load)(const Bytes& file, RGB* palette);
};
constexpr Format kLibraryFormats[] = {
    {"bmp", LoadBmp}, {"pcx", LoadPcx}, {"lbm", LoadLbm}, {"tga", LoadTga}};

// The fourth byte of a pixel is no colour; left in, it keeps magenta from being the mask colour.
BITMAP* DropAlpha(BITMAP* picture) {
  if (!picture || bitmap_color_depth(picture) != 32) return picture;
  constexpr std::uint32_t kColor = 0xFFFFFF;
  for (int y = 0; y < picture->h; ++y) {
    auto* row = reinterpret_cast<std::uint32_t*>(picture->line[y]);
    std::for_each(row, row + picture->w, [](std::uint32_t& pixel) { pixel &= kColor; });
  }
  return picture;
}

bool IsSameColor(const RGB& a, const RGB& b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

// Gives the colours of a picture's own palette the nearest places in the current one. As in true
// colours, magenta is masked, and the first entry is a colour like any other. A picture that was
// made for the current palette stays as it is, with its first entry masked.
void TakeCurrentPalette(BITMAP* picture, const RGB* own) {
  PALETTE current;
  get_palette(current);
  if (std::equal(own, own + PAL_SIZE, current, IsSameColor)) return;
  std::uint8_t places[PAL_SIZE];
  std::transform(own, own + PAL_SIZE, places, [&current](const RGB& color) {
    const bool isMagenta = color.r == 63 && color.g == 0 && color.b == 63;
    const int place = isMagenta ? MASK_COLOR_8 : bestfit_color(current, color.r, color.g, color.b);
    return static_cast<std::uint8_t>(place);
  });
  for (int y = 0; y < picture->h; ++y) {
    std::uint8_t* row = picture->line[y];
    std::transform(row, row + picture->w, row, [&places](int pixel) { return places[pixel]; });
  }
}

// Allegro leaves the pixels of a paletted file as they are there.
BITMAP* LoadForCurrentPalette(const Format& format, const Bytes& file) {
  const int conversion = get_color_conversion();
  set_color_conversion(COLORCONV_NONE);
  PALETTE own;
  BITMAP* picture = DropAlpha(format.load(file, own));
  set_color_conversion(conversion);
  if (!picture) return nullptr;
  if (bitmap_color_depth(picture) == 8) TakeCurrentPalette(picture, own);
  return FinishPicture(picture, 8, nullptr);
}

BITMAP* LoadLibraryFormat(const Format& format, const Bytes& file, RGB* palette) {
  if (get_color_conversion() == COLORCONV_NONE) return format.load(file, palette);
  if (get_color_depth() == 8 && !palette) return LoadForCurrentPalette(format, file);
  return DropAlpha(format.load(file, palette));
}

}  // namespace

BITMAP* LoadPicture(const char* fileName, RGB* palette) {
  const char* extension = get_extension(fileName);
  for (const Format& format : kLibraryFormats)
    if (ustricmp(extension, Ascii(format.extension)) == 0)
      return LoadLibraryFormat(format, ReadPicture(fileName), palette);
  return load_bitmap(fileName, palette);
}

}  // namespace zel
