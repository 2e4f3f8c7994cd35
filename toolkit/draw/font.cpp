#include "toolkit/draw/font.h"

#include <cmath>
#include <string>

#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/font_files.h"

namespace zel {
namespace {

// The multiple of a bitmap font that is nearest to the zoom.
int Multiple() { return static_cast<int>(std::lround(CurrentZoom())); }

constexpr int kMaskDepth = 8;  // of a picture that only says where there is text
constexpr int kMark = 1;

}  // namespace

Font::~Font() { Release(); }

FONT* Font::LibraryFace() const { return face ? static_cast<FONT*>(face) : ::font; }
EngineFont* Font::EngineFace() const { return static_cast<EngineFont*>(face); }

void Font::Release() {
  if (owned && IsEngine()) EngineDestroy(EngineFace());
  if (owned && !IsEngine() && LibraryFace() != ::font) destroy_font(LibraryFace());
  engine = 0;
  face = nullptr;
  owned = false;
}

void Font::Reset() { Release(); }

void Font::Set(FONT* borrowed) {
  Release();
  face = borrowed;
}

void Font::Set(EngineFont* borrowed) {
  Release();
  engine = borrowed ? 1 : 0;
  face = borrowed;
}

Error Font::Load(const char* path) {
  const std::string found = path ? FindFontFile(path) : std::string{};
  if (found.empty()) return kFileNotFoundError;
  Release();
  bool isBitmapFont = false;
  face = LoadLibraryFont(found.c_str(), &isBitmapFont);
  if (!isBitmapFont) face = EngineLoad(LoadFontBytes(found.c_str())).release();
  if (!face) return kLoadError;
  engine = isBitmapFont ? 0 : 1;
  owned = true;
  return kNoError;
}

void Font::SetFallbacks(const std::vector<std::string>& paths) {
  if (IsEngine()) EngineFace()->fallbacks.SetFiles(paths);
}

bool Font::BreaksBetween(int before, int after) const {
  return IsEngine() && !EngineFace()->fallbacks.IsEmpty() && MayBreakBetween(before, after);
}

int Font::SetSize(int px) { return IsEngine() ? EngineSetSize(*EngineFace(), px) : -1; }

bool Font::IsScalable() const { return IsEngine() && EngineFace()->fixedCount < 0; }
bool Font::IsSmooth() const { return settings.antialiasing && IsScalable(); }
bool Font::IsFixed() const { return IsEngine() && EngineFace()->fixedCount >= 0; }

const int* Font::GetFixedSizes() const {
  return IsEngine() ? EngineFace()->fixedSizes.data() : nullptr;
}

bool Font::Has(int character) const {
  if (IsEngine()) return EngineHas(*EngineFace(), character);
  for (int i = 0; i < get_font_ranges(LibraryFace()); ++i)
    if (character >= get_font_range_begin(LibraryFace(), i) &&
        character <= get_font_range_end(LibraryFace(), i))
      return true;
  return false;
}

int Font::TextHeight() const {
  return IsEngine() ? EngineTextHeight(*EngineFace()) : Multiple() * text_height(LibraryFace());
}

int Font::TextLength(const char* text) const {
  if (!IsEngine()) return Multiple() * text_length(LibraryFace(), text);
  return (IsSmooth() ? EngineTextLengthAA : EngineTextLength)(*EngineFace(), text);
}

// Each pixel of an 8-bit picture of the text becomes a square.
void Font::Enlarge(BITMAP* target, const char* text, Point at, Color color,
                   Color background) const {
  const int factor = Multiple();
  const Size size{text_length(LibraryFace(), text), text_height(LibraryFace())};
  BitmapPtr plain{create_bitmap_ex(kMaskDepth, size.w, size.h)};
  BitmapPtr large{create_bitmap_ex(kMaskDepth, factor * size.w, factor * size.h)};
  if (!plain || !large) return;
  clear_bitmap(plain.get());
  textout_ex(plain.get(), LibraryFace(), text, 0, 0, kMark, -1);
  stretch_blit(plain.get(), large.get(), 0, 0, size.w, size.h, 0, 0, large->w, large->h);
  draw_character_ex(target, large.get(), at.x, at.y, color, background);
}

void Font::Textout(Bitmap& target, const char* text, int x, int y, Color color, Color background,
                   int align) const {
  BITMAP* bitmap = target.GetBitmap();
  if (!bitmap) return;
  if (IsEngine()) {
    EngineSetBackground(background);
    const auto draw = IsSmooth() ? EngineTextoutAA : EngineTextout;
    draw(bitmap, *EngineFace(), text, x, y, color, align);
  } else if (Multiple() > 1) {
    const int width = TextLength(text);
    const int left = align == kAlignRight ? x - width : align == kAlignCentre ? x - width / 2 : x;
    Enlarge(bitmap, text, {left, y}, color, background);
  } else if (align == kAlignRight) {
    textout_right_ex(bitmap, LibraryFace(), text, x, y, color, background);
  } else if (align == kAlignCentre) {
    textout_centre_ex(bitmap, LibraryFace(), text, x, y, color, background);
  } else {
    textout_ex(bitmap, LibraryFace(), text, x, y, color, background);
  }
}

}  // namespace zel
