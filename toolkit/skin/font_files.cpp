#include "toolkit/skin/font_files.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr long kGrxMagic = 0x19590214;
constexpr std::uint64_t kRawFontBytes = 256 * 8;  // 256 characters of 8 x 8 pixels
constexpr std::size_t kLargestFont = 64u << 20;

struct PackfileCloser {
  void operator()(PACKFILE* file) const { pack_fclose(file); }
};
using Packfile = std::unique_ptr<PACKFILE, PackfileCloser>;

// Whether a picture holds a cell of a grid, as Allegro looks for it: the mark goes to the right and
// down from the cell's corner, but not into the cell. Allegro takes the first cell for granted.
bool HasGrid(BITMAP* picture) {
  constexpr int kMark = 255;
  for (int y = 0; y < picture->h - 1; ++y)
    for (int x = 0; x < picture->w - 1; ++x)
      if (getpixel(picture, x, y) == kMark && getpixel(picture, x + 1, y) == kMark &&
          getpixel(picture, x, y + 1) == kMark && getpixel(picture, x + 1, y + 1) != kMark)
        return true;
  return false;
}

// Characters on a grid, found by scanning the picture. Only pictures of palette indices hold the
// marks that the scan looks for.
FONT* LoadGridFont(const char* path) {
  set_color_conversion(COLORCONV_NONE);
  PALETTE palette;
  const BitmapPtr picture{load_bitmap(path, palette)};
  FONT* loaded = nullptr;
  if (picture && bitmap_color_depth(picture.get()) == 8 && HasGrid(picture.get()))
    loaded = grab_font_from_bitmap(picture.get());
  set_color_conversion(kPictureConversion);
  return loaded;
}

// Scripts that name scripts could name each other without end.
bool NamesScript(const char* path) {
  const Packfile file{pack_fopen(path, F_READ)};
  char line[1024];  // as long as Allegro's, which cuts a longer one into several
  while (file && pack_fgets(line, sizeof line - 1, file.get())) {
    const char* name = std::strtok(line, " \t");
    if (name && ustricmp(get_extension(name), Ascii("txt")) == 0) return true;
  }
  return false;
}

FONT* LoadScriptFont(const char* path) {
  return NamesScript(path) ? nullptr : load_txt_font(path, nullptr, nullptr);
}

// Allegro reads a raw font of just this length as 8 x 8 pixels.
FONT* LoadRawFont(const char* path) {
  return file_size_ex(path) == kRawFontBytes ? load_bios_font(path, nullptr, nullptr) : nullptr;
}

// Whether a GRX font, read up to its number, holds all that its header announces; Allegro takes
// that for granted.
bool IsWholeGrxFont(PACKFILE* file, std::uint64_t size) {
  constexpr std::uint64_t kHeader = 56;
  constexpr int kLargestExtent = 0x7FFF;
  if (size < kHeader) return false;
  pack_igetl(file);  // the size, which nobody reads
  const int width = pack_igetw(file), height = pack_igetw(file);
  const int first = pack_igetw(file), last = pack_igetw(file);
  const bool isProportional = pack_igetw(file) == 0;
  if (height < 1 || height > kLargestExtent || last < first) return false;
  for (int i = 0; i < 38; ++i) pack_getc(file);  // names
  std::uint64_t needed = kHeader;
  for (int character = first; character <= last; ++character) {
    const int itsWidth = isProportional ? pack_igetw(file) : width;
    if (itsWidth < 0 || itsWidth > kLargestExtent) return false;
    needed += (isProportional ? 2u : 0u) + static_cast<std::uint64_t>((itsWidth + 7) / 8 * height);
  }
  return needed <= size;
}

FONT* LoadGrxOrBiosFont(const char* path) {
  const std::uint64_t size = file_size_ex(path);
  const Packfile file{pack_fopen(path, F_READ)};
  if (!file) return nullptr;
  if (pack_igetl(file.get()) == kGrxMagic)
    return IsWholeGrxFont(file.get(), size) ? load_grx_font(path, nullptr, nullptr) : nullptr;
  const bool isWhole = size == kRawFontBytes || size >= 2 * kRawFontBytes;
  return isWhole ? load_bios_font(path, nullptr, nullptr) : nullptr;
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
