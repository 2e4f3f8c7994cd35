#include <algorithm>

#include "imageformats/library_formats.h"
#include "imageformats/memory_file.h"

namespace zel {
namespace {

constexpr int kTypeAt = 2;
constexpr int kIsPacked = 8;  // in the type

enum Type { kPaletted = 1, kTrueColor = 2, kGrey = 3 };

struct Header {
  std::size_t bytes;  // up to the pixels
  int type;
  bool isPacked;
  std::size_t pixels;
  std::size_t pixelBytes;
};

bool IsKnown(int type, int bits) {
  if (type == kTrueColor) return bits == 15 || bits == 16 || bits == 24 || bits == 32;
  return (type == kPaletted || type == kGrey) && bits == 8;
}

// Nothing when Allegro does not know such pictures.
bool ReadHeader(ByteReader& reader, Header& header) {
  const std::size_t all = reader.Left();
  const int idBytes = reader.Byte(), paletteType = reader.Byte(), type = reader.Byte();
  reader.Skip(2);
  const int colors = reader.Little16(), colorBits = reader.Byte();
  reader.Skip(4);
  const int width = reader.Little16(), height = reader.Little16(), bits = reader.Byte();
  reader.Skip(1 + static_cast<std::size_t>(idBytes));
  header.type = type & ~kIsPacked;
  header.isPacked = (type & kIsPacked) != 0;
  if (!IsKnown(header.type, bits) || !IsPictureSize(width, height)) return false;
  const bool isPaletted = header.type == kPaletted;
  if (paletteType != (isPaletted ? 1 : 0)) return false;
  if (isPaletted) {
    const bool isKnown = colorBits == 16 || colorBits == 24 || colorBits == 32;
    if (!isKnown || colors > PAL_SIZE) return false;
    reader.Skip(static_cast<std::size_t>(colors * colorBits / 8));
  }
  header.bytes = all - reader.Left();
  header.pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  header.pixelBytes = static_cast<std::size_t>((bits + 7) / 8);
  return reader.IsSound();
}

// Appends the pixels of all packets; they may run from row to row, which Allegro does not know.
bool Unpack(ByteReader& packed, const Header& header, Bytes& pixels) {
  constexpr int kRun = 0x80;
  const std::size_t end = pixels.size() + header.pixels * header.pixelBytes;
  pixels.reserve(end);  // growing step by step would take up to three times as much
  while (pixels.size() < end) {
    const int packet = packed.Byte();
    const auto count = static_cast<std::size_t>(packet & ~kRun) + 1;
    const bool isRun = (packet & kRun) != 0;
    const auto source = packed.Take(header.pixelBytes * (isRun ? 1 : count));
    if (!packed.IsSound() || count * header.pixelBytes > end - pixels.size()) return false;
    for (std::size_t i = 0; i < (isRun ? count : 1); ++i)
      pixels.insert(pixels.end(), source.begin(), source.end());
  }
  return true;
}

}  // namespace

BITMAP* LoadTga(const Bytes& file, RGB* palette) {
  ByteReader reader{file};
  Header header{};
  if (!ReadHeader(reader, header)) return nullptr;
  Bytes plain;
  if (header.isPacked) {
    plain.assign(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(header.bytes));
    plain[kTypeAt] = static_cast<std::uint8_t>(header.type);
    if (!Unpack(reader, header, plain)) return nullptr;
  } else if (reader.Left() < header.pixels * header.pixelBytes) {
    return nullptr;
  }
  return LoadFromMemory(header.isPacked ? plain : file, load_tga_pf, header.type != kTrueColor,
                        palette);
}

}  // namespace zel
