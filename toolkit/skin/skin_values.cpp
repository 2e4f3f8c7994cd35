#include "toolkit/skin/skin_values.h"

#include "toolkit/core/text.h"

namespace zel {
namespace {

constexpr int kDecimal = 10;

}  // namespace

int ReadSkinInt(const char* section, const char* key, int fallback, int lowest, int highest) {
  const char* text = get_config_string(Ascii(section), Ascii(key), nullptr);
  if (!text || ugetc(text) == 0) return fallback;
  const long value = ustrtol(text, nullptr, kDecimal);
  return lowest <= value && value <= highest ? static_cast<int>(value) : fallback;
}

Color ReadSkinColor(const char* section, const char* key, const char* fallback) {
  return Color::FromText(get_config_string(Ascii(section), Ascii(key), Ascii(fallback)));
}

}  // namespace zel
