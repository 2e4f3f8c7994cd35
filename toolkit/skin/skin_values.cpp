#include "toolkit/skin/skin_values.h"

#include "toolkit/core/text.h"

namespace zel {

int ReadSkinInt(const char* section, const char* key, int fallback, int lowest, int highest) {
  const int value = get_config_int(Ascii(section), Ascii(key), fallback);
  return lowest <= value && value <= highest ? value : fallback;
}

Color ReadSkinColor(const char* section, const char* key, const char* fallback) {
  return Color::FromText(get_config_string(Ascii(section), Ascii(key), Ascii(fallback)));
}

}  // namespace zel
