#include "toolkit/skin/menu_look.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "toolkit/base/section_file.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/draw/skin_values.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

struct ColorKey {
  const char* section;
  const char* key;
  Color MenuLook::*color;
};
constexpr ColorKey kColors[] = {
    {"ENTRY", "color", &MenuLook::text},
    {"ENTRY", "selectColor", &MenuLook::selectedText},
    {"ENTRY", "disableColor", &MenuLook::disabledText},
    {"ENTRY", "returnColor", &MenuLook::returnText},
    {"ENTRY", "separatorColor", &MenuLook::separator},
    {"ENTRY", "fieldColor", &MenuLook::field},
    {"ENTRY", "fieldBorderColor", &MenuLook::fieldBorder},
    {"ENTRY", "idleColor", &MenuLook::idle},
    {"ENTRY", "idleBorderColor", &MenuLook::idleBorder},
    {"TITLE", "color", &MenuLook::titleText},
    {"TITLE", "backColor", &MenuLook::titleGround},
    {"TITLE", "lineColor", &MenuLook::titleLine},
    {"PANEL", "backColor", &MenuLook::ground},
    {"PANEL", "borderColor", &MenuLook::border},
    {"PANEL", "focusBorderColor", &MenuLook::focusBorder},
    {"SCREEN", "headingColor", &MenuLook::heading},
    {"SCREEN", "keyHelpColor", &MenuLook::keyHelp},
    {"WAIT", "countdownColor", &MenuLook::countdown},
    {"WAIT", "countdownBackColor", &MenuLook::countdownGround},
    {"BAR", "color", &MenuLook::bar},
    {"BAR", "backColor", &MenuLook::barGround},
    {"BAR", "borderColor", &MenuLook::barBorder},
    {"WINDOW", "borderColor", &MenuLook::windowBorder},
    {"BOX", "borderColor", &MenuLook::groupBorder},
};

constexpr int kWidest = 400, kThickest = 16;  // pixels

struct MeasureKey {
  const char* section;
  const char* key;
  int MenuLook::*measure;
  int highest;
  enum { kPixels, kNumber, kFont } kind = kPixels;
};
constexpr MeasureKey kMeasures[] = {
    {"ENTRY", "iconX", &MenuLook::iconX, kWidest},
    {"ENTRY", "textX", &MenuLook::textX, kWidest},
    {"ENTRY", "markX", &MenuLook::markX, kWidest},
    {"ENTRY", "fieldX", &MenuLook::fieldX, kWidest},
    {"ENTRY", "fieldY", &MenuLook::fieldY, kThickest},
    {"ENTRY", "fieldRadius", &MenuLook::fieldRadius, kWidest},
    {"ENTRY", "fieldBorder", &MenuLook::fieldBorderWidth, kThickest},
    {"ENTRY", "separatorHeight", &MenuLook::separatorHeight, kWidest},
    {"ENTRY", "wrap", &MenuLook::wraps, 1, MeasureKey::kNumber},
    {"ENTRY", "icons", &MenuLook::icons, 1, MeasureKey::kNumber},
    {"TITLE", "font", &MenuLook::titleFont, Skin::kFonts - 1, MeasureKey::kFont},
    {"TITLE", "height", &MenuLook::titleHeight, kWidest},
    {"TITLE", "textX", &MenuLook::titleX, kWidest},
    {"TITLE", "alignment", &MenuLook::titleAlignment, 2, MeasureKey::kNumber},
    {"PANEL", "border", &MenuLook::borderWidth, kThickest},
    {"PANEL", "radius", &MenuLook::radius, kWidest},
    {"PANEL", "paddingX", &MenuLook::paddingX, kWidest},
    {"PANEL", "paddingY", &MenuLook::paddingY, kWidest},
    {"HINT", "paddingX", &MenuLook::hintX, kWidest},
    {"HINT", "paddingY", &MenuLook::hintY, kWidest},
    {"SCREEN", "picture", &MenuLook::picture, 1, MeasureKey::kNumber},
    {"WINDOW", "border", &MenuLook::windowBorderWidth, kThickest},
    {"WAIT", "countdownFont", &MenuLook::countdownFont, Skin::kFonts - 1, MeasureKey::kFont},
};

// In ASCII, whatever the current text format is.
std::string TextOf(const SectionFile& file, const char* section, const char* key) {
  const char* text = file.Find(Ascii(section)).GetText(Ascii(key));
  std::string narrow;
  while (const int c = ugetxc(&text)) narrow += c < 128 ? static_cast<char>(c) : '?';
  return narrow;
}

// Whole numbers only.
int ParseMeasure(const std::string& text, int highest) {
  int value;
  char more;
  if (std::sscanf(text.c_str(), "%d %c", &value, &more) != 1) return MenuLook::kAbsent;
  return 0 <= value && value <= highest ? value : MenuLook::kAbsent;
}

double ParseContrast(const std::string& text) {
  constexpr double kMost = 21;
  const double value = std::strtod(text.c_str(), nullptr);
  return std::isfinite(value) ? std::clamp(value, 0.0, kMost) : 0;
}

bool Has(const SectionFile& file, const char* section) {
  return !file.Find(Ascii(section)).Entries().empty();
}

}  // namespace

MenuLook::Names MenuLook::ColorKeys() {
  Names names;
  for (const ColorKey& row : kColors) names.emplace_back(row.section, row.key);
  return names;
}

std::vector<Color*> MenuLook::Colors() {
  std::vector<Color*> colors;
  for (const ColorKey& row : kColors) colors.push_back(&(this->*row.color));
  return colors;
}

std::vector<MenuLook::Measure> MenuLook::MeasureKeys() {
  std::vector<Measure> measures;
  for (const MeasureKey& row : kMeasures)
    measures.push_back({row.section, row.key, row.highest, row.kind == MeasureKey::kFont});
  return measures;
}

Color MenuLook::ReadColor(const char* text) {
  int r, g, b;
  char more;
  if (std::sscanf(text, "%d ,%d ,%d %c", &r, &g, &b, &more) != 3) return {};
  if (std::min({r, g, b}) < 0 || std::max({r, g, b}) > 255) return {};
  return {r, g, b};
}

void MenuLook::Read(const SectionFile& file) {
  *this = {};
  for (const ColorKey& row : kColors)
    this->*row.color = ReadColor(TextOf(file, row.section, row.key).c_str());
  for (const MeasureKey& row : kMeasures) {
    const int value = ParseMeasure(TextOf(file, row.section, row.key), row.highest);
    this->*row.measure =
        row.kind == MeasureKey::kPixels && value != kAbsent ? Zoomed(value) : value;
  }
  hasGroupBorder = TextOf(file, "BOX", "borderColor") != "-1";
  hasLabels = Has(file, "LABEL");
  hasEntries = Has(file, "ENTRY");
  leastContrast = ParseContrast(TextOf(file, kContrastKey.first, kContrastKey.second));
  // What a skin says of entries must not hide them.
  if (hasEntries || IsFlat()) leastContrast = std::max(leastContrast, kVisibleContrast);
}

}  // namespace zel
