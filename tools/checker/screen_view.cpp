#include "tools/checker/screen_view.h"

#include <algorithm>

#include "launcher/state.h"
#include "tools/checker/letters.h"
#include "tools/checker/lines.h"

namespace zel {
namespace {

constexpr int kTouch = 8;  // pixels by which panels may lie one over the other: no more than frames

}  // namespace

// No sum may overflow.
bool Fits(int from, int length, int room) {
  return from >= 0 && length <= room && from <= room - std::max(0, length);
}

bool Overlap(const Rect& a, const Rect& b) {
  const auto common = [](double from, double extent, double other, double otherExtent) {
    const double touch = std::min({1.0 * kTouch, extent / 2, otherExtent / 2});
    return std::min(from + extent, other + otherExtent) - std::max(from, other) - touch;
  };
  return common(a.x, a.w, b.x, b.w) > 0 && common(a.y, a.h, b.y, b.h) > 0;
}

double Scale() { return launcherState.layout.section.empty() ? 1 : launcherState.layout.scale; }

int WidestWord(const Font& font, const std::string& text) {
  int widest = 0, before = 0;
  std::string word;
  ForEachCharacter(text + ' ', [&](int character) {
    if (character == ' ' || font.BreaksBetween(before, character)) {
      widest = std::max(widest, font.TextLength(word.c_str()));
      word.clear();
    }
    if (character != ' ') word += Utf8(character);
    before = character;
  });
  return widest;
}

const MenuSection* ScreenView::OwnSection(const MenuFile& menu) const {
  const auto found = menu.screens.find(Upper(section));
  return found == menu.screens.end() ? nullptr : &found->second;
}

Place ScreenView::PlaceOf(const MenuFile& menu, const MenuSection* own, const char* key) {
  if (const MenuLine* line = own ? own->Find(key) : nullptr) return menu.At(line->entry.line);
  return menu.At(std::max(1, menu.General().LineOf(key)));
}

const MenuLine* ScreenView::Background(const MenuFile& menu) const {
  const MenuSection* own = OwnSection(menu);
  const MenuLine* line = own ? own->Find("Background") : nullptr;
  return line ? line : menu.General().Find("Background");
}

}  // namespace zel
