#include "imageformats/load.h"

#include <algorithm>
#include <cstdint>

#include "imageformats/library_formats.h"
#include "toolkit/core/text.h"

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

}  // namespace

BITMAP* LoadPicture(const char* fileName, RGB* palette) {
  const char* extension = get_extension(fileName);
  for (const Format& format : kLibraryFormats)
    if (ustricmp(extension, Ascii(format.extension)) == 0) {
      BITMAP* picture = format.load(ReadPicture(fileName), palette);
      return get_color_conversion() == COLORCONV_NONE ? picture : DropAlpha(picture);
    }
  return load_bitmap(fileName, palette);
}

}  // namespace zel
