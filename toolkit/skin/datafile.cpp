#include "toolkit/skin/datafile.h"

#include <algorithm>
#include <cstdint>

#include "toolkit/core/bitmap_guard.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

// The layout is described under "Datafile formats" in Allegro's manual; the texts of the ids are
// those of its datafile.h. All numbers are big-endian.
constexpr int kMostProperties = 1000;  // of one object; Allegro's time grows with the square
constexpr int kMostPropertyBytes = 65536;
constexpr int kDeepestNesting = 8;
constexpr int kBitmapHeaderBytes = 6;
constexpr int kDeepest = 32;  // the most that a bitmap may be converted to

// Objects that Allegro reads by the numbers in them, without regard to their size.
constexpr int kReadBlindly[] = {DAT_FONT,       DAT_SAMPLE,   DAT_MIDI,
                                DAT_RLE_SPRITE, DAT_C_SPRITE, DAT_XC_SPRITE};

struct BitmapFormat {
  int bits;  // as stored; -32 is 32 bits with an alpha channel
  int bytesPerPixel;
};
constexpr BitmapFormat kBitmapFormats[] = {{8, 1}, {15, 2}, {16, 2}, {24, 3}, {32, 3}, {-32, 4}};

struct PackfileCloser {
  void operator()(PACKFILE* file) const noexcept { pack_fclose(file); }
};

bool IsSoundList(PACKFILE* file, int depth);

// A number as Allegro takes it; the end of the file reads as -1.
std::int32_t ReadNumber(PACKFILE* file) { return static_cast<std::int32_t>(pack_mgetl(file)); }

// False when the file ends before. Reads instead of seeking: only so the end shows.
bool SkipBytes(PACKFILE* file, long bytes) {
  char block[4096];
  while (bytes > 0) {
    const long wanted = std::min<long>(bytes, sizeof(block));
    if (pack_fread(block, wanted, file) != wanted) return false;
    bytes -= wanted;
  }
  return true;
}

// Answers the type of the object that the properties belong to.
bool SkipProperties(PACKFILE* file, int* type) {
  for (int i = 0; i < kMostProperties; ++i) {
    *type = ReadNumber(file);
    if (*type != DAT_PROPERTY) return *type != DAT_END;
    ReadNumber(file);  // the property's id
    const int size = ReadNumber(file);
    if (size < 0 || size > kMostPropertyBytes || !SkipBytes(file, size)) return false;
  }
  return false;
}

bool IsSoundBitmap(PACKFILE* chunk, long size) {
  if (size < kBitmapHeaderBytes) return false;
  const int bits = static_cast<std::int16_t>(pack_mgetw(chunk));
  const int w = pack_mgetw(chunk);
  const int h = pack_mgetw(chunk);
  const auto* format =
      std::find_if(std::begin(kBitmapFormats), std::end(kBitmapFormats),
                   [bits](const BitmapFormat& known) { return known.bits == bits; });
  return format != std::end(kBitmapFormats) && w > 0 && h > 0 && IsPossibleBitmap(kDeepest, w, h) &&
         w * h * format->bytesPerPixel <= size - kBitmapHeaderBytes &&
         SkipBytes(chunk, size - kBitmapHeaderBytes);
}

bool IsSoundContent(PACKFILE* chunk, int type, int depth) {
  const long size = chunk->normal.todo;
  if (type == DAT_BITMAP) return IsSoundBitmap(chunk, size);
  if (type == DAT_FILE) return IsSoundList(chunk, depth + 1);
  return size >= 0 && SkipBytes(chunk, size);
}

bool IsSoundObject(PACKFILE* file, int type, int depth) {
  if (std::find(std::begin(kReadBlindly), std::end(kReadBlindly), type) != std::end(kReadBlindly))
    return false;
  PACKFILE* chunk = pack_fopen_chunk(file, FALSE);
  if (!chunk) return false;
  const bool sound = IsSoundContent(chunk, type, depth);
  pack_fclose_chunk(chunk);
  return sound;
}

bool IsSoundList(PACKFILE* file, int depth) {
  const int count = ReadNumber(file);
  if (count < 0 || depth > kDeepestNesting) return false;
  for (int i = 0; i < count; ++i) {
    int type = 0;
    if (!SkipProperties(file, &type) || !IsSoundObject(file, type, depth)) return false;
  }
  return true;
}

}  // namespace

bool IsSoundDatafile(const char* path) {
  const std::unique_ptr<PACKFILE, PackfileCloser> file{pack_fopen(path, F_READ_PACKED)};
  return file && ReadNumber(file.get()) == DAT_MAGIC && IsSoundList(file.get(), 0);
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
