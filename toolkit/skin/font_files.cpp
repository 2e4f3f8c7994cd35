#include "toolkit/skin/font_files.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr long kGrxMagic = 0x19590214;
constexpr uint64_t kRawFontBytes = 256 * 8;  // 256 characters of 8 x 8 pixels
constexpr std::size_t kLargestFont = 64u << 20;

struct PackfileCloser {
  void operator()(PACKFILE* file) const { pack_fclose(file); }
};
using Packfile = std::unique_ptr<PACKFILE, PackfileCloser>;

// Characters on a grid, found by scanning the picture. Only pictures of palette indices hold the
// marks that the scan looks for.
FONT* LoadGridFont(const char* path) {
  set_color_conversion(COLORCONV_NONE);
  PALETTE palette;
  const BitmapPtr picture{load_bitmap(path, palette)};
  FONT* loaded = nullptr;
  if (picture && bitmap_color_depth(picture.get()) == 8)
    loaded = grab_font_from_bitmap(picture.get());
  set_color_conversion(COLORCONV_TOTAL);
  return loaded;
}

FONT* LoadScriptFont(const char* path) { return load_txt_font(path, nullptr, nullptr); }

// Allegro reads a raw font of just this length as 8 x 8 pixels.
FONT* LoadRawFont(const char* path) {
  return file_size_ex(path) == kRawFontBytes ? load_bios_font(path, nullptr, nullptr) : nullptr;
}

FONT* LoadGrxOrBiosFont(const char* path) {
  Packfile file{pack_fopen(path, F_READ)};
  if (!file) return nullptr;
  const long magic = pack_igetl(file.get());
  file.reset();
  if (magic == kGrxMagic) return load_grx_font(path, nullptr, nullptr);
  return file_size_ex(path) >= kRawFontBytes ? load_bios_font(path, nullptr, nullptr) : nullptr;
}

struct Reader {
  const char* extension;
  FONT* (*load)(const char* path);
};
constexpr Reader kReaders[] = {
    {"bmp", LoadGridFont},      {"pcx", LoadGridFont},   {"lbm", LoadGridFont},
    {"tga", LoadGridFont},      {"txt", LoadScriptFont}, {"itf", LoadRawFont},
    {"fnt", LoadGrxOrBiosFont},
};

FontBytes ReadBytes(const char* path) {
  const Packfile file{pack_fopen(path, F_READ)};
  if (!file) return nullptr;
  auto bytes = std::make_shared<std::vector<std::uint8_t>>();
  const uint64_t size = file_size_ex(path);
  if (size > kLargestFont) return nullptr;
  bytes->resize(static_cast<std::size_t>(size));
  const long count = pack_fread(bytes->data(), static_cast<long>(size), file.get());
  bytes->resize(static_cast<std::size_t>(count > 0 ? count : 0));
  return bytes;
}

}  // namespace

FONT* LoadLibraryFont(const char* path, bool* isBitmapFont) {
  const char* extension = get_extension(path);
  for (const Reader& reader : kReaders) {
    if (ustricmp(extension, Ascii(reader.extension)) != 0) continue;
    *isBitmapFont = true;
    return reader.load(path);
  }
  *isBitmapFont = false;
  return nullptr;
}

FontBytes LoadFontBytes(const char* path) {
  static std::map<std::string, std::weak_ptr<const std::vector<std::uint8_t>>> open;
  std::erase_if(open, [](const auto& entry) { return entry.second.expired(); });
  if (const auto found = open.find(path); found != open.end()) return found->second.lock();
  FontBytes bytes = ReadBytes(path);
  if (bytes) open.emplace(path, bytes);
  return bytes;
}

}  // namespace zel
