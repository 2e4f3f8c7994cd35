#include "toolkit/draw/font_files.h"

#include <allegro/internal/aintern.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "imageformats/load.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr std::size_t kLargestFont = 64u << 20;

struct FontDeleter {
  void operator()(FONT* font) const { destroy_font(font); }
};
using FontPtr = std::unique_ptr<FONT, FontDeleter>;

// Whether a picture holds a cell of a grid, as Allegro looks for it: the mark goes to the right and
// down from the cell's corner, but not into the cell. Allegro takes the first cell for granted.
bool HasGrid(BITMAP* picture) {
  const int depth = bitmap_color_depth(picture);
  const int mark = _bitmap_has_alpha(picture) ? getpixel(picture, 0, 0)
                   : depth == 8               ? 255
                                              : makecol_depth(depth, 255, 255, 0);
  for (int y = 0; y < picture->h; ++y)
    for (int x = 0; x < picture->w; ++x)
      if (getpixel(picture, x, y) == mark && getpixel(picture, x + 1, y) == mark &&
          getpixel(picture, x, y + 1) == mark && getpixel(picture, x + 1, y + 1) != mark)
        return true;
  return false;
}

// Characters on a grid, found by scanning the picture.
FONT* GrabFont(const char* path, int conversion, bool mustHavePalette) {
  set_color_conversion(conversion);
  PALETTE palette{};
  const BitmapPtr picture{LoadPicture(path, palette)};
  FONT* grabbed = nullptr;
  if (picture && (!mustHavePalette || bitmap_color_depth(picture.get()) == 8) &&
      HasGrid(picture.get()))
    grabbed = grab_font_from_bitmap(picture.get());
  set_color_conversion(PictureConversion());
  return grabbed;
}

FONT* LoadGridFont(const char* path) { return GrabFont(path, COLORCONV_NONE, true); }

// Characters whose rows are whole bytes, the leftmost pixel in the highest bit.
struct RawFont {
  int first = 0;
  int height = 0;
  std::vector<int> widths;

  std::size_t GlyphBytes(int width) const {
    const int bytes = (width + 7) / 8 * height;
    return static_cast<std::size_t>(bytes);
  }
};

// Null when there are no pixels for all characters, or one has none: Allegro draws characters of
// no width without end.
FONT* MakeFont(const RawFont& raw, ByteReader pixels) {
  constexpr int kLargestExtent = 4096;
  std::size_t needed = 0;
  for (const int width : raw.widths) {
    if (width < 1 || width > kLargestExtent) return nullptr;
    needed += raw.GlyphBytes(width);
  }
  if (raw.height < 1 || raw.height > kLargestExtent || needed > pixels.Left()) return nullptr;

  // With Allegro's allocator, as it frees them.
  const int count = static_cast<int>(raw.widths.size());
  auto** glyphs = static_cast<FONT_GLYPH**>(_al_malloc(raw.widths.size() * sizeof(FONT_GLYPH*)));
  for (int i = 0; i < count; ++i) {
    const int width = raw.widths[static_cast<std::size_t>(i)];
    const auto rows = pixels.Take(raw.GlyphBytes(width));
    glyphs[i] = static_cast<FONT_GLYPH*>(_al_malloc(sizeof(FONT_GLYPH) + rows.size()));
    glyphs[i]->w = static_cast<short>(width);
    glyphs[i]->h = static_cast<short>(raw.height);
    std::copy(rows.begin(), rows.end(), glyphs[i]->dat);
  }
  auto* data = static_cast<FONT_MONO_DATA*>(_al_malloc(sizeof(FONT_MONO_DATA)));
  *data = {raw.first, raw.first + count, glyphs, nullptr};
  FONT* made = static_cast<FONT*>(_al_malloc(sizeof(FONT)));
  *made = {data, raw.height, font_vtable_mono};
  return made;
}

// 256 characters of 8 pixels in width.
FONT* MakeBiosFont(const Bytes& file, int height) {
  return MakeFont({.height = height, .widths = std::vector<int>(256, 8)}, ByteReader{file});
}

FONT* LoadRawFont(const char* path) { return MakeBiosFont(ReadBytes(path, kLargestFont), 8); }

// The rest of a GRX font behind its number.
FONT* ReadGrxFont(ByteReader& file) {
  constexpr std::size_t kNames = 38;
  RawFont raw;
  file.Skip(4);  // the size, which nobody reads
  const int width = file.Little16();
  raw.height = file.Little16();
  raw.first = file.Little16();
  const int last = file.Little16();
  const bool isProportional = file.Little16() == 0;
  file.Skip(kNames);
  for (int i = raw.first; i <= last && file.IsSound(); ++i)
    raw.widths.push_back(isProportional ? file.Little16() : width);
  return file.IsSound() && !raw.widths.empty() ? MakeFont(raw, file) : nullptr;
}

FONT* LoadGrxOrBiosFont(const char* path) {
  constexpr std::uint32_t kGrx = 0x19590214;
  constexpr std::size_t kLowFont = 256 * 8;
  const Bytes bytes = ReadBytes(path, kLargestFont);
  ByteReader file{bytes};
  if (file.Little32() == kGrx) return ReadGrxFont(file);
  return MakeBiosFont(bytes, bytes.size() == kLowFont ? 8 : 16);
}

FONT* LoadScriptFont(const char* path);

struct Reader {
  const char* extension;
  FONT* (*load)(const char* path);
};
constexpr Reader kReaders[] = {
    {"bmp", LoadGridFont},      {"pcx", LoadGridFont},   {"lbm", LoadGridFont},
    {"tga", LoadGridFont},      {"txt", LoadScriptFont}, {"itf", LoadRawFont},
    {"fnt", LoadGrxOrBiosFont},
};

const Reader* FindReader(const char* path) {
  const char* extension = get_extension(path);
  const auto* found =
      std::find_if(std::begin(kReaders), std::end(kReaders), [extension](const Reader& reader) {
        return ustricmp(extension, Ascii(reader.extension)) == 0;
      });
  return found != std::end(kReaders) ? found : nullptr;
}

// A font script: each line names a font file, or with "-" the one before once more, the first
// character that the file's next characters become, and possibly the last one.
class FontScript {
 public:
  explicit FontScript(const char* path) : path_{path} {}

  // False when the whole script is no good.
  bool Run(const std::string& line);
  FONT* Finish();

 private:
  // Scripts that open or gather more keep the computer busy.
  static constexpr int kMostFiles = 256;
  static constexpr int kMostCharacters = 0x10000;
  static constexpr std::int64_t kMostPixels = 1 << 26;
  static constexpr long kLastCharacter = 0x10FFFF;

  bool Open(const char* name);
  bool Add(int first, int count);

  const char* path_;
  FontPtr mono_, color_;  // what is gathered, by its kind
  FontPtr source_;
  int next_ = 0;  // the source's first character that is not taken yet
  int files_ = 0, characters_ = 0;
  std::int64_t pixels_ = 0;  // of the characters
};

// Moves the characters of a part into a font of its kind. Allegro's own merging copies all
// characters of both.
template <class Range>
void Move(FontPtr part, FontPtr& font) {
  if (!font) {
    font = std::move(part);
    return;
  }
  auto* range = static_cast<Range*>(std::exchange(part->data, nullptr));  // a source has only one
  auto* first = static_cast<Range*>(font->data);
  Range** place = &first;
  while (*place && (*place)->begin <= range->begin) place = &(*place)->next;
  range->next = *place;
  *place = range;
  font->data = first;
  font->height = std::max(font->height, part->height);
  font->vtable = part->vtable;
}

// As Allegro looks for it: by the name, then beside the script. It reads grids of any depth here.
// Scripts that name scripts could name each other without end.
bool FontScript::Open(const char* name) {
  if (++files_ > kMostFiles) return false;
  std::string file = name;
  if (!IsFile(name) && is_relative_filename(name))
    file.insert(0, path_, static_cast<std::size_t>(get_filename(path_) - path_));
  const Reader* reader = FindReader(file.c_str());
  const bool isGrid = !reader || reader->load == LoadGridFont;
  if (isGrid)
    source_.reset(GrabFont(file.c_str(), COLORCONV_MOST | COLORCONV_KEEP_TRANS, false));
  else
    source_.reset(reader->load == LoadScriptFont ? nullptr : reader->load(file.c_str()));
  if (source_) next_ = get_font_range_begin(source_.get(), -1);
  return source_ != nullptr;
}

bool FontScript::Add(int first, int count) {
  characters_ += count;
  if (characters_ > kMostCharacters) return false;
  for (int i = next_; i < next_ + count; ++i)
    pixels_ += std::int64_t{source_->height} * source_->vtable->char_length(source_.get(), i);
  if (pixels_ > kMostPixels) return false;
  FontPtr part{extract_font_range(source_.get(), next_, next_ + count - 1)};
  if (!part || !part->data) return false;
  if (first != next_) transpose_font(part.get(), first - next_);
  if (is_mono_font(part.get()))
    Move<FONT_MONO_DATA>(std::move(part), mono_);
  else
    Move<FONT_COLOR_DATA>(std::move(part), color_);
  return true;
}

FONT* FontScript::Finish() {
  if (mono_ && color_) return merge_fonts(color_.get(), mono_.get());
  return (mono_ ? mono_ : color_).release();
}

// Takes the next word off a line; empty at its end.
std::string TakeWord(const char*& rest) {
  constexpr const char* kBlanks = " \t\n\v\f\r";
  rest += std::strspn(rest, kBlanks);
  const char* const start = rest;
  rest += std::strcspn(rest, kBlanks);
  return {start, rest};
}

bool FontScript::Run(const std::string& line) {
  const char* rest = line.c_str();
  const std::string name = TakeWord(rest), firstText = TakeWord(rest), lastText = TakeWord(rest);
  if (name.empty()) return true;
  if (firstText.empty()) return false;
  if (name[0] == '-' ? !source_ : !Open(name.c_str())) return false;

  const long first = std::strtol(firstText.c_str(), nullptr, 0);
  if (first < 1 || first > kLastCharacter) return false;
  const int left = get_font_range_end(source_.get(), -1) - next_ + 1;
  constexpr long kToTheEnd = -1;
  long last = lastText.empty() ? kToTheEnd : std::strtol(lastText.c_str(), nullptr, 0);
  if (last != kToTheEnd && last < first) return false;
  if (last == kToTheEnd) last = first + left - 1;
  if (last > kLastCharacter) return false;
  const long wanted = last - first + 1;
  const int count = static_cast<int>(std::min<long>(left, wanted));
  if (count > 0 && !Add(static_cast<int>(first), count)) return false;
  next_ += count;
  return true;
}

FONT* LoadScriptFont(const char* path) {
  constexpr std::size_t kLongestScript = 64 << 10;
  const Bytes bytes = ReadBytes(path, kLongestScript);
  const std::string text{bytes.begin(), bytes.end()};
  FontScript script{path};
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    if (!script.Run(text.substr(start, end - start))) return nullptr;
    start = end + 1;
  }
  return script.Finish();
}

}  // namespace

std::string FindFontFile(const char* path) {
  if (IsFile(path)) return path;
  const char* directory = std::getenv("WINDIR");
  if (!directory) directory = std::getenv("windir");
  if (!directory) return {};
  std::string found = std::string{directory} + "/fonts/" + get_filename(path);
  fix_filename_slashes(found.data());
  return IsFile(found.c_str()) ? found : std::string{};
}

FONT* LoadLibraryFont(const char* path, bool* isBitmapFont) {
  const Reader* reader = FindReader(path);
  *isBitmapFont = reader != nullptr;
  return reader ? reader->load(path) : nullptr;
}

SharedBytes LoadFontBytes(const char* path) { return MapBytes(path, kLargestFont); }

}  // namespace zel
