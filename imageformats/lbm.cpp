#include "imageformats/library_formats.h"

#include <allegro/internal/aintern.h>

#include <algorithm>

namespace zel {
namespace {

constexpr std::uint32_t Id(const char (&text)[5]) {
  std::uint32_t id = 0;
  for (int i = 0; i < 4; ++i) id = id << 8 | static_cast<std::uint8_t>(text[i]);
  return id;
}

struct Header {
  bool isPlanar;
  int width, height;
  int planes;  // of colour
  bool hasMaskPlane;
  bool isPacked;

  // Rows come in words.
  std::size_t RowBytes() const {
    return static_cast<std::size_t>(isPlanar ? (width + 15) / 16 * 2 : (width + 1) / 2 * 2);
  }
};

struct Picture {
  Header header;
  std::span<const std::uint8_t> palette, body;
};

bool ReadHeader(ByteReader chunk, Header& header) {
  constexpr int kMaskPlane = 1, kPacked = 1;
  header.width = chunk.Big16();
  header.height = chunk.Big16();
  chunk.Skip(4);
  header.planes = chunk.Byte();
  header.hasMaskPlane = chunk.Byte() == kMaskPlane;
  const int compression = chunk.Byte();
  header.isPacked = compression == kPacked;
  return chunk.IsSound() && IsPictureSize(header.width, header.height) && header.planes >= 1 &&
         header.planes <= 8 && compression <= kPacked;
}

// A file is one large chunk of small ones, each with an id and a length; what is not needed is
// skipped. The header comes first.
bool TakeApart(const Bytes& file, Picture& picture) {
  ByteReader reader{file};
  if (reader.Big32() != Id("FORM")) return false;
  reader.Skip(4);
  const std::uint32_t kind = reader.Big32();
  picture.header.isPlanar = kind == Id("ILBM");
  if (!picture.header.isPlanar && kind != Id("PBM ")) return false;
  bool hasHeader = false;
  while (picture.palette.empty() || picture.body.empty()) {
    const std::uint32_t id = reader.Big32(), length = reader.Big32();
    const auto chunk = reader.Take(length);
    if (!reader.IsSound()) return false;
    reader.Skip(length % 2);
    if (!hasHeader && (id != Id("BMHD") || !ReadHeader(ByteReader{chunk}, picture.header)))
      return false;
    hasHeader = true;
    if (id == Id("CMAP")) picture.palette = chunk;
    if (id == Id("BODY")) picture.body = chunk;
  }
  return true;
}

bool Unpack(ByteReader& packed, Bytes& row) {
  constexpr int kNothing = 128;
  for (auto target = row.begin(); target != row.end();) {
    const int code = packed.Byte();
    const bool isRun = code > kNothing;
    const int count = isRun ? 257 - code : code + 1;
    if (code == kNothing) continue;
    const auto source = packed.Take(isRun ? 1 : static_cast<std::size_t>(count));
    if (!packed.IsSound() || count > row.end() - target) return false;
    target = isRun ? std::fill_n(target, count, source[0])
                   : std::copy(source.begin(), source.end(), target);
  }
  return true;
}

// The next row, or one plane of it.
bool TakeRow(ByteReader& body, bool isPacked, Bytes& row) {
  if (isPacked) return Unpack(body, row);
  const auto source = body.Take(row.size());
  std::copy(source.begin(), source.end(), row.begin());
  return body.IsSound();
}

void AddPlane(std::uint8_t* line, int width, const Bytes& row, int plane) {
  for (int x = 0; x < width; ++x)
    if (row[static_cast<std::size_t>(x / 8)] & 0x80 >> x % 8)
      line[x] = static_cast<std::uint8_t>(line[x] | 1 << plane);
}

bool TakePixels(const Picture& picture, BITMAP* bitmap) {
  const Header& header = picture.header;
  ByteReader body{picture.body};
  Bytes row(header.RowBytes());
  const int planes = header.isPlanar ? header.planes + (header.hasMaskPlane ? 1 : 0) : 1;
  for (int y = 0; y < header.height; ++y) {
    for (int plane = 0; plane < planes; ++plane) {
      if (!TakeRow(body, header.isPacked, row)) return false;
      if (!header.isPlanar)
        std::copy_n(row.begin(), header.width, bitmap->line[y]);
      else if (plane < header.planes)
        AddPlane(bitmap->line[y], header.width, row, plane);
    }
  }
  return true;
}

void TakePalette(ByteReader colors, RGB* palette) {
  const auto channel = [&colors] { return static_cast<unsigned char>(colors.Byte() >> 2); };
  std::generate_n(palette, PAL_SIZE, [&channel] {
    return RGB{channel(), channel(), channel(), 0};
  });
}

}  // namespace

BITMAP* LoadLbm(const Bytes& file, RGB* palette) {
  Picture picture{};
  if (!TakeApart(file, picture)) return nullptr;
  BitmapPtr bitmap{create_bitmap_ex(8, picture.header.width, picture.header.height)};
  if (!bitmap) return nullptr;
  clear_bitmap(bitmap.get());
  if (!TakePixels(picture, bitmap.get())) return nullptr;
  PALETTE own;
  if (!palette) palette = own;
  TakePalette(ByteReader{picture.palette}, palette);
  const int depth = _color_load_depth(8, FALSE);
  BITMAP* loaded = bitmap.release();
  return depth == 8 ? loaded : _fixup_loaded_bitmap(loaded, palette, depth);
}

}  // namespace zel
