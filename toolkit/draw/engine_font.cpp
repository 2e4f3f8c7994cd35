#include "toolkit/draw/engine_font.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "toolkit/base/geometry.h"
#include "toolkit/draw/draw_part.h"
#include "toolkit/draw/font.h"
#include "toolkit/draw/glyph_painter.h"

namespace zel {
namespace {

constexpr int kInitialSize = 8;
constexpr int kMaxSpacing = 4096;
// FreeType counts in 1/64 pixels (its manual, "Glyph Conventions").
constexpr int kSubpixelBits = 6;
constexpr int kGrayLevels = 256;

// The search for a size ends here; no line on a screen is taller.
constexpr int kLargestSize = 4096;
// Pixels of a glyph; more of them is damage, and drawing them would take seconds.
constexpr std::int64_t kLargestGlyph = 1 << 26;

int LineHeight(FT_Face face) {
  const FT_Size_Metrics& metrics = face->size->metrics;
  return static_cast<int>(std::labs(metrics.ascender >> kSubpixelBits) +
                          std::labs(metrics.descender >> kSubpixelBits));
}

bool SetPixelSize(FT_Face face, int px) {
  return FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(px)) == 0;
}

// The pixel size whose line is `px` high: searched upward or downward from px, the last one below
// it where none fits. 0 when there is none.
int FindPixelSize(FT_Face face, int px) {
  int direction = 0;
  for (int size = px; size >= 1 && size <= kLargestSize; size += direction) {
    if (!SetPixelSize(face, size)) return 0;
    const int height = LineHeight(face);
    if (height == px) return size;
    if (direction == 0) direction = height > px ? -1 : 1;
    if (direction > 0 && height > px) return SetPixelSize(face, size - 1) ? size - 1 : 0;
    if (direction < 0 && height < px) return size;
  }
  return 0;
}

void TakeSize(EngineFont& face, int px, int pixelSize) {
  face.glyphs.Clear();
  face.size = px;
  face.pixelSize = pixelSize;
  face.ascent = static_cast<int>(face.ftFace->size->metrics.ascender >> kSubpixelBits);
}

// The line of a bitmap face may be higher than its nominal pixel size, by which FreeType finds a
// fixed size; the first one is taken by its place.
void TakeFirstFixedSize(EngineFont& face) {
  constexpr FT_Pos kHalf = 1 << (kSubpixelBits - 1);
  const int height = face.fixedSizes.front();
  if (height < 1 || FT_Select_Size(face.ftFace, 0) != 0) return;
  const FT_Pos nominal = face.ftFace->available_sizes[0].y_ppem;
  TakeSize(face, height, static_cast<int>((nominal + kHalf) >> kSubpixelBits));
}

// Fills the image with `pixel` of each row of the bitmap and column.
template <class PixelOf>
void Copy(const FT_Bitmap& bitmap, GlyphImage& image, const PixelOf& pixel) {
  for (int y = 0; y < image.height; ++y)
    for (int x = 0; x < image.width; ++x)
      image.pixels[y * image.stride + x] =
          static_cast<std::uint8_t>(pixel(bitmap.buffer + y * bitmap.pitch, x));
}

// Faces that come with their pictures may have them in two tones where coverage is asked for, and
// the other way round.
void CopyMono(const FT_Bitmap& bitmap, GlyphImage& image, FT_Render_Mode mode) {
  const int set = mode == FT_RENDER_MODE_MONO ? 1 : kGrayLevels - 1;
  Copy(bitmap, image,
       [set](const unsigned char* row, int x) { return row[x / 8] & 0x80 >> x % 8 ? set : 0; });
}

void CopyGray(const FT_Bitmap& bitmap, GlyphImage& image, FT_Render_Mode mode) {
  const int factor = kGrayLevels / std::max<int>(1, bitmap.num_grays);
  Copy(bitmap, image, [mode, factor](const unsigned char* row, int x) {
    const int covered = row[x] * factor;
    return mode == FT_RENDER_MODE_MONO ? covered >= kGrayLevels / 2 : covered;
  });
}

bool IsDrawable(const FT_Glyph_Metrics& metrics) {
  const std::int64_t width = metrics.width >> kSubpixelBits;
  const std::int64_t height = metrics.height >> kSubpixelBits;
  return width * height <= kLargestGlyph;
}

bool LoadGlyph(FT_Face face, unsigned index, FT_Render_Mode mode) {
  // In two tones a stem that is not moved onto the grid of pixels can vanish.
  const FT_Int32 load = mode == FT_RENDER_MODE_MONO ? FT_LOAD_TARGET_MONO : FT_LOAD_DEFAULT;
  return FT_Load_Glyph(face, index, load) == 0;
}

std::unique_ptr<GlyphImage> Render(FT_Face face, unsigned index, FT_Render_Mode mode) {
  auto image = std::make_unique<GlyphImage>();
  if (!LoadGlyph(face, index, mode)) return image;
  if (!IsDrawable(face->glyph->metrics) || FT_Render_Glyph(face->glyph, mode) != 0) return image;
  const FT_Bitmap& bitmap = face->glyph->bitmap;
  const bool isMono = bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
  if (!isMono && bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) return image;
  image->width = static_cast<int>(bitmap.width);
  image->height = static_cast<int>(bitmap.rows);
  image->left = face->glyph->bitmap_left;
  image->top = face->glyph->bitmap_top;
  image->stride = (image->width + GlyphImage::kBlock - 1) / GlyphImage::kBlock * GlyphImage::kBlock;
  image->pixels = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(image->stride) *
                                                   static_cast<std::size_t>(image->height));
  (isMono ? CopyMono : CopyGray)(bitmap, *image, mode);
  return image;
}

unsigned LookUpIndex(FT_Face face, int character) {
  return face->charmap ? FT_Get_Char_Index(face, static_cast<FT_ULong>(character))
                       : static_cast<unsigned>(character);
}

unsigned GlyphIndex(EngineFont& face, int character) {
  if (character < 0 || character >= EngineFont::kQuickCharacters)
    return LookUpIndex(face.ftFace, character);
  unsigned& index = face.quickIndices[static_cast<std::size_t>(character)];
  if (index == EngineFont::kUnknownGlyph) index = LookUpIndex(face.ftFace, character);
  return index;
}

FT_Render_Mode ModeOf(bool antialiased) {
  return antialiased ? FT_RENDER_MODE_NORMAL : FT_RENDER_MODE_MONO;
}

// A form of a glyph with its advance.
const Glyph::Form& Measure(EngineFont& face, Glyph& glyph, unsigned index, bool antialiased) {
  Glyph::Form& form = antialiased ? glyph.gray : glyph.mono;
  if (std::exchange(form.isMeasured, true)) return form;
  if (LoadGlyph(face.ftFace, index, ModeOf(antialiased))) {
    // Text runs to the right; a damaged font's instructions can turn it.
    form.advanceX = std::max(0, static_cast<int>(face.ftFace->glyph->advance.x >> kSubpixelBits));
    form.advanceY = static_cast<int>(face.ftFace->glyph->advance.y >> kSubpixelBits);
  }
  return form;
}

const GlyphImage& GetImage(EngineFont& face, Glyph& glyph, unsigned index, bool antialiased) {
  std::unique_ptr<GlyphImage>& image = (antialiased ? glyph.gray : glyph.mono).image;
  if (!image) image = Render(face.ftFace, index, ModeOf(antialiased));
  return *image;
}

// A character's glyph in the face that has it.
struct Letter {
  EngineFont& face;
  unsigned index;
  Glyph* glyph;  // null for an index that the face does not have
};

Letter FindLetter(EngineFont& face, int character) {
  const unsigned index = GlyphIndex(face, character);
  EngineFont* other = index == 0 ? face.fallbacks.Find(character, face.pixelSize) : nullptr;
  if (!other) return {face, index, face.glyphs.At(index)};
  const unsigned otherIndex = GlyphIndex(*other, character);
  return {*other, otherIndex, other->glyphs.At(otherIndex)};
}

int MeasureText(EngineFont& face, const char* text, bool antialiased) {
  int length = 0;
  for (const char* position = text; *position != '\0';) {
    const Letter letter = FindLetter(face, ugetxc(&position));
    if (!letter.glyph) continue;
    const int advance = Measure(letter.face, *letter.glyph, letter.index, antialiased).advanceX;
    if (advance != 0) length += advance + face.spacing;
  }
  return length;
}

// A palette has no colours between that of the text and those below.
bool HasColorsBetween(int depth) { return depth != 8; }

int LeftEnd(int x, int length, int align) {
  if (align == kAlignRight) return x - length;
  if (align == kAlignCentre) return x - length / 2;
  return x;
}

void Fill(BITMAP* target, const Rect& line, Color color) {
  if (line.w > 0 && line.h > 0)
    rectfill(target, line.x, line.y, line.Right() - 1, line.Bottom() - 1, color);
}

void DrawLine(BITMAP* target, EngineFont& face, const char* text, int x, int y, Color color,
              int align, bool antialiased) {
  const Color background = Drawing().textBackground;
  // Also what can be drawn antialiased over a background must be as long as it was measured.
  const bool spacedForGray = antialiased && HasColorsBetween(bitmap_color_depth(target));
  antialiased = spacedForGray || (antialiased && background.IsSet());
  const bool needsLength = align != kAlignLeft || background.IsSet();
  const int length = needsLength ? MeasureText(face, text, spacedForGray) : 0;
  x = LeftEnd(x, length, align);
  if (y >= target->cb || y + face.size <= target->ct || x >= target->cr) return;
  if (background.IsSet()) Fill(target, {x, y, length, face.size}, background);
  const GlyphPainter painter{target, color, background, antialiased};
  for (const char* position = text; *position != '\0';) {
    const Letter letter = FindLetter(face, ugetxc(&position));
    if (!letter.glyph) continue;
    const GlyphImage& image = GetImage(letter.face, *letter.glyph, letter.index, antialiased);
    painter.Paint(image, x + image.left, y + face.ascent - image.top);
    const Glyph::Form& form = Measure(letter.face, *letter.glyph, letter.index, spacedForGray);
    x += form.advanceX + face.spacing;
    if (form.advanceY != 0) y += form.advanceY + face.spacing;
    if (x >= target->cr) return;
  }
}

}  // namespace

void GlyphCache::Resize(std::size_t count) {
  count_ = count;
  pages_.clear();
  pages_.resize(count / kPage + 1);
}

Glyph* GlyphCache::At(std::size_t index) {
  if (index >= count_) return nullptr;
  std::unique_ptr<Glyph[]>& page = pages_[index / kPage];
  if (!page) page = std::make_unique<Glyph[]>(kPage);
  return &page[index % kPage];
}

void GlyphCache::Clear() { Resize(count_); }

EngineFont::~EngineFont() {
  if (ftFace) FT_Done_Face(ftFace);
}

bool EngineInit() {
  EngineLibrary& library = Drawing().fontEngine;
  FT_Library started = nullptr;
  if (!library && FT_Init_FreeType(&started) == 0) library.reset(started, FT_Done_FreeType);
  return library != nullptr;
}

void EngineExit() { Drawing().fontEngine.reset(); }

std::unique_ptr<EngineFont> EngineLoad(SharedBytes bytes) {
  const EngineLibrary& library = Drawing().fontEngine;
  const std::span<const std::uint8_t> file = bytes.bytes;
  FT_Face opened = nullptr;
  if (FT_New_Memory_Face(library.get(), file.data(), static_cast<FT_Long>(file.size()), 0,
                         &opened) != 0)
    return nullptr;
  auto face = std::make_unique<EngineFont>();
  face->ftFace = opened;
  face->library = library;
  face->data = std::move(bytes);
  face->dataSize = static_cast<int>(file.size());
  if (!FT_IS_SCALABLE(opened)) {
    face->fixedCount = opened->num_fixed_sizes;
    for (int i = 0; i < face->fixedCount; ++i)
      face->fixedSizes.push_back(opened->available_sizes[i].height);
  }
  face->fixedSizes.push_back(-1);
  face->quickIndices.assign(EngineFont::kQuickCharacters, EngineFont::kUnknownGlyph);
  face->glyphs.Resize(static_cast<std::size_t>(std::max<FT_Long>(0, opened->num_glyphs)));
  if (face->fixedCount > 0)
    TakeFirstFixedSize(*face);
  else
    EngineSetSize(*face, kInitialSize);
  return face;
}

void EngineDestroy(EngineFont* owned) { delete owned; }

int EngineSetSize(EngineFont& face, int px) {
  if (px == face.size) return 0;
  if (px < 1) return -1;
  const int found = FindPixelSize(face.ftFace, px);
  if (found == 0) {
    SetPixelSize(face.ftFace, face.pixelSize);
    return -1;
  }
  TakeSize(face, px, found);
  return 0;
}

void EngineSetPixelSize(EngineFont& face, int pixelSize) {
  if (FT_IS_SCALABLE(face.ftFace) && SetPixelSize(face.ftFace, pixelSize))
    TakeSize(face, LineHeight(face.ftFace), pixelSize);
}

bool EngineHas(EngineFont& face, int character) {
  const Letter letter = FindLetter(face, character);
  return letter.glyph && letter.index != 0;
}

void EngineSetSpacing(EngineFont& face, int spacing) {
  face.spacing = std::clamp(spacing, 0, kMaxSpacing);
}

void EngineSetBackground(Color background) { Drawing().textBackground = background; }

int EngineTextLength(EngineFont& face, const char* text) { return MeasureText(face, text, false); }

int EngineTextLengthAA(EngineFont& face, const char* text) {
  return MeasureText(face, text, HasColorsBetween(get_color_depth()));
}

int EngineTextHeight(const EngineFont& face) { return face.size; }

void EngineTextout(BITMAP* target, EngineFont& face, const char* text, int x, int y, Color color,
                   int align) {
  DrawLine(target, face, text, x, y, color, align, false);
}

void EngineTextoutAA(BITMAP* target, EngineFont& face, const char* text, int x, int y, Color color,
                     int align) {
  DrawLine(target, face, text, x, y, color, align, true);
}

}  // namespace zel
