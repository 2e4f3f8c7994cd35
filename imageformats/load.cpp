#include "imageformats/load.h"

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

}  // namespace

BITMAP* LoadPicture(const char* fileName, RGB* palette) {
  const char* extension = get_extension(fileName);
  for (const Format& format : kLibraryFormats)
    if (ustricmp(extension, Ascii(format.extension)) == 0)
      return format.load(ReadPicture(fileName), palette);
  return load_bitmap(fileName, palette);
}

}  // namespace zel
