#include "toolkit/skin/datafile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "toolkit/core/bitmap_guard.h"
#include "toolkit/core/bytes.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

// The layout is described under "Datafile formats" in Allegro's manual; the texts of the ids are
// those of its datafile.h. All numbers are big-endian.
constexpr std::size_t kLargestFile = 64u << 20;
constexpr std::size_t kLargestUnpacked = 256u << 20;
constexpr int kMostProperties = 1000;  // of one object; Allegro's time grows with the square
constexpr int kMostPropertyBytes = 65536;
constexpr int kDeepestNesting = 8;
constexpr int kDeepest = 32;  // the most that a bitmap may be converted to

// Objects that Allegro reads by the numbers in them, without regard to their size.
constexpr int kReadBlindly[] = {DAT_FONT,       DAT_SAMPLE,   DAT_MIDI,
                                DAT_RLE_SPRITE, DAT_C_SPRITE, DAT_XC_SPRITE};

struct BitmapFormat {
  int bits;  // as stored; -32 is 32 bits with an alpha channel
  int bytesPerPixel;
};
constexpr BitmapFormat kBitmapFormats[] = {{8, 1}, {15, 2}, {16, 2}, {24, 3}, {32, 3}, {-32, 4}};

bool IsSoundList(ByteReader list, int depth);

std::int32_t ReadNumber(ByteReader& reader) { return static_cast<std::int32_t>(reader.Big32()); }

// Unpacks as Allegro does: single bytes, and repetitions of what a ring of the last 4096 bytes
// holds, filled from kStart on. Stops after so many bytes, or where the packed ones end. Allegro
// does not clear the ring behind kStart, so a repetition of what was never written there is damage;
// read again, it might say something else.
bool Unpack(ByteReader& packed, std::size_t size, Bytes& bytes) {
  constexpr std::size_t kRing = 4096, kStart = kRing - 18;
  constexpr std::size_t kShortest = 3;
  unsigned flags = 0;
  while (bytes.size() < size && packed.Left() > 0) {
    flags >>= 1;
    if ((flags & 0x100) == 0) flags = static_cast<unsigned>(packed.Byte()) | 0xFF00;
    if (flags & 1) {
      if (packed.Left() > 0) bytes.push_back(static_cast<std::uint8_t>(packed.Byte()));
      continue;
    }
    const auto code = packed.Take(2);
    if (code.empty()) break;
    const std::size_t at = code[0] | (code[1] & 0xF0u) << 4;
    const std::size_t count = (code[1] & 0xFu) + kShortest;
    for (std::size_t i = at; i < at + count; ++i) {
      const std::size_t end = bytes.size();
      const std::size_t distance = (kStart + end - i % kRing + kRing - 1) % kRing + 1;
      if (distance > end && i % kRing >= kStart) return false;
      bytes.push_back(distance > end ? std::uint8_t{0} : bytes[end - distance]);
    }
  }
  return bytes.size() <= size;
}

// Answers the type of the object that the properties belong to.
bool SkipProperties(ByteReader& list, int* type) {
  for (int i = 0; i < kMostProperties; ++i) {
    *type = ReadNumber(list);
    if (*type != DAT_PROPERTY) return *type != DAT_END && list.IsSound();
    if (ReadNumber(list) == DAT_END) return false;  // an id that ends Allegro's list
    const int size = ReadNumber(list);
    if (size < 0 || size > kMostPropertyBytes) return false;
    list.Skip(static_cast<std::size_t>(size));
  }
  return false;
}

bool IsSoundBitmap(ByteReader content) {
  const int bits = static_cast<std::int16_t>(content.Big16());
  const int w = content.Big16(), h = content.Big16();
  const auto* format =
      std::find_if(std::begin(kBitmapFormats), std::end(kBitmapFormats),
                   [bits](const BitmapFormat& known) { return known.bits == bits; });
  return format != std::end(kBitmapFormats) && w > 0 && h > 0 && IsPossibleBitmap(kDeepest, w, h) &&
         w * h * format->bytesPerPixel <= static_cast<long>(content.Left());
}

bool IsSoundContent(ByteReader content, int type, int depth) {
  if (type == DAT_BITMAP) return IsSoundBitmap(content);
  return type != DAT_FILE || IsSoundList(content, depth + 1);
}

bool IsSoundObject(ByteReader& list, int type, int depth) {
  if (std::find(std::begin(kReadBlindly), std::end(kReadBlindly), type) != std::end(kReadBlindly))
    return false;
  list.Skip(4);                                // the size as it is stored
  const std::int64_t size = ReadNumber(list);  // negative when that is packed
  if (size >= 0) {
    const auto content = list.Take(static_cast<std::size_t>(size));
    return list.IsSound() && IsSoundContent(ByteReader{content}, type, depth);
  }
  Bytes content;
  const auto unpackedSize = static_cast<std::size_t>(-size);
  return unpackedSize <= kLargestUnpacked && Unpack(list, unpackedSize, content) &&
         content.size() == unpackedSize && IsSoundContent(ByteReader{content}, type, depth);
}

bool IsSoundList(ByteReader list, int depth) {
  const int count = ReadNumber(list);
  if (!list.IsSound() || count < 0 || depth > kDeepestNesting) return false;
  for (int i = 0; i < count; ++i) {
    int type = 0;
    if (!SkipProperties(list, &type) || !IsSoundObject(list, type, depth)) return false;
  }
  return true;
}

}  // namespace

bool IsSoundDatafile(const char* path) {
  // Allegro takes a "#" as the way into an object of another datafile.
  if (std::strchr(path, '#')) return false;
  const Bytes file = ReadBytes(path, kLargestFile);
  ByteReader content{file};
  Bytes unpacked;
  const std::uint32_t kind = content.Big32();
  if (kind == F_PACK_MAGIC) {
    if (!Unpack(content, kLargestUnpacked, unpacked)) return false;
    content = ByteReader{unpacked};
  } else if (kind != F_NOPACK_MAGIC) {
    return false;
  }
  return ReadNumber(content) == DAT_MAGIC && IsSoundList(content, 0);
}

DatafilePtr LoadDatafile(const char* path) {
  if (!IsSoundDatafile(path)) return nullptr;
  set_color_conversion(kPictureConversion);
  return DatafilePtr{load_datafile(path)};
}

const DATAFILE* FindObject(const DATAFILE* datafile, const char* name, int type) {
  const DATAFILE* object = find_datafile_object(datafile, Ascii(name));
  return object && object->type == type ? object : nullptr;
}

}  // namespace zel
