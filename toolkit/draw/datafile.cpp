#include "toolkit/draw/datafile.h"

#include <strings.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "toolkit/draw/bitmap_guard.h"

namespace zel {
namespace {

// The layout is described under "Datafile formats" in Allegro's manual; the texts of the ids are
// those of its datafile.h. All numbers but the pixels are big-endian.
constexpr std::size_t kMostUnpacked = 256u << 20;
constexpr std::uint32_t kMostObjects = 10000;
constexpr int kDeepest = 32;  // the most that a bitmap may be converted to

std::int32_t ReadNumber(ByteReader& reader) { return static_cast<std::int32_t>(reader.Big32()); }

void Put8(const std::uint8_t* index, std::uint8_t* row, int x) { row[x] = *index; }

// Pixels of 15 bits are stored as those of 16: red, green and blue from the highest bit on.
template <int (*kMakeColor)(int r, int g, int b)>
void PutHighColor(const std::uint8_t* stored, std::uint8_t* row, int x) {
  const int color = stored[0] | stored[1] << 8;
  reinterpret_cast<std::uint16_t*>(row)[x] = static_cast<std::uint16_t>(kMakeColor(
      _rgb_scale_5[color >> 11], _rgb_scale_6[color >> 5 & 0x3F], _rgb_scale_5[color & 0x1F]));
}

void Put24(const std::uint8_t* rgb, std::uint8_t* row, int x) {
  const int color = makecol24(rgb[0], rgb[1], rgb[2]);
  WRITE3BYTES(row + 3 * x, color);
}

// An alpha channel is no colour; left in, it keeps magenta from being the mask colour.
void Put32(const std::uint8_t* rgb, std::uint8_t* row, int x) {
  reinterpret_cast<std::uint32_t*>(row)[x] =
      static_cast<std::uint32_t>(makecol32(rgb[0], rgb[1], rgb[2]));
}

// Makes a row of `width` pixels of as many stored ones, which take kBytes each.
template <std::size_t kBytes, void (*kPut)(const std::uint8_t* stored, std::uint8_t* row, int x)>
void FillRow(const std::uint8_t* stored, std::uint8_t* row, int width) {
  for (int x = 0; x < width; ++x, stored += kBytes) kPut(stored, row, x);
}

// How pixels are stored, and what fills a row of a bitmap of so many bits with them.
struct PixelFormat {
  int bits;  // -32 is 32 bits with an alpha channel
  std::size_t bytes;
  void (*fillRow)(const std::uint8_t* stored, std::uint8_t* row, int width);
};
constexpr PixelFormat kPixelFormats[] = {
    {8, 1, FillRow<1, Put8>},
    {15, 2, FillRow<2, PutHighColor<makecol15>>},
    {16, 2, FillRow<2, PutHighColor<makecol16>>},
    {24, 3, FillRow<3, Put24>},
    {32, 3, FillRow<3, Put32>},
    {-32, 4, FillRow<4, Put32>},
};

// The content of a DAT_BITMAP object.
class StoredPicture {
 public:
  explicit StoredPicture(ByteReader content)
      : bits_{MadeBits(static_cast<std::int16_t>(content.Big16()))},
        w_{content.Big16()},
        h_{content.Big16()},
        pixels_{content.Take(content.Left())},
        format_{std::find_if(std::begin(kPixelFormats), std::end(kPixelFormats),
                             [this](const PixelFormat& known) { return known.bits == bits_; })} {}

  bool IsSound() const {
    return format_ != std::end(kPixelFormats) && w_ > 0 && h_ > 0 &&
           IsPossibleBitmap(kDeepest, w_, h_) && PixelCount() * format_->bytes <= pixels_.size();
  }

  // As it is stored, without an alpha channel.
  BitmapPtr Make() const {
    BitmapPtr picture{create_bitmap_ex(std::abs(bits_), w_, h_)};
    if (!picture) return nullptr;
    const std::size_t rowBytes = static_cast<std::size_t>(w_) * format_->bytes;
    for (int y = 0; y < h_; ++y)
      format_->fillRow(pixels_.data() + y * rowBytes, picture->line[y], w_);
    return picture;
  }

 private:
  // Pixels of 24 and of 32 bits are stored alike; made in the current depth, they need not be
  // converted.
  static int MadeBits(int stored) { return stored == 24 && get_color_depth() == 32 ? 32 : stored; }

  std::size_t PixelCount() const {
    return static_cast<std::size_t>(w_) * static_cast<std::size_t>(h_);
  }

  int bits_, w_, h_;
  std::span<const std::uint8_t> pixels_;
  const PixelFormat* format_;
};

// Unpacks as Allegro does: single bytes, and repetitions of what a ring of the last 4096 bytes
// holds, filled from kStart on. Stops after so many bytes, or where the packed ones end. Allegro
// does not clear the ring behind kStart, so a repetition of what was never written there is damage.
bool UnpackTo(Bytes& bytes, std::size_t size, ByteReader& packed) {
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
      const std::size_t distance = (kStart + end - i - 1) % kRing + 1;
      if (distance > end && i % kRing >= kStart) return false;
      bytes.push_back(distance > end ? std::uint8_t{0} : bytes[end - distance]);
    }
  }
  return bytes.size() <= size;
}

}  // namespace

std::string Datafile::Object::Property(const char* id) const {
  const int wanted = DAT_ID(id[0], id[1], id[2], id[3]);
  for (ByteReader list{properties}; ReadNumber(list) == DAT_PROPERTY;) {
    const bool isWanted = ReadNumber(list) == wanted;
    const auto text = list.Take(list.Big32());
    if (isWanted) return {text.begin(), std::find(text.begin(), text.end(), '\0')};
  }
  return {};
}

bool Datafile::Load(const char* path) {
  file_ = MapBytes(path, kLargestFile);
  unpackable_ = kMostUnpacked;
  ByteReader content{file_.bytes};
  const std::uint32_t kind = content.Big32();
  if (kind == F_PACK_MAGIC) {
    const Bytes* unpacked = Unpack(content, unpackable_);
    if (!unpacked) return false;
    content = ByteReader{*unpacked};
  } else if (kind != F_NOPACK_MAGIC) {
    return false;
  }
  return ReadNumber(content) == DAT_MAGIC && ReadObjects(content);
}

const Bytes* Datafile::Unpack(ByteReader& packed, std::size_t limit) {
  Bytes bytes;
  if (limit > unpackable_ || !UnpackTo(bytes, limit, packed)) return nullptr;
  unpackable_ -= bytes.size();
  unpacked_.push_back(std::move(bytes));
  return &unpacked_.back();
}

bool Datafile::ReadObjects(ByteReader list) {
  const std::uint32_t count = list.Big32();
  if (!list.IsSound() || count > kMostObjects) return false;
  for (std::uint32_t i = 0; i < count; ++i)
    if (!ReadObject(list)) return false;
  return true;
}

bool Datafile::ReadObject(ByteReader& list) {
  Object object;
  const ByteReader start = list;
  while ((object.type = ReadNumber(list)) == DAT_PROPERTY) {
    list.Skip(4);  // the id
    list.Skip(list.Big32());
  }
  object.properties = ByteReader{start}.Take(start.Left() - list.Left());
  object.name = object.Property("NAME");
  list.Skip(4);                                // the size as it is stored
  const std::int64_t size = ReadNumber(list);  // negative when that is packed
  if (size >= 0) {
    object.content = list.Take(static_cast<std::size_t>(size));
  } else {
    const auto unpackedSize = static_cast<std::size_t>(-size);
    const Bytes* content = Unpack(list, unpackedSize);
    if (!content || content->size() != unpackedSize) return false;
    object.content = *content;
  }
  if (object.type == DAT_BITMAP && !StoredPicture{ByteReader{object.content}}.IsSound())
    return false;
  objects_.push_back(std::move(object));
  return list.IsSound();
}

const Datafile::Object* Datafile::Find(const char* name, int type) const {
  const auto object = std::find_if(objects_.begin(), objects_.end(), [name](const Object& some) {
    return strcasecmp(some.name.c_str(), name) == 0;
  });
  return object != objects_.end() && object->type == type ? &*object : nullptr;
}

BitmapPtr MakePicture(const Datafile::Object& object) {
  BitmapPtr stored = StoredPicture{ByteReader{object.content}}.Make();
  if (!stored || bitmap_color_depth(stored.get()) == get_color_depth()) return stored;
  set_color_conversion(PictureConversion());
  BitmapPtr picture{create_bitmap(stored->w, stored->h)};
  if (picture) blit(stored.get(), picture.get(), 0, 0, 0, 0, stored->w, stored->h);
  return picture;
}

}  // namespace zel
