// The face that a widget writes with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/error.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/skin_bitmap.h"

namespace zel {

class EngineFont;

// Where a text lies relative to its x coordinate.
enum TextAlign : int { kAlignLeft = 0, kAlignRight = 1, kAlignCentre = 2 };

// A bitmap font of Allegro's, drawn at the whole multiple nearest to the current zoom, or a face of
// the font engine. A fresh font is Allegro's built-in one, which is never destroyed. Texts are in
// the current text format; lengths are pixels.
class Font {
 public:
  Font() = default;
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  virtual ~Font();

  // Reads a font file, chosen by its extension. Code 12 when the file is neither there nor in the
  // directory that the environment names, 13 when it cannot be read: then this is the built-in
  // font.
  Error Load(const char* path);
  // Sets the line height in pixels that there are. 0, or -1 (the old size stays) when there is no
  // such size or this is a bitmap font.
  int SetSize(int px);
  // Files with letters that stand in for those that a face of the engine lacks: see FallbackFonts.
  // A bitmap font of Allegro's takes none, and another face has none yet.
  void SetFallbacks(const std::vector<std::string>& paths);
  // Back to the built-in font.
  void Reset();
  void Set(FONT* borrowed);
  void Set(EngineFont* borrowed);

  bool IsScalable() const;
  bool IsFixed() const;
  // The heights of a face with fixed sizes, ended by -1; null for a bitmap font.
  const int* GetFixedSizes() const;

  // Whether the font or one of its fallbacks has the character.
  bool Has(int character) const;

  int TextHeight() const;
  int TextLength(const char* text) const;

  // One line. For kAlignRight x is the right end, for kAlignCentre the middle. `background` -1 is
  // transparent. An empty target draws nothing.
  void Textout(Bitmap& target, const char* text, int x, int y, Color color, Color background,
               int align) const;
  // The same with a shadow one pixel (at the current zoom) to the right and below; `shadow` -1
  // draws none.
  void TextoutShadow(Bitmap& target, const char* text, Point point, Color color, Color shadow,
                     Color background, int align) const;
  // printf forms; what does not fit 1023 bytes is cut.
  void TextoutPrintf(Bitmap& target, int x, int y, Color color, Color background, int align,
                     const char* format, ...) const;
  void TextoutShadowPrintf(Bitmap& target, Point point, Color color, Color shadow, Color background,
                           int align, const char* format, ...) const;
  // A line in which "&" marks the hot key, drawn underlined; "&&" is one "&". Answers the width; an
  // empty target only measures.
  int HotkeyTextout(Bitmap& target, const char* text, int x, int y, Color color, Color shadow,
                    Color background, int align) const;

  // Whether a line may end between two characters without a separator: only in a font with
  // fallbacks, since only that is meant for all scripts.
  bool BreaksBetween(int before, int after) const;
  // How many bytes of the text make its next line within `width`; `lineWidth` receives their width.
  int WrapCount(const char* text, int width, int* lineWidth) const;
  // Lines wrapped at `width`, the first at y.
  void MultilineTextout(Bitmap& target, const char* text, Color color, Color shadow,
                        Color background, int x, int y, int width, int align) const;
  int MultilineHeight(const char* text, int width) const;

  bool IsEngine() const { return engine == 1; }

 private:
  void Release();
  FONT* LibraryFace() const;
  EngineFont* EngineFace() const;
  bool IsSmooth() const;  // drawn antialiased, as far as the target allows
  void Enlarge(BITMAP* target, const char* text, Point at, Color color, Color background) const;

 protected:
  int engine = 0;        // 1: `face` is an EngineFont, else a FONT
  void* face = nullptr;  // null: Allegro's built-in font
  bool owned = false;
};

}  // namespace zel
