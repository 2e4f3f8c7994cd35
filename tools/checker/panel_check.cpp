#include "tools/checker/panel_check.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/menu_config.h"
#include "launcher/menu_widgets.h"
#include "launcher/state.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/skin/skin.h"
#include "tools/checker/skin_check.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

constexpr const char* kFewLetters = "nnnnnnnn";  // that a line has room for, or a whole word
constexpr int kLargestRoom = 1 << 20;            // pixels

class PanelCheck {
 public:
  explicit PanelCheck(ScreenView& view) : view_{view} {}

  void CheckMenu(const MenuFile& menu, const Rect& place, bool hasWayBack) {
    MenuPanel panel;
    const Rect area = launcherState.layout.OnScreen(place);
    const MenuSection& general = menu.General();
    panel.SetTitle(general.Text("MenuTitle").c_str());
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
    if (panel.List().h() < rowHeight && view_.IsNew("row", place)) {
      view_.findings.Add(
          Msg::kNoRow, view_.PlaceOf(menu, "MenuHeight"),
          {kMenuKeys.name, NameOf(view_.size), std::to_string(rowHeight - panel.List().h())});
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

  void CheckHint(const MenuFile& menu, const Rect& place) {
    HintPanel panel;
    const Rect area = launcherState.layout.OnScreen(place);
    panel.SetTitle(menu.General().Text("HintTitle").c_str());
    panel.Setup(area.x, area.y, area.w, area.h, 0, 0);
    panel.SendMessage(MSG_INITSKIN);
    panel.UpdateLayout();
    const int number = CurrentSkin()->fontIndex[kEditText][kNormal];
    const Font& font = *CurrentSkin()->fonts[static_cast<std::size_t>(number)];
    if (!view_.isFontHigh &&
        !IsNarrow(menu, kHintKeys, place, font.TextLength(kFewLetters), panel.WordRoom()))
      CheckPanelTitles(menu, "HintTitle", panel);
    const int missing = panel.LineRoom();
    if (missing < 0 && view_.IsNew("line", place))
      view_.findings.Add(Msg::kNoRow, view_.PlaceOf(menu, "HintHeight"),
                         {kHintKeys.name, NameOf(view_.size), std::to_string(-missing)});
  }

 private:
  // True for a panel whose texts wrap and break up into pieces of words, which is said. `needed`
  // and `room` are pixels of the screen.
  bool IsNarrow(const MenuFile& menu, const PanelKeys& keys, const Rect& place, int needed,
                int room) {
    if (room >= needed) return false;
    if (view_.IsNew((std::string{"narrow"} + keys.name).c_str(), place))
      view_.findings.Add(Msg::kPanelNarrow, view_.PlaceOf(menu, keys.width),
                         {keys.name, NameOf(view_.size)});
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
      view_.findings.Add(Msg::kContrast, menu.At(section.LineOf(key)),
                         {section.number > 0 ? '[' + section.name + ']' : key, Decimal(contrast)});
  }

  // Of a line of text, with some air.
  static int RowFor(int text) { return text * 3 / 2; }

  // A font that is too high is said once, and not that all titles are too wide.
  bool CheckFontHeight(int rowHeight) {
    const int number = CurrentSkin()->fontIndex[kListText][kNormal];
    const int height = ListFont().TextHeight();
    view_.isFontHigh = height > rowHeight;
    if (!view_.isFontHigh) return true;
    const SectionFile::Section& font =
        CurrentSkin()->File().Find(("FONT" + std::to_string(number)).c_str());
    const auto* size = font.Find("size");
    const bool isInSkin = CurrentSkin()->skinFile != nullptr;
    const std::string advice = HasLowRows(*CurrentSkin())
                                   ? "write height = " + std::to_string(RowFor(height)) +
                                         " into [LIST], with which windows grow, too"
                                   : "take a smaller size, or higher rows";
    view_.findings.Add(
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
      if (view_.IsNew("narrow", {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight}))
        view_.findings.Add(
            Msg::kMenuNarrow, view_.PlaceOf(menu, "MenuWidth"),
            {std::to_string(wide.size()), std::to_string(count), NameOf(view_.size)});
      return false;
    }
    for (const auto& [line, width, room] : wide)
      view_.findings.Add(Msg::kTitleWide, menu.At(line.entry.line),
                         {(wraps ? "a word of " : "") + line.entry.name, std::to_string(width),
                          std::to_string(room), NameOf(view_.size)});
    return true;
  }

  void CheckIcon(const MenuFile& menu, const MenuSection& item, const MenuEntry& entry) {
    const MenuLine* icon = item.Find("Icon");
    BITMAP* picture = icon ? view_.pictures.Get(icon->entry.value) : nullptr;
    const Size iconRoom = entry.IconRoom();
    const double zoom = CurrentZoom();
    if (!picture || item.Number("Separator") != 0 ||
        (picture->w * zoom <= iconRoom.w && picture->h * zoom <= iconRoom.h))
      return;
    const Place place = menu.At(icon->entry.line);
    if (!view_.IsNew(("icon" + place.file).c_str(), {place.line, 0, 0, 0}, {})) return;
    const Size room{std::max(0, static_cast<int>(iconRoom.w / zoom)),
                    static_cast<int>(iconRoom.h / zoom)};
    view_.said.largeIcons[{NameOf({picture->w, picture->h}), NameOf(room)}].emplace_back(
        place, icon->entry.value);
  }

  void CheckPanelTitles(const MenuFile& menu, const char* key, const TitledPanel& panel) {
    const Font& font = panel.TitleFont();
    for (const MenuLine& line : menu.General().lines) {
      if (std::string_view{line.key->name} != key || line.isCut) continue;
      if (const int width = font.TextLength(line.entry.value.c_str()); width > panel.TitleRoom())
        view_.findings.Add(Msg::kPanelTitleWide, menu.At(line.entry.line),
                           {line.entry.name, std::to_string(width),
                            std::to_string(panel.TitleRoom()), NameOf(view_.size)});
    }
  }

  ScreenView& view_;
};

}  // namespace

void CheckMenuPanel(ScreenView& view, const MenuFile& menu, const Rect& place, bool hasWayBack) {
  PanelCheck{view}.CheckMenu(menu, place, hasWayBack);
}

void CheckHintPanel(ScreenView& view, const MenuFile& menu, const Rect& place) {
  PanelCheck{view}.CheckHint(menu, place);
}

void SayLargeIcons(ScreenView& view) {
  constexpr std::size_t kFew = 3;
  for (const auto& [sizes, icons] : view.said.largeIcons) {
    const auto& [size, room] = sizes;
    const bool areMany = icons.size() > kFew;
    // What allows one of them allows the message on all.
    const auto allowed =
        std::count_if(icons.begin(), icons.end(), [&view](const ScreenView::Icon& icon) {
          return view.findings.IsAllowed(Msg::kIconLarge, icon.first);
        });
    if (areMany && allowed > 0) continue;
    for (const auto& [place, name] : icons) {
      view.findings.Add(
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

}  // namespace zel
