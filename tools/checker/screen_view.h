// A screen on which all menus are laid out.
#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "launcher/layout.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/font.h"
#include "tools/checker/findings.h"
#include "tools/checker/menu_file.h"
#include "tools/checker/values.h"

namespace zel {

// The keys that say where a panel is.
struct PanelKeys {
  const char* name;
  const char* left;
  const char* top;
  const char* width;
  const char* height;                     // null for a height that no key says
  Rect (*place)(const LayoutValues& at);  // what they say
};
inline constexpr PanelKeys kMenuKeys{
    "the menu", "MenuLeft", "MenuTop", "MenuWidth", "MenuHeight", [](const LayoutValues& at) {
      return Rect{at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight};
    }};
inline constexpr PanelKeys kHintKeys{
    "the explanation",
    "HintLeft",
    "HintTop",
    "HintWidth",
    "HintHeight",
    [](const LayoutValues& at) {
      return Rect{at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight};
    }};
inline constexpr PanelKeys kProgressKeys{
    "the progress bar", "ProgressX", "ProgressY", "ProgressW", nullptr, [](const LayoutValues& at) {
      return Rect{at.progressX, at.progressY, at.progressW, kProgressHeight};
    }};

// Whether a length from there on is within the room. Any number may be in the file.
bool Fits(int from, int length, int room);
// Whether one lies over the other by more than frames do.
bool Overlap(const Rect& a, const Rect& b);
// Pixels of the screen to one of the file.
double Scale();
// How wide a text is whose words each have a line, in pixels.
int WidestWord(const Font& font, const std::string& text);

// What the looks at one screen after the other share: which sections count there, and what was
// said.
class ScreenView {
 public:
  ScreenView(Findings& allFindings, Pictures& allPictures)
      : findings{allFindings}, pictures{allPictures} {}

  // Null where the menu has none for this screen.
  const MenuSection* OwnSection(const MenuFile& menu) const;
  // The place of a key that counts on this screen; of the menu's first line where it does not say
  // it.
  Place PlaceOf(const MenuFile& menu, const char* key) const {
    return PlaceOf(menu, OwnSection(menu), key);
  }
  static Place PlaceOf(const MenuFile& menu, const MenuSection* own, const char* key);
  // The line that names the background here; null for none.
  const MenuLine* Background(const MenuFile& menu) const;

  // A place that a menu has from the one that led to it has been looked at there.
  bool IsNew(const char* what, const Rect& place) { return IsNew(what, place, size); }
  bool IsNew(const char* what, const Rect& place, Size screen) {
    return said.places.insert({what, screen.w, screen.h, place.x, place.y, place.w, place.h})
        .second;
  }

  Findings& findings;
  Pictures& pictures;
  Size size;  // in the pixels of the file
  std::string section;
  bool isFontHigh = false;  // the list's, which is said

  using Icon = std::pair<Place, std::string>;
  struct Said {
    std::set<std::tuple<std::string, int, int, int, int, int, int>> places;
    // Those that are said at the end, by size and room.
    std::map<std::pair<std::string, std::string>, std::vector<Icon>> largeIcons;
  };
  Said said;
};

}  // namespace zel
