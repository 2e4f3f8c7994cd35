#include "toolkit/draw/skin_values.h"

#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr int kDecimal = 10;

}  // namespace

int ReadSkinInt(const SectionFile& file, const char* section, const char* key, int fallback,
                int lowest, int highest) {
  const char* text = file.Find(Ascii(section)).GetText(Ascii(key), nullptr);
  if (!text) return fallback;
  const long value = ustrtol(text, nullptr, kDecimal);
  return lowest <= value && value <= highest ? static_cast<int>(value) : fallback;
}

Color ReadSkinColor(const SectionFile& file, const char* section, const char* key,
                    const char* fallback) {
  return Color::FromText(file.Find(Ascii(section)).GetText(Ascii(key), Ascii(fallback)));
}

}  // namespace zel
