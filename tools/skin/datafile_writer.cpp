#include "tools/skin/datafile_writer.h"

#include <algorithm>
#include <memory>

namespace zel {
namespace {

void PutBig16(Bytes& bytes, int number) {
  bytes.push_back(static_cast<std::uint8_t>(number >> 8 & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(number & 0xFF));
}

void PutBig32(Bytes& bytes, std::uint32_t number) {
  PutBig16(bytes, static_cast<int>(number >> 16));
  PutBig16(bytes, static_cast<int>(number & 0xFFFF));
}

void PutNumber(Bytes& bytes, std::int64_t number) {
  PutBig32(bytes, static_cast<std::uint32_t>(number));
}

Bytes PictureContent(BITMAP* picture) {
  Bytes content;
  const int depth = bitmap_color_depth(picture);
  PutBig16(content, depth);
  PutBig16(content, picture->w);
  PutBig16(content, picture->h);
  for (int y = 0; y < picture->h; ++y) {
    for (int x = 0; x < picture->w; ++x) {
      const int color = getpixel(picture, x, y);
      if (depth == 8) {
        content.push_back(static_cast<std::uint8_t>(color));
        continue;
      }
      for (const auto component : {getr_depth, getg_depth, getb_depth})
        content.push_back(static_cast<std::uint8_t>(component(depth, color)));
    }
  }
  return content;
}

// A file of Allegro's in memory, for what writes to one.
int PutByte(int byte, void* bytes) {
  static_cast<Bytes*>(bytes)->push_back(static_cast<std::uint8_t>(byte));
  return byte;
}
long PutBytes(const void* start, long count, void* bytes) {
  const auto* first = static_cast<const std::uint8_t*>(start);
  static_cast<Bytes*>(bytes)->insert(static_cast<Bytes*>(bytes)->end(), first, first + count);
  return count;
}
int End(void*) { return 0; }
int NoByte(void*) { return EOF; }
int TakeNothingBack(int, void*) { return EOF; }
long NoBytes(void*, long, void*) { return 0; }
int NoWay(void*, int) { return -1; }

Bytes Packed(Bytes content) {
  constexpr PACKFILE_VTABLE kMemory{End, NoByte, TakeNothingBack, NoBytes, PutByte, PutBytes, NoWay,
                                    End, End};
  Bytes packed;
  PACKFILE* file = pack_fopen_vtable(&kMemory, &packed);
  LZSS_PACK_DATA* packer = create_lzss_pack_data();
  if (file && packer)
    lzss_write(file, packer, static_cast<int>(content.size()), content.data(), TRUE);
  if (packer) free_lzss_pack_data(packer);
  if (file) pack_fclose(file);
  return packed;
}

}  // namespace

void DatafileWriter::AddPicture(const std::string& name, Properties properties, BITMAP* picture) {
  Add(name, std::move(properties), DAT_BITMAP, PictureContent(picture));
}

void DatafileWriter::AddPalette(const std::string& name, const RGB* colors) {
  Bytes content;
  std::for_each(colors, colors + PAL_SIZE, [&content](const RGB& color) {
    content.insert(content.end(), {color.r, color.g, color.b, 0});
  });
  Add(name, {}, DAT_PALETTE, content);
}

void DatafileWriter::Add(const std::string& name, Properties properties, int type,
                         const Bytes& content) {
  properties.emplace_back("NAME", name);
  std::sort(properties.begin(), properties.end());
  for (const auto& [id, text] : properties) {
    PutNumber(objects_, DAT_PROPERTY);
    objects_.insert(objects_.end(), id.begin(), id.end());
    PutNumber(objects_, static_cast<std::int64_t>(text.size()));
    objects_.insert(objects_.end(), text.begin(), text.end());
  }
  const Bytes stored = packs_ ? Packed(content) : content;
  const auto size = static_cast<std::int64_t>(content.size());
  PutNumber(objects_, type);
  PutNumber(objects_, static_cast<std::int64_t>(stored.size()));
  PutNumber(objects_, packs_ ? -size : size);  // negative when it is packed
  objects_.insert(objects_.end(), stored.begin(), stored.end());
  ++count_;
}

Bytes DatafileWriter::Finish() const {
  Bytes file;
  PutNumber(file, F_NOPACK_MAGIC);
  PutNumber(file, DAT_MAGIC);
  PutNumber(file, count_);
  file.insert(file.end(), objects_.begin(), objects_.end());
  return file;
}

}  // namespace zel
