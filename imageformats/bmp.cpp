#include <algorithm>

#include "imageformats/library_formats.h"
#include "imageformats/memory_file.h"

namespace zel {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kOs2Header = 12, kWindowsHeader = 40;
// The last two begin as Windows' header and go on with masks.
constexpr std::size_t kHeaders[] = {kOs2Header, kWindowsHeader, 108, 124};
constexpr std::size_t kMasksBytes = 12;
constexpr std::size_t kPixelsFieldAt = 10, kHeaderBytesAt = 14;
constexpr std::size_t kHeightAt = 22, kBitsAt = 28, kCompressionAt = 30;  // in Windows' header

enum Compression { kPlain, kRuns8, kRuns4, kMasks };

struct Header {
  std::size_t bytes;     // without the file's
  std::size_t pixelsAt;  // where Allegro begins to read them, or would if it knew long headers
  int width, height;
  bool isTopDown;
  int bits;  // of a pixel
  std::uint32_t compression;

  std::size_t RowBytes() const {
    const int doubleWords = (width * bits + 31) / 32;
    return static_cast<std::size_t>(doubleWords) * 4;
  }
  bool IsLong() const { return bytes > kWindowsHeader; }
  std::size_t PixelBytes() const { return RowBytes() * static_cast<std::size_t>(height); }
};

// Pixels whose colours have masks of their own: the layouts that Allegro knows.
int BitsOfMasks(ByteReader& reader) {
  const std::uint32_t red = reader.Little32();
  reader.Skip(4);
  const std::uint32_t blue = reader.Little32();
  if (blue == 0x1F && (red == 0x7C00 || red == 0xF800)) return 16;
  return blue == 0xFF && red == 0xFF0000 ? 32 : 0;
}

bool FitsBits(const Header& header) {
  constexpr int kBits[] = {1, 4, 8, 16, 24, 32};
  switch (header.compression) {
    case kPlain:
    case kMasks:
      return std::find(std::begin(kBits), std::end(kBits), header.bits) != std::end(kBits);
    case kRuns8:
      return header.bits == 8 && !header.isTopDown;
    case kRuns4:
      return header.bits == 4 && !header.isTopDown;
    default:
      return false;
  }
}

bool ReadHeader(const Bytes& file, Header& header) {
  ByteReader reader{file};
  reader.Skip(kPixelsFieldAt);
  const std::size_t pixelsAt = reader.Little32();
  header.bytes = reader.Little32();
  if (std::find(std::begin(kHeaders), std::end(kHeaders), header.bytes) == std::end(kHeaders))
    return false;
  const bool isOs2 = header.bytes == kOs2Header;
  const auto side = [&] {
    return isOs2 ? reader.Little16() : static_cast<std::int32_t>(reader.Little32());
  };
  header.width = side();
  const std::int64_t height = side();
  header.isTopDown = height < 0;
  if (!IsPictureSize(header.width, std::abs(height))) return false;
  header.height = static_cast<int>(std::abs(height));
  reader.Skip(2);
  header.bits = reader.Little16();
  if (!isOs2) {
    header.compression = reader.Little32();
    reader.Skip(kWindowsHeader - 20);
  }
  header.pixelsAt = std::max(kFileHeader + header.bytes, pixelsAt);
  if (header.compression == kMasks) {
    header.bits = BitsOfMasks(reader);
    if (!header.IsLong()) header.pixelsAt = kFileHeader + header.bytes + kMasksBytes;
  }
  return reader.IsSound() && FitsBits(header) && header.pixelsAt <= file.size();
}

// Rows of bytes, one for each pixel, that runs are unpacked into. The cursor moves from the left to
// the right and from the bottom to the top, where the file begins too.
class Canvas {
 public:
  explicit Canvas(const Header& plain) : header_{plain}, rows_(plain.PixelBytes()) {}

  bool IsFull() const { return y_ >= header_.height; }
  const Bytes& Rows() const { return rows_; }

  // Everything else fails beyond the edge of the picture.
  void EndRow() {
    x_ = 0;
    ++y_;
  }
  bool Move(int right, int up) {
    x_ += right;
    y_ += up;
    return x_ <= header_.width && y_ < header_.height;
  }
  // Repeats the bytes' pixels as needed. What goes beyond the end of the row is dropped: some
  // programs pack the bytes, too, with which rows are filled up.
  bool Put(std::span<const std::uint8_t> bytes, int bits, int count) {
    if (bytes.empty()) return false;
    count = std::min(count, header_.width - x_);
    std::uint8_t* target = rows_.data() + static_cast<std::size_t>(y_) * header_.RowBytes() + x_;
    const std::size_t inByte = static_cast<std::size_t>(8 / bits);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      const std::uint8_t byte = bytes[i / inByte % bytes.size()];
      target[i] = bits == 8 ? byte : i % 2 == 0 ? byte >> 4 : byte & 15;
    }
    x_ += count;
    return true;
  }

 private:
  const Header& header_;
  Bytes rows_;
  int x_ = 0, y_ = 0;
};

bool Unpack(ByteReader packed, int bits, Canvas& canvas) {
  enum Code { kEndOfRow, kEndOfPicture, kMove };
  while (!canvas.IsFull()) {
    const int count = packed.Byte();
    const auto value = packed.Take(1);
    if (value.empty()) return false;
    bool fits = true;
    if (count > 0) {
      fits = canvas.Put(value, bits, count);
    } else if (value[0] == kEndOfRow) {
      canvas.EndRow();
    } else if (value[0] == kEndOfPicture) {
      return true;
    } else if (value[0] == kMove) {
      const int right = packed.Byte();
      fits = canvas.Move(right, packed.Byte());
    } else {
      // So many pixels follow, in whole words.
      const auto words = static_cast<std::size_t>((value[0] * bits + 15) / 16);
      fits = canvas.Put(packed.Take(2 * words), bits, value[0]);
    }
    if (!fits || !packed.IsSound()) return false;
  }
  return true;
}

void WriteLittle32(Bytes& bytes, std::size_t at, std::size_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> 8 * i);
}

// What comes before the pixels. A long header is cut to the one that Allegro knows, with the masks,
// if the colours have any, still behind that.
Bytes Start(const Bytes& file, const Header& header) {
  Bytes start(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(header.pixelsAt));
  if (!header.IsLong()) return start;
  constexpr std::ptrdiff_t kEnd = kFileHeader + kWindowsHeader;
  if (header.compression == kMasks)
    start.resize(kEnd + kMasksBytes);
  else
    start.erase(start.begin() + kEnd,
                start.begin() + static_cast<std::ptrdiff_t>(kFileHeader + header.bytes));
  WriteLittle32(start, kHeaderBytesAt, kWindowsHeader);
  WriteLittle32(start, kPixelsFieldAt, start.size());
  return start;
}

// The same picture without runs, of 8 bits a pixel; empty when it is damaged.
Bytes WithoutRuns(const Bytes& file, const Header& header) {
  Header plain = header;
  plain.bits = 8;
  Canvas canvas{plain};
  if (!Unpack(ByteReader{std::span{file}.subspan(header.pixelsAt)}, header.bits, canvas)) return {};
  Bytes unpacked = Start(file, header);
  unpacked[kBitsAt] = 8;
  unpacked[kCompressionAt] = kPlain;
  unpacked.insert(unpacked.end(), canvas.Rows().begin(), canvas.Rows().end());
  return unpacked;
}

// The same picture with a short header and the bottom row first: Allegro takes the sign of the
// height for a part of the number where a long has more than 32 bits.
Bytes ShortAndBottomUp(const Bytes& file, const Header& header) {
  Bytes turned = Start(file, header);
  WriteLittle32(turned, kHeightAt, static_cast<std::size_t>(header.height));
  const auto rowBytes = static_cast<std::ptrdiff_t>(header.RowBytes());
  for (int y = 0; y < header.height; ++y) {
    const int row = header.isTopDown ? header.height - 1 - y : y;
    const auto pixels =
        file.begin() + static_cast<std::ptrdiff_t>(header.pixelsAt) + row * rowBytes;
    turned.insert(turned.end(), pixels, pixels + rowBytes);
  }
  return turned;
}

}  // namespace

BITMAP* LoadBmp(const Bytes& file, RGB* palette) {
  Header header{};
  if (!ReadHeader(file, header)) return nullptr;
  const bool isPaletted = header.bits <= 8;
  if (header.compression == kRuns8 || header.compression == kRuns4) {
    const Bytes plain = WithoutRuns(file, header);
    return plain.empty() ? nullptr : LoadFromMemory(plain, load_bmp_pf, isPaletted, palette);
  }
  if (file.size() - header.pixelsAt < header.PixelBytes()) return nullptr;
  if (!header.isTopDown && !header.IsLong())
    return LoadFromMemory(file, load_bmp_pf, isPaletted, palette);
  return LoadFromMemory(ShortAndBottomUp(file, header), load_bmp_pf, isPaletted, palette);
}

}  // namespace zel
