#include "tools/checker/layout_check.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "launcher/layout.h"
#include "launcher/menu_config.h"
#include "launcher/menu_widgets.h"
#include "launcher/state.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/skin/skin.h"
#include "tools/checker/languages.h"
#include "tools/checker/letters.h"
#include "tools/checker/lines.h"
#include "tools/checker/skin_check.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

constexpr const char* kFewLetters = "nnnnnnnn";  // that a line has room for, or a whole word
constexpr int kLargestRoom = 1 << 20;            // pixels

constexpr Size kDefaultScreen{800, 600};

constexpr int kTouch = 8;  // pixels by which panels may lie one over the other: no more than frames

// The keys that say where a panel is.
struct PanelKeys {
  const char* name;
  const char* left;
  const char* top;
  const char* width;
  const char* height;  // null for a height that no key says
};
constexpr PanelKeys kMenuKeys{"the menu", "MenuLeft", "MenuTop", "MenuWidth", "MenuHeight"};
constexpr PanelKeys kHintKeys{"the explanation", "HintLeft", "HintTop", "HintWidth", "HintHeight"};
constexpr PanelKeys kProgressKeys{"the progress bar", "ProgressX", "ProgressY", "ProgressW",
                                  nullptr};

// Any number may be in the file, so no sum may overflow.
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

Color MeanOf(BITMAP* picture, const Rect& area) {
  constexpr int kStep = 4;
  long long sums[3] = {}, count = 0;
  for (int y = std::max(0, area.y); y < std::min(area.Bottom(), picture->h); y += kStep)
    for (int x = std::max(0, area.x); x < std::min(area.Right(), picture->w); x += kStep, ++count) {
      const int pixel = getpixel(picture, x, y);
      sums[0] += getr(pixel);
      sums[1] += getg(pixel);
      sums[2] += getb(pixel);
    }
  if (count == 0) return Color{0, 0, 0};
  return {static_cast<int>(sums[0] / count), static_cast<int>(sums[1] / count),
          static_cast<int>(sums[2] / count)};
}

// How wide a text is whose words each have a line, in pixels.
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

class LayoutCheck {
 public:
  LayoutCheck(Findings& findings, Pictures& pictures, const std::vector<MenuFile>& menus, Size own,
              bool isLook)
      : findings_{findings}, pictures_{pictures}, menus_{menus}, own_{own}, isLook_{isLook} {
    for (const MenuFile& menu : menus) places_.emplace(menu.name, &menu);
  }

  // Where many icons are too large alike, it is the rows that are too low.
  void Finish() {
    constexpr std::size_t kFew = 3;
    for (const auto& [sizes, icons] : largeIcons_) {
      const auto& [size, room] = sizes;
      const bool areMany = icons.size() > kFew;
      // What allows one of them allows the message on all.
      const auto allowed = std::count_if(icons.begin(), icons.end(), [this](const Icon& icon) {
        return findings_.IsAllowed(Msg::kIconLarge, icon.first);
      });
      if (areMany && allowed > 0) continue;
      for (const auto& [place, name] : icons) {
        findings_.Add(
            Msg::kIconLarge, place,
            {areMany ? name + " and " + std::to_string(icons.size() - 1) + " others" : name, size,
             room, areMany ? "are" : "is",
             room == "0x" + room.substr(room.find('x') + 1)
                 ? "write a textX that is larger than iconX into [ENTRY] of the skin"
             : areMany ? "take a skin with larger rows, or smaller icons"
                       : "make it smaller"});
        if (areMany) break;
      }
    }
  }

  void Run(Size screen) {
    settings.screenWidth = screen.w;
    settings.screenHeight = screen.h;
    launcherState.layoutValues = {};
    const double before = CurrentZoom();
    const double zoom = settings.zoom == 1 ? 1 : kZoomToFit;
    SetZoom(1);
    launcherState.layout = FitLayout(kMainMenu, screen, zoom);
    if (before != CurrentZoom()) CurrentSkin()->Reload();
    const ScreenLayout& fitted = launcherState.layout;
    screen_ = fitted.section.empty() ? screen : fitted.size;
    section_ = LayoutSection();
    if (menus_.empty() || !menus_.front().isRead || !menus_.front().isLayoutKnown ||
        !HasLayout(screen))
      return;
    if (screen == own_) CheckPassedOver(menus_.front());
    WalkAll(screen);
  }

 private:
  using Icon = std::pair<Place, std::string>;

  static bool HasSection(const MenuFile& menu, const std::string& name) {
    return menu.screens.contains(Upper(name));
  }

  const MenuSection* OwnSection(const MenuFile& menu) const {
    const auto found = menu.screens.find(Upper(section_));
    return found == menu.screens.end() ? nullptr : &found->second;
  }

  // The place of a key that counts on this screen; of the menu's first line where it does not say
  // it.
  Place PlaceOf(const MenuFile& menu, const char* key) const {
    return PlaceOf(menu, OwnSection(menu), key);
  }
  static Place PlaceOf(const MenuFile& menu, const MenuSection* own, const char* key) {
    if (const MenuLine* line = own ? own->Find(key) : nullptr) return menu.At(line->entry.line);
    return menu.At(std::max(1, menu.General().LineOf(key)));
  }

  // A screen that nothing is made for is one cause, whatever does not fit on it.
  bool HasLayout(Size screen) {
    if (OwnSection(menus_.front()) && Upper(section_) != kGeneralSection) return true;
    const MenuFile& menu = menus_.front();
    LayoutValues at;
    {
      MenuConfig config;
      config.ReadWithoutHints(kMainMenu);
      at = launcherState.layoutValues;
      launcherState.layoutValues = {};
    }
    const auto fitsOn = [&at](Size size) {
      return Fits(at.menuLeft, at.menuWidth, size.w) && Fits(at.menuTop, at.menuHeight, size.h) &&
             Fits(at.hintLeft, at.hintWidth, size.w) && Fits(at.hintTop, at.hintHeight, size.h) &&
             Fits(at.progressX, at.progressW, size.w) &&
             Fits(at.progressY, kProgressHeight, size.h);
    };
    const bool fits = fitsOn(screen);
    // Where the general section is meant for the screen, what is wrong is wrong in it.
    const bool isOwn = screen == own_, isUsual = IsUsual(screen);
    // What fits it and not the usual one was plainly written for it.
    const bool isWritten = fits && !fitsOn(kDefaultScreen);
    if (isOwn && (isUsual || settings.zoom != 1 || isWritten)) return hasGeneral_ = true;
    // What does not fit the screen that it is meant for says nothing of others.
    if (!isOwn && IsUsual(own_) && !HasSection(menu, SectionFor(own_)) && !fitsOn(own_))
      return false;
    // Else it is meant for the least screen that has room for it.
    if (fits && !isOwn) return isUsual && !std::exchange(hasGeneral_, true);
    const std::string advice =
        isUsual || settings.zoom != 1 ? "" : ", and zoom = auto into zel.cfg";
    findings_.Add(Msg::kNoLayout, menu.At(std::max(1, menu.General().line)),
                  {NameOf(screen), advice});
    return false;
  }

  // Whether the general section is meant for the settings' own screen: its background is as large,
  // the other usual screens have sections, or no more than a panel of it lies outside.
  bool IsMeantForOwn(const MenuFile& menu, std::size_t outside) {
    const MenuLine* line = menu.General().Find("Background");
    const BITMAP* background = line ? pictures_.Get(line->entry.value) : nullptr;
    const Size size = background ? Size{background->w, background->h} : Size{};
    if (size == own_) return true;
    if (!IsUsual(own_)) return outside == 1 && !IsUsual(size);
    return outside == 1 ||
           std::all_of(std::begin(kUsualScreens), std::end(kUsualScreens), [&](Size usual) {
             return usual == own_ || HasSection(menu, SectionFor(usual));
           });
  }

  // With a zoom, what does not fit the screen that it is meant for gives way to the section of
  // another one.
  void CheckPassedOver(const MenuFile& menu) {
    if (settings.zoom == 1 || Upper(section_) == kGeneralSection ||
        HasSection(menu, SectionFor(own_)))
      return;
    const LayoutValues at =
        ReadLayout(SectionFile::FromUtf8(ReadWhole(kMainMenu)), kGeneralSection, {});
    std::vector<std::pair<const PanelKeys*, Rect>> outside;
    const auto add = [&](const PanelKeys& keys, const Rect& panel) {
      if (!Fits(panel.x, panel.w, own_.w) || !Fits(panel.y, panel.h, own_.h))
        outside.emplace_back(&keys, panel);
    };
    add(kMenuKeys, {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight});
    add(kProgressKeys, {at.progressX, at.progressY, at.progressW, kProgressHeight});
    if (menu.General().Find("HintFile"))
      add(kHintKeys, {at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight});
    if (outside.empty() || !IsMeantForOwn(menu, outside.size())) return;
    for (const auto& [keys, panel] : outside) CheckPanel(menu, nullptr, own_, *keys, panel);
  }

  // On a screen that is too small for all layouts the places of one shrink, without its texts.
  // Where much does not fit then, that is the one cause.
  void WalkAll(Size screen) {
    constexpr std::size_t kFew = 3;
    const MenuSection* own = OwnSection(menus_.front());
    const double zoom = own ? std::max(kLeastZoom, ParseZoom(own->Text("Zoom").c_str())) : 1;
    const bool isShrunk = !launcherState.layout.section.empty() && screen_ != screen &&
                          (launcherState.layout.scale * zoom < kLeastZoom ||
                           launcherState.layout.scale * screen_.w > screen.w);
    MenuConfig config;
    std::set<std::string> menus;
    if (!isShrunk) return Walk(config, menus_.front(), menus);
    Findings findings = findings_;
    auto seen = seen_;
    auto icons = largeIcons_;
    Walk(config, menus_.front(), menus);
    if (findings_.Count() <= findings.Count() + kFew) return;
    findings_ = std::move(findings);
    seen_ = std::move(seen);
    largeIcons_ = std::move(icons);
    findings_.Add(
        Msg::kNoLayout, menus_.front().At(std::max(1, menus_.front().General().line)),
        {NameOf(screen), "", ", and the one for " + NameOf(screen_) + " does not fit there"});
  }

  void Walk(MenuConfig& config, const MenuFile& menu, std::set<std::string>& seen) {
    constexpr std::size_t kMost = 200;  // menus, each of which takes its time
    seen.insert(menu.name);
    if (!menu.isLayoutKnown || seen.size() > kMost) return;
    config.ReadWithoutHints(menu.name.c_str());
    CheckMenu(config, menu);
    for (const SectionFile::Entry& link : menu.submenus)
      if (const auto found = places_.find(link.value);
          found != places_.end() && !seen.contains(link.value))
        Walk(config, *found->second, seen);
    if (config.Depth() > 1) config.ReadWithoutHints(nullptr);
  }

  void CheckMenu(const MenuConfig& config, const MenuFile& menu) {
    const LayoutValues& at = launcherState.layoutValues;
    const Rect menuPanel{at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight};
    const Rect hintPanel{at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight};
    const Rect bar{at.progressX, at.progressY, at.progressW, kProgressHeight};
    const bool hasHints = menu.General().Find("HintFile");
    const bool isMenu = CheckPanel(menu, kMenuKeys, menuPanel);
    const bool isHint = hasHints && CheckPanel(menu, kHintKeys, hintPanel);
    const bool isBar = CheckPanel(menu, kProgressKeys, bar);
    if (isMenu && isHint) CheckOverlap(menu, {kMenuKeys, menuPanel}, {kHintKeys, hintPanel});
    if (isMenu && isBar) CheckOverlap(menu, {kMenuKeys, menuPanel}, {kProgressKeys, bar});
    if (isHint && isBar) CheckOverlap(menu, {kHintKeys, hintPanel}, {kProgressKeys, bar});
    if (isLook_ && isMenu) CheckRows(menu, menuPanel);
    if (isLook_ && isHint) CheckHintPanel(menu, hintPanel);
    CheckBackground(menu, config);
    if (isLook_) CheckLabels(menu, *config.levels.back());
  }

  // A place that a menu has from the one that led to it has been looked at there.
  bool IsNew(const char* what, const Rect& place) { return IsNew(what, place, screen_); }
  bool IsNew(const char* what, const Rect& place, Size screen) {
    return seen_.insert({what, screen.w, screen.h, place.x, place.y, place.w, place.h}).second;
  }

  bool CheckPanel(const MenuFile& menu, const PanelKeys& keys, const Rect& panel) {
    return CheckPanel(menu, OwnSection(menu), screen_, keys, panel);
  }
  bool CheckPanel(const MenuFile& menu, const MenuSection* own, Size screen, const PanelKeys& keys,
                  const Rect& panel) {
    const bool isNew = IsNew(keys.name, panel, screen);
    const auto add = [&](Msg id, const char* key, std::vector<std::string> words) {
      if (isNew) findings_.Add(id, PlaceOf(menu, own, key), std::move(words));
      return false;
    };
    const std::string size = NameOf(screen);
    if (panel.w < 1) return add(Msg::kNoWidth, keys.width, {keys.name, "width", size});
    if (panel.h < 1) return add(Msg::kNoWidth, keys.height, {keys.name, "height", size});
    const bool isWide = Fits(panel.x, panel.w, screen.w);
    if (isWide && Fits(panel.y, panel.h, screen.h)) return true;
    const bool isSize = isWide ? panel.h > screen.h : panel.w > screen.w;
    const char* key = isWide ? (isSize && keys.height ? keys.height : keys.top)
                             : (isSize ? keys.width : keys.left);
    return add(Msg::kOutside, key, {keys.name, size});
  }

  using Placed = std::pair<const PanelKeys&, const Rect&>;
  void CheckOverlap(const MenuFile& menu, const Placed& a, const Placed& b) {
    if (!Overlap(a.second, b.second)) return;
    const bool isNewA = IsNew((std::string{"a"} + a.first.name + b.first.name).c_str(), a.second);
    const bool isNewB = IsNew((std::string{"b"} + a.first.name + b.first.name).c_str(), b.second);
    if (isNewA || isNewB)
      findings_.Add(Msg::kOverlap, PlaceOf(menu, b.first.height ? b.first.left : b.first.top),
                    {a.first.name, b.first.name, NameOf(screen_)});
  }

  void CheckRows(const MenuFile& menu, const Rect& place) {
    MenuPanel panel;
    const Rect area = launcherState.layout.OnScreen(place);
    const MenuSection& general = menu.General();
    panel.SetTitle(general.Text("MenuTitle").c_str());
    const bool hasWayBack = &menu != &menus_.front();
    // As much as says how it lies in its row.
    std::vector<MenuItem> plain(menu.items.size() + hasWayBack);
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
      if (menu.items[i].Has("Submenu")) plain[i].flags |= kItemSubmenu;
      if (menu.items[i].Number("Separator") != 0) plain[i].flags |= kItemSeparator;
    }
    for (const MenuItem& item : plain) panel.List().InsertItem(std::make_unique<MenuEntry>(item));
    panel.Setup(area.x, area.y, area.w, area.h, 0, 0);
    panel.SendMessage(MSG_INITSKIN);
    panel.UpdateLayout();
    const auto isRow = [](const MenuItem& item) { return !(item.flags & kItemSeparator); };
    const auto row = std::find_if(plain.begin(), plain.end(), isRow);
    if (row == plain.end()) return;
    const int rowHeight = panel.List().GetEntry(static_cast<int>(row - plain.begin()))->GetHeight();
    if (panel.List().h() < rowHeight && IsNew("row", place)) {
      findings_.Add(
          Msg::kNoRow, PlaceOf(menu, "MenuHeight"),
          {kMenuKeys.name, NameOf(screen_), std::to_string(rowHeight - panel.List().h())});
      return;
    }
    for (const MenuSection& item : menu.items) CheckColor(menu, item, "Color");
    CheckColor(menu, menu.General(), "BacklineColor");
    if (!CheckFontHeight(rowHeight)) return;
    for (std::size_t i = 0; i < menu.items.size(); ++i)
      CheckIcon(menu, menu.items[i], *panel.List().GetEntry(static_cast<int>(i)));
    // What is too narrow for its rows is so for its title.
    if (IsNarrow(menu, panel.List(), place) || !CheckTitles(menu, panel.List())) return;
    CheckPanelTitles(menu, "MenuTitle", panel);
  }

  // True for a panel whose texts wrap and break up into pieces of words, which is said. `needed`
  // and `room` are pixels of the screen.
  bool IsNarrow(const MenuFile& menu, const PanelKeys& keys, const Rect& place, int needed,
                int room) {
    if (room >= needed) return false;
    if (IsNew((std::string{"narrow"} + keys.name).c_str(), place))
      findings_.Add(Msg::kPanelNarrow, PlaceOf(menu, keys.width), {keys.name, NameOf(screen_)});
    return true;
  }

  bool IsNarrow(const MenuFile& menu, const MenuList& list, const Rect& place) {
    if (CurrentSkin()->menu.wraps < 1) return false;
    const Font& font = ListFont();
    int longest = 0, room = kLargestRoom;
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
      if (menu.items[i].Number("Separator") != 0) continue;
      room = std::min(room, list.GetEntry(static_cast<int>(i))->LineRoom());
      for (const MenuLine& line : menu.items[i].lines)
        if (std::string_view{line.key->name} == "Title")
          longest = std::max(longest, WidestWord(font, line.entry.value));
    }
    return IsNarrow(menu, kMenuKeys, place, std::min(longest, font.TextLength(kFewLetters)), room);
  }

  // Pixels of the screen to one of the file.
  static double Scale() {
    return launcherState.layout.section.empty() ? 1 : launcherState.layout.scale;
  }

  // The colour of an entry on the ground of the list.
  void CheckColor(const MenuFile& menu, const MenuSection& section, const char* key) {
    const Color color = ReadColor(section.Text(key).c_str());
    const bool isShown = section.Number("Separator") == 0 && section.Number("Disable") <= 0;
    if (!isShown || !color.IsSet()) return;
    const MenuLook& look = CurrentSkin()->menu;
    const Color ground =
        look.IsFlat() ? look.ground : MiddleOf(*CurrentSkin(), LIST, 0, kListStates);
    // A look that has a least contrast brings colours to it.
    if (!ground.IsSet() || look.leastContrast > 0) return;
    if (const double contrast = Contrast(color, ground); contrast < kLeastContrast)
      findings_.Add(Msg::kContrast, menu.At(section.LineOf(key)),
                    {section.number > 0 ? '[' + section.name + ']' : key, Decimal(contrast)});
  }

  // Of a line of text, with some air.
  static int RowFor(int text) { return text * 3 / 2; }

  // A font that is too high is said once, and not that all titles are too wide.
  bool CheckFontHeight(int rowHeight) {
    const int number = CurrentSkin()->fontIndex[kListText][kNormal];
    const int height = ListFont().TextHeight();
    isFontHigh_ = height > rowHeight;
    if (!isFontHigh_) return true;
    const SectionFile::Section& font =
        CurrentSkin()->File().Find(("FONT" + std::to_string(number)).c_str());
    const auto* size = font.Find("size");
    const bool isInSkin = CurrentSkin()->skinFile != nullptr;
    const std::string advice = HasLowRows(*CurrentSkin())
                                   ? "write height = " + std::to_string(RowFor(height)) +
                                         " into [LIST], with which windows grow, too"
                                   : "take a smaller size, or higher rows";
    findings_.Add(
        Msg::kFontHigh,
        {isInSkin ? *CurrentSkin()->skinFile : std::string{kMainMenu}, size ? size->line : 1},
        {std::to_string(height), "its rows are " + std::to_string(rowHeight), advice});
    return false;
  }

  static const Font& ListFont() {
    const int number = CurrentSkin()->fontIndex[kListText][kNormal];
    return *CurrentSkin()->fonts[static_cast<std::size_t>(number)];
  }

  struct WideTitle {
    const MenuLine& line;
    int width, room;
  };

  // False where the menu is too narrow, which is said.
  bool CheckTitles(const MenuFile& menu, const MenuList& list) {
    const bool wraps = CurrentSkin()->menu.wraps > 0;  // where a word may still be too wide
    std::vector<WideTitle> wide;
    std::size_t count = 0;
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
      const MenuEntry& entry = *list.GetEntry(static_cast<int>(i));
      const int room = wraps ? entry.LineRoom() : entry.TitleRoom();
      for (const MenuLine& line : menu.items[i].lines) {
        if (std::string_view{line.key->name} != "Title") continue;
        ++count;
        if (line.isCut) continue;  // which is said
        const int width = wraps ? WidestWord(ListFont(), line.entry.value)
                                : ListFont().TextLength(line.entry.value.c_str());
        if (width > room) wide.push_back({line, width, room});
      }
    }
    // Where most titles are too wide, it is the menu that is too narrow.
    constexpr std::size_t kFew = 3;
    if (wide.size() > kFew && 2 * wide.size() > count) {
      // A submenu has it from the main menu.
      const LayoutValues& at = launcherState.layoutValues;
      if (IsNew("narrow", {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight}))
        findings_.Add(Msg::kMenuNarrow, PlaceOf(menu, "MenuWidth"),
                      {std::to_string(wide.size()), std::to_string(count), NameOf(screen_)});
      return false;
    }
    for (const auto& [line, width, room] : wide)
      findings_.Add(Msg::kTitleWide, menu.At(line.entry.line),
                    {(wraps ? "a word of " : "") + line.entry.name, std::to_string(width),
                     std::to_string(room), NameOf(screen_)});
    return true;
  }

  void CheckIcon(const MenuFile& menu, const MenuSection& item, const MenuEntry& entry) {
    const MenuLine* icon = item.Find("Icon");
    BITMAP* picture = icon ? pictures_.Get(icon->entry.value) : nullptr;
    const Size iconRoom = entry.IconRoom();
    const double zoom = CurrentZoom();
    if (!picture || item.Number("Separator") != 0 ||
        (picture->w * zoom <= iconRoom.w && picture->h * zoom <= iconRoom.h))
      return;
    const Place place = menu.At(icon->entry.line);
    if (!IsNew(("icon" + place.file).c_str(), {place.line, 0, 0, 0}, {})) return;
    const Size room{std::max(0, static_cast<int>(iconRoom.w / zoom)),
                    static_cast<int>(iconRoom.h / zoom)};
    largeIcons_[{NameOf({picture->w, picture->h}), NameOf(room)}].emplace_back(place,
                                                                               icon->entry.value);
  }

  void CheckPanelTitles(const MenuFile& menu, const char* key, const TitledPanel& panel) {
    const Font& font = panel.TitleFont();
    for (const MenuLine& line : menu.General().lines) {
      if (std::string_view{line.key->name} != key || line.isCut) continue;
      if (const int width = font.TextLength(line.entry.value.c_str()); width > panel.TitleRoom())
        findings_.Add(Msg::kPanelTitleWide, menu.At(line.entry.line),
                      {line.entry.name, std::to_string(width), std::to_string(panel.TitleRoom()),
                       NameOf(screen_)});
    }
  }

  void CheckHintPanel(const MenuFile& menu, const Rect& place) {
    HintPanel panel;
    const Rect area = launcherState.layout.OnScreen(place);
    panel.SetTitle(menu.General().Text("HintTitle").c_str());
    panel.Setup(area.x, area.y, area.w, area.h, 0, 0);
    panel.SendMessage(MSG_INITSKIN);
    panel.UpdateLayout();
    const int number = CurrentSkin()->fontIndex[kEditText][kNormal];
    const Font& font = *CurrentSkin()->fonts[static_cast<std::size_t>(number)];
    if (!isFontHigh_ &&
        !IsNarrow(menu, kHintKeys, place, font.TextLength(kFewLetters), panel.WordRoom()))
      CheckPanelTitles(menu, "HintTitle", panel);
    const int missing = panel.LineRoom();
    if (missing < 0 && IsNew("line", place))
      findings_.Add(Msg::kNoRow, PlaceOf(menu, "HintHeight"),
                    {kHintKeys.name, NameOf(screen_), std::to_string(-missing)});
  }

  // The background of this screen, and the line that names it.
  const MenuLine* Background(const MenuFile& menu) const {
    const MenuSection* own = OwnSection(menu);
    const MenuLine* line = own ? own->Find("Background") : nullptr;
    return line ? line : menu.General().Find("Background");
  }

  void CheckBackground(const MenuFile& menu, const MenuConfig& config) {
    const MenuLine* line = Background(menu);
    BITMAP* picture = pictures_.Get(config.background.c_str());
    // With a zoom a picture that is larger is scaled to the screen.
    if (!line || !picture || !launcherState.layout.section.empty()) return;
    if (picture->w > screen_.w || picture->h > screen_.h)
      findings_.Add(Msg::kBackgroundLarge, menu.At(line->entry.line),
                    {line->entry.value, NameOf({picture->w, picture->h}), NameOf(screen_)});
  }

  // While the progress bar shows, the countdown is below it.
  void CheckCountdown(const MenuFile& menu) {
    const MenuSection& general = menu.General();
    if (general.Number("Default") == 0 || general.Number("DefaultTimeout") < 1) return;
    const int top = launcherState.layoutValues.progressY;
    const int height = static_cast<int>(CurrentSkin()->fonts[0]->TextHeight() / CurrentZoom());
    if (Fits(top, kProgressHeight, screen_.h) && !Fits(top, kCountdownBelow + height, screen_.h) &&
        IsNew("countdown", {top, 0, 0, 0}))
      findings_.Add(Msg::kOutside, PlaceOf(menu, "ProgressY"),
                    {"the countdown below the progress bar", NameOf(screen_)});
  }

  // A text on the background, in one language.
  struct Label {
    const char* key;
    std::string name;  // as it is called in messages
    std::string text;
    int line;   // of the text; 0 where it is that of another menu
    Rect area;  // with all its lines; empty where it is not on the screen, which is said
    bool wraps;
  };

  void CheckLabels(const MenuFile& menu, const MenuLevel& level) {
    CheckLabelLook(menu, "Heading", level.heading);
    CheckLabelLook(menu, "KeyHelp", level.keyHelp);
    if (&menu == &menus_.front() && level.keyHelp.text.IsEmpty()) CheckCountdown(menu);
    const LayoutValues& at = launcherState.layoutValues;
    const std::pair<const char*, Rect> panels[] = {
        {kMenuKeys.name, {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight}},
        {kHintKeys.name, menu.General().Find("HintFile")
                             ? Rect{at.hintLeft, at.hintTop, at.hintWidth, at.hintHeight}
                             : Rect{}},
        {kProgressKeys.name, {at.progressX, at.progressY, at.progressW, kProgressHeight}}};
    for (const std::string& language : LanguagesOf(menu)) {
      const Label heading = ReadLabel(menu, "Heading", level.heading, language);
      const Label keyHelp = ReadLabel(menu, "KeyHelp", level.keyHelp, language);
      for (const Label* label : {&heading, &keyHelp})
        for (const auto& [name, panel] : panels) CheckLabelOverlap(menu, *label, name, panel);
      CheckLabelOverlap(menu, keyHelp, heading.name.c_str(), heading.area);
    }
  }

  // What a menu says in a language, and otherwise in English or in the menu that led to it.
  static Label TextOf(const MenuFile& menu, const char* key, const ScreenText& text,
                      const std::string& language) {
    const MenuLine* line = language.empty() ? nullptr : menu.General().Find(key, language);
    if (line && !line->isCut && !line->entry.value.empty())
      return {key, line->entry.name, line->entry.value, line->entry.line, {}, false};
    line = menu.General().Find(key);
    return {key, key, std::string{text.text}, line ? line->entry.line : 0, {}, false};
  }

  // Says where it is not on the screen.
  Label ReadLabel(const MenuFile& menu, const char* key, const ScreenText& text,
                  const std::string& language) {
    Label label = TextOf(menu, key, text, language);
    if (text.text.IsEmpty() || text.font < 0 || text.font >= Skin::kFonts) return label;
    const Font& font = *CurrentSkin()->fonts[static_cast<std::size_t>(text.font)];
    const auto inFile = [](int pixels) { return static_cast<int>(pixels / Scale()); };
    const int height = inFile(font.TextHeight());
    Rect area{text.left, text.top, inFile(font.TextLength(label.text.c_str())), height};
    const bool isWide = Fits(area.x, 1, screen_.w);
    if (!isWide || !Fits(area.y, height, screen_.h)) {
      // Whatever it says in which language and menu.
      if (IsNew(key, {area.x, area.y, 0, height}))
        findings_.Add(Msg::kOutside, PlaceOf(menu, label, isWide ? "Top" : "Left"),
                      {key, NameOf(screen_)});
      return label;
    }
    // What is too long for a line wraps.
    const int room = screen_.w - area.x - inFile(Zoomed(kTextMargin));
    label.wraps = room > 0 && area.w > room;
    if (label.wraps) {
      const int pixels = static_cast<int>(room * Scale());
      area.w = room;
      area.h = inFile(font.MultilineHeight(label.text.c_str(), pixels));
      if (const int lines = area.h / std::max(1, height); lines > 1)
        label.name += ", in " + std::to_string(lines) + " lines,";
    }
    // A word that is too wide is cut.
    const bool isCut = label.wraps && WidestWord(font, label.text) / Scale() > room;
    if (!isCut && Fits(area.y, area.h, screen_.h))
      label.area = area;
    else if (findings_.IsFirst(Msg::kOutside, key + label.text))
      findings_.Add(Msg::kOutside, PlaceOf(menu, label, "Top"), {label.name, NameOf(screen_)});
    return label;
  }

  // The place of a key that says how a text lies. Where it wraps, it is too long for its place; so
  // it is where the menu does not say the place.
  Place PlaceOf(const MenuFile& menu, const Label& label, const char* what) const {
    const std::string key = label.key + std::string{what};
    const MenuSection* own = OwnSection(menu);
    const bool isSaid = menu.General().Find(key.c_str()) || (own && own->Find(key.c_str()));
    return isSaid && !label.wraps ? PlaceOf(menu, key.c_str()) : menu.At(std::max(1, label.line));
  }

  void CheckLabelOverlap(const MenuFile& menu, const Label& label, const char* other,
                         const Rect& place) {
    if (place.w < 1 || label.area.w < 1 || !Overlap(label.area, place)) return;
    // That it is too long for one screen and for others is one thing, and so is its place in all
    // languages.
    const bool isNew = label.wraps ? findings_.IsFirst(Msg::kOverlap, label.key + label.text)
                                   : IsNew((std::string{label.key} + other).c_str(),
                                           {label.area.x, label.area.y, 0, label.area.h});
    if (isNew)
      findings_.Add(Msg::kOverlap, PlaceOf(menu, label, "Top"),
                    {label.wraps ? label.name : label.key, other, NameOf(screen_)});
  }

  void CheckLabelLook(const MenuFile& menu, const char* key, const ScreenText& text) {
    if (text.text.IsEmpty()) return;
    CheckLabelFont(menu, key, text.font);
    const MenuLook& look = CurrentSkin()->menu;
    const Color said = key == std::string_view{"Heading"} ? look.heading : look.keyHelp;
    const Rect area = ReadLabel(menu, key, text, {}).area;
    if (area.w > 0 && look.picture != 0 && IsNew((std::string{"colour"} + key).c_str(), area))
      CheckLabelContrast(menu, key, said.IsSet() ? said : text.color, area);
  }

  // One that the skin does not have is Allegro's own, which is small.
  void CheckLabelFont(const MenuFile& menu, const std::string& key, int font) {
    const std::string section = "FONT" + std::to_string(font), fontKey = key + "Font";
    if (!CurrentSkin()->skinFile || font == 0 || !menu.General().Has(key.c_str()) ||
        !CurrentSkin()->File().Find(section.c_str()).Heads().empty())
      return;
    const bool isSaid = menu.General().Find(fontKey.c_str());
    // What a submenu has from the menu that led to it is said there.
    if (!IsNew(fontKey.c_str(), {font, 0, 0, 0}, {}) && !isSaid) return;
    findings_.Add(Msg::kNoFont, PlaceOf(menu, isSaid ? fontKey.c_str() : key.c_str()),
                  {fontKey, std::to_string(font)});
  }

  void CheckLabelContrast(const MenuFile& menu, const std::string& key, Color color,
                          const Rect& area) {
    const MenuLine* line = Background(menu);
    BITMAP* picture = line ? pictures_.Get(line->entry.value) : nullptr;
    if (!picture) return;
    // Smaller pictures are centred.
    const Rect inPicture{area.x - std::max(0, (screen_.w - picture->w) / 2),
                         area.y - std::max(0, (screen_.h - picture->h) / 2), area.w, area.h};
    const double contrast = Contrast(color, MeanOf(picture, inPicture));
    if (contrast < kLeastContrast)
      findings_.Add(Msg::kContrast, PlaceOf(menu, (key + "Color").c_str()),
                    {key, Decimal(contrast)});
  }

  Findings& findings_;
  Pictures& pictures_;
  const std::vector<MenuFile>& menus_;
  Size own_;
  bool isLook_;
  Size screen_;  // in the pixels of the file
  std::string section_;
  std::map<std::pair<std::string, std::string>, std::vector<Icon>> largeIcons_;  // by size and room
  bool isFontHigh_ = false;  // the list's, which is said
  bool hasGeneral_ = false;  // a screen for the general section was found
  std::map<std::string, const MenuFile*> places_;
  std::set<std::tuple<std::string, int, int, int, int, int, int>> seen_;
};

}  // namespace

void CheckLayouts(Findings& findings, Pictures& pictures, const std::vector<MenuFile>& menus,
                  const std::vector<Size>& screens, Size own, bool isLook) {
  LayoutCheck check{findings, pictures, menus, own, isLook};
  for (const Size& screen : screens) check.Run(screen);
  check.Finish();
  settings.screenWidth = own.w;
  settings.screenHeight = own.h;
}

}  // namespace zel
