// Text with outline fonts, on top of FreeType.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H

#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/fallback_fonts.h"

namespace zel {

// One glyph drawn at some size: a byte per pixel, in rows that are filled up with zeros to whole
// blocks of pixels.
struct GlyphImage {
  static constexpr int kBlock = 8;

  int width = 0, height = 0;
  int stride = 0;                          // from one row to the next, at least the width
  int left = 0, top = 0;                   // of the top-left pixel from the pen, top upward
  std::unique_ptr<std::uint8_t[]> pixels;  // 1 where set, or coverage 0..255
};

// A glyph at the current size: measured and drawn when it is first needed, in two tones, moved onto
// the grid of pixels, or antialiased. Moving may also change how far the next glyph is away.
struct Glyph {
  struct Form {
    bool isMeasured = false;
    int advanceX = 0, advanceY = 0;  // pixels
    std::unique_ptr<GlyphImage> image;
  };
  Form mono, gray;
};

// A record for every glyph of a face; memory for them is taken as they are used.
class GlyphCache {
 public:
  void Resize(std::size_t count);
  // Null for an index that the face does not have.
  Glyph* At(std::size_t index);
  void Clear();

 private:
  static constexpr std::size_t kPage = 64;
  std::size_t count_ = 0;
  std::vector<std::unique_ptr<Glyph[]>> pages_;
};

// FreeType, which ends with the last face that it opened.
using EngineLibrary = std::shared_ptr<FT_LibraryRec_>;

// A face opened from the bytes of its file.
class EngineFont {
 public:
  EngineFont() = default;
  EngineFont(const EngineFont&) = delete;
  EngineFont& operator=(const EngineFont&) = delete;
  ~EngineFont();

  FT_Face ftFace = nullptr;
  int size = 0;       // line height asked for, in pixels: ascender + |descender|
  int pixelSize = 0;  // FreeType's size for it
  int ascent = 0;     // pixels at pixelSize
  SharedBytes data;
  int dataSize = 0;     // bytes of it
  int spacing = 0;      // extra pixels after every advance, 0..4096
  int fixedCount = -1;  // fixed sizes of a bitmap face; -1 for a scalable one
  GlyphCache glyphs;
  std::vector<int> fixedSizes;  // ended by -1

  // The glyph indices of the first characters; kUnknownGlyph until asked for.
  static constexpr unsigned kUnknownGlyph = ~0u;
  static constexpr int kQuickCharacters = 256;
  std::vector<unsigned> quickIndices;

  FallbackFonts fallbacks;

  EngineLibrary library;  // stays until the face is closed
};

// Start and stop FreeType. EngineInit answers false when it cannot be started. Faces that are still
// open when it is stopped stay good.
bool EngineInit();
void EngineExit();

// Opens a face; null when the bytes are no font (or the engine is not started).
std::unique_ptr<EngineFont> EngineLoad(SharedBytes bytes);
// Closes a face that was released from its pointer; null is none.
void EngineDestroy(EngineFont* owned);
// The line height in pixels; 0, or -1 when there is no such size: then the old one stays.
int EngineSetSize(EngineFont& face, int px);
// The size of the letters themselves, as FreeType counts it; nothing changes where there is no such
// size.
void EngineSetPixelSize(EngineFont& face, int pixelSize);
// Whether the face or one of its fallbacks has the character; one without a map of characters has
// what it has a glyph for.
bool EngineHas(EngineFont& face, int character);
void EngineSetSpacing(EngineFont& face, int spacing);
// The colour behind the text drawn from now on; -1 is transparent.
void EngineSetBackground(Color background);

// Draw a text with its left end, right end or middle (a TextAlign) at x and its line's top at y;
// the first in two tones, the second antialiased. Nothing is blended on 8-bit bitmaps: what lies
// behind a text there is either covered with the background or shows between two tones, and letters
// are always as far apart as in two tones.
void EngineTextout(BITMAP* target, EngineFont& face, const char* text, int x, int y, Color color,
                   int align);
void EngineTextoutAA(BITMAP* target, EngineFont& face, const char* text, int x, int y, Color color,
                     int align);
// printf forms; what does not fit 1023 bytes is cut.
void EngineTextoutPrintf(BITMAP* target, EngineFont& face, int x, int y, Color color, int align,
                         const char* format, ...);
void EngineTextoutAAPrintf(BITMAP* target, EngineFont& face, int x, int y, Color color, int align,
                           const char* format, ...);
// The length of a text drawn in two tones, or antialiased in the current mode.
int EngineTextLength(EngineFont& face, const char* text);
int EngineTextLengthAA(EngineFont& face, const char* text);
int EngineTextHeight(const EngineFont& face);

}  // namespace zel
