#include "imageformats/library_formats.h"
#include "imageformats/memory_file.h"

namespace zel {
namespace {

constexpr int kPlanesAt = 65;
constexpr int kDataAt = 128;
constexpr int kPaletteMark = 12;
constexpr std::size_t kPaletteBytes = 768;

// Allegro drops what a run reaches past its row; so does this.
bool HoldsRows(ByteReader& packed, int rowBytes, int rows) {
  constexpr int kRun = 0xC0;
  for (; rows > 0 && packed.IsSound(); --rows) {
    for (int x = 0; x < rowBytes;) {
      const int byte = packed.Byte();
      const bool isRun = (byte & kRun) == kRun;
      if (isRun) packed.Skip(1);
      x += isRun ? byte & ~kRun : 1;
    }
  }
  return packed.IsSound();
}

bool HoldsPalette(ByteReader& rest) {
  while (rest.IsSound() && rest.Byte() != kPaletteMark) {
  }
  return rest.Left() >= kPaletteBytes;
}

bool IsSound(const Bytes& file) {
  ByteReader reader{file};
  reader.Skip(4);
  const int left = reader.Little16(), top = reader.Little16();
  const int width = reader.Little16() + 1 - left, height = reader.Little16() + 1 - top;
  reader.Skip(kPlanesAt - 12);
  const int planes = reader.Byte();
  const int bytesPerLine = reader.Little16();
  reader.Skip(kDataAt - kPlanesAt - 3);
  return (planes == 1 || planes == 3) && IsPictureSize(width, height) && bytesPerLine >= width &&
         HoldsRows(reader, bytesPerLine * planes, height) && (planes == 3 || HoldsPalette(reader));
}

}  // namespace

BITMAP* LoadPcx(const Bytes& file, RGB* palette) {
  return IsSound(file) ? LoadFromMemory(file, load_pcx_pf, file[kPlanesAt] == 1, palette) : nullptr;
}

}  // namespace zel
