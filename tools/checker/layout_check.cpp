#include "tools/checker/layout_check.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "launcher/layout.h"
#include "launcher/menu_config.h"
#include "launcher/state.h"
#include "launcher/whole_file.h"
#include "toolkit/base/section_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"
#include "tools/checker/label_check.h"
#include "tools/checker/lines.h"
#include "tools/checker/panel_check.h"
#include "tools/checker/screen_view.h"
#include "tools/checker/values.h"

namespace zel {
namespace {

constexpr Size kDefaultScreen{800, 600};

bool FitsOn(Size screen, const Rect& panel) {
  return Fits(panel.x, panel.w, screen.w) && Fits(panel.y, panel.h, screen.h);
}

class LayoutCheck {
 public:
  LayoutCheck(Findings& findings, Pictures& pictures, const std::vector<MenuFile>& menus, Size own,
              bool isLook)
      : view_{findings, pictures}, menus_{menus}, own_{own}, isLook_{isLook} {
    for (const MenuFile& menu : menus) places_.emplace(menu.name, &menu);
  }

  void Finish() { SayLargeIcons(view_); }

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
    view_.size = fitted.section.empty() ? screen : fitted.size;
    view_.section = LayoutSection();
    if (menus_.empty() || !menus_.front().isRead || !menus_.front().isLayoutKnown ||
        !HasLayout(screen))
      return;
    if (screen == own_) CheckPassedOver(menus_.front());
    WalkAll(screen);
  }

 private:
  static bool HasSection(const MenuFile& menu, const std::string& name) {
    return menu.screens.contains(Upper(name));
  }

  // A screen that nothing is made for is one cause, whatever does not fit on it.
  bool HasLayout(Size screen) {
    if (view_.OwnSection(menus_.front()) && Upper(view_.section) != kGeneralSection) return true;
    const MenuFile& menu = menus_.front();
    LayoutValues at;
    {
      MenuConfig config;
      config.ReadWithoutHints(kMainMenu);
      at = launcherState.layoutValues;
      launcherState.layoutValues = {};
    }
    const auto fitsOn = [&at](Size size) {
      return FitsOn(size, kMenuKeys.place(at)) && FitsOn(size, kHintKeys.place(at)) &&
             FitsOn(size, kProgressKeys.place(at));
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
    view_.findings.Add(Msg::kNoLayout, menu.At(std::max(1, menu.General().line)),
                       {NameOf(screen), advice});
    return false;
  }

  // Whether the general section is meant for the settings' own screen: its background is as large,
  // the other usual screens have sections, or no more than a panel of it lies outside.
  bool IsMeantForOwn(const MenuFile& menu, std::size_t outside) {
    const MenuLine* line = menu.General().Find("Background");
    const BITMAP* background = line ? view_.pictures.Get(line->entry.value) : nullptr;
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
    if (settings.zoom == 1 || Upper(view_.section) == kGeneralSection ||
        HasSection(menu, SectionFor(own_)))
      return;
    const LayoutValues at =
        ReadLayout(SectionFile::FromUtf8(ReadWhole(kMainMenu)), kGeneralSection, {});
    std::vector<std::pair<const PanelKeys*, Rect>> outside;
    for (const PanelKeys* keys : {&kMenuKeys, &kProgressKeys, &kHintKeys}) {
      const Rect panel = keys->place(at);
      const bool isShown = keys != &kHintKeys || menu.General().Find("HintFile");
      if (isShown && !FitsOn(own_, panel)) outside.emplace_back(keys, panel);
    }
    if (outside.empty() || !IsMeantForOwn(menu, outside.size())) return;
    for (const auto& [keys, panel] : outside) CheckPanel(menu, nullptr, own_, *keys, panel);
  }

  // On a screen that is too small for all layouts the places of one shrink, without its texts.
  // Where much does not fit then, that is the one cause.
  void WalkAll(Size screen) {
    constexpr std::size_t kFew = 3;
    const MenuSection* own = view_.OwnSection(menus_.front());
    const double zoom = own ? std::max(kLeastZoom, ParseZoom(own->Text("Zoom").c_str())) : 1;
    const bool isShrunk = !launcherState.layout.section.empty() && view_.size != screen &&
                          (launcherState.layout.scale * zoom < kLeastZoom ||
                           launcherState.layout.scale * view_.size.w > screen.w);
    MenuConfig config;
    std::set<std::string> menus;
    if (!isShrunk) return Walk(config, menus_.front(), menus);
    Findings findings = view_.findings;
    auto said = view_.said;
    Walk(config, menus_.front(), menus);
    if (view_.findings.Count() <= findings.Count() + kFew) return;
    view_.findings = std::move(findings);
    view_.said = std::move(said);
    view_.findings.Add(
        Msg::kNoLayout, menus_.front().At(std::max(1, menus_.front().General().line)),
        {NameOf(screen), "", ", and the one for " + NameOf(view_.size) + " does not fit there"});
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
    const Rect menuPanel = kMenuKeys.place(at), hintPanel = kHintKeys.place(at);
    const Rect bar = kProgressKeys.place(at);
    const bool hasHints = menu.General().Find("HintFile");
    const bool isMenu = CheckPanel(menu, kMenuKeys, menuPanel);
    const bool isHint = hasHints && CheckPanel(menu, kHintKeys, hintPanel);
    const bool isBar = CheckPanel(menu, kProgressKeys, bar);
    if (isMenu && isHint) CheckOverlap(menu, {kMenuKeys, menuPanel}, {kHintKeys, hintPanel});
    if (isMenu && isBar) CheckOverlap(menu, {kMenuKeys, menuPanel}, {kProgressKeys, bar});
    if (isHint && isBar) CheckOverlap(menu, {kHintKeys, hintPanel}, {kProgressKeys, bar});
    const bool isMain = &menu == &menus_.front();
    if (isLook_ && isMenu) CheckMenuPanel(view_, menu, menuPanel, !isMain);
    if (isLook_ && isHint) CheckHintPanel(view_, menu, hintPanel);
    CheckBackground(menu, config);
    if (isLook_) CheckLabels(view_, menu, *config.levels.back(), isMain);
  }

  bool CheckPanel(const MenuFile& menu, const PanelKeys& keys, const Rect& panel) {
    return CheckPanel(menu, view_.OwnSection(menu), view_.size, keys, panel);
  }
  bool CheckPanel(const MenuFile& menu, const MenuSection* own, Size screen, const PanelKeys& keys,
                  const Rect& panel) {
    const bool isNew = view_.IsNew(keys.name, panel, screen);
    const auto add = [&](Msg id, const char* key, std::vector<std::string> words) {
      if (isNew) view_.findings.Add(id, view_.PlaceOf(menu, own, key), std::move(words));
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
    const bool isNewA =
        view_.IsNew((std::string{"a"} + a.first.name + b.first.name).c_str(), a.second);
    const bool isNewB =
        view_.IsNew((std::string{"b"} + a.first.name + b.first.name).c_str(), b.second);
    if (isNewA || isNewB)
      view_.findings.Add(Msg::kOverlap,
                         view_.PlaceOf(menu, b.first.height ? b.first.left : b.first.top),
                         {a.first.name, b.first.name, NameOf(view_.size)});
  }

  void CheckBackground(const MenuFile& menu, const MenuConfig& config) {
    const MenuLine* line = view_.Background(menu);
    BITMAP* picture = view_.pictures.Get(config.background.c_str());
    // With a zoom a picture that is larger is scaled to the screen.
    if (!line || !picture || !launcherState.layout.section.empty()) return;
    if (picture->w > view_.size.w || picture->h > view_.size.h)
      view_.findings.Add(Msg::kBackgroundLarge, menu.At(line->entry.line),
                         {line->entry.value, NameOf({picture->w, picture->h}), NameOf(view_.size)});
  }

  ScreenView view_;
  const std::vector<MenuFile>& menus_;
  Size own_;
  bool isLook_;
  bool hasGeneral_ = false;  // a screen for the general section was found
  std::map<std::string, const MenuFile*> places_;
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
