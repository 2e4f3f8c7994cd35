// Text output that is the same for every kind of face: shadows, hot keys, wrapped lines.
#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <string>

#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/font.h"

namespace zel {
namespace {

constexpr int kTextBuffer = 1024;  // bytes, terminator included

// A text without its "&" marks.
struct HotkeyText {
  std::string text;
  std::size_t hotkey = std::string::npos;  // where the marked character begins, or the end
};

HotkeyText TakeMarks(const char* marked) {
  HotkeyText result;
  std::string source = CutToBytes(marked, std::strlen(marked));
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source[i] == '&' && source[++i] != '&') result.hotkey = result.text.size();
    result.text += source[i];  // behind a mark at the end the terminator, which is cut off
  }
  result.text = CutToBytes(result.text.c_str(), kTextBuffer - 1);
  result.hotkey = std::min(result.hotkey, result.text.size());
  return result;
}

// Bytes 1 to 32 separate words.
bool IsSeparator(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 1 && value <= 32;
}

const char* SkipSeparators(const char* text) {
  while (IsSeparator(*text) && *text != '\n') ++text;
  return text;
}

std::string Format(const char* format, va_list arguments) {
  char buffer[kTextBuffer];
  uvszprintf(buffer, sizeof buffer, format, arguments);
  return buffer;
}

}  // namespace

void EngineTextoutPrintf(BITMAP* target, EngineFont& face, int x, int y, Color color, int align,
                         const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = Format(format, arguments);
  va_end(arguments);
  EngineTextout(target, face, text.c_str(), x, y, color, align);
}

void EngineTextoutAAPrintf(BITMAP* target, EngineFont& face, int x, int y, Color color, int align,
                           const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = Format(format, arguments);
  va_end(arguments);
  EngineTextoutAA(target, face, text.c_str(), x, y, color, align);
}

void Font::TextoutShadow(Bitmap& target, const char* text, Point point, Color color, Color shadow,
                         Color background, int align) const {
  if (shadow.IsSet()) {
    const int moved = Zoomed(1);
    Textout(target, text, point.x + moved, point.y + moved, shadow, background, align);
    background = Color{};
  }
  Textout(target, text, point.x, point.y, color, background, align);
}

void Font::TextoutPrintf(Bitmap& target, int x, int y, Color color, Color background, int align,
                         const char* format, ...) const {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = Format(format, arguments);
  va_end(arguments);
  Textout(target, text.c_str(), x, y, color, background, align);
}

void Font::TextoutShadowPrintf(Bitmap& target, Point point, Color color, Color shadow,
                               Color background, int align, const char* format, ...) const {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = Format(format, arguments);
  va_end(arguments);
  TextoutShadow(target, text.c_str(), point, color, shadow, background, align);
}

int Font::HotkeyTextout(Bitmap& target, const char* text, int x, int y, Color color, Color shadow,
                        Color background, int align) const {
  const HotkeyText plain = TakeMarks(text);
  const int width = TextLength(plain.text.c_str());
  if (align == kAlignRight) x -= width;
  if (align == kAlignCentre) x -= width / 2;
  if (target.IsEmpty()) return width;
  TextoutShadow(target, plain.text.c_str(), {x, y}, color, shadow, background, kAlignLeft);
  const std::string before = plain.text.substr(0, plain.hotkey);
  const std::string key = CutToChars(plain.text.c_str() + plain.hotkey, 1);
  const int left = x + TextLength(before.c_str());
  const int keyWidth = TextLength(key.c_str());
  const int under = y + TextHeight();
  if (keyWidth > 0) target.rectfill(left, under, left + keyWidth - 1, under + Zoomed(1) - 1, color);
  return width;
}

int Font::WrapCount(const char* text, int width, int* lineWidth) const {
  int takenBytes = 0, takenWidth = 0;
  int pendingWidth = 0;
  int position = 0;
  int before = 0;
  for (;;) {
    const char c = text[position];
    const bool ends = c == '\0' || c == '\n';
    const char* next = text + position;
    const int character = ugetxc(&next);
    if (ends || IsSeparator(c) || BreaksBetween(before, character)) {
      const bool fits = takenWidth + pendingWidth <= width || takenBytes == 0;
      if (!fits) break;
      takenBytes = position;
      takenWidth += pendingWidth;
      pendingWidth = 0;
      if (c == '\n') takenBytes = position + 1;
      if (ends) break;
    }
    const std::string letter{text + position, next};
    pendingWidth += TextLength(letter.c_str());
    before = character;
    position = static_cast<int>(next - text);
  }
  *lineWidth = takenWidth;
  return takenBytes;
}

void Font::MultilineTextout(Bitmap& target, const char* text, Color color, Color shadow,
                            Color background, int x, int y, int width, int align) const {
  int anchor = x;
  if (align == kAlignRight) anchor = x + width;
  if (align == kAlignCentre) anchor = x + width / 2;
  for (text = SkipSeparators(text); *text != '\0'; text = SkipSeparators(text)) {
    int lineWidth = 0;
    const int bytes = WrapCount(text, width, &lineWidth);
    std::string line{text, static_cast<std::size_t>(bytes)};
    if (!line.empty() && line.back() == '\n') line.pop_back();
    TextoutShadow(target, line.c_str(), {anchor, y}, color, shadow, background, align);
    y += TextHeight();
    text += bytes;
  }
}

int Font::MultilineHeight(const char* text, int width) const {
  int lines = 0;
  for (text = SkipSeparators(text); *text != '\0'; text = SkipSeparators(text)) {
    int lineWidth = 0;
    text += WrapCount(text, width, &lineWidth);
    ++lines;
  }
  return lines * TextHeight();
}

}  // namespace zel
